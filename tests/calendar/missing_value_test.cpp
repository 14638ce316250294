// The missing-value field and the range guard, written through a call record whose output has
// canaries past the capacity.

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstdint>
#include <string>

#include "calendar/missing_value.h"
#include "frame/abi.h"

namespace cal = vxlocfmt::calendar;

namespace {

constexpr char32_t canary = U'#';

struct Call {
    std::array<char32_t, 24> out;
    double value;
    vxlocfmt::FmtCall call{};

    Call(double v, std::int32_t width, std::int32_t decimals, std::int32_t capacity) : value(v) {
        out.fill(canary);
        call.width = width;
        call.decimals = decimals;
        call.capacity = capacity;
        call.input = &value;
        call.output = out.data();
        call.produced = -7;
    }
    std::u32string text(std::size_t n) const { return std::u32string(out.data(), n); }
};

// Special missing values by code: ._ is 1, . is 2, .A to .Z are 3 to 28.
TEST(MissingValue, Codes) {
    for (int k = 1; k <= 28; ++k) {
        const double v = cal::special_missing_value(k);
        EXPECT_TRUE(std::isnan(v)) << k;
        EXPECT_EQ(cal::missing_code(v), k);
    }
    // Codes outside 1..28 (byte 5 of 0x00 gives 0, of 0xE0 gives 32) count as the ordinary ".".
    for (const std::uint64_t byte5 : {0x00ull, 0xE0ull, 0x01ull}) {
        const double v = std::bit_cast<double>((vxlocfmt::missing_bits & ~(0xFFull << 40)) | (byte5 << 40));
        EXPECT_EQ(cal::missing_code(v), cal::missing_code_ordinary) << byte5;
    }
}

TEST(MissingValue, Field) {
    const struct {
        double value;
        std::int32_t width, decimals, capacity;
        std::u32string_view field;
    } cases[] = {
        {cal::special_missing_value(3), 8, 2, 24, U"     A  "},   // .A, shifted left by the decimals
        {cal::missing_value(), 5, 0, 24, U"    ."},              // the ordinary missing value
        {cal::special_missing_value(1), 3, 0, 24, U"  _"},       // ._
        {cal::special_missing_value(28), 4, 1, 24, U"  Z "},     // .Z
        {cal::special_missing_value(5), 4, 98, 24, U"   C"},     // decimals 98 count as 0
        {cal::special_missing_value(5), 4, 99, 24, U"   C"},     // ... and so do 99
        {cal::special_missing_value(5), 3, 3, 24, U"   "},       // position before the field: blanks only
        {cal::special_missing_value(5), 3, -2, 24, U"   "},      // position past the field: blanks only
        {12.5, 4, 0, 24, U"    "},                               // not a NaN: the blank of index 0
        {cal::missing_value(), 8, 0, 5, U"     "},               // capacity 5: the "." would fall at 7
        {cal::missing_value(), 0, 0, 24, U""},                   // width 0
    };
    for (const auto& c : cases) {
        Call t(c.value, c.width, c.decimals, c.capacity);
        EXPECT_EQ(cal::zfmmiss(t.call), 0);
        EXPECT_EQ(t.text(c.field.size()), c.field) << c.width << "/" << c.decimals;
        EXPECT_EQ(t.out[c.field.size()], canary) << c.width << "/" << c.decimals;
        EXPECT_EQ(t.call.produced, c.width);
        EXPECT_EQ(t.call.decimals, c.decimals);
    }
}

TEST(RangeGuard, Kinds) {
    const struct {
        double value;
        int kind;
        int answer;
        std::u32string_view field;  // empty: the output is untouched
    } cases[] = {
        {0, cal::range_kind_date, cal::range_ok, U""},                  // day 0
        {-138061, cal::range_kind_date, cal::range_ok, U""},            // first day
        {6589335.5, cal::range_kind_date, cal::range_ok, U""},          // inside the last day
        {6589336, cal::range_kind_date, cal::range_out, U"******"},     // one past the last day
        {-138062, cal::range_kind_date, cal::range_out, U"******"},     // one before the first
        {1e10, cal::range_kind_date, cal::range_out, U"******"},        // a datetime is no date
        {1e10, cal::range_kind_datetime, cal::range_ok, U""},           // ... but a datetime
        {-5, cal::range_kind_time, cal::range_ok, U""},                 // negative times pass the guard
        {569318630400.0, cal::range_kind_datetime, cal::range_out, U"******"},  // end of range
        {-11928470400.0, cal::range_kind_time, cal::range_ok, U""},     // first instant
        {1e300, 7, cal::range_ok, U""},                                 // other kinds are not checked
        {HUGE_VAL, cal::range_kind_datetime, cal::range_out, U"******"},
        {cal::special_missing_value(4), cal::range_kind_date, cal::range_missing, U"     B"},  // decimals ignored
        {cal::missing_value(), 7, cal::range_missing, U"     ."},       // NaN wins over any kind
    };
    for (const auto& c : cases) {
        Call t(c.value, 6, 2, 24);
        EXPECT_EQ(cal::zdatrng(t.call, c.kind), c.answer) << c.value << " kind " << c.kind;
        EXPECT_EQ(t.call.decimals, 2);  // restored after the missing-value field
        if (c.field.empty()) {
            EXPECT_EQ(t.out[0], canary) << c.value;
            EXPECT_EQ(t.call.produced, -7);
        } else {
            EXPECT_EQ(t.text(6), c.field) << c.value;
            EXPECT_EQ(t.call.produced, 6);
        }
        EXPECT_EQ(t.out[6], canary);
    }
}

// The star fill stops at the capacity even when the width asks for more.
TEST(RangeGuard, StarsBoundedByCapacity) {
    Call t(1e20, 10, 0, 4);
    EXPECT_EQ(cal::zdatrng(t.call, cal::range_kind_datetime), cal::range_out);
    EXPECT_EQ(t.text(5), U"****#");
    EXPECT_EQ(t.call.produced, 10);
}

}  // namespace
