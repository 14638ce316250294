#include "calendar/day_count.h"

#include <initializer_list>

#include "calendar/missing_value.h"

namespace vxlocfmt::calendar {

namespace {
// Arguments beyond this (NaN included) are refused: the serial arithmetic stays in 64 bits.
constexpr double argument_limit = 1e9;

constexpr bool leap_by_4_100_400(std::int64_t y) {
    return y % 4 == 0 && (y % 100 != 0 || y % 400 == 0);
}

// Years from the first date to the second, the second not earlier than the first.
double years_between(std::int64_t from_serial, std::int64_t from_year, std::int64_t to_serial,
                     std::int64_t to_year) {
    const auto year_days = [](std::int64_t y) { return leap_by_4_100_400(y) ? 366.0 : 365.0; };
    if (from_year == to_year)
        return static_cast<double>(to_serial - from_serial) / year_days(from_year);
    const auto head = serial_day(from_year + 1, 1, 1) - from_serial;  // days left in from_year
    const auto tail = to_serial - serial_day(to_year, 1, 1);          // days into to_year
    return static_cast<double>(head) / year_days(from_year) +
           static_cast<double>(to_year - from_year - 1) +
           static_cast<double>(tail) / year_days(to_year);
}
}  // namespace

double diff_actact(double m1, double d1, double y1, double m2, double d2, double y2, double* days,
                   double* years) {
    for (const double v : {m1, d1, y1, m2, d2, y2}) {
        if (!(v >= -argument_limit && v <= argument_limit)) {
            *days = *years = missing_value();
            return missing_value();
        }
    }
    const auto year1 = static_cast<std::int64_t>(y1);
    const auto year2 = static_cast<std::int64_t>(y2);
    const std::int64_t s1 =
        serial_day(year1, static_cast<std::int64_t>(m1), static_cast<std::int64_t>(d1));
    const std::int64_t s2 =
        serial_day(year2, static_cast<std::int64_t>(m2), static_cast<std::int64_t>(d2));
    const auto whole = static_cast<double>(s2 - s1);
    *days = whole;
    *years = s2 >= s1 ? years_between(s1, year1, s2, year2) : -years_between(s2, year2, s1, year1);
    return whole;
}

}  // namespace vxlocfmt::calendar

