// Week numbering by rules U, W and V against the C library's strftime (%U, %W, %V, %G, %u),
// whose ISO week-year uses the plain Gregorian leap test as rule V does; then the named edges and
// the zkfweek layouts.

#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <ctime>
#include <string>

#include "calendar/week_numbering.h"
#include "oracle.h"

namespace cal = vxlocfmt::calendar;

namespace {

struct triple {
    double year, week, day;
    bool operator==(const triple&) const = default;
};

triple week_of(char32_t rule, double day_number) {
    triple t{0, 0, 0};
    cal::get_yywwdd(rule, 0, &t.year, &t.week, &t.day, day_number);
    return t;
}

// Every day of 1583 to 20000; strftime gets the true day of year and weekday from the oracle.
TEST(WeekNumbering, EveryDayAgainstStrftime) {
    oracle::Mismatches bad;
    std::int64_t day = oracle::day_number(1583, 1, 1);
    for (int y = 1583; y <= 20000; ++y) {
        const std::int64_t january_first = day;
        for (; day < january_first + (oracle::is_leap(y) ? 366 : 365); ++day) {
            std::tm tm{};
            tm.tm_year = y - 1900;
            tm.tm_yday = static_cast<int>(day - january_first);
            tm.tm_wday = oracle::weekday(day) - 1;
            char text[64];
            std::strftime(text, sizeof text, "%U %W %V %G %u", &tm);
            int u = 0, w = 0, v = 0, g = 0, iso_day = 0;
            std::sscanf(text, "%d %d %d %d %d", &u, &w, &v, &g, &iso_day);
            const auto dn = static_cast<double>(day);
            if (!(week_of(U'U', dn) == triple{double(y), double(u), double(tm.tm_wday + 1)}) ||
                !(week_of(U'W', dn) == triple{double(y), double(w), double(iso_day)}) ||
                !(week_of(U'V', dn) == triple{double(g), double(v), double(iso_day)}))
                bad.add(std::to_string(day) + ": " + text);
        }
    }
    EXPECT_EQ(bad.count, 0) << bad.first;
}

// The ISO, U and W edges (2021-01-01, 2024-12-31, the 365-day years 8000 and 16000 that the plain
// leap test meets, kept on purpose) are days of the loop above; what it cannot reach stays here.
TEST(WeekNumbering, OutsideTheLoop) {
    // An unknown letter: week -1, ((yday + 2) mod 7) + 1.
    EXPECT_TRUE(week_of(U'X', static_cast<double>(oracle::day_number(2024, 1, 3))) == (triple{2024, -1, 5}));
    EXPECT_TRUE(week_of(U'V', static_cast<double>(cal::end_day)) == (triple{-1, -1, -1}));
}

// Widths outside 2 to 11, and capacities, for 2024-01-03 by rule V.
TEST(WeekLayout, Widths) {
    const double day = static_cast<double>(oracle::day_number(2024, 1, 3));
    const struct {
        std::int32_t width, capacity;
        std::u32string_view field;  // what is written, followed by an untouched cell
        std::int32_t produced;
    } cases[] = {
        // Widths 2 to 11: every day through the WEEK formats (tests/weeks/week_formats_test.cpp).
        {0, 16, U"01", 2},               // ww, although the width asks for nothing
        {14, 16, U"2024-W01-03   ", 11}, // always 11 characters, then blanks
        {11, 5, U"2024-", 11},           // a capacity below the layout cuts the write
        {0, 1, U"0", 2},                 // ... even for the two digits of width 0
    };
    for (const auto& c : cases) {
        std::array<char32_t, 16> out;
        out.fill(U'#');
        std::int32_t width = c.width;
        EXPECT_EQ(cal::zkfweek(out.data(), &width, U'V', 0, day, c.capacity), 0);
        EXPECT_EQ(std::u32string(out.data(), c.field.size() + 1), std::u32string(c.field) + U"#") << c.width;
        EXPECT_EQ(width, c.produced) << c.width;
    }
    const struct {
        int y, m, d;
        char32_t rule;
        std::u32string_view text;
    } years[] = {
        {12345, 6, 7, U'V', U"2345-W23-01"},  // past 9999 only the last four digits show
    };
    for (const auto& c : years) {
        std::array<char32_t, 11> out{};
        std::int32_t width = 11;
        cal::zkfweek(out.data(), &width, c.rule, 0, static_cast<double>(oracle::day_number(c.y, c.m, c.d)), 11);
        EXPECT_EQ(std::u32string_view(out.data(), 11), c.text) << c.y;
    }
}

}  // namespace
