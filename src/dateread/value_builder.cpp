// From slots to a date, a time or a datetime.
#include "dateread/value_builder.h"

#include <cmath>

#include "calendar/date_conversions.h"
#include "calendar/day_number.h"
#include "calendar/year_cutoff.h"
#include "calendar/missing_value.h"
#include "frame/reporting.h"

namespace vxlocfmt::dateread {
namespace {

constexpr bool has(std::int64_t v) { return v != absent; }
constexpr double as_double(std::int64_t v) { return static_cast<double>(v); }

// The year the calendar means: 0 to 99 through the cut-off, 1582 to 20000 as they stand, others
// refused (-1): the refusals of the Julian conversions, in integers.
std::int64_t calendar_year(std::int64_t y) {
    if (y >= 0 && y <= 99) return calendar::place_two_digit_year(y);
    return y >= calendar::first_year && y <= calendar::last_year ? y : -1;
}

// Days before each month of a common year (and the year's length); a leap year adds one from
// March on.
constexpr std::int32_t days_before_common_month[13] = {0, 31, 59, 90, 120, 151, 181, 212, 243, 273, 304, 334, 365};
static_assert(days_before_common_month[11] == calendar::days_before_month(1961, 12));

// The calendar's leap rule (4000-year exception included) in 32-bit unsigned arithmetic, for
// the years of the range.
constexpr bool is_leap(std::int64_t year) {
    const auto y = static_cast<std::uint32_t>(year);  // [1582, 20000]
    return y % 4 == 0 && (y % 100 != 0 || y % 400 == 0) && y % 4000 != 0;
}
static_assert(is_leap(2000) && !is_leap(4000) && !is_leap(1900) && is_leap(1584) && !is_leap(1583));

// day_from_ordinal for the calendar's years ([1582, 20000]), where every quotient is positive
// and the divisions need no floor correction.
constexpr std::int64_t day_of(std::int64_t year, std::int64_t day_of_year) {
    const auto p = static_cast<std::uint32_t>(year - 1);  // [1581, 19999]
    const auto leap_days = static_cast<std::int64_t>(p / 4 - p / 100 + p / 400 - p / 4000);
    return 365 * year + leap_days + day_of_year - calendar::day_count_of_epoch;
}
static_assert(day_of(1582, 1) == calendar::day_from_ordinal(1582, 1) && day_of(20000, 366) == calendar::day_from_ordinal(20000, 366));
static_assert(day_of(1960, 1) == 0 && day_of(4001, 1) == calendar::day_from_ordinal(4001, 1));

// The day number counted from 1 March, where the leap day ends the year and needs no test: the
// years of January and February are the year before's.
constexpr std::int64_t day_from_march(std::int64_t year, std::uint32_t month, std::uint32_t day) {
    const auto y = static_cast<std::uint32_t>(year) - (month <= 2 ? 1 : 0);  // [1581, 20000]
    const std::uint32_t leap_days = y / 4 - y / 100 + y / 400 - y / 4000;
    const std::uint32_t day_of_march_year = (153 * (month > 2 ? month - 3 : month + 9) + 2) / 5 + day - 1;
    return static_cast<std::int64_t>(365 * y + leap_days + day_of_march_year) - (calendar::day_count_of_epoch - 60);
}
static_assert(day_from_march(1960, 1, 1) == 0 && day_from_march(1582, 1, 1) == day_of(1582, 1) &&
              day_from_march(4000, 3, 1) == day_of(4000, 60) && day_from_march(2000, 3, 1) == day_of(2000, 61) &&
              day_from_march(20000, 12, 31) == day_of(20000, 365) && day_from_march(1900, 2, 28) == day_of(1900, 59));

}  // namespace

double day_number_of(std::int64_t y, std::int64_t m, std::int64_t d) {
    // zmdy's answer without its round trip through a Julian date.
    if (m < 1 || m > 12 || d < 1 || d > 31) return calendar::missing_value();
    const std::int64_t cy = calendar_year(y);
    if (cy < 0) return calendar::missing_value();
    const auto month_number = static_cast<std::uint32_t>(m);
    const auto day_number = static_cast<std::uint32_t>(d);
    // Only a day past the 28th can be past its month's end: the leap rule is asked for 29 February alone.
    if (day_number > 28) {
        const std::int32_t length = month_number == 2 ? 28 + is_leap(cy) : days_before_common_month[month_number] - days_before_common_month[month_number - 1];
        if (static_cast<std::int32_t>(day_number) > length) return calendar::missing_value();
    }
    return as_double(day_from_march(cy, month_number, day_number));
}

double date_of(const read_slots& s) {
    const std::int64_t y = s.field[year];
    if (!has(y)) return calendar::missing_value();
    if (has(s.field[day_of_year])) {
        const std::int64_t j = s.field[day_of_year];
        // A day of year of 0 or past the year's end is refused, as the Julian conversion does.
        const std::int64_t cy = calendar_year(y);
        if (cy < 0 || j < 1 || j > 365 + (is_leap(cy) ? 1 : 0)) return calendar::missing_value();
        return as_double(day_of(cy, j));
    }
    std::int64_t m = s.field[month];
    if (has(s.field[quarter])) m = 3 * s.field[quarter] - 2;
    if (!has(m)) return calendar::missing_value();
    return day_number_of(y, m, has(s.field[day]) ? s.field[day] : 1);
}

double time_of(const read_slots& s, bool local_zone) {
    const std::int64_t h = s.field[hour], mi = s.field[minute], se = s.field[second];
    if (!has(h) && !has(mi) && !has(se)) return calendar::missing_value();
    double hours = has(h) ? as_double(h) : 0;
    if (s.am_pm == U'P' && hours < 12) hours += 12;
    else if (s.am_pm == U'A' && hours == 12) hours = 0;
    double t = hours * 3600 + (has(mi) ? as_double(mi) : 0) * 60 + (has(se) ? as_double(se) : 0) + s.fraction;
    t -= (as_double(s.zone_hour) * 3600 + as_double(s.zone_minute) * 60) * s.zone_sign;
    if (local_zone) {
        double offset = 0;  // east of UTC, from the kernel's clock service
        vxzdtgmt(&offset);
        t += offset;
    }
    return t;
}

double build_value(const read_slots& s, value_kind kind, bool local_zone, std::int32_t& status) {
    switch (kind) {
    case value_kind::date:
        status = status_date;
        return date_of(s);
    case value_kind::time:
        status = status_time;
        return time_of(s, local_zone);
    case value_kind::datetime: {
        const double date = date_of(s);
        const double time = time_of(s, local_zone);
        if (calendar::is_nan(date) || calendar::is_nan(time)) return calendar::missing_value();
        status = status_datetime;
        return std::fma(date, 86400.0, time);
    }
    }
    return calendar::missing_value();
}

}  // namespace vxlocfmt::dateread
