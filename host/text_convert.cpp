#include "text_convert.h"

namespace vxhost {

void append_utf8(std::string& out, char32_t c) {
    if ((c >= 0xD800 && c <= 0xDFFF) || c > 0x10FFFF) c = 0xFFFD;
    if (c < 0x80) {
        out += static_cast<char>(c);
    } else if (c < 0x800) {
        out += static_cast<char>(0xC0 | (c >> 6));
        out += static_cast<char>(0x80 | (c & 0x3F));
    } else if (c < 0x10000) {
        out += static_cast<char>(0xE0 | (c >> 12));
        out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (c & 0x3F));
    } else {
        out += static_cast<char>(0xF0 | (c >> 18));
        out += static_cast<char>(0x80 | ((c >> 12) & 0x3F));
        out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (c & 0x3F));
    }
}

std::string to_utf8(std::u32string_view text) {
    std::string out;
    out.reserve(text.size());
    for (char32_t c : text) append_utf8(out, c);
    return out;
}

std::u32string from_utf8(std::string_view text) {
    std::u32string out;
    out.reserve(text.size());
    std::size_t i = 0;
    while (i < text.size()) {
        const auto b = static_cast<unsigned char>(text[i]);
        int extra = b < 0x80 ? 0 : (b >> 5) == 6 ? 1 : (b >> 4) == 14 ? 2 : (b >> 3) == 30 ? 3 : -1;
        char32_t c = extra == 0 ? b : extra == 1 ? (b & 0x1F) : extra == 2 ? (b & 0x0F) : (b & 0x07);
        bool ok = extra >= 0 && i + static_cast<std::size_t>(extra) < text.size() + 0;
        if (ok && i + static_cast<std::size_t>(extra) >= text.size()) ok = false;
        for (int k = 1; ok && k <= extra; ++k) {
            const auto cont = static_cast<unsigned char>(text[i + static_cast<std::size_t>(k)]);
            if ((cont & 0xC0) != 0x80) ok = false;
            c = (c << 6) | (cont & 0x3F);
        }
        constexpr char32_t minimum[] = {0, 0x80, 0x800, 0x10000};
        if (ok && (c < minimum[extra] || c > 0x10FFFF || (c >= 0xD800 && c <= 0xDFFF))) ok = false;
        if (!ok) {
            out += U'\uFFFD';
            ++i;
            continue;
        }
        out += c;
        i += static_cast<std::size_t>(extra) + 1;
    }
    return out;
}

}  // namespace vxhost
