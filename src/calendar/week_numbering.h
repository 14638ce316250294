/*
 * Week numbering by three rules, named by a letter: U (weeks begin on Sunday, days before the
 * year's first Sunday are week 0), W (the same with Monday) and V (ISO 8601: weeks begin on
 * Monday and belong to the year that holds their Thursday). zkfweek writes the result in one of
 * six layouts chosen by the width.
 *
 *   double y, w, d; calendar::get_yywwdd(U'V', 0, &y, &w, &d, 23378);   // 2024-01-03: 2024, 1, 3
 *   std::int32_t width = 11; calendar::zkfweek(out, &width, U'V', 0, 23378, 11);  // "2024-W01-03"
 */
#pragma once

#include <cstdint>

#include "calendar/day_number.h"
#include "frame/abi.h"

namespace vxlocfmt::calendar {

// ---- Interface ----------------------------------------------------------------------------

struct week_date {
    std::int64_t year;  // week-numbering year
    std::int32_t week;  // U, W: [0, 53]; V: [1, 53]; other letters: -1
    std::int32_t day;   // U: 1 Sunday .. 7 Saturday; V, W: 1 Monday .. 7 Sunday
};

// The triple for a date given as its calendar year, day of year from 0 and weekday (1 Sunday ..
// 7 Saturday). Any letter other than "U", "V", "W" gives week -1, the calendar year and day
// ((day_of_year + 2) mod 7) + 1.
constexpr week_date week_date_of(wchar rule, std::int64_t year, std::int64_t day_of_year,
                                 std::int32_t weekday);

// The triple of a day number in [first_day, end_day): the answer of get_yywwdd, from one integer
// conversion of the day (no Julian dates, no second conversion for 1 January).
week_date week_of_day(wchar rule, double day_number);

// Sets year, week and day to -1, then to the triple of the day number. The day number's range is
// the caller's to check; out of range the three stay -1. `unused` is not read. Answers 0.
int get_yywwdd(wchar rule, std::int32_t unused, double* year, double* week, double* day,
               double day_number);

// Longest layout: yyyy "-W" ww "-" dd.
inline constexpr std::int32_t week_text_max = 11;

// Writes the week of the day number by rule into out: blanks over *width, then, by *width,
//   0..2 ww | 3..4 "W"ww | 5..6 yy"W"ww | 7..8 yy"W"wwdd | 9..10 yyyy"W"wwdd | 11+ yyyy"-W"ww"-"dd
// and replaces *width by the layout's length (2, 3, 5, 7, 9 or 11). A width below 3 still gets
// the two digits. Nothing is written at or past `capacity` cells. `count` is not read. Answers 0.
int zkfweek(wchar* out, std::int32_t* width, wchar rule, std::int32_t count, double day_number,
            std::int32_t capacity);

// zkfweek's text and the blanks after it, its first `count` cells, as bytes (every character of
// the text is below 0x80): the bytes of the wide field with a width of `given` and `count` cells.
void week_bytes_text(unsigned char* out, std::int32_t count, wchar rule, double day_number, std::int32_t given);

// ---- Implementation -----------------------------------------------------------------------

namespace detail {
// Offset of a date from the Monday that starts ISO week 1 of the year whose day of year it is
// given as (negative: before that Monday). weekday 1 Sunday .. 7 Saturday.
constexpr std::int64_t iso_offset(std::int64_t day_of_year, std::int32_t weekday) {
    return day_of_year + 3 - floor_mod(day_of_year - weekday + 383, 7);
}
// Monday 1 .. Sunday 7 from 1 Sunday .. 7 Saturday.
constexpr std::int32_t monday_first(std::int32_t weekday) { return weekday == 1 ? 7 : weekday - 1; }
}  // namespace detail

constexpr week_date week_date_of(wchar rule, std::int64_t year, std::int64_t day_of_year,
                                 std::int32_t weekday) {
    switch (rule) {
    case U'U':
        return {year, static_cast<std::int32_t>((day_of_year - weekday + 8) / 7), weekday};
    case U'W': {
        const std::int64_t from_monday = floor_mod(weekday + 5, 7);  // Monday 0 .. Sunday 6
        return {year, static_cast<std::int32_t>((day_of_year - from_monday + 7) / 7),
                detail::monday_first(weekday)};
    }
    case U'V': {
        // ISO weeks use the plain Gregorian leap test, not the calendar's 4000-year rule, so the
        // week-year near 4000, 8000, ... 20000 follows the plain rule. Deliberate.
        std::int64_t days = detail::iso_offset(day_of_year, weekday);
        std::int64_t week_year = year;
        if (days < 0) {
            week_year = year - 1;
            days = detail::iso_offset(day_of_year + 365 + (is_gregorian_leap_year(week_year) ? 1 : 0),
                                      weekday);
        } else {
            const std::int64_t next = detail::iso_offset(
                day_of_year - 365 - (is_gregorian_leap_year(year) ? 1 : 0), weekday);
            if (next >= 0) {
                week_year = year + 1;
                days = next;
            }
        }
        return {week_year, static_cast<std::int32_t>(floor_div(days, 7) + 1),
                detail::monday_first(weekday)};
    }
    default:
        return {year, -1, static_cast<std::int32_t>(floor_mod(day_of_year + 2, 7) + 1)};
    }
}

// 2021-01-01, a Friday (weekday 6, day of year 0).
static_assert(week_date_of(U'V', 2021, 0, 6).year == 2020 && week_date_of(U'V', 2021, 0, 6).week == 53);
static_assert(week_date_of(U'U', 2021, 0, 6).week == 0 && week_date_of(U'W', 2021, 0, 6).day == 5);

}  // namespace vxlocfmt::calendar
