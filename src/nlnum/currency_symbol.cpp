#include "nlnum/currency_symbol.h"

#include "frame/session_fit.h"

namespace vxlocfmt::nlnum {
namespace {

constexpr std::int32_t one_character_bytes = 8;

bool convertible(const FmtCall& call, wchar c) {
    if (!call.session_transcoder) return true;  // a wide session holds every character
    return session_byte_length(call, &c, 1, one_character_bytes) >= 0;
}

int hex_digit(wchar c) {
    if (c >= U'0' && c <= U'9') return static_cast<int>(c - U'0');
    if (c >= U'A' && c <= U'F') return static_cast<int>(c - U'A' + 10);
    if (c >= U'a' && c <= U'f') return static_cast<int>(c - U'a' + 10);
    return -1;
}

}  // namespace

CurrencyText currency_text(const FmtCall& call, const MonetaryRow& row, bool local) {
    CurrencyText out;
    if (!local) {
        out.put(row.int_curr_symbol);
        return out;
    }
    const std::u32string_view s = row.currency_symbol;
    for (std::size_t i = 0; i < s.size();) {
        if (s[i] == U'<' && i + 7 <= s.size() && (s[i + 1] == U'U' || s[i + 1] == U'u') && s[i + 6] == U'>') {
            const int d[4] = {hex_digit(s[i + 2]), hex_digit(s[i + 3]), hex_digit(s[i + 4]), hex_digit(s[i + 5])};
            if (d[0] >= 0 && d[1] >= 0 && d[2] >= 0 && d[3] >= 0) {
                const auto c = static_cast<wchar>(d[0] << 12 | d[1] << 8 | d[2] << 4 | d[3]);
                if (!convertible(call, c)) {
                    out.length = 0;
                    out.put(row.int_curr_symbol);
                    return out;
                }
                out.put(std::u32string_view(&c, 1));
                i += 7;
                continue;
            }
        }
        out.put(s.substr(i++, 1));
    }
    return out;
}

}  // namespace vxlocfmt::nlnum
