/*
 * Day numbers and the calendar they count. Day 0 is 1960-01-01; the range runs from -138061
 * (1582-01-01) to 6589335 (20000-12-31). The calendar is proleptic Gregorian except that a year
 * divisible by 4000 is never a leap year. Everything here is constexpr over whole numbers; the
 * double-level conversions that refuse bad input live in date_conversions.h.
 *
 *   constexpr auto o = calendar::ordinal_from_day(0);          // {1960, 1}
 *   static_assert(calendar::day_from_ordinal(1960, 1) == 0);
 */
#pragma once

#include <array>
#include <cstdint>

namespace vxlocfmt::calendar {

// ---- Interface ----------------------------------------------------------------------------

inline constexpr std::int64_t first_day = -138061;  // 1582-01-01
inline constexpr std::int64_t end_day = 6589336;    // 20001-01-01, the first day past the range
inline constexpr std::int64_t first_year = 1582;
inline constexpr std::int64_t last_year = 20000;
inline constexpr std::int64_t seconds_per_day = 86400;
// Datetimes share the range: [first_day, end_day) times 86400 seconds.
inline constexpr double first_datetime = -11928470400.0;
inline constexpr double end_datetime = 569318630400.0;
static_assert(first_datetime == first_day * seconds_per_day);
static_assert(end_datetime == end_day * seconds_per_day);

// A year and its day of year, the shape of a Julian date yyyyddd.
struct ordinal_date {
    std::int64_t year;
    std::int32_t day_of_year;  // [1, 366] for a valid date
};

struct civil_date {
    std::int64_t year;
    std::int32_t month;  // [1, 12]
    std::int32_t day;    // [1, 31] for a valid date
};

constexpr std::int64_t floor_div(std::int64_t a, std::int64_t b);  // b > 0
constexpr std::int64_t floor_mod(std::int64_t a, std::int64_t b);  // b > 0; [0, b)

// A value (fraction allowed) inside the day-number or the datetime range; NaN is outside.
constexpr bool in_day_range(double day);
constexpr bool in_datetime_range(double datetime);

// The calendar's leap rule: by 4, not by 100 unless by 400, never by 4000.
constexpr bool is_leap_year(std::int64_t year);
// The plain Gregorian rule without the 4000-year exception (used by ISO week numbering).
constexpr bool is_gregorian_leap_year(std::int64_t year);

// Days in a month, February from the leap rule. month in [1, 12].
constexpr std::int32_t month_length(std::int64_t year, std::int32_t month);
// Days of the months before `month` in `year`: [0, 335].
constexpr std::int32_t days_before_month(std::int64_t year, std::int32_t month);

// The day count of 0 January of `year`; counting from there, 1 January 1960 is day_count_of_epoch.
constexpr std::int64_t days_before_year(std::int64_t year);
inline constexpr std::int64_t day_count_of_epoch = 715875;

// Day number of day `day_of_year` of `year`. Day of year 0 is the last day of the year before.
constexpr std::int64_t day_from_ordinal(std::int64_t year, std::int64_t day_of_year);
// Year and day of year of a day number in [first_day, end_day).
constexpr ordinal_date ordinal_from_day(std::int64_t day);
// Month and day from a day of year, walking the months from January and stopping at December.
constexpr civil_date civil_from_ordinal(std::int64_t year, std::int32_t day_of_year);

// Weekday 1 (Sunday) to 7 (Saturday) of a whole day number in [first_day, end_day).
constexpr std::int32_t weekday_of(std::int64_t day);
// The shift that makes day numbers from -138052 on non-negative, and a multiple of 7 a Sunday.
inline constexpr std::int64_t weekday_shift = 138052;

// ---- Implementation -----------------------------------------------------------------------

constexpr std::int64_t floor_div(std::int64_t a, std::int64_t b) {
    return a / b - (a % b < 0 ? 1 : 0);
}

constexpr std::int64_t floor_mod(std::int64_t a, std::int64_t b) { return a - floor_div(a, b) * b; }

constexpr bool in_day_range(double day) {
    return day >= static_cast<double>(first_day) && day < static_cast<double>(end_day);
}

constexpr bool in_datetime_range(double datetime) {
    return datetime >= first_datetime && datetime < end_datetime;
}

constexpr bool is_gregorian_leap_year(std::int64_t year) {
    return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
}

constexpr bool is_leap_year(std::int64_t year) {
    return is_gregorian_leap_year(year) && year % 4000 != 0;
}

namespace detail {
// January first; February is stored as 0 and is always 28 plus the leap flag.
inline constexpr std::array<std::int32_t, 12> days_per_month = {31, 0,  31, 30, 31, 30,
                                                                31, 31, 30, 31, 30, 31};
}  // namespace detail

constexpr std::int32_t month_length(std::int64_t year, std::int32_t month) {
    return month == 2 ? 28 + (is_leap_year(year) ? 1 : 0) : detail::days_per_month[month - 1];
}

constexpr std::int32_t days_before_month(std::int64_t year, std::int32_t month) {
    std::int32_t days = 0;
    for (std::int32_t m = 1; m < month; ++m) days += month_length(year, m);
    return days;
}

constexpr std::int64_t days_before_year(std::int64_t year) {
    const std::int64_t p = year - 1;
    return 365 * year + floor_div(p, 4) - floor_div(p, 100) + floor_div(p, 400) - floor_div(p, 4000);
}
static_assert(days_before_year(1960) + 1 == day_count_of_epoch);

constexpr std::int64_t day_from_ordinal(std::int64_t year, std::int64_t day_of_year) {
    return days_before_year(year) + day_of_year - day_count_of_epoch;
}

constexpr ordinal_date ordinal_from_day(std::int64_t day) {
    // n in [577814, 7305211); positive, so the divisions below are floors. The divisors are the
    // mean year (365.25) times 4, 100, 400 and 4000: they undo the leap terms of days_before_year
    // closely enough that e / 365 is the year itself (checked for every day of the range).
    const std::int64_t n = day + day_count_of_epoch;
    const std::int64_t e = n - n / 1461 + n / 36525 - n / 146100 + n / 1461000 - 1;
    const std::int64_t year = e / 365;
    return {year, static_cast<std::int32_t>(n - days_before_year(year))};
}

constexpr civil_date civil_from_ordinal(std::int64_t year, std::int32_t day_of_year) {
    std::int32_t month = 1;
    std::int32_t rest = day_of_year;
    while (month < 12 && rest > month_length(year, month)) {
        rest -= month_length(year, month);
        ++month;
    }
    return {year, month, rest};
}

constexpr std::int32_t weekday_of(std::int64_t day) {
    // day 0 (a Friday) gives 6. The remainder truncates: the nine earliest days, -138061 to
    // -138053, give -1, 0, 1, -5, -4, -3, -2, -1, 0. Deliberate, kept as the host expects it.
    return static_cast<std::int32_t>((day + weekday_shift) % 7) + 1;
}

static_assert(ordinal_from_day(0).year == 1960 && ordinal_from_day(0).day_of_year == 1);
static_assert(ordinal_from_day(first_day).year == 1582 && ordinal_from_day(first_day).day_of_year == 1);
static_assert(ordinal_from_day(end_day - 1).year == 20000 &&
              ordinal_from_day(end_day - 1).day_of_year == 365);
static_assert(weekday_of(0) == 6 && weekday_of(first_day) == -1);

}  // namespace vxlocfmt::calendar
