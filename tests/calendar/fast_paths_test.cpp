// The formats' integer paths against the reference routes they replace: the date of a day number
// (by era arithmetic) against the ordinal walk and the Julian conversions, the week triple
// against the route through zfmcymd and zmdy(1, 1, y), remainders by whole divisors against
// std::fmod bit for bit, and the datetime split against the four clock functions.

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <string>

#include "calendar/clock_parts.h"
#include "calendar/date_conversions.h"
#include "calendar/day_number.h"
#include "calendar/missing_value.h"
#include "calendar/week_numbering.h"
#include "oracle.h"

namespace cal = vxlocfmt::calendar;

namespace {

std::uint64_t bits(double x) { return std::bit_cast<std::uint64_t>(x); }

// Every day of the range: year, month, day and day of year as the ordinal walk gives them.
TEST(FieldsFromDay, EveryDayMatchesTheOrdinalWalk) {
    oracle::Mismatches bad;
    for (std::int64_t day = cal::first_day; day < cal::end_day; ++day) {
        const cal::date_fields f = cal::fields_from_day(day);
        const cal::ordinal_date o = cal::ordinal_from_day(day);
        const cal::civil_date c = cal::civil_from_ordinal(o.year, o.day_of_year);
        if (f.year != c.year || f.month != c.month || f.day != c.day || f.day_of_year != o.day_of_year)
            bad.add(std::to_string(day));
    }
    EXPECT_EQ(bad.count, 0) << bad.first;
}

// zfmcymd (now on fields_from_day) against the Julian route it used to take, whole and
// fractional day numbers, and what it answers outside the range.
TEST(FieldsFromDay, ZfmcymdMatchesTheJulianRoute) {
    oracle::Mismatches bad;
    const auto check = [&](double day) {
        double y = 0, m = 0, d = 0;
        const std::int32_t answer = cal::zfmcymd(&y, &m, &d, day);
        double ry = 0, rm = 0, rd = 0;
        cal::civil_from_julian(cal::julian_from_day(day), &ry, &rm, &rd);
        const bool reference_ok = !cal::is_nan(ry);
        if ((answer == 1) != reference_ok || bits(y) != bits(ry) || bits(m) != bits(rm) || bits(d) != bits(rd))
            bad.add(std::to_string(day));
    };
    for (std::int64_t day = cal::first_day; day < cal::end_day; day += 97) {
        check(static_cast<double>(day));
        check(static_cast<double>(day) + 0.75);
        check(static_cast<double>(day) - 0.25);
    }
    for (const double day : {static_cast<double>(cal::first_day), static_cast<double>(cal::end_day - 1),
                             static_cast<double>(cal::first_day) - 0.5, static_cast<double>(cal::end_day),
                             static_cast<double>(cal::end_day) - 1e-9, -0.0, cal::missing_value(),
                             std::numeric_limits<double>::infinity()})
        check(day);
    EXPECT_EQ(bad.count, 0) << bad.first;
}

// get_yywwdd as it was computed: date by way of the Julian date, 1 January by zmdy, weekday by
// zwekday.
struct Triple {
    double year = -1, week = -1, day = -1;
};
Triple reference_week(char32_t rule, double day_number) {
    Triple t;
    double y = 0, m = 0, d = 0;
    cal::civil_from_julian(cal::julian_from_day(day_number), &y, &m, &d);
    if (cal::is_nan(y)) return t;
    const double january_first = cal::zmdy(1, 1, y);
    const auto day_of_year = static_cast<std::int64_t>(std::floor(day_number) - january_first);
    const auto weekday = static_cast<std::int32_t>(cal::zwekday(day_number));
    const cal::week_date w = cal::week_date_of(rule, static_cast<std::int64_t>(y), day_of_year, weekday);
    return {static_cast<double>(w.year), static_cast<double>(w.week), static_cast<double>(w.day)};
}

// The years where the rules meet the calendar's edges (the start, the 4000-year rule, the end)
// day by day, a stride over the rest, fractional day numbers both sides of 0, and a letter that
// is no rule.
TEST(WeekOfDay, MatchesTheRouteThroughTheJulianDate) {
    oracle::Mismatches bad;
    const auto check = [&](double day) {
        for (const char32_t rule : {U'U', U'V', U'W', U'X'}) {
            Triple got;
            cal::get_yywwdd(rule, 0, &got.year, &got.week, &got.day, day);
            const Triple want = reference_week(rule, day);
            if (got.year != want.year || got.week != want.week || got.day != want.day)
                bad.add(std::string(1, static_cast<char>(rule)) + " " + std::to_string(day));
        }
    };
    for (const std::int64_t year : {1582, 1583, 1999, 2000, 3999, 4000, 4001, 7999, 8000, 8001, 15999, 16000, 16001,
                                    19999, 20000}) {
        const std::int64_t first = cal::day_from_ordinal(year, 1);
        const std::int64_t last = cal::day_from_ordinal(year + 1, 1);
        for (std::int64_t day = first; day < std::min(last, cal::end_day); ++day) check(static_cast<double>(day));
    }
    for (std::int64_t day = cal::first_day; day < cal::end_day; day += 1009) check(static_cast<double>(day));
    for (const double day : {-0.5, 0.5, -138052.5, -138061.0, -138060.25, 6589335.75, 6589336.0, -138062.0})
        check(day);
    check(cal::missing_value());
    EXPECT_EQ(bad.count, 0) << bad.first;
}

// fmod_by_whole is std::fmod, bit for bit: whole and fractional values of both signs, values
// that are multiples of the divisor or an ulp off, tiny and subnormal values, zeros, values at
// and past 2^53, and what is not a number.
TEST(ClockRemainder, BitForBitWithFmod) {
    oracle::Mismatches bad;
    oracle::Random random{20261121};
    const auto check = [&](double x) {
        for (const std::int64_t divisor : {86400, 3600, 60, 7, 1}) {
            const double got = cal::fmod_by_whole(x, divisor);
            const double want = std::fmod(x, static_cast<double>(divisor));
            if (bits(got) != bits(want) && !(std::isnan(got) && std::isnan(want)))
                bad.add(std::to_string(divisor) + " " + std::to_string(x));
        }
    };
    for (int i = 0; i < 200000; ++i) {
        const double range = cal::end_datetime - cal::first_datetime;
        const double x = cal::first_datetime + random.unit() * range;  // any fraction
        check(x);
        check(std::floor(x));
        check(std::ldexp(random.unit(), static_cast<int>(random.next() % 120) - 60));  // tiny to huge
        check(-std::ldexp(random.unit(), static_cast<int>(random.next() % 120) - 60));
    }
    for (const double m : {86400.0, 3600.0, 60.0, 86400.0 * 138061, 86400.0 * 6589336}) {
        for (const double x : {m, -m, std::nextafter(m, 0.0), std::nextafter(m, 2 * m), -std::nextafter(m, 0.0)})
            check(x);
    }
    for (const double x : {0.0, -0.0, 1e-320, -1e-320, 5e-324, 0x1p53, -0x1p53, 0x1p53 + 2, 0x1p63, 1e300, -1e300,
                           std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity(),
                           cal::missing_value(), std::nan("")})
        check(x);
    EXPECT_EQ(bad.count, 0) << bad.first;
}

// split_datetime against date_part, clock_hour, clock_minute and clock_second, bit for bit:
// every second of three days around day 0, the ends of the range, a stride over it, and
// fractions (the four functions' route), negative ones and those a hair below a whole second
// included.
TEST(SplitDatetime, MatchesTheClockFunctions) {
    oracle::Mismatches bad;
    const auto check = [&](double x) {
        const cal::datetime_parts p = cal::split_datetime(x);
        if (bits(p.date) != bits(cal::date_part(x)) || bits(p.hour) != bits(cal::clock_hour(x)) ||
            bits(p.minute) != bits(cal::clock_minute(x)) || bits(p.second) != bits(cal::clock_second(x)))
            bad.add(std::to_string(x));
    };
    for (std::int64_t x = -3 * 86400; x <= 3 * 86400; ++x) check(static_cast<double>(x));
    const auto first = static_cast<std::int64_t>(cal::first_datetime);
    const auto end = static_cast<std::int64_t>(cal::end_datetime);
    for (std::int64_t x = first; x < first + 2 * 86400; x += 7) check(static_cast<double>(x));
    for (std::int64_t x = end - 2 * 86400; x < end; x += 7) check(static_cast<double>(x));
    for (std::int64_t x = first; x < end; x += 9999991) check(static_cast<double>(x));
    oracle::Random random{7};
    for (int i = 0; i < 100000; ++i) {
        const double x = cal::first_datetime + random.unit() * (cal::end_datetime - cal::first_datetime);
        check(x);
        check(std::floor(x));
        check(std::nextafter(std::floor(x), -1e300));
    }
    for (const double x : {-0.0, 0.0, -1e-12, -0.25, 86399.5, -86400.0, -1.0, 1e-300})
        check(x);
    EXPECT_EQ(bad.count, 0) << bad.first;
}

}  // namespace
