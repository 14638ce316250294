#include "calendar/week_numbering.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>

#include "calendar/date_conversions.h"
#include "calendar/digits.h"
#include "frame/field.h"

namespace vxlocfmt::calendar {

int get_yywwdd(wchar rule, std::int32_t, double* year, double* week, double* day,
               double day_number) {
    *year = *week = *day = -1;
    double y = 0, m = 0, d = 0;
    if (zfmcymd(&y, &m, &d, day_number) != 1) return 0;
    const double january_first = zmdy(1, 1, y);
    // The day of year by subtracting day numbers: exact in every year, 4000 and its multiples
    // included.
    const auto day_of_year = static_cast<std::int64_t>(std::floor(day_number) - january_first);
    const auto weekday = static_cast<std::int32_t>(zwekday(day_number));
    const week_date w = week_date_of(rule, static_cast<std::int64_t>(y), day_of_year, weekday);
    *year = static_cast<double>(w.year);
    *week = w.week;
    *day = w.day;
    return 0;
}

namespace {
struct layout {
    std::int32_t min_width;  // the layout applies from this width on
    std::int32_t length;
    bool four_digit_year;
    bool has_year;
    bool has_day;
    bool dashes;
};
// By increasing min_width; the last that applies wins.
constexpr std::array<layout, 6> layouts = {{
    {0, 2, false, false, false, false},   // ww
    {3, 3, false, false, false, false},   // "W" ww
    {5, 5, false, true, false, false},    // yy "W" ww
    {7, 7, false, true, true, false},     // yy "W" ww dd
    {9, 9, true, true, true, false},      // yyyy "W" ww dd
    {11, 11, true, true, true, true},     // yyyy "-W" ww "-" dd
}};
static_assert(layouts.back().length == week_text_max);

// Two digits, zero-padded, as every part of the week text is written.
void two_digits(std::int64_t n, wchar* at) { i2s(static_cast<std::int32_t>(n % 100), at, 2, U'0'); }
}  // namespace

int zkfweek(wchar* out, std::int32_t* width, wchar rule, std::int32_t, double day_number,
            std::int32_t capacity) {
    double y = 0, w = 0, d = 0;
    get_yywwdd(rule, 0, &y, &w, &d, day_number);
    const auto year = static_cast<std::int64_t>(y);
    const auto week = static_cast<std::int64_t>(w);
    const auto day = static_cast<std::int64_t>(d);

    const std::int32_t given = *width;
    layout chosen = layouts.front();
    for (const layout& l : layouts)
        if (given >= l.min_width) chosen = l;

    std::array<wchar, week_text_max> text{};
    std::int32_t n = 0;
    if (chosen.has_year) {
        if (chosen.four_digit_year) {
            two_digits(year / 100, &text[n]);  // a year past 9999 keeps its last four digits
            n += 2;
        }
        two_digits(year % 100, &text[n]);
        n += 2;
    }
    if (chosen.dashes) text[n++] = U'-';
    if (chosen.length > 2) text[n++] = U'W';
    two_digits(week, &text[n]);
    n += 2;
    if (chosen.has_day) {
        if (chosen.dashes) text[n++] = U'-';
        two_digits(day, &text[n]);
        n += 2;
    }

    const OutputField field(out, std::max(given, chosen.length), capacity);
    field.fill(U' ');
    field.write(0, std::u32string_view(text.data(), static_cast<std::size_t>(n)));
    *width = chosen.length;
    return 0;
}

}  // namespace vxlocfmt::calendar
