#include "classic_informats.h"

#include <algorithm>
#include <bit>
#include <iterator>
#include <vector>

#include "text_convert.h"
#include "values.h"

namespace vxcli {
namespace {

constexpr ClassicInformat table[] = {
    {"N", "vxfmtzifmn", Yields::number},
    {"COMMAX", "vxfmtzifmcmx", Yields::number},
    {"NUMX", "vxfmtzifmnmx", Yields::number},
    {"DOLLAR", "vxfmtzifmdlr", Yields::number},
    {"DOLLARX", "vxfmtzifmdlx", Yields::number},
    {"EURO", "vxfmtzifmeur", Yields::number},
    {"EUROX", "vxfmtzifmerx", Yields::number},
    {"PERCENT", "vxfmtzifmpct", Yields::number},
    {"NEGPAREN", "vxfmtzifmnpn", Yields::number},
    {"NEGPARENX", "vxfmtzifmnpr", Yields::number},
    {"SIZEK", "vxfmtzifmskg", Yields::number},
    {"HEX", "vxfmtzifmhex", Yields::number},
    {"BINARY", "vxfmtzifmbin", Yields::number},
    {"UUID", "vxfmtzifmuuid", Yields::bytes},
    {"HEXCHAR", "vxfmtzifmhxc", Yields::bytes},
    {"BINCHAR", "vxfmtzifmbnc", Yields::bytes},
    {"BASE", "vxfmtzifmb64", Yields::bytes},
    {"CHAR", "vxfmtzifmc", Yields::characters},
    {"UPCASE", "vxfmtzifmupc", Yields::characters},
    {"QUOTE", "vxfmtzifmquo", Yields::characters},
    {"OCC", "vxfmtzifmocc", Yields::characters},
};

}  // namespace

std::span<const ClassicInformat> classic_informats() { return table; }

const ClassicInformat* find_classic_informat(std::string_view name) {
    const auto* found = std::find_if(std::begin(table), std::end(table),
                                     [&](const ClassicInformat& c) { return name == c.name; });
    return found == std::end(table) ? nullptr : found;
}

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
        append_value_text(out, value);
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
