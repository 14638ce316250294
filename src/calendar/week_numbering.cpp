#include "calendar/week_numbering.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <string_view>

#include "calendar/date_conversions.h"
#include "frame/field.h"

namespace vxlocfmt::calendar {

week_date week_of_day(wchar rule, double day_number) {
    const date_fields f = fields_from_day(whole_day(day_number));
    // The day of year from 0 is the date's day number less that of 1 January: exact in every
    // year, 4000 and its multiples included. The weekday truncates as zwekday does.
    return week_date_of(rule, f.year, f.day_of_year - 1, weekday_in_range(day_number));
}

int get_yywwdd(wchar rule, std::int32_t, double* year, double* week, double* day,
               double day_number) {
    *year = *week = *day = -1;
    if (!in_day_range(day_number)) return 0;  // NaN included
    const week_date w = week_of_day(rule, day_number);
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

// Two digits, zero-padded, as every part of the week text is written: i2s(n % 100, at, 2, "0").
template <class Char>
void two_digits(std::int64_t n, Char* at) {
    const std::int64_t low = n % 100;  // (-100, 100)
    const auto v = static_cast<std::uint32_t>(low < 0 ? -low : low);
    at[0] = static_cast<Char>(U'0' + v / 10);
    at[1] = static_cast<Char>(U'0' + v % 10);
}

// The week text of the layout chosen by `given` into `text` (room for week_text_max): its
// length, the layout's length in `*length`. Every character is below 0x80.
template <class Char>
std::int32_t week_text(Char* text, wchar rule, double day_number, std::int32_t given, std::int32_t* length) {
    // As get_yywwdd leaves them for a day it cannot convert.
    week_date triple{-1, -1, -1};
    if (in_day_range(day_number)) triple = week_of_day(rule, day_number);
    const std::int64_t year = triple.year;
    const std::int64_t week = triple.week;
    const std::int64_t day = triple.day;

    layout chosen = layouts.front();
    for (const layout& l : layouts)
        if (given >= l.min_width) chosen = l;

    std::int32_t n = 0;
    if (chosen.has_year) {
        if (chosen.four_digit_year) {
            two_digits(year / 100, &text[n]);  // a year past 9999 keeps its last four digits
            n += 2;
        }
        two_digits(year % 100, &text[n]);
        n += 2;
    }
    if (chosen.dashes) text[n++] = '-';
    if (chosen.length > 2) text[n++] = 'W';
    two_digits(week, &text[n]);
    n += 2;
    if (chosen.has_day) {
        if (chosen.dashes) text[n++] = '-';
        two_digits(day, &text[n]);
        n += 2;
    }
    *length = chosen.length;
    return n;
}
}  // namespace

int zkfweek(wchar* out, std::int32_t* width, wchar rule, std::int32_t, double day_number,
            std::int32_t capacity) {
    const std::int32_t given = *width;
    std::array<wchar, week_text_max> text;
    std::int32_t length = 0;
    const std::int32_t n = week_text(text.data(), rule, day_number, given, &length);
    const OutputField field(out, std::max(given, length), capacity);
    field.write(0, std::u32string_view(text.data(), static_cast<std::size_t>(n)));
    field.fill(n, field.stored(), U' ');
    *width = length;
    return 0;
}

void week_bytes_text(unsigned char* out, std::int32_t count, wchar rule, double day_number, std::int32_t given) {
    if (count <= 0) return;
    unsigned char text[week_text_max + 8];
    std::int32_t length = 0;
    const std::int32_t n = week_text(text, rule, day_number, given, &length);
    std::memset(text + n, ' ', sizeof text - static_cast<std::size_t>(n));
    if (count <= static_cast<std::int32_t>(sizeof text)) {
        std::memcpy(out, text, static_cast<std::size_t>(count));
        return;
    }
    std::memcpy(out, text, sizeof text);
    std::memset(out + sizeof text, ' ', static_cast<std::size_t>(count) - sizeof text);
}

}  // namespace vxlocfmt::calendar
