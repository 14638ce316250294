// Clock parts of datetimes and times, against whole-second integer arithmetic and named edges.

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>

#include "calendar/calendar_abi.h"
#include "calendar/day_number.h"
#include "calendar/missing_value.h"
#include "oracle.h"

namespace cal = vxlocfmt::calendar;

namespace {

bool is_missing(double v) { return std::bit_cast<std::uint64_t>(v) == vxlocfmt::missing_bits; }

// Whole seconds: every part agrees with floor division by day, hour and minute. Every second of
// three days around day 0, then a stride over the whole range.
TEST(ClockParts, WholeSecondsAgainstIntegerArithmetic) {
    oracle::Mismatches bad;
    const auto check = [&](std::int64_t x) {
        const std::int64_t in_day = cal::floor_mod(x, 86400);
        const auto v = static_cast<double>(x);
        if (vxfmtzhour(v) != static_cast<double>(in_day / 3600)) bad.add("hour " + std::to_string(x));
        if (vxfmtzminute(v) != static_cast<double>(in_day % 3600 / 60)) bad.add("minute " + std::to_string(x));
        if (vxfmtzsecond(v) != static_cast<double>(in_day % 60)) bad.add("second " + std::to_string(x));
        if (vxfmtztimprt(v) != static_cast<double>(in_day)) bad.add("time part " + std::to_string(x));
        if (vxfmtzdatprt(v) != static_cast<double>(cal::floor_div(x, 86400)))
            bad.add("date part " + std::to_string(x));
    };
    for (std::int64_t x = -129600; x <= 129600; ++x) check(x);
    const auto first = static_cast<std::int64_t>(cal::first_datetime);
    const auto end = static_cast<std::int64_t>(cal::end_datetime);
    for (std::int64_t x = first; x < end; x += 999983) check(x);  // a prime stride: all clock positions
    check(end - 1);
    EXPECT_EQ(bad.count, 0) << bad.first;
}

TEST(ClockParts, NamedValues) {
    const struct {
        double x;
        double hour, minute, second, date, time;
    } cases[] = {
        {-1, 23, 59, 59, -1, 86399},                  // one second before day 0
        {0, 0, 0, 0, 0, 0},                           // the epoch
        {86399.5, 23, 59, 59.5, 0, 86399.5},          // fractions kept
        {-0.25, 23, 59, 59.75, -1, 86399.75},         // negative fraction
        {30 * 3600.0, 6, 0, 0, 1, 21600},             // a 30-hour time wraps
        {-86400, 0, 0, 0, -1, 0},                     // exactly one day before
        {-1e-12, 0, 0, 0, 0, 0},                      // rounds to midnight: hour stays in 0..23
        {cal::first_datetime, 0, 0, 0, -138061, 0},   // first instant of the range
        {cal::end_datetime - 1, 23, 59, 59, 6589335, 86399},  // last whole second
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
    const double special = cal::special_missing_value(cal::missing_code_underscore);
    for (const double x : {cal::end_datetime, cal::first_datetime - 1, HUGE_VAL, -HUGE_VAL, double{NAN}, special}) {
        EXPECT_TRUE(is_missing(vxfmtzhour(x))) << x;
        EXPECT_TRUE(is_missing(vxfmtzminute(x))) << x;
        EXPECT_TRUE(is_missing(vxfmtzsecond(x))) << x;
        EXPECT_TRUE(is_missing(vxfmtztimprt(x))) << x;
        if (!std::isnan(x)) {
            EXPECT_TRUE(is_missing(vxfmtzdatprt(x))) << x;
        }
    }
    // The date part hands a NaN back unchanged, special missing values included.
    EXPECT_EQ(std::bit_cast<std::uint64_t>(vxfmtzdatprt(special)), std::bit_cast<std::uint64_t>(special));
}

}  // namespace
