#include "read_texts.h"

#include <algorithm>
#include <bit>
#include <string_view>

namespace vxpy {
namespace {

double missing_value() { return std::bit_cast<double>(vxlocfmt::missing_bits); }

}  // namespace

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
