// The expander's fast paths against references built here from the calendar's reference routes
// and the written rules: date directives on the Julian route over the edges of the calendar,
// hour directives over hours of every kind, fields of every width around the block sizes the
// writers use, and the datetime and time entries against expand on the clock functions' parts.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <string>

#include "calendar/clock_parts.h"
#include "calendar/date_conversions.h"
#include "calendar/missing_value.h"
#include "calendar/week_numbering.h"
#include "nldate_fixture.h"

namespace {

using namespace vxlocfmt;
using namespace nldate_test;
namespace cal = calendar;

const double missing = cal::missing_value();

// Code and text of expand into a 200-cell field.
std::pair<std::int32_t, std::u32string> expand_wide(Properties& p, std::u32string_view pattern, double day,
                                                    double hour = missing, double minute = missing,
                                                    double seconds = missing, std::uint32_t decimals = 0) {
    std::u32string cells(200, U'~');
    std::int32_t width = 200;
    const std::int32_t code = nldate::expand(pattern.data(), static_cast<std::int32_t>(pattern.size()), cells.data(),
                                             200, &width, decimals, p.cache(), nullptr, day, hour, minute, seconds);
    return {code, code == nldate::expand_ok ? cells.substr(0, static_cast<std::size_t>(width)) : cells};
}
std::string text(const std::pair<std::int32_t, std::u32string>& r) {
    return std::to_string(r.first) + " " + to_utf8(r.second.substr(0, 60));
}

// Digits of |n|: `width` low ones zero-padded, or (width 0) all of them; blank-padded: the
// first of two digits a blank when 0.
std::u32string digits(std::int64_t n, int width) {
    const std::string all = std::to_string(n < 0 ? -n : n);
    const std::string s = width == 0 ? all : (std::string(static_cast<std::size_t>(width), '0') + all).substr(all.size());
    return {s.begin(), s.end()};
}
std::u32string blank_padded(std::int64_t n) {
    if (n >= 10) return digits(n, 2);
    std::u32string text = U" ";  // appended, not U" " + temporary, which trips GCC 12's -Wrestrict
    return text.append(digits(n, 0));
}

// The date directives of one day as the calendar's reference routes give them: the Julian date
// for year, month, day and day of year, zwekday for the weekday, and 1 January by zmdy for the
// weeks (get_yywwdd as it was computed).
constexpr std::u32string_view date_pattern =
    U"%Y|%#Y|%y|%m|%#m|%o|%d|%#d|%e|%j|%#j|%u|%w|%U|%W|%V|%G|%g|%A|%a|%#A|%B|%b|%Q";
std::u32string reference_dates(Properties& p, double day) {
    double y = 0, m = 0, d = 0;
    cal::civil_from_julian(cal::julian_from_day(day), &y, &m, &d);
    const auto year = static_cast<std::int64_t>(y), month = static_cast<std::int64_t>(m);
    const auto dom = static_cast<std::int64_t>(d);
    const auto day_of_year = static_cast<std::int64_t>(cal::julian_from_day(day) - 1000 * y);
    const auto weekday = static_cast<std::int32_t>(cal::zwekday(day));  // 1 Sunday; the earliest days below 1
    const auto week = [&](char32_t rule) {
        return cal::week_date_of(rule, year, static_cast<std::int64_t>(std::floor(day) - cal::zmdy(1, 1, y)), weekday);
    };
    const bool named = weekday >= 1 && weekday <= 7;
    const auto name = [&](std::size_t set) { return named ? std::u32string(p.get(set + weekday - 1)) : U"**"; };
    const std::int64_t iso_year = week(U'V').year;
    const std::u32string parts[] = {
        digits(year, 4), digits(year, 0), digits(year % 100, 2), digits(month, 2), digits(month, 0),
        blank_padded(month), digits(dom, 2), digits(dom, 0), blank_padded(dom), digits(day_of_year, 3),
        digits(day_of_year, 0), named ? digits(weekday == 1 ? 7 : weekday - 1, 0) : U"**",
        named ? digits(weekday - 1, 0) : U"**", digits(week(U'U').week, 2), digits(week(U'W').week, 2),
        digits(week(U'V').week, 2), digits(iso_year, 4), digits(iso_year % 100, 2), name(114), name(107), name(128),
        std::u32string(p.get(71 + month - 1)), std::u32string(p.get(59 + month - 1)),
        std::u32string(p.get(139 + (month - 1) / 3))};
    std::u32string s;
    for (const std::u32string& part : parts) s += (s.empty() ? U"" : U"|") + part;
    return s;
}

TEST(ExpanderFastPaths, DateDirectivesAgainstTheJulianRoute) {
    Properties p = english_like();
    oracle::Mismatches bad;
    const auto check = [&](double day) {
        const auto got = expand_wide(p, date_pattern, day);
        if (got.first != nldate::expand_ok || got.second != reference_dates(p, day))
            bad.add(std::to_string(day) + ": " + text(got) + " / " + to_utf8(reference_dates(p, day)));
    };
    // The start (the nine earliest weekdays), the 4000-year rule, the end, day by day.
    for (const std::int64_t year : {1582, 1999, 2000, 3999, 4000, 4001, 8000, 16000, 19999, 20000}) {
        const std::int64_t last = std::min(cal::day_from_ordinal(year + 1, 1), cal::end_day);
        for (std::int64_t day = cal::day_from_ordinal(year, 1); day < last; ++day) check(static_cast<double>(day));
    }
    for (std::int64_t day = cal::first_day; day < cal::end_day; day += 97) check(static_cast<double>(day));
    // A fractional day takes its date by floor and its weekday by truncation.
    for (std::int64_t day = cal::first_day + 1; day < cal::end_day; day += 9973) {
        check(static_cast<double>(day) + 0.5);
        check(static_cast<double>(day) - 0.25);
    }
    check(-0.5);
    check(-138052.5);
    EXPECT_EQ(bad.count, 0) << bad.first;
}

// Hours of every kind a part can hold (negative, past a day, past 99) against the written rules:
// 2 low digits (all digits past 99 for the hour), 0 as 24 for "%k", the twelve-hour value (0 as
// 12 for "%I"), the marker of the hour modulo 24, "%n" the whole days.
TEST(ExpanderFastPaths, HourDirectivesAgainstTheRules) {
    Properties p = english_like();
    oracle::Mismatches bad;
    for (std::int64_t hour = -30; hour <= 250; ++hour) {
        const std::int64_t minute = (hour * 7 % 60 + 60) % 60, second = (hour * 13 % 60 + 60) % 60;
        const auto hour_text = [&](std::int64_t h, bool own) { return digits(h, h > 99 || own ? 0 : 2); };
        const std::int64_t twelve = hour > 12 ? hour % 12 : hour, twelve_i = twelve == 0 ? 12 : twelve;
        std::u32string want = hour_text(hour, false) + U"|" + hour_text(hour, true) + U"|" +
                              hour_text(hour == 0 ? 24 : hour, false) + U"|" + digits(twelve_i, 2) + U"|" +
                              digits(twelve_i, 0) + U"|" + digits(twelve, 2) + U"|" + digits(twelve, 0) + U"|" +
                              (hour % 24 < 12 ? U"AM" : U"PM") + U"|" + digits(minute, 2) + U"|" + digits(second, 2) +
                              U"|" + hour_text(hour, false) + U":" + digits(minute, 2) + U":" + digits(second, 2) +
                              U"|" + (hour <= -24 ? U"-" : U"") + digits(hour / 24, 0);
        const auto got = expand_wide(p, U"%H|%#H|%k|%I|%#I|%l|%#l|%p|%M|%S|%T|%n", missing, static_cast<double>(hour),
                                     static_cast<double>(minute), static_cast<double>(second));
        if (got.first != nldate::expand_ok || got.second != want)
            bad.add(std::to_string(hour) + ": " + text(got) + " / " + to_utf8(want));
    }
    EXPECT_EQ(bad.count, 0) << bad.first;
}

// Every width from 0 to past the text, left- and right-aligned, with the capacity at the width
// and one cell short, for names of every length and one- and two-digit numbers (the writers
// that store past the text): the field holds the text and blanks, or the cut text (whose last
// 6 cells keep " %z"), and nothing is written outside it. A refused pattern writes nothing.
TEST(ExpanderFastPaths, FieldsAroundTheBlockSizes) {
    Properties p = german_like();
    struct {
        std::array<void*, 8> words{};
        static double offset(void*, double) { return 3600; }
    } zone;
    zone.words[4] = reinterpret_cast<void*>(&decltype(zone)::offset);
    oracle::Mismatches bad;
    for (const std::u32string_view pattern : {U"%A, %#d. %B %Y", U"%#d. %B", U"%B", U"%#d", U"%a%#m%A%#d",
                                              U"%d.%m.%Y %T|%j%S", U"%x %X %z"}) {
        const bool zoned = pattern.ends_with(U"%z");
        for (int month = 1; month <= 12; ++month) {
            for (const unsigned dom : {1u, 9u, 10u, 28u}) {
                const double day = day_of(2024, static_cast<unsigned>(month), dom);
                std::u32string full(200, U' ');
                std::int32_t length = 200;
                nldate::expand(pattern.data(), static_cast<std::int32_t>(pattern.size()), full.data(), 200, &length, 2,
                               p.cache(), &zone, day, 9, 8, 7.25);
                full.resize(static_cast<std::size_t>(length));
                for (std::int32_t w = 0; w <= length + 20; ++w) {
                    for (const std::int32_t capacity : {w, std::max(w - 1, 0)}) {
                        for (const bool right : {false, true}) {
                            constexpr std::size_t guard = 20;
                            std::u32string cells(static_cast<std::size_t>(w) + 2 * guard, U'~');
                            std::int32_t width = right ? -w : w;
                            const std::int32_t code =
                                nldate::expand(pattern.data(), static_cast<std::int32_t>(pattern.size()),
                                               cells.data() + guard, capacity, &width, 2, p.cache(), &zone, day, 9, 8,
                                               7.25);
                            const std::u32string blanks(static_cast<std::size_t>(std::max(w - length, 0)), U' ');
                            std::u32string want = w >= length ? (right ? blanks + full : full + blanks)
                                                              : full.substr(0, static_cast<std::size_t>(w));
                            if (w < length && zoned) {
                                const std::size_t tail = std::min(6, w);
                                want.replace(want.size() - tail, tail, std::u32string_view(U" +0100").substr(6 - tail));
                            }
                            want.resize(static_cast<std::size_t>(capacity));
                            const std::u32string outside = cells.substr(0, guard) + cells.substr(guard + capacity);
                            if (code != (w >= length ? nldate::expand_ok : nldate::expand_cut) ||
                                (w >= length && width != length) || cells.substr(guard, capacity) != want ||
                                outside != std::u32string(outside.size(), U'~'))
                                bad.add(to_utf8(pattern) + " month " + std::to_string(month) + " width " +
                                        std::to_string(w) + (right ? " right: " : ": ") +
                                        to_utf8(cells.substr(guard, capacity)));
                        }
                    }
                }
            }
        }
    }
    EXPECT_EQ(bad.count, 0) << bad.first;
    for (const std::u32string_view pattern : {U"%A, %B %#d %R", U"%B %d %Y %", U"%B%?x", U"%d%#x"}) {
        std::u32string cells(40, U'~');
        std::int32_t width = 40;
        EXPECT_EQ(nldate::expand(pattern.data(), static_cast<std::int32_t>(pattern.size()), cells.data(), 40, &width,
                                 0, p.cache(), nullptr, day_of(2024, 3, 5), missing, missing, missing),
                  nldate::expand_bad_directive);
        EXPECT_EQ(cells, std::u32string(40, U'~')) << to_utf8(pattern);
    }
}

// The rounding of zkfdttm and zkftime as they always computed it (floor, round, division).
double reference_round(double x, std::uint32_t decimals) {
    const double scale = nldate::zpowten[std::min(decimals, nldate::max_rounding_decimals)];
    const double whole = std::floor(x);
    return whole + std::round((x - whole) * scale) / scale;
}

// zkfdttm and zkftime (whole seconds by integer arithmetic) against expand on the parts the
// clock functions give for the value rounded as before: whole, fractional and negative
// datetimes, times past a day and past the datetime range, every rounding of interest.
TEST(ExpanderFastPaths, DatetimeAndTimeEntriesAgainstTheClockFunctions) {
    Properties p = english_like();
    constexpr std::u32string_view pattern = U"%Y-%m-%d %H:%M:%S|%j|%I %p|%n";
    const auto n = static_cast<std::int32_t>(pattern.size());
    const std::pair<std::int32_t, std::u32string> refused{nldate::expand_out_of_range, std::u32string(200, U'~')};
    oracle::Mismatches bad;
    const auto check = [&](double value) {
        for (const std::uint32_t decimals : {0u, 1u, 2u, 3u, 9u}) {
            std::u32string cells(200, U'~'), time_cells(200, U'~');
            std::int32_t width = 200, time_width = 200;
            const std::int32_t code =
                nldate::zkfdttm(cells.data(), 200, &width, pattern.data(), n, decimals, p.cache(), nullptr, value);
            const std::int32_t time_code =
                nldate::zkftime(time_cells.data(), 200, &time_width, pattern.data(), n, decimals, p.cache(), value);
            const std::pair datetime{code, code == 0 ? cells.substr(0, static_cast<std::size_t>(width)) : cells};
            const std::pair time{time_code, time_code == 0 ? time_cells.substr(0, static_cast<std::size_t>(time_width))
                                                           : time_cells};
            auto want_datetime = refused, want_time = refused;
            if (const double x = reference_round(value, decimals);
                cal::in_datetime_range(value) && cal::in_datetime_range(x))
                want_datetime = expand_wide(p, pattern, cal::date_part(x), cal::clock_hour(x), cal::clock_minute(x),
                                            cal::clock_second(x), decimals);
            if (const double t = reference_round(value, decimals); !cal::is_nan(value) && value >= 0)
                want_time = expand_wide(p, pattern, missing, std::floor(std::fabs(t / 3600)), cal::clock_minute(t),
                                        cal::clock_second(t), decimals);
            if (datetime != want_datetime || time != want_time)
                bad.add(std::to_string(value) + " decimals " + std::to_string(decimals) + ": " + text(datetime) +
                        " / " + text(want_datetime) + " | " + text(time) + " / " + text(want_time));
        }
    };
    oracle::Random random{42};
    for (int i = 0; i < 20000; ++i) {
        const double x = cal::first_datetime + random.unit() * (cal::end_datetime - cal::first_datetime);
        check(std::floor(x));
        check(x);
        check(std::floor(x) + 0.9999999999);
    }
    for (std::int64_t x = -2 * 86400; x <= 2 * 86400; x += 3593) check(static_cast<double>(x));
    for (const double x : {-0.0, 0.0, -1e-12, -0.5, 59.99999, 86399.9996, cal::first_datetime, cal::end_datetime - 1,
                           cal::end_datetime, 1e15, 30.0 * 3600, missing})
        check(x);
    EXPECT_EQ(bad.count, 0) << bad.first;
}

}  // namespace
