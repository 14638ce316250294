/*
 * Conversions between day numbers, Julian dates (year * 1000 + day of year) and calendar dates,
 * over the doubles the formats hold. Each refuses what is outside the calendar and answers the
 * missing value instead; a year of 0 to 99 goes through the year cut-off.
 *
 *   double day = calendar::zmdy(2, 29, 2000);                 // 14669
 *   double y, m, d; calendar::zfmcymd(&y, &m, &d, day);        // 2000, 2, 29; answers 1
 */
#pragma once

#include <cstdint>
#include <optional>

#include "calendar/day_number.h"

namespace vxlocfmt::calendar {

// Largest Julian date: 20000-12-31.
inline constexpr double last_julian = 20000365;

// The refusals shared by the Julian readers: NaN, j <= 0, j > 20000365, years 100 to 1581, a day
// of year above 366, and after the cut-off a day of year past the year's end. A fractional
// Julian date is truncated. Day of year 0 is let through (it reads as the last day of the
// year before).
std::optional<ordinal_date> ordinal_from_julian(double julian);

// vxfmtzdatjul: Julian date to day number.
double day_from_julian(double julian);
// vxfmtzjuldat: day number to Julian date; a NaN comes back unchanged.
double julian_from_day(double day);
// vxfmtzymdjul: Julian date to year, month, day; all three missing on failure.
void civil_from_julian(double julian, double* year, double* month, double* day);
// vxfmtzjulymd: year, month, day to Julian date. Year 0 to 99 or 1582 to 20000.
double julian_from_civil(double year, double month, double day);

// Month, day, year (in that order) to day number, or missing.
double zmdy(double month, double day, double year);
// Day number to year, month, day (preset to missing). Answers 1, or -1 when any is missing.
std::int32_t zfmcymd(double* year, double* month, double* day, double day_number);
// Day number to whole month, day and year (in that order); answers the month. On failure all
// three are 0 and the answer is 0.
std::int32_t getMonthDayYear(std::int32_t* month, std::int32_t* day, std::int32_t* year,
                             double day_number);
// Weekday 1 (Sunday) to 7 (Saturday) of a day number in range, or missing. The sum with 138052
// is truncated; see weekday_of for the nine earliest days.
double zwekday(double day_number);
// zwekday's answer for a day number already known to lie in the range, as a whole number.
inline std::int32_t weekday_in_range(double day_number);

// The whole day of a day number in the range: std::floor, without the library call.
constexpr std::int64_t whole_day(double day_number);

// ---- Implementation -----------------------------------------------------------------------

inline std::int32_t weekday_in_range(double day_number) {
    // The shifted sum is truncated, not the day: a fractional day from -138052 on counts as the
    // whole day before it.
    const auto shifted = static_cast<std::int64_t>(day_number + weekday_shift);  // [-9, 6727388)
    return weekday_of(shifted - weekday_shift);
}

constexpr std::int64_t whole_day(double day_number) {
    const auto t = static_cast<std::int64_t>(day_number);  // truncated: one too many below 0
    return t - (static_cast<double>(t) > day_number ? 1 : 0);
}
static_assert(whole_day(-0.5) == -1 && whole_day(-1) == -1 && whole_day(2.5) == 2 && whole_day(-138061) == first_day);

}  // namespace vxlocfmt::calendar
