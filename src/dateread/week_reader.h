/*
 * zkpweek: a year-week-day text ("2024-W01-03", "2024W0103", "24W01") to a day number by one
 * of the week-numbering rules U, V and W, the reverse of the week formats.
 *
 *   double cell = 1950;                                        // the year cut-off, in
 *   std::int32_t code = dateread::zkpweek(U"2024-W01-03", U'V', 1, &cell);   // 0; cell = 23378
 */
#pragma once

#include <cstdint>
#include <string_view>

#include "frame/abi.h"

namespace vxlocfmt::dateread {

// ---- Interface ----------------------------------------------------------------------------

inline constexpr std::int32_t week_read = 0;
inline constexpr std::int32_t week_out_of_limits = 1;  // year, week, day or the result out of range
inline constexpr std::int32_t week_not_digits = -1;    // no "W", no year or week, or a stray character

// The text splits at its first "W" (or "w"): the year before it (blanks and "-" skipped; one or
// two digits are placed by the cut-off year read from *cell), one or two week digits after it
// (blanks before them skipped),
// then an optional day of the week (blanks and "-" skipped before it; 1 when absent). Limits:
// a year of 100 or more outside 1582 to 20000, a week above 53, a day above 31 (deliberately
// not 7). On 0 the day number replaces the cut-off in *cell; otherwise *cell is untouched.
// `count` is not read.
std::int32_t zkpweek(std::u32string_view text, wchar rule, std::int32_t count, double* cell);

}  // namespace vxlocfmt::dateread
