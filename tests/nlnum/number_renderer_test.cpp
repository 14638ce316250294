// The locale number renderer on hand-written conventions: the retry order, the pattern pieces,
// the parenthesis blank, the 32-character cap, the missing value and the unsupported record.
#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "calendar/missing_value.h"
#include "nlnum/number_renderer.h"
#include "nlnum_fixture.h"
#include "text_convert.h"

namespace {

using namespace nlnum_test;
using vxhost::to_utf8;

NumberConventions parentheses() {
    NumberConventions c = english();
    c.n_sign_posn = 0;
    return c;
}
NumberConventions sign_after() {
    NumberConventions c = english();
    c.n_sign_posn = 2;
    return c;
}
NumberConventions euro_before() {  // "-EUR 1,234.50": symbol first, a blank, the sign before both
    NumberConventions c = english();
    set(c.currency_symbol, U"EUR");
    c.p_cs_precedes = c.n_cs_precedes = 1;
    c.p_sep_by_space = c.n_sep_by_space = 1;
    return c;
}
NumberConventions no_point() {
    NumberConventions c = english();
    set(c.decimal_point, U"");
    return c;
}
NumberConventions german() {
    NumberConventions c = english();
    set(c.decimal_point, U",");
    set(c.thousands_sep, U".");
    return c;
}

TEST(NumberRenderer, RetryOrderAndPatterns) {
    const struct {
        NumberConventions conventions;
        double value;
        int width, decimals;
        const char* expected;
    } cases[] = {
        {english(), 1234567.891, 14, 2, "  1,234,567.89"},
        {english(), 1234567.891, 12, 2, "1,234,567.89"},  // fills the field exactly
        {english(), 1234567.891, 11, 2, " 1234567.89"},   // grouping goes before any decimal
        {english(), 1234567.891, 9, 2, "1234567.9"},      // then a decimal
        {english(), 1234567.891, 7, 2, "1234568"},        // then all of them
        {english(), 1234567.891, 6, 2, " 1E+06"},         // then the kernel's "E" notation
        {english(), 1234567.891, 4, 2, "****"},           // then nothing fits
        {english(), -1234.5, 9, 2, "-1,234.50"},
        {english(), -1234.5, 8, 2, "-1234.50"},
        {german(), 1234.5, 9, 2, " 1.234,50"},
        {english(), 0.125, 5, 2, " 0.13"},                // half away from zero on the exact value
        {english(), 2.675, 5, 2, " 2.67"},                // 2.67499999... is below the tie
        {english(), -0.0, 4, 1, " 0.0"},                  // minus zero is not below zero
        {english(), -0.001, 6, 2, " -0.00"},              // a negative value keeps its sign
        {english(), 999, 3, 0, "999"},
        {english(), 1000, 4, 0, "1000"},                  // "1,000" does not fit: ungrouped
        {parentheses(), 5, 8, 2, "   5.00 "},             // the blank that lines up with ")"
        {parentheses(), -5, 8, 2, "  (5.00)"},
        {parentheses(), 0, 8, 2, "    0.00"},             // zero gets no blank, deliberately
        {parentheses(), 12345, 6, 0, "12345 "},
        {parentheses(), 123456, 6, 0, "1E+05 "},          // the blank counts: 7 characters
        {sign_after(), -5, 6, 0, "    5-"},
        {euro_before(), -1234.5, 14, 2, " -EUR 1,234.50"},
        {euro_before(), -1234.5, 12, 2, "-EUR 1234.50"},
        {euro_before(), -1234.5, 11, 2, "-EUR 1234.5"},
        {euro_before(), 7, 5, 0, "EUR 7"},
        {no_point(), 2.5, 6, 2, "     3"},               // no decimals, whatever the call asks
        {no_point(), 1234.4, 6, 3, " 1,234"},
    };
    Renderer r;
    for (const auto& c : cases) {
        EXPECT_EQ(r.run(c.conventions, c.value, c.width, c.decimals), 0);
        EXPECT_EQ(to_utf8(r.text()), c.expected) << c.value << " width " << c.width << "." << c.decimals;
        EXPECT_EQ(r.call().produced, c.width);
        EXPECT_EQ(r.call().decimals, c.decimals) << "decimals restored";
        EXPECT_TRUE(r.guards_intact());
    }
}

TEST(NumberRenderer, CapsAndSpecialValues) {
    Renderer r;
    // Above 32: exactly 32 "*", the width set to 32, whatever the value.
    for (double value : {1.0, std::nan(""), -1e300}) {
        EXPECT_EQ(r.run(english(), value, 33, 2, 1, 40), 0);
        EXPECT_EQ(to_utf8(r.text()), std::string(32, '*'));
        EXPECT_EQ(r.call().width, 32);
        EXPECT_EQ(r.written(), 32u);
        EXPECT_TRUE(r.guards_intact());
    }
    // Width 0 or below: nothing written.
    for (int width : {0, -4}) {
        EXPECT_EQ(r.run(english(), 1.0, width, 2, 1, 8), 0);
        EXPECT_EQ(r.written(), 0u);
    }
    // Unsupported record: -1 and nothing written; the caller falls back.
    EXPECT_EQ(r.run(english(), 1.0, 8, 2, 0), vxlocfmt::nlnum::zkfnum_unsupported);
    EXPECT_EQ(r.written(), 0u);
    // A missing value as the classic rule writes it with 0 decimals; decimals restored.
    EXPECT_EQ(r.run(english(), vxlocfmt::calendar::missing_value(), 6, 2), 0);
    EXPECT_EQ(to_utf8(r.text()), "     .");
    EXPECT_EQ(r.call().decimals, 2);
    EXPECT_EQ(r.run(english(), vxlocfmt::calendar::special_missing_value(vxlocfmt::calendar::missing_code_a), 3, 1), 0);
    EXPECT_EQ(to_utf8(r.text()), "  A");
    // A capacity below the width bounds every write.
    EXPECT_EQ(r.run(english(), 1234567.891, 12, 2, 1, 5), 0);
    EXPECT_TRUE(r.guards_intact());
    EXPECT_EQ(r.written(), 5u);
    // Infinities cannot be shown.
    EXPECT_EQ(r.run(english(), INFINITY, 10, 2), 0);
    EXPECT_EQ(to_utf8(r.text()), std::string(10, '*'));
}

}  // namespace
