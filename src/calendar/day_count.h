/*
 * Actual/actual day counting between two calendar dates: the whole days from the first to the
 * second and the fraction of years between them. Leap years here follow the rules of 4, 100 and
 * 400 only (no 4000-year exception), as in the classic serial-day formula.
 *
 *   double days = 0, years = 0;
 *   calendar::diff_actact(1, 1, 2024, 3, 1, 2024, &days, &years);   // days 60
 */
#pragma once

#include <cstdint>

namespace vxlocfmt::calendar {

// ---- Interface ----------------------------------------------------------------------------

// Serial day of a date by the classic formula: January and February count in the year before,
// later months use the month term floor(0.4 * m + 2.3). Only differences are meaningful.
constexpr std::int64_t serial_day(std::int64_t year, std::int64_t month, std::int64_t day);

// Writes the days from (m1, d1, y1) to (m2, d2, y2), negative when the second is earlier, and the
// years between them by the ISDA actual/actual rule (each calendar year's share over its own
// length, 365 or 366). Answers the days. Arguments are truncated to whole numbers; one that is
// NaN or beyond 1e9 in magnitude makes both outputs and the answer missing.
double diff_actact(double m1, double d1, double y1, double m2, double d2, double y2, double* days,
                   double* years);

// ---- Implementation -----------------------------------------------------------------------

constexpr std::int64_t serial_day(std::int64_t year, std::int64_t month, std::int64_t day) {
    const auto leap_days = [](std::int64_t y) {  // leap years in [1, y] for y >= 0
        return y / 4 - y / 100 + y / 400;
    };
    std::int64_t count = 365 * year + 31 * (month - 1) + day;
    if (month <= 2) return count + leap_days(year - 1);
    // floor(0.4 * m + 2.3) in integers; exact, for month in [3, 12] it is [3, 7].
    return count + leap_days(year) - (4 * month + 23) / 10;
}

static_assert(serial_day(2023, 3, 1) - serial_day(2023, 2, 28) == 1);
static_assert(serial_day(2024, 3, 1) - serial_day(2024, 2, 28) == 2);
static_assert(serial_day(2023, 12, 31) - serial_day(2023, 1, 1) == 364);
static_assert(serial_day(2000, 12, 31) - serial_day(2000, 1, 1) == 365);

}  // namespace vxlocfmt::calendar
