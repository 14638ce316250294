/*
 * Numeric fields of a template row: exactly `count` digits, or every digit that follows
 * (`readdigs`: the first 19 count), and the fraction of a second after "%S". Shared by the
 * walk over a pattern text and by the compiled programs, so both read numbers alike.
 *
 *   std::size_t t = 0; std::int64_t v;
 *   read_number(U"2020-03", t, 0, v);   // true, v 2020, t 4
 */
#pragma once

#include <algorithm>
#include <cstdint>
#include <string_view>

#include "dateread/row_reader.h"

namespace vxlocfmt::dateread::detail {

constexpr bool is_digit(wchar c) { return c >= U'0' && c <= U'9'; }

// Slot values are kept well inside int64 so that the value arithmetic cannot overflow.
inline constexpr std::int64_t slot_ceiling = 1'000'000'000'000'000;  // 1e15

// 10^0 to 10^19, the divisors of a fraction of k digits (`zpowten`).
inline constexpr double zpowten[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,
                                     1e10, 1e11, 1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19};

// `readdigs`, inline: the digits at text[pos], pos advanced past all of them.
inline bool read_digits(std::u32string_view text, std::size_t& pos, digit_run& run) {
    run = {0, 0};
    while (pos < text.size() && is_digit(text[pos])) {
        if (run.count < 19) {
            run.value = run.value * 10 + static_cast<std::uint64_t>(text[pos] - U'0');
            ++run.count;
        }
        ++pos;
    }
    return run.count > 0;
}

// Exactly `count` digits at text[pos].
inline bool read_fixed(std::u32string_view text, std::size_t& pos, int count, std::int64_t& value) {
    if (text.size() - pos < static_cast<std::size_t>(count)) return false;
    std::int64_t v = 0;
    for (int k = 0; k < count; ++k) {
        const wchar c = text[pos + static_cast<std::size_t>(k)];
        if (!is_digit(c)) return false;
        v = v * 10 + (c - U'0');
    }
    pos += static_cast<std::size_t>(count);
    value = v;
    return true;
}

// `fixed` digits, or (0) every digit that follows.
inline bool read_number(std::u32string_view text, std::size_t& pos, int fixed, std::int64_t& value) {
    if (fixed > 0) return read_fixed(text, pos, fixed, value);
    digit_run run;
    if (!read_digits(text, pos, run)) return false;
    value = static_cast<std::int64_t>(std::min<std::uint64_t>(run.value, slot_ceiling));
    return true;
}

// After a seconds field: ".digits" (a point and at least one digit) is a fraction of a second.
inline void read_fraction(std::u32string_view text, std::size_t& pos, double& fraction) {
    if (text.size() - pos >= 2 && text[pos] == U'.' && is_digit(text[pos + 1])) {
        ++pos;
        digit_run run;
        read_digits(text, pos, run);
        fraction = static_cast<double>(run.value) / zpowten[run.count];
    }
}

}  // namespace vxlocfmt::dateread::detail
