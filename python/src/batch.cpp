#include "batch.h"

#include <algorithm>
#include <bit>
#include <stdexcept>
#include <string_view>

namespace vxpy {
namespace {

[[noreturn]] void overflow(const vxhost::Formatter& formatter, std::size_t row_width) {
    throw std::logic_error(formatter.name() + " wrote more than its field of " + std::to_string(row_width));
}

double missing_value() { return std::bit_cast<double>(vxlocfmt::missing_bits); }

// Each value's text into its row of `row_width` units, the rest of the row zeros (NumPy's padding).
template <class Unit, class TextOf>
void fill_rows(vxhost::Formatter& formatter, const double* values, std::size_t count, Unit* rows,
               std::size_t row_width, TextOf text_of) {
    for (std::size_t i = 0; i < count; ++i) {
        Unit* row = rows + i * row_width;
        const std::basic_string_view<Unit> text = text_of(values[i]);
        if (text.size() > row_width) overflow(formatter, row_width);
        std::copy(text.begin(), text.end(), row);
        std::fill(row + text.size(), row + row_width, Unit{});
    }
}

}  // namespace

void format_rows(vxhost::Formatter& formatter, const double* values, std::size_t count, char32_t* rows,
                 std::size_t row_width) {
    fill_rows(formatter, values, count, rows, row_width,
              [&](double value) { return std::u32string_view(formatter.format_wide(value).text); });
}

void format_byte_rows(vxhost::Formatter& formatter, const double* values, std::size_t count, char* rows,
                      std::size_t row_width) {
    fill_rows(formatter, values, count, rows, row_width,
              [&](double value) { return std::string_view(formatter.format(value).text); });
}

ReadFailure read_texts(vxhost::Reader& reader, const TextColumn& texts, std::size_t begin, std::size_t end,
                       double* values, bool stop_at_failure) {
    std::fill(values + begin, values + end, missing_value());
    std::size_t start = begin == 0 ? 0 : texts.ends[begin - 1];
    for (std::size_t i = begin; i < end; start = texts.ends[i], ++i) {
        const std::string_view text(texts.bytes.data() + start, texts.ends[i] - start);
        if (texts.missing[i] || text.empty()) continue;
        const vxhost::Reader::Result result = reader.read(text);
        values[i] = result.value;
        if (!result.ok && stop_at_failure) return {static_cast<std::int64_t>(i), result.code};
    }
    return {};
}

}  // namespace vxpy
