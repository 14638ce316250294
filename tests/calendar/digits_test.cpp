// The digit writers ZLTOS and i2s, and the actual/actual day count.

#include <gtest/gtest.h>

#include <array>
#include <chrono>
#include <cmath>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include "calendar/day_count.h"
#include "calendar/digits.h"
#include "oracle.h"

namespace cal = vxlocfmt::calendar;

namespace {

// ZLTOS against std::to_string for every width 0..22: right-aligned when the text fits, refused
// (with the rightmost digits) when not, and nothing written at or past the width.
TEST(Digits, ZltosAgainstToString) {
    std::mt19937_64 random(20240103);
    std::vector<std::int64_t> values = {0, -1, 99, -99, std::numeric_limits<std::int64_t>::min()};
    for (int i = 0; i < 1000; ++i) values.push_back(static_cast<std::int64_t>(random()) >> (random() % 64));
    for (const std::int64_t n : values) {
        const std::string s = std::to_string(n);
        const std::u32string text(s.begin(), s.end());
        for (std::size_t width = 0; width <= 22; ++width) {
            std::array<char32_t, 24> out;
            out.fill(U'#');
            const bool fits = text.size() <= width;
            ASSERT_EQ(cal::ZLTOS(n, out.data(), static_cast<std::int32_t>(width)), fits ? 0 : 1) << n << " " << width;
            ASSERT_EQ(out[width], U'#') << n << " " << width;
            const std::u32string got(out.data(), width);
            const std::u32string expected = fits ? std::u32string(width - text.size(), U' ') + text
                                                 : text.substr(text.size() - width);
            if (fits || n >= 0) {
                ASSERT_EQ(got, expected) << n;
            }
        }
    }
}

TEST(Digits, I2s) {
    const struct {
        std::int32_t n, width;
        char32_t fill;
        std::u32string_view text;  // followed by an untouched cell
        std::int32_t answer;
    } cases[] = {
        {7, 2, U'0', U"07", 2},           // the week and date writers' call
        {123, 2, U'0', U"23", 2},         // only the lowest digits
        {0, 3, U'*', U"**0", 3},          // leading zeros become the fill, the last digit stays
        {1005, 6, U' ', U"  1005", 6},    // inner zeros are not leading
        {-5, 2, U'0', U"05", 2},          // no sign
        {1234, 99, 0, U"1234", 4},        // fill 0: the number's own digit count
        {5, 0, U'0', U"", 0},             // no width: nothing written
    };
    for (const auto& c : cases) {
        std::array<char32_t, 16> out;
        out.fill(U'#');
        EXPECT_EQ(cal::i2s(c.n, out.data(), c.width, c.fill), c.answer) << c.n;
        EXPECT_EQ(std::u32string(out.data(), c.text.size() + 1), std::u32string(c.text) + U"#") << c.n;
    }
}

// Whole days against the standard library's Gregorian calendar (the day count has no 4000-year
// rule): from 1 January to every day of 1583 to 2800, and random pairs over the whole range.
TEST(DayCount, DaysAgainstChrono) {
    using namespace std::chrono;
    oracle::Mismatches bad;
    const auto check = [&](year_month_day a, year_month_day b) {
        double days = 0, years = 0;
        cal::diff_actact(unsigned(a.month()), unsigned(a.day()), int(a.year()), unsigned(b.month()),
                         unsigned(b.day()), int(b.year()), &days, &years);
        if (days != (sys_days{b} - sys_days{a}).count()) bad.add(std::to_string(int(b.year())));
    };
    for (sys_days t{year(1583) / 1 / 1}; t <= sys_days{year(2800) / 12 / 31}; t += days{1}) {
        const year_month_day ymd{t};
        check(ymd.year() / 1 / 1, ymd);
    }
    std::mt19937 random(42);
    for (int i = 0; i < 20000; ++i)
        check(sys_days{days{random() % 6000000}}, sys_days{days{random() % 6000000}});
    EXPECT_EQ(bad.count, 0) << bad.first;
}

// The years output: each calendar year's share over its own length.
TEST(DayCount, YearFraction) {
    double days = 0, years = 0;
    cal::diff_actact(7, 1, 2024, 7, 1, 2023, &days, &years);  // backwards across a year end
    EXPECT_EQ(days, -366);
    EXPECT_DOUBLE_EQ(years, -(184.0 / 365 + 182.0 / 366));
    cal::diff_actact(NAN, 1, 2024, 1, 1, 2024, &days, &years);
    EXPECT_TRUE(std::isnan(days) && std::isnan(years));
}

}  // namespace
