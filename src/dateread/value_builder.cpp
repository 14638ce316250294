// From slots to a date, a time or a datetime.
#include "dateread/value_builder.h"

#include <cmath>

#include "calendar/date_conversions.h"
#include "calendar/missing_value.h"
#include "frame/reporting.h"

namespace vxlocfmt::dateread {
namespace {

constexpr bool has(std::int64_t v) { return v != absent; }
constexpr double as_double(std::int64_t v) { return static_cast<double>(v); }

}  // namespace

double date_of(const read_slots& s) {
    const std::int64_t y = s.field[year];
    if (!has(y)) return calendar::missing_value();
    if (has(s.field[day_of_year])) {
        const std::int64_t j = s.field[day_of_year];
        // A day of year of 0 or past the year's end is refused, as the Julian conversion does.
        if (j < 1 || j > 366 || y > calendar::last_year) return calendar::missing_value();
        return calendar::day_from_julian(as_double(y * 1000 + j));
    }
    std::int64_t m = s.field[month];
    if (has(s.field[quarter])) m = 3 * s.field[quarter] - 2;
    if (!has(m)) return calendar::missing_value();
    const std::int64_t d = has(s.field[day]) ? s.field[day] : 1;
    return calendar::zmdy(as_double(m), as_double(d), as_double(y));
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
