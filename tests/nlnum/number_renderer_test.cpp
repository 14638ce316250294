// The locale number renderer on hand-written conventions: the retry order, the pattern pieces,
// the parenthesis blank, the 32-character cap, the missing value and the unsupported record.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>

#include "calendar/missing_value.h"
#include "case_table.h"
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
    const std::pair<std::string_view, NumberConventions> records[] = {
        {"english", english()},  {"german", german()},         {"parentheses", parentheses()},
        {"sign_after", sign_after()}, {"euro_before", euro_before()}, {"no_point", no_point()}};
    Renderer r;
    for (const case_table::Row& row : case_table::read("nlnum/renderer_cases.tsv")) {
        SCOPED_TRACE(row.where());
        const auto record = std::find_if(std::begin(records), std::end(records), [&](auto& c) { return c.first == row[0]; });
        ASSERT_NE(record, std::end(records));
        EXPECT_EQ(r.run(record->second, row.number(1), row.integer(2), row.integer(3)), 0);
        EXPECT_EQ(to_utf8(r.text()), row[4]);
        EXPECT_EQ(r.call().produced, row.integer(2));
        EXPECT_EQ(r.call().decimals, row.integer(3)) << "decimals restored";
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
