#include "batch.h"

#include <algorithm>
#include <bit>
#include <stdexcept>
#include <string_view>

namespace vxpy {
namespace {

// Formatter text is well-formed UTF-8 (the host writes U+FFFD for what UTF-8 cannot hold).
// Returns the code points written, or row_width + 1 if they do not fit.
std::size_t decode_into(std::string_view text, char32_t* row, std::size_t row_width) {
    std::size_t n = 0;
    for (std::size_t i = 0; i < text.size(); ++n) {
        if (n == row_width) return row_width + 1;
        const auto b = static_cast<unsigned char>(text[i]);
        const std::size_t extra = b < 0x80 ? 0 : b < 0xE0 ? 1 : b < 0xF0 ? 2 : 3;
        char32_t c = extra == 0 ? b : extra == 1 ? b & 0x1F : extra == 2 ? b & 0x0F : b & 0x07;
        for (std::size_t k = 1; k <= extra && i + k < text.size(); ++k)
            c = (c << 6) | (static_cast<unsigned char>(text[i + k]) & 0x3F);
        row[n] = c;
        i += extra + 1;
    }
    return n;
}

[[noreturn]] void overflow(const vxhost::Formatter& formatter, std::size_t row_width) {
    throw std::logic_error(formatter.name() + " wrote more than its field of " + std::to_string(row_width));
}

double missing_value() { return std::bit_cast<double>(vxlocfmt::missing_bits); }

}  // namespace

void format_rows(vxhost::Formatter& formatter, const double* values, std::size_t count, char32_t* rows,
                 std::size_t row_width) {
    for (std::size_t i = 0; i < count; ++i) {
        char32_t* row = rows + i * row_width;
        const std::size_t n = decode_into(formatter.format(values[i]).text, row, row_width);
        if (n > row_width) overflow(formatter, row_width);
        std::fill(row + n, row + row_width, U'\0');
    }
}

void format_byte_rows(vxhost::Formatter& formatter, const double* values, std::size_t count, char* rows,
                      std::size_t row_width) {
    for (std::size_t i = 0; i < count; ++i) {
        char* row = rows + i * row_width;
        const std::string_view text = formatter.format(values[i]).text;
        if (text.size() > row_width) overflow(formatter, row_width);
        std::copy(text.begin(), text.end(), row);
        std::fill(row + text.size(), row + row_width, '\0');
    }
}

ReadFailure read_texts(vxhost::Reader& reader, const TextColumn& texts, double* values, bool stop_at_failure) {
    const double missing = missing_value();
    std::fill(values, values + texts.ends.size(), missing);
    std::size_t start = 0;
    for (std::size_t i = 0; i < texts.ends.size(); start = texts.ends[i], ++i) {
        const std::string_view text(texts.bytes.data() + start, texts.ends[i] - start);
        if (texts.missing[i] || text.empty()) continue;
        const vxhost::Reader::Result result = reader.read(text);
        values[i] = result.value;
        if (!result.ok && stop_at_failure) return {static_cast<std::int64_t>(i), result.code};
    }
    return {};
}

}  // namespace vxpy
