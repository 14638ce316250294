// The missing-value field and the range guard, through a call record whose output has canaries
// past the capacity.

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <string>

#include "calendar/missing_value.h"
#include "case_table.h"

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

double value_of(const std::string& text) {
    if (text == "missing") return cal::missing_value();
    if (text.starts_with("missing:")) return cal::special_missing_value(std::stoi(text.substr(8)));
    return std::stod(text);
}

TEST(MissingValue, FieldAndRangeGuard) {
    for (const case_table::Row& row : case_table::read("calendar/missing_value_cases.tsv")) {
        SCOPED_TRACE(row.where());
        if (row[0] == "field") {
            Call t(value_of(row[1]), row.integer(2), row.integer(3), row.integer(4));
            EXPECT_EQ(cal::zfmmiss(t.call), 0);
            EXPECT_EQ(t.text(row.wide(5).size() + 1), row.wide(5) + U"#");
            EXPECT_EQ(t.call.produced, row.integer(2));
            continue;
        }
        const int kind = row[2] == "date" ? cal::range_kind_date : row[2] == "time" ? cal::range_kind_time
                         : row[2] == "datetime" ? cal::range_kind_datetime : row.integer(2);
        const int answer = row[3] == "ok" ? cal::range_ok : row[3] == "out" ? cal::range_out : cal::range_missing;
        Call t(value_of(row[1]), 6, 2, 16);
        EXPECT_EQ(cal::zdatrng(t.call, kind), answer);
        EXPECT_EQ(t.call.decimals, 2);  // restored
        EXPECT_EQ(t.text(row.wide(4).size() + 1), row.wide(4) + U"#");
        EXPECT_EQ(t.call.produced, row[4].empty() ? -7 : 6);
    }
    Call narrow(1e20, 10, 0, 4);  // the stars stop at the capacity
    EXPECT_EQ(cal::zdatrng(narrow.call, cal::range_kind_datetime), cal::range_out);
    EXPECT_EQ(narrow.text(5), U"****#");
}

}  // namespace
