/*
 * What the ICU oracles share: ICU's UTF-16 text as code points, the locales with Latin digits,
 * and Unicode spaces compared as plain blanks.
 *
 *   icu_text::widen(buffer, n);   icu_text::trimmed(icu_text::blanked(text));
 */
#pragma once

#include <unicode/uchar.h>
#include <unicode/unumsys.h>
#include <unicode/utf16.h>

#include <string>

namespace icu_text {

inline std::u32string widen(const UChar* text, int32_t length) {
    std::u32string out;
    for (int32_t i = 0; i < length;) {
        UChar32 c;
        U16_NEXT(text, i, length, c);
        out += static_cast<char32_t>(c);
    }
    return out;
}

inline bool latin_digits(const char* id) {
    UErrorCode error = U_ZERO_ERROR;
    UNumberingSystem* system = unumsys_open(id, &error);
    const bool latin = U_SUCCESS(error) && std::string(unumsys_getName(system)) == "latn";
    unumsys_close(system);
    return latin;
}

// Any Unicode space (a tab, a no-break or a narrow no-break space ...) as a blank.
inline std::u32string blanked(std::u32string text) {
    for (char32_t& c : text)
        if (u_isUWhiteSpace(static_cast<UChar32>(c)) || u_charType(static_cast<UChar32>(c)) == U_SPACE_SEPARATOR) c = U' ';
    return text;
}

// Blanks at either end left out.
inline std::u32string trimmed(const std::u32string& text) {
    const std::size_t first = text.find_first_not_of(U' ');
    if (first == std::u32string::npos) return {};
    return text.substr(first, text.find_last_not_of(U' ') - first + 1);
}

}  // namespace icu_text
