// Day numbers, Julian dates and calendar dates: every day of the range against an independent
// calendar, then the refusals.

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <string>

#include "calendar/calendar_abi.h"
#include "case_table.h"
#include "calendar/date_conversions.h"
#include "calendar/missing_value.h"
#include "oracle.h"

namespace cal = vxlocfmt::calendar;

namespace {

bool is_missing(double v) { return std::bit_cast<std::uint64_t>(v) == vxlocfmt::missing_bits; }

// Walked by calendar date with the oracle's month lengths: the loop counter is the oracle's day
// number, and the library converts it to the date and back, to the Julian date and back, and
// gives its weekday.
TEST(DayNumber, EveryDayOfTheRange) {
    oracle::Mismatches bad;
    std::int64_t day = cal::first_day;
    for (std::int64_t y = 1582; y <= 20000; ++y) {
        std::int64_t day_of_year = 1;
        for (unsigned m = 1; m <= 12; ++m) {
            for (unsigned d = 1; d <= oracle::month_length(y, m); ++d, ++day, ++day_of_year) {
                const auto dn = static_cast<double>(day);
                const auto yy = static_cast<double>(y);
                const auto at = [&] { return std::to_string(day) + ": "; };  // built only on a mismatch
                double Y = 0, M = 0, D = 0;
                if (oracle::day_number(y, m, d) != day) bad.add(at() + "oracle");
                if (cal::zfmcymd(&Y, &M, &D, dn) != 1 || Y != yy || M != m || D != d) bad.add(at() + "zfmcymd");
                if (cal::zmdy(m, d, yy) != dn) bad.add(at() + "zmdy");
                const double julian = vxfmtzjuldat(dn);
                if (julian != static_cast<double>(y * 1000 + day_of_year)) bad.add(at() + "juldat");
                if (vxfmtzdatjul(julian) != dn || vxfmtzjulymd(yy, m, d) != julian) bad.add(at() + "julian");
                // The nine earliest days keep their truncated remainders (next test).
                if (day > cal::first_day + 8 && cal::zwekday(dn) != oracle::weekday(day)) bad.add(at() + "weekday");
            }
        }
    }
    EXPECT_EQ(day, cal::end_day);
    EXPECT_EQ(bad.count, 0) << bad.first;
}

TEST(DayNumber, EarliestWeekdaysKeepTruncatedRemainder) {
    const double expected[9] = {-1, 0, 1, -5, -4, -3, -2, -1, 0};
    for (int i = 0; i < 9; ++i) EXPECT_EQ(cal::zwekday(static_cast<double>(cal::first_day + i)), expected[i]) << i;
}

TEST(DayNumber, RangeAndFractions) {
    const struct {
        double day;
        double julian;  // 0: missing
    } cases[] = {
        {-138061, 1582001},      // first day
        {-138062, 0},            // the day before
        {6589335.9, 20000365},   // a fraction counts as its whole day
        {6589336, 0},            // 20001-01-01
        {-0.5, 1959365},         // a negative fraction: the day before
        {HUGE_VAL, 0},
    };
    for (const auto& c : cases) {
        const double julian = vxfmtzjuldat(c.day);
        EXPECT_TRUE(c.julian == 0 ? is_missing(julian) : julian == c.julian) << c.day;
        EXPECT_EQ(is_missing(cal::zwekday(c.day)), c.julian == 0) << c.day;
    }
    EXPECT_EQ(cal::zwekday(-0.5), cal::zwekday(-1));
    const double special = cal::special_missing_value(cal::missing_code_a);  // handed back as is
    EXPECT_EQ(std::bit_cast<std::uint64_t>(vxfmtzjuldat(special)), std::bit_cast<std::uint64_t>(special));
    std::int32_t m = -1, d = -1, y = -1;
    EXPECT_EQ(cal::getMonthDayYear(&m, &d, &y, 6589336), 0);  // out of range: all zero
    EXPECT_EQ(m | d | y, 0);
}

TEST(Julian, Cases) {
    for (const case_table::Row& row : case_table::read("calendar/julian_cases.tsv")) {
        const std::string& want = row[0] == "julian" ? row[2] : row[4];
        double got = 0, expected = 0;
        if (row[0] == "julian") {
            got = vxfmtzdatjul(row.number(1));
            if (want != "missing")
                expected = static_cast<double>(oracle::day_number(std::stoi(want), std::stoi(want.substr(5)), std::stoi(want.substr(8))));
        } else {
            got = vxfmtzjulymd(row.number(1), row.number(2), row.number(3));
            if (want != "missing") expected = std::stod(want);
        }
        EXPECT_TRUE(want == "missing" ? is_missing(got) : got == expected) << row.where() << " gave " << got;
    }
    double y = 0, m = 0, d = 0;
    vxfmtzymdjul(2024000, &y, &m, &d);  // day of year 0 reads as month 1, day 0
    EXPECT_TRUE(y == 2024 && m == 1 && d == 0);
    vxfmtzymdjul(4000366, &y, &m, &d);
    EXPECT_TRUE(is_missing(y) && is_missing(m) && is_missing(d));
    EXPECT_TRUE(is_missing(cal::zmdy(2, 29, 4000)));
}

}  // namespace
