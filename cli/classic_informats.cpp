#include "classic_informats.h"

#include <algorithm>
#include <bit>
#include <iterator>
#include <vector>

#include "text_convert.h"
#include "embed/value_text.h"

namespace vxcli {

vxlocfmt::status read_classic(const ClassicInformat& informat, vxlocfmt::format_fn function, vxlocfmt::FmtCall& call,
                              int width, int decimals, std::u32string_view text, std::string& out) {
    // Room for the widest result: a character per text character (bytes take fewer).
    static std::vector<char32_t> cells;
    cells.assign(static_cast<std::size_t>(std::max(width, 0)) + 1, U' ');
    double value = std::bit_cast<double>(vxlocfmt::missing_bits);
    call.width = width;
    call.decimals = decimals;
    call.input = text.data();
    call.input_length = static_cast<std::int32_t>(text.size());
    call.text_limit = static_cast<std::int32_t>(text.size());
    call.byte_mode = 0;
    call.produced = 0;
    if (informat.yields == Yields::number) {
        call.output = &value;
        call.capacity = 0;
    } else {
        call.output = cells.data();
        call.capacity = std::max(width, 0);
    }
    const vxlocfmt::status code = function(&call, nullptr);
    const auto produced = static_cast<std::size_t>(std::clamp(call.produced, 0, std::max(width, 0)));
    if (code != 0) {
        out += '.';
    } else if (informat.yields == Yields::number) {
        vxhost::append_value_text(out, value);
    } else if (informat.yields == Yields::bytes) {
        constexpr char digits[] = "0123456789abcdef";
        const auto* bytes = reinterpret_cast<const unsigned char*>(cells.data());
        for (std::size_t i = 0; i < produced; ++i) {
            out += digits[bytes[i] >> 4];
            out += digits[bytes[i] & 15];
        }
    } else {
        for (std::size_t i = 0; i < produced; ++i) vxhost::append_utf8(out, cells[i]);
    }
    return code;
}

}  // namespace vxcli
