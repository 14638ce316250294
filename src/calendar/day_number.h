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

// Everything a date format reads of a day, from one integer computation (fields_from_day).
struct date_fields {
    std::int64_t year;         // [1582, 20000]
    std::int32_t month;        // [1, 12]
    std::int32_t day;          // [1, 31]
    std::int32_t day_of_year;  // [1, 366]
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
// Year, month, day and day of year of a day number in [first_day, end_day) at once: the same
// answers as ordinal_from_day then civil_from_ordinal, by era arithmetic on the Gregorian count
// (a handful of multiplications, no loop). The formats' path; the Julian functions keep theirs.
constexpr date_fields fields_from_day(std::int64_t day);

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

namespace detail {
// From 4000-03-01 on, every 4000 years of this calendar are one day shorter than the Gregorian
// 4000 years (1460970 days): their 29 February is missing.
inline constexpr std::int64_t first_missing_leap_day_after = 745154;  // 4000-03-01
inline constexpr std::int64_t days_per_4000_years = 1460969;
// Days from 0000-03-01 of the proleptic Gregorian count to 1960-01-01.
inline constexpr std::int64_t gregorian_march_epoch = 715815;
// Day of a year that begins on 1 March ([0, 365]) on which 1 January falls.
inline constexpr std::uint32_t january_in_march_year = 306;
}  // namespace detail

constexpr date_fields fields_from_day(std::int64_t day) {
    using namespace detail;
    // Back to the Gregorian count: put back the 29 Februaries of 4000, 8000, ... before the day.
    const std::int64_t missing_leap_days =  // [0, 5]
        day < first_missing_leap_day_after ? 0 : (day - first_missing_leap_day_after) / days_per_4000_years + 1;
    // Days from 0000-03-01, [577754, 7305156) over the range. The years below begin on 1 March,
    // so that February and its leap day come last. Neri and Schneider's Euclidean affine forms
    // of the Gregorian rules: one true division (by 146097), the rest multiplications and shifts,
    // all in 32 bits (4 * n + 3 < 2^25) but the year's product.
    const auto n = static_cast<std::uint32_t>(day + missing_leap_days + gregorian_march_epoch);
    const std::uint32_t n1 = 4 * n + 3;
    const std::uint32_t century = n1 / 146097;
    const std::uint32_t day_of_century = n1 % 146097 / 4;                             // [0, 36524]
    const std::uint64_t p2 = std::uint64_t{2939745} * (4 * day_of_century + 3);
    const auto year_of_century = static_cast<std::uint32_t>(p2 >> 32);                 // [0, 99]
    const std::uint32_t day_of_march_year = static_cast<std::uint32_t>(p2) / 2939745 / 4;  // [0, 365]
    const std::uint32_t n3 = 2141 * day_of_march_year + 197913;
    const std::uint32_t month_from_march = n3 >> 16;                                   // [3, 14]
    const std::uint32_t day_of_month = (n3 & 0xFFFF) / 2141 + 1;                       // [1, 31]
    // January and February (1 in the year that began on 1 March, else 0) belong to the next
    // calendar year; 1 January is day 306 of the year from 1 March. Arithmetic, not branches:
    // the values come in any order, and one date in six would mispredict.
    const std::uint32_t january_or_february = day_of_march_year >= january_in_march_year ? 1 : 0;
    const std::int64_t year = std::int64_t{100} * century + year_of_century + january_or_february;
    const auto month = static_cast<std::int32_t>(month_from_march - 12 * january_or_february);
    // This calendar's leap day (by 4, not by 100 unless by 400, never by 4000), asked of the
    // century and the year in it: from March on, the calendar year is the year that began on
    // 1 March. Bitwise, not short-circuit: a leap year is one date in four.
    const std::uint32_t leap = (year_of_century % 4 == 0) &
                               ((year_of_century != 0) | ((century % 4 == 0) & (century % 40 != 0)));
    // Day of year: March on adds 59 days and the leap day; January and February count from
    // 1 January (day_of_march_year - 305), which is the same sum less 365 and the leap day.
    const auto day_of_year =
        static_cast<std::int32_t>(day_of_march_year + 60 + leap - january_or_february * (365 + leap));
    return {year, month, static_cast<std::int32_t>(day_of_month), day_of_year};
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
static_assert(day_from_ordinal(4000, 60) == detail::first_missing_leap_day_after);
static_assert(day_from_ordinal(8000, 60) - day_from_ordinal(4000, 60) == detail::days_per_4000_years);
namespace detail {
constexpr bool fields_are(std::int64_t day, std::int64_t year, std::int32_t month, std::int32_t day_of_month,
                          std::int32_t day_of_year) {
    const date_fields f = fields_from_day(day);
    return f.year == year && f.month == month && f.day == day_of_month && f.day_of_year == day_of_year;
}
}  // namespace detail
static_assert(detail::fields_are(0, 1960, 1, 1, 1));
static_assert(detail::fields_are(first_day, 1582, 1, 1, 1));
static_assert(detail::fields_are(end_day - 1, 20000, 12, 31, 365));
static_assert(detail::fields_are(day_from_ordinal(2000, 60), 2000, 2, 29, 60));
static_assert(detail::fields_are(day_from_ordinal(4000, 59), 4000, 2, 28, 59));  // no 29 February in 4000
static_assert(detail::fields_are(day_from_ordinal(4000, 60), 4000, 3, 1, 60));
static_assert(detail::fields_are(day_from_ordinal(4000, 365), 4000, 12, 31, 365));

}  // namespace vxlocfmt::calendar
