// The digit writers ZLTOS and i2s, and the actual/actual day count.

#include <gtest/gtest.h>

#include <array>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include "calendar/day_count.h"
#include "calendar/digits.h"
#include "oracle.h"

namespace cal = vxlocfmt::calendar;

namespace {

std::u32string widen(const std::string& s) { return std::u32string(s.begin(), s.end()); }

// ZLTOS against std::to_string: right-aligned when the text fits, refused otherwise, and never a
// cell written at or past the width.
TEST(Digits, ZltosAgainstToString) {
    std::mt19937_64 random(20240103);
    std::vector<std::int64_t> values = {0, 1, -1, 9, -9, 10, -10, 99, -99, 100,
                                        std::numeric_limits<std::int64_t>::max(),
                                        std::numeric_limits<std::int64_t>::min()};
    for (int i = 0; i < 2000; ++i) values.push_back(static_cast<std::int64_t>(random()) >> (random() % 64));
    for (const std::int64_t n : values) {
        const std::u32string text = widen(std::to_string(n));
        for (std::int32_t width = 0; width <= 22; ++width) {
            std::array<char32_t, 24> out;
            out.fill(U'#');
            const int rc = cal::ZLTOS(n, out.data(), width);
            const bool fits = static_cast<std::int32_t>(text.size()) <= width;
            ASSERT_EQ(rc, fits ? 0 : 1) << n << " in " << width;
            ASSERT_EQ(out[static_cast<std::size_t>(width)], U'#') << n << " in " << width;
            if (fits) {
                const std::u32string expected = std::u32string(width - text.size(), U' ') + text;
                ASSERT_EQ(std::u32string(out.data(), width), expected) << n;
            } else if (n >= 0) {
                // Too many digits: the rightmost ones that fitted.
                ASSERT_EQ(std::u32string(out.data(), width), text.substr(text.size() - width)) << n;
            }
        }
    }
}

// A negative number whose digits exactly fill the width has no room for its sign.
TEST(Digits, ZltosNegativeFillingTheWidth) {
    std::array<char32_t, 3> out{};
    EXPECT_EQ(cal::ZLTOS(-42, out.data(), 2), 1);
    EXPECT_EQ(std::u32string(out.data(), 2), U"42");
}

TEST(Digits, I2s) {
    const struct {
        std::int32_t n, width;
        char32_t fill;
        std::u32string_view text;
        std::int32_t answer;
    } cases[] = {
        {7, 2, U'0', U"07", 2},              // the week and date writers' call
        {123, 2, U'0', U"23", 2},            // only the lowest digits
        {7, 3, U' ', U"  7", 3},             // leading zeros become the fill
        {0, 3, U'*', U"**0", 3},             // ... but the last digit stays
        {1005, 6, U' ', U"  1005", 6},       // inner zeros are not leading
        {-5, 2, U'0', U"05", 2},             // the sign is not written
        {1234, 99, 0, U"1234", 4},           // fill 0: the number's own digit count
        {0, 5, 0, U"0", 1},
        {2147483647, 0, 0, U"2147483647", 10},
        {5, 0, U'0', U"", 0},                // no width: nothing written
    };
    for (const auto& c : cases) {
        std::array<char32_t, 16> out;
        out.fill(U'#');
        EXPECT_EQ(cal::i2s(c.n, out.data(), c.width, c.fill), c.answer) << c.n;
        EXPECT_EQ(std::u32string_view(out.data(), c.text.size()), c.text) << c.n;
        EXPECT_EQ(out[c.text.size()], U'#') << c.n;
    }
}

// Whole days between dates against the standard library's Gregorian calendar (the day count
// has no 4000-year rule): from 1 January to every day of 1583 to 2800, and random pairs.
TEST(DayCount, DaysAgainstChrono) {
    using namespace std::chrono;
    const auto serial = [](int y, unsigned m, unsigned d) {
        return sys_days{year(y) / month(m) / day(d)}.time_since_epoch().count();
    };
    oracle::Mismatches bad;
    for (sys_days t = sys_days{year(1583) / 1 / 1}; t <= sys_days{year(2800) / 12 / 31}; t += days{1}) {
        const year_month_day ymd{t};
        const int y = static_cast<int>(ymd.year());
        const unsigned m = static_cast<unsigned>(ymd.month()), d = static_cast<unsigned>(ymd.day());
        double whole = 0, years = 0;
        cal::diff_actact(1, 1, y, m, d, y, &whole, &years);
        if (whole != serial(y, m, d) - serial(y, 1, 1)) bad.add(std::to_string(y) + "-" + std::to_string(m));
    }
    std::mt19937 random(42);
    for (int i = 0; i < 20000; ++i) {
        const int y1 = 1583 + static_cast<int>(random() % 18000), y2 = 1583 + static_cast<int>(random() % 18000);
        const unsigned m1 = 1 + random() % 12, m2 = 1 + random() % 12;
        const unsigned d1 = 1 + random() % 28, d2 = 1 + random() % 28;
        double whole = 0, years = 0;
        const double answer = cal::diff_actact(m1, d1, y1, m2, d2, y2, &whole, &years);
        if (whole != serial(y2, m2, d2) - serial(y1, m1, d1) || answer != whole)
            bad.add("pair " + std::to_string(y1) + " " + std::to_string(y2));
    }
    EXPECT_EQ(bad.count, 0) << bad.first;
}

TEST(DayCount, YearFraction) {
    const struct {
        int m1, d1, y1, m2, d2, y2;
        double days, years;
    } cases[] = {
        {5, 5, 2024, 5, 5, 2024, 0, 0},                               // same day
        {1, 1, 2023, 1, 1, 2024, 365, 1},                             // one whole common year
        {1, 1, 2024, 7, 1, 2024, 182, 182.0 / 366},                   // within a leap year
        {7, 1, 2023, 7, 1, 2024, 366, 184.0 / 365 + 182.0 / 366},     // across a year end
        {7, 1, 2024, 7, 1, 2023, -366, -(184.0 / 365 + 182.0 / 366)}, // backwards
        {1, 1, 2000, 1, 1, 2010, 3653, 10},                           // whole years count 1 each
    };
    for (const auto& c : cases) {
        double days = 0, years = 0;
        cal::diff_actact(c.m1, c.d1, c.y1, c.m2, c.d2, c.y2, &days, &years);
        EXPECT_EQ(days, c.days) << c.y1 << " " << c.y2;
        EXPECT_DOUBLE_EQ(years, c.years) << c.y1 << " " << c.y2;
    }
    double days = 0, years = 0;
    cal::diff_actact(NAN, 1, 2024, 1, 1, 2024, &days, &years);
    EXPECT_TRUE(std::isnan(days) && std::isnan(years));
}

}  // namespace
