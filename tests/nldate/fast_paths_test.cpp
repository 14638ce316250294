// The expander's fast paths against references built here from the calendar's reference routes
// and the written rules: date directives on the Julian route over the edges of the calendar,
// hour directives (twelve-hour values, day halves) over hours of every kind, fields of every
// width around the block sizes the writers use, and the datetime and time entries against
// expand on the clock functions' parts.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <string>

#include "calendar/clock_parts.h"
#include "calendar/date_conversions.h"
#include "calendar/missing_value.h"
#include "calendar/week_numbering.h"
#include "nldate/expander.h"
#include "nldate_fixture.h"

namespace {

using namespace vxlocfmt;
using namespace nldate_test;
namespace cal = calendar;

const double missing = cal::missing_value();

// splitmix64: the same values on every run.
struct Random {
    std::uint64_t state;
    std::uint64_t next() {
        std::uint64_t z = (state += 0x9E3779B97F4A7C15ull);
        z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ull;
        z = (z ^ (z >> 27)) * 0x94D049BB133111EBull;
        return z ^ (z >> 31);
    }
    double unit() { return static_cast<double>(next() >> 11) * 0x1p-53; }
};

// The text expand writes into a field of `width` cells (code and text).
struct Expanded {
    std::int32_t code;
    std::u32string text;
    bool operator==(const Expanded&) const = default;
};
Expanded expand_wide(Properties& p, std::u32string_view pattern, double day, double hour = missing,
                     double minute = missing, double seconds = missing, std::uint32_t decimals = 0) {
    constexpr std::int32_t cells_wide = 200;
    std::u32string cells(cells_wide, U'~');
    std::int32_t width = cells_wide;
    const std::int32_t code = nldate::expand(pattern.data(), static_cast<std::int32_t>(pattern.size()), cells.data(),
                                             cells_wide, &width, decimals, p.cache(), nullptr, day, hour, minute,
                                             seconds);
    return {code, code == nldate::expand_ok ? cells.substr(0, static_cast<std::size_t>(width)) : cells};
}

// Digits of |n|: `width` low ones zero-padded, or (width 0) all of them; i2s's text.
std::u32string digits(std::int64_t n, int width) {
    std::u32string s;
    std::uint64_t m = n < 0 ? 0 - static_cast<std::uint64_t>(n) : static_cast<std::uint64_t>(n);
    do {
        s.insert(s.begin(), static_cast<char32_t>(U'0' + m % 10));
        m /= 10;
    } while (m != 0 && (width == 0 || static_cast<int>(s.size()) < width));
    while (static_cast<int>(s.size()) < width) s.insert(s.begin(), U'0');
    if (width > 0) s = s.substr(s.size() - static_cast<std::size_t>(width));
    return s;
}
std::u32string blank_padded(std::int64_t n) {
    std::u32string s = digits(n, 2);
    if (s[0] == U'0') s[0] = U' ';
    return s;
}

// The date directives of one day as the calendar's reference routes give them: the Julian date
// for year, month, day and day of year, zwekday for the weekday, and 1 January by zmdy for the
// weeks (get_yywwdd as it was computed).
std::u32string reference_dates(Properties& p, double day) {
    double y = 0, m = 0, d = 0;
    cal::civil_from_julian(cal::julian_from_day(day), &y, &m, &d);
    const auto year = static_cast<std::int64_t>(y);
    const auto month = static_cast<std::int64_t>(m);
    const auto dom = static_cast<std::int64_t>(d);
    const auto day_of_year = static_cast<std::int64_t>(cal::julian_from_day(day) - 1000 * y);
    const auto weekday = static_cast<std::int32_t>(cal::zwekday(day));  // 1 Sunday; the earliest days below 1
    const auto week = [&](char32_t rule) {
        return cal::week_date_of(rule, year, static_cast<std::int64_t>(std::floor(day) - cal::zmdy(1, 1, y)), weekday);
    };
    const bool named_day = weekday >= 1 && weekday <= 7;
    const auto weekday_name = [&](std::size_t set) {
        return named_day ? std::u32string(p.get(set + static_cast<std::size_t>(weekday - 1))) : U"**";
    };
    std::u32string s;
    s += digits(year / 100, 2) + digits(year % 100, 2) + U"|" + digits(year, 0) + U"|" + digits(year % 100, 2) + U"|";
    s += digits(month, 2) + U"|" + digits(month, 0) + U"|" + blank_padded(month) + U"|";
    s += digits(dom, 2) + U"|" + digits(dom, 0) + U"|" + blank_padded(dom) + U"|";
    s += digits(day_of_year, 3) + U"|" + digits(day_of_year, 0) + U"|";
    s += named_day ? std::u32string(1, static_cast<char32_t>(U'0' + (weekday == 1 ? 7 : weekday - 1))) : U"**";
    s += U"|";
    s += named_day ? std::u32string(1, static_cast<char32_t>(U'0' + weekday - 1)) : U"**";
    s += U"|" + digits(week(U'U').week, 2) + U"|" + digits(week(U'W').week, 2) + U"|" + digits(week(U'V').week, 2);
    const std::int64_t iso_year = week(U'V').year;
    s += U"|" + digits(iso_year / 100, 2) + digits(iso_year % 100, 2) + U"|" + digits(iso_year % 100, 2) + U"|";
    s += weekday_name(114) + U"|" + weekday_name(107) + U"|" + weekday_name(128) + U"|";
    s += std::u32string(p.get(71 + static_cast<std::size_t>(month - 1))) + U"|" +
         std::u32string(p.get(59 + static_cast<std::size_t>(month - 1))) + U"|" +
         std::u32string(p.get(139 + static_cast<std::size_t>((month - 1) / 3)));
    return s;
}
constexpr std::u32string_view date_pattern =
    U"%Y|%#Y|%y|%m|%#m|%o|%d|%#d|%e|%j|%#j|%u|%w|%U|%W|%V|%G|%g|%A|%a|%#A|%B|%b|%Q";

TEST(ExpanderFastPaths, DateDirectivesAgainstTheJulianRoute) {
    Properties p = english_like();
    int bad = 0;
    std::string first;
    const auto check = [&](double day) {
        const Expanded got = expand_wide(p, date_pattern, day);
        const std::u32string want = reference_dates(p, day);
        if (got.code != nldate::expand_ok || got.text != want) {
            if (bad++ < 3) first += std::to_string(day) + ": " + to_utf8(got.text) + " / " + to_utf8(want) + "\n";
        }
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
    EXPECT_EQ(bad, 0) << first;
}

// Hours of every kind a part can hold (negative, past a day, past 99), minutes and seconds of
// every value, against the written rules: 2 low digits (all digits past 99 for the hour), 0 as
// 24 for "%k", the twelve-hour value (0 as 12 for "%I"), the marker of the hour modulo 24.
TEST(ExpanderFastPaths, HourDirectivesAgainstTheRules) {
    Properties p = english_like();
    int bad = 0;
    std::string first;
    for (std::int64_t hour = -30; hour <= 250; ++hour) {
        const std::int64_t minute = (hour * 7 % 60 + 60) % 60;
        const std::int64_t second = (hour * 13 % 60 + 60) % 60;
        const auto hour_text = [&](std::int64_t h, bool own) { return h > 99 ? digits(h, 0) : digits(h, own ? 0 : 2); };
        const std::int64_t twelve = hour > 12 ? hour % 12 : hour;
        const std::int64_t twelve_i = twelve == 0 ? 12 : twelve;
        std::u32string want;
        want += hour_text(hour, false) + U"|" + hour_text(hour, true) + U"|" + hour_text(hour == 0 ? 24 : hour, false);
        want += U"|" + digits(twelve_i, 2) + U"|" + digits(twelve_i, 0) + U"|" + digits(twelve, 2) + U"|" +
                digits(twelve, 0);
        want += U"|" + std::u32string(hour % 24 < 12 ? U"AM" : U"PM");
        want += U"|" + digits(minute, 2) + U"|" + digits(second, 2) + U"|" + hour_text(hour, false) + U":" +
                digits(minute, 2) + U":" + digits(second, 2) + U"|" + digits(hour / 24, 0);
        if (hour < 0 && hour / 24 != 0) want.insert(want.size() - digits(hour / 24, 0).size(), U"-");
        const Expanded got =
            expand_wide(p, U"%H|%#H|%k|%I|%#I|%l|%#l|%p|%M|%S|%T|%n", missing, static_cast<double>(hour),
                        static_cast<double>(minute), static_cast<double>(second));
        if (got.code != nldate::expand_ok || got.text != want) {
            if (bad++ < 3) first += std::to_string(hour) + ": " + to_utf8(got.text) + " / " + to_utf8(want) + "\n";
        }
    }
    EXPECT_EQ(bad, 0) << first;
    // A missing hour: "**", and for "%p" the morning marker after it.
    EXPECT_EQ(to_utf8(expand_wide(p, U"%I|%#l|%p", 0).text), "**|**|**AM");
}

// Every width from 0 to past the text, left- and right-aligned, with the capacity at the width
// and one cell short, for names of every length and one- and two-digit numbers (the writers
// that store past the text): the field holds the text and blanks, or the cut text, and nothing
// is written outside it.
TEST(ExpanderFastPaths, FieldsAroundTheBlockSizes) {
    Properties p = german_like();
    int bad = 0;
    std::string first;
    const std::u32string_view patterns[] = {U"%A, %#d. %B %Y", U"%#d. %B", U"%B", U"%#d", U"%a%#m%A%#d"};
    for (const std::u32string_view pattern : patterns) {
        for (int month = 1; month <= 12; ++month) {
            for (const unsigned dom : {1u, 9u, 10u, 28u}) {
                const double day = day_of(2024, static_cast<unsigned>(month), dom);
                const std::u32string full = expand_wide(p, pattern, day).text;
                const auto length = static_cast<std::int32_t>(full.size());
                for (std::int32_t w = 0; w <= length + 20; ++w) {
                    for (const std::int32_t shortfall : {0, 1}) {
                        for (const bool right : {false, true}) {
                            constexpr std::size_t guard = 20;
                            const std::int32_t capacity = std::max(w - shortfall, 0);
                            std::u32string cells(static_cast<std::size_t>(w) + 2 * guard, U'~');
                            std::int32_t width = right ? -w : w;
                            const std::int32_t code =
                                nldate::expand(pattern.data(), static_cast<std::int32_t>(pattern.size()),
                                               cells.data() + guard, capacity, &width, 0, p.cache(), nullptr, day,
                                               missing, missing, missing);
                            std::u32string want = full;
                            if (w >= length) {
                                want = right ? std::u32string(static_cast<std::size_t>(w - length), U' ') + full
                                             : full + std::u32string(static_cast<std::size_t>(w - length), U' ');
                            } else {
                                want = full.substr(0, static_cast<std::size_t>(w));
                            }
                            want = want.substr(0, static_cast<std::size_t>(capacity));
                            const std::u32string stored = cells.substr(guard, static_cast<std::size_t>(capacity));
                            const bool guards = cells.substr(0, guard) == std::u32string(guard, U'~') &&
                                                cells.substr(guard + static_cast<std::size_t>(capacity)) ==
                                                    std::u32string(cells.size() - guard - capacity, U'~');
                            const bool ok = code == (w >= length ? nldate::expand_ok : nldate::expand_cut) &&
                                            (w < length || width == length) && stored == want && guards;
                            if (!ok && bad++ < 3)
                                first += to_utf8(pattern) + " month " + std::to_string(month) + " width " +
                                         std::to_string(w) + (right ? " right" : "") + ": " + to_utf8(stored) + "\n";
                        }
                    }
                }
            }
        }
    }
    EXPECT_EQ(bad, 0) << first;
}

// A refused pattern writes nothing, however far it got.
TEST(ExpanderFastPaths, RefusedPatternLeavesTheField) {
    Properties p = english_like();
    for (const std::u32string_view pattern : {U"%A, %B %#d %R", U"%B %d %Y %", U"%B%?x", U"%d%#x"}) {
        std::u32string cells(40, U'~');
        std::int32_t width = 40;
        EXPECT_EQ(nldate::expand(pattern.data(), static_cast<std::int32_t>(pattern.size()), cells.data(), 40, &width,
                                 0, p.cache(), nullptr, day_of(2024, 3, 5), missing, missing, missing),
                  nldate::expand_bad_directive)
            << to_utf8(pattern);
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
    int bad = 0;
    std::string first;
    const auto run = [&](auto entry) {
        std::u32string cells(200, U'~');
        std::int32_t width = 200;
        const std::int32_t code = entry(cells.data(), &width);
        return Expanded{code, code == nldate::expand_ok ? cells.substr(0, static_cast<std::size_t>(width)) : cells};
    };
    const Expanded refused{nldate::expand_out_of_range, std::u32string(200, U'~')};
    const auto check = [&](double value) {
        for (const std::uint32_t decimals : {0u, 1u, 2u, 3u, 9u}) {
            const Expanded datetime = run([&](wchar* out, std::int32_t* width) {
                return nldate::zkfdttm(out, 200, width, pattern.data(), static_cast<std::int32_t>(pattern.size()),
                                       decimals, p.cache(), nullptr, value);
            });
            Expanded want_datetime = refused;
            if (const double x = reference_round(value, decimals);
                cal::in_datetime_range(value) && cal::in_datetime_range(x)) {
                want_datetime = expand_wide(p, pattern, cal::date_part(x), cal::clock_hour(x), cal::clock_minute(x),
                                            cal::clock_second(x), decimals);
            }
            const Expanded time = run([&](wchar* out, std::int32_t* width) {
                return nldate::zkftime(out, 200, width, pattern.data(), static_cast<std::int32_t>(pattern.size()),
                                       decimals, p.cache(), value);
            });
            Expanded want_time = refused;
            if (!cal::is_nan(value) && value >= 0) {
                const double t = reference_round(value, decimals);
                want_time = expand_wide(p, pattern, missing, std::floor(std::fabs(t / 3600)), cal::clock_minute(t),
                                        cal::clock_second(t), decimals);
            }
            if (!(datetime == want_datetime) || !(time == want_time)) {
                if (bad++ < 3)
                    first += std::to_string(value) + " decimals " + std::to_string(decimals) + ": " +
                             to_utf8(datetime.text.substr(0, 40)) + " / " + to_utf8(want_datetime.text.substr(0, 40)) +
                             " | " + to_utf8(time.text.substr(0, 40)) + " / " + to_utf8(want_time.text.substr(0, 40)) +
                             "\n";
            }
        }
    };
    Random random{42};
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
    EXPECT_EQ(bad, 0) << first;
}

}  // namespace
