// Clock parts of datetimes and times against whole-second integer arithmetic, and named edges.

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <string>

#include "calendar/calendar_abi.h"
#include "calendar/day_number.h"
#include "calendar/missing_value.h"
#include "oracle.h"

namespace cal = vxlocfmt::calendar;

namespace {

// Every second of three days around day 0, then a prime stride over the whole range.
TEST(ClockParts, WholeSecondsAgainstIntegerArithmetic) {
    oracle::Mismatches bad;
    const auto check = [&](std::int64_t x) {
        const std::int64_t s = cal::floor_mod(x, 86400);
        const auto v = static_cast<double>(x);
        if (vxfmtzhour(v) != s / 3600 || vxfmtzminute(v) != s % 3600 / 60 || vxfmtzsecond(v) != s % 60 ||
            vxfmtztimprt(v) != s || vxfmtzdatprt(v) != cal::floor_div(x, 86400))
            bad.add(std::to_string(x));
    };
    for (std::int64_t x = -129600; x <= 129600; ++x) check(x);
    const auto end = static_cast<std::int64_t>(cal::end_datetime);
    for (auto x = static_cast<std::int64_t>(cal::first_datetime); x < end; x += 999983) check(x);
    check(end - 1);
    EXPECT_EQ(bad.count, 0) << bad.first;
}

TEST(ClockParts, NamedValues) {
    const struct {
        double x;
        double hour, minute, second, date, time;
    } cases[] = {
        {86399.5, 23, 59, 59.5, 0, 86399.5},   // fractions kept
        {-0.25, 23, 59, 59.75, -1, 86399.75},  // negative fraction
        {30 * 3600.0, 6, 0, 0, 1, 21600},      // a 30-hour time wraps
        {-1e-12, 0, 0, 0, 0, 0},               // rounds to midnight: the hour stays in 0..23
    };
    for (const auto& c : cases) {
        EXPECT_EQ(vxfmtzhour(c.x), c.hour) << c.x;
        EXPECT_EQ(vxfmtzminute(c.x), c.minute) << c.x;
        EXPECT_EQ(vxfmtzsecond(c.x), c.second) << c.x;
        EXPECT_EQ(vxfmtzdatprt(c.x), c.date) << c.x;
        EXPECT_EQ(vxfmtztimprt(c.x), c.time) << c.x;
    }
}

TEST(ClockParts, OutOfRange) {
    const auto missing = [](double v) { return std::bit_cast<std::uint64_t>(v) == vxlocfmt::missing_bits; };
    for (const double x : {cal::end_datetime, cal::first_datetime - 1, double{NAN}}) {
        EXPECT_TRUE(missing(vxfmtzhour(x)) && missing(vxfmtzminute(x)) && missing(vxfmtzsecond(x)) &&
                    missing(vxfmtztimprt(x)))
            << x;
    }
    EXPECT_TRUE(missing(vxfmtzdatprt(cal::end_datetime)));
    const double special = cal::special_missing_value(cal::missing_code_underscore);  // handed back as is
    EXPECT_EQ(std::bit_cast<std::uint64_t>(vxfmtzdatprt(special)), std::bit_cast<std::uint64_t>(special));
}

}  // namespace
