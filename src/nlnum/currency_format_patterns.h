/*
 * `CurrencyFormatPatterns`: where the sign and the symbol stand around a number, POSIX style. A
 * pattern is chosen by the three selectors of a `NumberConventions` record (cs_precedes,
 * sep_by_space, sign_posn) for a negative or a non-negative value.
 *
 *   const wchar* p = pattern_for(1, 1, 0);   // "($ V)": symbol first, a blank, parentheses
 *
 * Letters: "V" the number, "$" the currency symbol, "-" the sign text, "(" and ")" written only
 * for a negative value, a blank as it stands; anything else is skipped.
 */
#pragma once

#include <cstdint>

#include "frame/abi.h"

namespace vxlocfmt::nlnum {

// Indexed by (cs_precedes + 2 x sep_by_space) x 5 + sign_posn.
inline constexpr const wchar* CurrencyFormatPatterns[20] = {
    U"(V$)",  U"-V$",  U"V$-",  U"V-$",  U"V$-",   // cs_precedes 0, sep_by_space 0
    U"($V)",  U"-$V",  U"$V-",  U"-$V",  U"$-V",   // 1, 0
    U"(V $)", U"-V $", U"V $-", U"V- $", U"V $-",  // 0, 1
    U"($ V)", U"-$ V", U"$ V-", U"-$ V", U"$ -V",  // 1, 1
};

// The pattern of three selectors. Selectors outside 0-1, 0-1 and 0-4 (locale data that does not
// keep them in range) get "-V$", the sign before the number and the symbol after it.
constexpr const wchar* pattern_for(std::int32_t cs_precedes, std::int32_t sep_by_space, std::int32_t sign_posn) {
    if (cs_precedes < 0 || cs_precedes > 1 || sep_by_space < 0 || sep_by_space > 1 || sign_posn < 0 || sign_posn > 4)
        return CurrencyFormatPatterns[1];
    return CurrencyFormatPatterns[(cs_precedes + 2 * sep_by_space) * 5 + sign_posn];
}

}  // namespace vxlocfmt::nlnum
