#include "calendar/date_conversions.h"

#include <cmath>

#include "calendar/missing_value.h"
#include "calendar/year_cutoff.h"

namespace vxlocfmt::calendar {

namespace {
constexpr std::int64_t two_digit_year_end = 100;
constexpr std::int64_t max_day_of_year = 366;
}  // namespace

std::optional<ordinal_date> ordinal_from_julian(double julian) {
    if (!(julian > 0) || julian > last_julian) return std::nullopt;  // NaN fails the first test
    const auto whole = static_cast<std::int64_t>(julian);            // [0, 20000365]
    std::int64_t year = whole / 1000;                                 // [0, 20000]
    const std::int64_t day_of_year = whole - 1000 * year;             // [0, 999]
    if (year >= two_digit_year_end && year < first_year) return std::nullopt;
    if (day_of_year > max_day_of_year) return std::nullopt;
    if (year < two_digit_year_end) year = place_two_digit_year(year);
    if (day_of_year > 365 + (is_leap_year(year) ? 1 : 0)) return std::nullopt;
    return ordinal_date{year, static_cast<std::int32_t>(day_of_year)};
}

double day_from_julian(double julian) {
    const auto o = ordinal_from_julian(julian);
    if (!o) return missing_value();
    return static_cast<double>(day_from_ordinal(o->year, o->day_of_year));
}

double julian_from_day(double day) {
    if (is_nan(day)) return day;
    if (!in_day_range(day)) return missing_value();
    const ordinal_date o = ordinal_from_day(static_cast<std::int64_t>(std::floor(day)));
    return static_cast<double>(1000 * o.year + o.day_of_year);
}

void civil_from_julian(double julian, double* year, double* month, double* day) {
    const auto o = ordinal_from_julian(julian);
    if (!o) {
        *year = *month = *day = missing_value();
        return;
    }
    const civil_date c = civil_from_ordinal(o->year, o->day_of_year);
    *year = static_cast<double>(c.year);
    *month = c.month;
    *day = c.day;
}

double julian_from_civil(double year, double month, double day) {
    // Written as negated acceptances so that a NaN anywhere is refused.
    if (!(month >= 1 && month <= 12 && day >= 1 && day <= 31 && year >= 0)) return missing_value();
    if (year > 99 && !(year >= first_year && year <= last_year)) return missing_value();
    std::int64_t y = static_cast<std::int64_t>(year);  // [0, 99] or [1582, 20000]
    const auto m = static_cast<std::int32_t>(month);    // [1, 12]
    const auto d = static_cast<std::int32_t>(day);      // [1, 31]
    if (y < two_digit_year_end) y = place_two_digit_year(y);
    if (d > month_length(y, m)) return missing_value();
    return static_cast<double>(d + 1000 * y + days_before_month(y, m));
}

double zmdy(double month, double day, double year) {
    return day_from_julian(julian_from_civil(year, month, day));  // NaN in, missing out
}

std::int32_t zfmcymd(double* year, double* month, double* day, double day_number) {
    *year = *month = *day = missing_value();
    // By way of the Julian date this is civil_from_julian(julian_from_day(day_number)): every
    // day of the range gives the date fields_from_day gives (tested day by day), the rest missing.
    if (!in_day_range(day_number)) return -1;  // NaN included
    const date_fields f = fields_from_day(whole_day(day_number));
    *year = static_cast<double>(f.year);
    *month = f.month;
    *day = f.day;
    return 1;
}

std::int32_t getMonthDayYear(std::int32_t* month, std::int32_t* day, std::int32_t* year,
                             double day_number) {
    double y = 0, m = 0, d = 0;
    if (zfmcymd(&y, &m, &d, day_number) != 1) {
        *month = *day = *year = 0;
        return 0;
    }
    *month = static_cast<std::int32_t>(m);
    *day = static_cast<std::int32_t>(d);
    *year = static_cast<std::int32_t>(y);
    return *month;
}

double zwekday(double day_number) {
    if (!in_day_range(day_number)) return missing_value();
    return weekday_in_range(day_number);
}

}  // namespace vxlocfmt::calendar
