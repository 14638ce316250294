/*
 * Clock parts of a datetime (seconds from 1960-01-01T00:00:00) or a time (seconds since
 * midnight): hour, minute, second, and the date and time parts of a datetime. Each refuses a
 * value outside the datetime range, NaN included, with the missing value.
 *
 *   double h = calendar::clock_hour(-1);     // 23: one second before day 0
 *   double d = calendar::date_part(-1);      // -1, and time_part(-1) is 86399
 */
#pragma once

#include <cmath>
#include <cstdint>

namespace vxlocfmt::calendar {

// ---- Interface ----------------------------------------------------------------------------

// Hour 0..23 of the day; a time past one day wraps (30 hours gives 6).
double clock_hour(double x);
// Minute 0..59.
double clock_minute(double x);
// Seconds within the minute, [0, 60), fraction kept.
double clock_second(double x);
// Day number of the datetime's date. A NaN comes back unchanged.
double date_part(double x);
// Seconds since midnight of the datetime's day, [0, 86400).
double time_part(double x);

// A datetime's date and clock parts, as date_part, clock_hour, clock_minute and clock_second
// answer them.
struct datetime_parts {
    double date;
    double hour;    // [0, 23]
    double minute;  // [0, 59]
    double second;  // [0, 60), fraction kept
};
// The four parts of a datetime in the range at once. A whole number of seconds, what datetimes
// nearly always hold, takes one integer division by 86400 and its remainder by 3600 and 60
// (exact there, and the same values: tested); any other value takes the four functions.
datetime_parts split_datetime(double x);

// std::fmod(x, divisor) for a whole divisor in [1, 2^31), bit for bit (sign of x, zeros
// included), without the library's bit-by-bit reduction, which costs about 35 ns on a datetime.
inline double fmod_by_whole(double x, std::int64_t divisor);

// ---- Implementation -----------------------------------------------------------------------

inline double fmod_by_whole(double x, std::int64_t divisor) {
    constexpr double exact_below = 9007199254740992.0;  // 2^53: every whole number below is a double
    const double a = std::fabs(x);
    if (!(a < exact_below)) return std::fmod(x, static_cast<double>(divisor));  // NaN, infinities
    const auto whole = static_cast<std::int64_t>(a);  // trunc, exact
    // a - whole is exact (a < 1, or whole <= a < 2 * whole). fmod's answer is exactly
    // representable and equals (whole mod divisor) + (a - whole), so the sum rounds to it.
    const double fraction = a - static_cast<double>(whole);
    return std::copysign(static_cast<double>(whole % divisor) + fraction, x);
}

}  // namespace vxlocfmt::calendar
