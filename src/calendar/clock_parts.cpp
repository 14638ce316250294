#include "calendar/clock_parts.h"

#include <cmath>

#include "calendar/day_number.h"
#include "calendar/missing_value.h"

// The hour and the minute and second reach "seconds into the day" by two different routes for
// negative values (add a day to a negative remainder; or a day minus the remainder's magnitude
// whenever the value is negative). Deliberate: the two routes are kept as the host has them.
// Every remainder is fmod_by_whole: std::fmod's answers, without its cost.

namespace vxlocfmt::calendar {

namespace {
constexpr double day_seconds = static_cast<double>(seconds_per_day);
constexpr std::int64_t hour_seconds = 3600;
constexpr std::int64_t minute_seconds = 60;

// Seconds into the day for the minute and the second: [0, 86400].
double minute_route(double x) {
    const double r = fmod_by_whole(x, seconds_per_day);
    return x < 0 ? day_seconds - std::fabs(r) : r;
}
}  // namespace

double clock_hour(double x) {
    if (!in_datetime_range(x)) return missing_value();
    double r = fmod_by_whole(x, seconds_per_day);
    if (r < 0) r += day_seconds;
    // A negative remainder so small that adding a day rounds to 86400 itself: that instant is
    // midnight, as minute and second also say; keeps the hour in 0..23.
    if (r >= day_seconds) r = 0;
    return std::trunc(std::fabs(r / hour_seconds));
}

double clock_minute(double x) {
    if (!in_datetime_range(x)) return missing_value();
    return std::trunc(std::trunc(fmod_by_whole(minute_route(x), hour_seconds)) / minute_seconds);
}

double clock_second(double x) {
    if (!in_datetime_range(x)) return missing_value();
    return fmod_by_whole(minute_route(x), minute_seconds);
}

datetime_parts split_datetime(double x) {
    const auto whole = static_cast<std::int64_t>(x);  // |x| < 2^40 in the range
    // Fractions, and -0 (whose minute and second come out as -0), take the four functions.
    if (static_cast<double>(whole) != x || (whole == 0 && std::signbit(x)))
        return {date_part(x), clock_hour(x), clock_minute(x), clock_second(x)};
    // Both routes to the seconds into the day give floor_mod for a whole value: the hour's adds
    // a day to a negative remainder, the minute's takes a day less its magnitude, which is
    // 86400 only for a negative multiple of a day, whose minute and second are 0 either way.
    // And (x + 11928470400) / 86400 is far enough from the next whole number not to round up.
    const std::int64_t into_day = floor_mod(whole, seconds_per_day);  // [0, 86399]
    return {static_cast<double>(floor_div(whole, seconds_per_day)), static_cast<double>(into_day / 3600),
            static_cast<double>(into_day % 3600 / 60), static_cast<double>(into_day % 60)};
}

double date_part(double x) {
    if (is_nan(x)) return x;
    if (!in_datetime_range(x)) return missing_value();
    return std::trunc((x - first_datetime) / day_seconds) + static_cast<double>(first_day);
}

double time_part(double x) {
    if (!in_datetime_range(x)) return missing_value();
    return fmod_by_whole(x <= 0 ? x - first_datetime : x, seconds_per_day);
}

}  // namespace vxlocfmt::calendar
