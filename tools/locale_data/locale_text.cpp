#include "locale_text.h"

#include <cstdio>

namespace locale_data {

Encoded locale_text(const icu::UnicodeString& value, Cut cut) {
    std::string out;
    std::size_t last_safe = 0;  // longest prefix that may end the value
    bool in_directive = false;
    for (int32_t i = 0; i < value.length(); i = value.moveIndex32(i, 1)) {
        const UChar32 c = value.char32At(i);
        // '<' is escaped too, so that every "<U" in the data is an escape; so is a blank at either
        // end, so that no line of the data file ends in white space.
        const bool end_blank = c == ' ' && (i == 0 || i + 1 == value.length());
        if (c >= 0x20 && c < 0x7F && c != '<' && !end_blank) {
            out.push_back(static_cast<char>(c));
        } else if (c > 0xFFFF) {
            out.push_back('?');
        } else {
            char escape[8];
            std::snprintf(escape, sizeof escape, "<U%04X>", static_cast<unsigned>(c));
            out.append(escape);
        }
        if (out.size() > value_bytes) return {out.substr(0, last_safe), true};
        if (cut == Cut::directives) {
            // A directive runs from '%' through its letter: "%#d", "%+Y", "%%".
            if (!in_directive && c == '%') {
                in_directive = true;
                continue;
            }
            if (in_directive && ((c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '%')) in_directive = false;
            if (in_directive) continue;
        }
        last_safe = out.size();
    }
    return {out, false};
}

}  // namespace locale_data
