/*
 * One attempt of the locale number renderer: the kernel's plain text ("-1234567.89", "1.5E+20")
 * rebuilt in a locale's style: separators between groups, the locale's decimal point, then the
 * sign, the symbol and the blanks of the value's pattern. What persists from one attempt to the
 * next (is grouping still wanted, did it happen) lives in `StyleState`.
 *
 *   StyleState state;  wchar out[styled_cells];
 *   std::int32_t m = style_number(U"-1234567.89", 2, -1234567.891, 1, conventions, state, out);
 *   // m == 13, out holds "-1,234,567.89"
 */
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "frame/abi.h"
#include "locale/property_table.h"

namespace vxlocfmt::nlnum {

// ---- Interface ----------------------------------------------------------------------------

// The longest plain text styled: the renderer's widest field. A longer one counts as too wide.
inline constexpr std::size_t plain_cells_max = 32;
// Room for the styled text: the number (every digit followed by a two-character separator, the
// point of two), a symbol of 50, a sign of 2, the pattern's 3 other characters and the blank
// after a positive amount in a parenthesis locale.
inline constexpr std::size_t styled_cells = 3 * plain_cells_max + 2 + 50 + 2 + 3 + 1;

struct StyleState {
    bool grouping_wanted = true;
    bool grouping_done = false;
    bool long_point_with_exponent = false;  // "E" notation with a two-character point
};

inline constexpr std::int32_t style_too_long = -1;  // more than plain_cells_max characters
inline constexpr std::int32_t style_starred = -2;   // the plain text holds a "*"

// Writes the styled text of `plain` (the kernel's text, no blanks around it) into `out`
// (styled_cells cells), leading and trailing blanks removed, and answers its length; or one of
// the two refusals above, with nothing written. `value` picks the pattern (below
// zero: the n_ selectors and the negative sign; otherwise the p_ ones) and, strictly above zero
// in a locale that shows negatives in parentheses, earns the trailing blank. `point_length` is
// the decimal point's length in the output encoding.
std::int32_t style_number(std::u32string_view plain, std::int32_t decimals, double value, std::int32_t point_length,
                          const NumberConventions& conventions, StyleState& state, wchar* out);

// Characters of a two-cell field (decimal point, separator, signs): its non-zero cells.
constexpr std::size_t cells_used(const wchar (&field)[2]);

// ---- Implementation -----------------------------------------------------------------------

constexpr std::size_t cells_used(const wchar (&field)[2]) {
    return static_cast<std::size_t>(field[0] != 0) + static_cast<std::size_t>(field[1] != 0);
}

}  // namespace vxlocfmt::nlnum
