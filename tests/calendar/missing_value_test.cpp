// The missing-value field and the range guard, through a call record whose output has canaries
// past the capacity.

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <string>

#include "calendar/missing_value.h"

namespace cal = vxlocfmt::calendar;

namespace {

struct Call {
    std::array<char32_t, 16> out;
    double value;
    vxlocfmt::FmtCall call{};
    Call(double v, std::int32_t width, std::int32_t decimals, std::int32_t capacity) : value(v) {
        out.fill(U'#');
        call.width = width;
        call.decimals = decimals;
        call.capacity = capacity;
        call.input = &value;
        call.output = out.data();
        call.produced = -7;
    }
    std::u32string text(std::size_t n) const { return {out.data(), n}; }
};

TEST(MissingValue, Field) {
    const struct {
        double value;
        std::int32_t width, decimals, capacity;
        std::u32string_view field;  // followed by an untouched cell
    } cases[] = {
        {cal::special_missing_value(3), 8, 2, 16, U"     A  "},  // .A, shifted left by the decimals
        {cal::missing_value(), 5, 0, 16, U"    ."},             // the ordinary missing value
        {cal::special_missing_value(1), 3, 0, 16, U"  _"},      // ._
        {cal::special_missing_value(28), 4, 1, 16, U"  Z "},    // .Z
        {cal::special_missing_value(30), 2, 0, 16, U" ."},      // codes past 28 count as "."
        {cal::special_missing_value(5), 4, 99, 16, U"   C"},    // decimals 98 and 99 count as 0
        {cal::special_missing_value(5), 3, 3, 16, U"   "},      // position before the field: blanks only
        {12.5, 4, 0, 16, U"    "},                              // not a NaN: the blank of index 0
        {cal::missing_value(), 8, 0, 5, U"     "},              // the "." at 7 lies past the capacity
    };
    for (const auto& c : cases) {
        Call t(c.value, c.width, c.decimals, c.capacity);
        EXPECT_EQ(cal::zfmmiss(t.call), 0);
        EXPECT_EQ(t.text(c.field.size() + 1), std::u32string(c.field) + U"#") << c.width << "/" << c.decimals;
        EXPECT_EQ(t.call.produced, c.width);
    }
}

TEST(RangeGuard, Kinds) {
    const struct {
        double value;
        int kind;
        int answer;
        std::u32string_view field;  // empty: untouched
    } cases[] = {
        {-138061, cal::range_kind_date, cal::range_ok, U""},           // first day
        {6589335.5, cal::range_kind_date, cal::range_ok, U""},         // inside the last day
        {6589336, cal::range_kind_date, cal::range_out, U"******"},    // one past the last day
        {1e10, cal::range_kind_date, cal::range_out, U"******"},       // a datetime is no date
        {-5, cal::range_kind_time, cal::range_ok, U""},                // negative times pass the guard
        {569318630400.0, cal::range_kind_datetime, cal::range_out, U"******"},  // end of range
        {1e300, 7, cal::range_ok, U""},                                // other kinds are not checked
        {cal::special_missing_value(4), cal::range_kind_date, cal::range_missing, U"     B"},  // decimals as 0
    };
    for (const auto& c : cases) {
        Call t(c.value, 6, 2, 16);
        EXPECT_EQ(cal::zdatrng(t.call, c.kind), c.answer) << c.value << " kind " << c.kind;
        EXPECT_EQ(t.call.decimals, 2);  // restored
        EXPECT_EQ(t.text(c.field.size() + 1), std::u32string(c.field) + U"#") << c.value;
        EXPECT_EQ(t.call.produced, c.field.empty() ? -7 : 6);
    }
    Call narrow(1e20, 10, 0, 4);  // the stars stop at the capacity
    EXPECT_EQ(cal::zdatrng(narrow.call, cal::range_kind_datetime), cal::range_out);
    EXPECT_EQ(narrow.text(5), U"****#");
}

}  // namespace
