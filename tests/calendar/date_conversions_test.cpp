// Day numbers, Julian dates and calendar dates: an exhaustive walk of the whole range against an
// independent calendar, then the refusals and edges one by one.

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <string>

#include "calendar/calendar_abi.h"
#include "calendar/date_conversions.h"
#include "calendar/missing_value.h"
#include "oracle.h"

namespace cal = vxlocfmt::calendar;

namespace {

bool is_missing(double v) { return std::bit_cast<std::uint64_t>(v) == vxlocfmt::missing_bits; }

std::string at(std::int64_t day) { return "day " + std::to_string(day) + ": "; }

// Every day from 1582-01-01 to 20000-12-31, walked by calendar date with the oracle's month
// lengths: the day number matches the oracle's closed form and the loop counter; the library
// converts it to the date and back, to the Julian date and back, and gives its weekday.
TEST(DayNumber, EveryDayOfTheRange) {
    oracle::Mismatches bad;
    std::int64_t day = cal::first_day;
    for (std::int64_t y = 1582; y <= 20000; ++y) {
        std::int64_t day_of_year = 0;
        for (unsigned m = 1; m <= 12; ++m) {
            const unsigned length = oracle::month_length(y, m);
            for (unsigned d = 1; d <= length; ++d, ++day) {
                ++day_of_year;
                const auto dn = static_cast<double>(day);
                if (oracle::day_number(y, m, d) != day) bad.add(at(day) + "oracle disagrees");

                double Y = 0, M = 0, D = 0;
                if (cal::zfmcymd(&Y, &M, &D, dn) != 1 || Y != static_cast<double>(y) || M != m || D != d)
                    bad.add(at(day) + "zfmcymd gives " + std::to_string(Y) + "-" + std::to_string(M) +
                            "-" + std::to_string(D));
                if (cal::zmdy(m, d, static_cast<double>(y)) != dn) bad.add(at(day) + "zmdy");

                const double julian = vxfmtzjuldat(dn);
                if (julian != static_cast<double>(y * 1000 + day_of_year)) bad.add(at(day) + "juldat");
                if (vxfmtzdatjul(julian) != dn) bad.add(at(day) + "datjul");
                if (vxfmtzjulymd(static_cast<double>(y), m, d) != julian) bad.add(at(day) + "julymd");

                const double weekday = cal::zwekday(dn);
                // The nine earliest day numbers keep their truncated remainders (checked below).
                if (day > cal::first_day + 8 && weekday != oracle::weekday(day))
                    bad.add(at(day) + "weekday " + std::to_string(weekday));
            }
        }
    }
    EXPECT_EQ(day, cal::end_day);
    EXPECT_EQ(bad.count, 0) << bad.first;
}

// The weekday of the nine earliest day numbers is the truncating remainder, kept on purpose.
TEST(DayNumber, EarliestWeekdaysKeepTruncatedRemainder) {
    const double expected[9] = {-1, 0, 1, -5, -4, -3, -2, -1, 0};
    for (int i = 0; i < 9; ++i)
        EXPECT_EQ(cal::zwekday(static_cast<double>(cal::first_day + i)), expected[i]) << i;
    EXPECT_EQ(cal::zwekday(static_cast<double>(cal::first_day + 9)), 1);  // 1582-01-10, Sunday
}

TEST(DayNumber, RangeEdges) {
    const struct {
        double day;
        bool valid;
    } cases[] = {
        {-138061, true},     // 1582-01-01
        {-138062, false},    // 1581-12-31
        {-138061.5, false},  // fraction below the first day
        {6589335, true},     // 20000-12-31
        {6589335.9, true},   // fraction within the last day
        {6589336, false},    // 20001-01-01
        {HUGE_VAL, false},   // infinity
        {-HUGE_VAL, false},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(!is_missing(vxfmtzjuldat(c.day)), c.valid) << c.day;
        EXPECT_EQ(!is_missing(cal::zwekday(c.day)), c.valid) << c.day;
        double y = 0, m = 0, d = 0;
        EXPECT_EQ(cal::zfmcymd(&y, &m, &d, c.day), c.valid ? 1 : -1) << c.day;
        if (!c.valid) {
            EXPECT_TRUE(is_missing(y) && is_missing(m) && is_missing(d)) << c.day;
        }
    }
}

// A fractional day number counts as the whole day it lies in (floor), for the date and the
// weekday alike.
TEST(DayNumber, FractionalDays) {
    for (const double day : {-0.5, 0.25, 10.999, -1000.5, 6589335.5}) {
        const double whole = std::floor(day);
        EXPECT_EQ(vxfmtzjuldat(day), vxfmtzjuldat(whole)) << day;
        EXPECT_EQ(cal::zwekday(day), cal::zwekday(whole)) << day;
    }
}

TEST(DayNumber, NanPassesThroughJuldat) {
    const double special = cal::special_missing_value(cal::missing_code_a);
    EXPECT_EQ(std::bit_cast<std::uint64_t>(vxfmtzjuldat(special)), std::bit_cast<std::uint64_t>(special));
    EXPECT_TRUE(is_missing(cal::zwekday(special)));  // the weekday answers the ordinary missing value
}

// Julian date to day number; expected dates are turned into day numbers by the oracle.
TEST(Julian, ToDayNumber) {
    const struct {
        double julian;
        int y, m, d;  // y == 0: missing
    } cases[] = {
        {60001, 1960, 1, 1},        // two-digit 60 -> 1960 with the default cut-off 1950
        {49001, 2049, 1, 1},        // 49 -> 2049
        {50001, 1950, 1, 1},        // 50 -> 1950
        {99365, 1999, 12, 31},      // 99 -> 1999
        {366, 2000, 12, 31},        // year 0 -> 2000, a leap year
        {1500001, 0, 0, 0},         // year 1500 lies before the calendar
        {1581365, 0, 0, 0},         // last day before the range
        {1582001, 1582, 1, 1},      // first day of the range
        {20000365, 20000, 12, 31},  // last day of the range
        {20000366, 0, 0, 0},        // past the last Julian date
        {2000366, 2000, 12, 31},    // leap year
        {2001366, 0, 0, 0},         // common year has no day 366
        {4000366, 0, 0, 0},         // 4000 is not a leap year
        {99366, 0, 0, 0},           // 1999 has no day 366 (checked after the cut-off)
        {2024367, 0, 0, 0},         // day of year above 366
        {2024000, 2023, 12, 31},    // day of year 0 is not refused: the day before 1 January
        {2024001.9, 2024, 1, 1},    // a fraction is truncated
        {0, 0, 0, 0},               // not positive
        {-2024001, 0, 0, 0},        // negative
        {NAN, 0, 0, 0},             // NaN
    };
    for (const auto& c : cases) {
        const double day = vxfmtzdatjul(c.julian);
        if (c.y == 0) {
            EXPECT_TRUE(is_missing(day)) << c.julian;
        } else {
            EXPECT_EQ(day, oracle::day_number(c.y, c.m, c.d)) << c.julian;
        }
    }
}

TEST(Julian, ToYearMonthDay) {
    const struct {
        double julian;
        double y, m, d;  // y == 0: all missing
    } cases[] = {
        {2024060, 2024, 2, 29},     // leap year: day 60 is 29 February
        {2023060, 2023, 3, 1},      // common year: day 60 is 1 March
        {4000060, 4000, 3, 1},      // 4000 is common
        {20000365, 20000, 12, 31},  // last day
        {24001, 2024, 1, 1},        // two-digit year
        {2024000, 2024, 1, 0},      // day of year 0: month 1, day 0 (not refused)
        {4000366, 0, 0, 0},         // refused like vxfmtzdatjul
        {1000001, 0, 0, 0},         // year 1000
    };
    for (const auto& c : cases) {
        double y = -7, m = -7, d = -7;
        EXPECT_EQ(vxfmtzymdjul(c.julian, &y, &m, &d), 0u);
        if (c.y == 0) {
            EXPECT_TRUE(is_missing(y) && is_missing(m) && is_missing(d)) << c.julian;
        } else {
            EXPECT_EQ(y, c.y) << c.julian;
            EXPECT_EQ(m, c.m) << c.julian;
            EXPECT_EQ(d, c.d) << c.julian;
        }
    }
    EXPECT_EQ(vxfmtzymdjul(2024001, nullptr, nullptr, nullptr), 0u);  // null outputs are skipped
}

TEST(Julian, FromYearMonthDay) {
    const struct {
        double y, m, d;
        double julian;  // 0: missing
    } cases[] = {
        {2000, 2, 29, 2000060},     // 29 February 2000 exists
        {4000, 2, 29, 0},           // ... but not in 4000
        {4000, 12, 31, 4000365},    // 4000 has 365 days
        {2001, 2, 29, 0},           // common year
        {2024, 4, 31, 0},           // April has 30 days
        {2024, 13, 1, 0},           // month above 12
        {2024, 0, 1, 0},            // month below 1
        {2024, 1, 0, 0},            // day below 1
        {2024, 1, 32, 0},           // day above 31
        {-1, 1, 1, 0},              // negative year
        {100, 1, 1, 0},             // three-digit year
        {1581, 12, 31, 0},          // before the range
        {1582, 1, 1, 1582001},      // first day
        {20000, 12, 31, 20000365},  // last day
        {20001, 1, 1, 0},           // after the range
        {99.5, 1, 1, 0},            // above 99 and not in 1582..20000
        {24, 2, 29, 2024060},       // two-digit year through the cut-off
        {0, 1, 1, 2000001},         // year 0 -> 2000
        {2024.7, 3.9, 5.2, 2024065},  // fractions truncated after the checks
        {NAN, 1, 1, 0},             // NaN anywhere
        {2024, NAN, 1, 0},
        {2024, 1, NAN, 0},
    };
    for (const auto& c : cases) {
        const double julian = vxfmtzjulymd(c.y, c.m, c.d);
        if (c.julian == 0) {
            EXPECT_TRUE(is_missing(julian)) << c.y << "-" << c.m << "-" << c.d;
        } else {
            EXPECT_EQ(julian, c.julian) << c.y << "-" << c.m << "-" << c.d;
        }
    }
    EXPECT_TRUE(is_missing(cal::zmdy(2, 29, 4000)));
    EXPECT_EQ(cal::zmdy(2, 29, 2000), oracle::day_number(2000, 2, 29));
}

TEST(DayNumber, NamedDays) {
    EXPECT_EQ(cal::zmdy(1, 1, 1960), 0);
    EXPECT_EQ(cal::zwekday(0), 6);  // a Friday
    EXPECT_EQ(cal::zmdy(1, 1, 1582), cal::first_day);
    EXPECT_EQ(cal::zmdy(12, 31, 20000), cal::end_day - 1);

    std::int32_t m = -1, d = -1, y = -1;
    EXPECT_EQ(cal::getMonthDayYear(&m, &d, &y, 14669.75), 2);  // 2000-02-29
    EXPECT_EQ(y, 2000);
    EXPECT_EQ(d, 29);
    EXPECT_EQ(cal::getMonthDayYear(&m, &d, &y, 6589336), 0);  // out of range: all zero
    EXPECT_EQ(m + d + y, 0);
}

}  // namespace
