// The classic numeric renderers: their edge cases, and every renderer at every width from 1 to
// 40 with guard cells around the field.
#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <random>
#include <string>
#include <vector>

#include "calendar/missing_value.h"
#include "case_table.h"
#include "classic/d_rule.h"
#include "classic/numeric_formats.h"
#include "locale_object.h"
#include "text_convert.h"

namespace {

using namespace vxlocfmt;

constexpr std::size_t guard = 4;

struct Renderer {
    vxhost::LocaleObject* locale = vxhost::LocaleObject::create("en_US");
    std::vector<wchar> cells = std::vector<wchar>(330, U'~');
    status code = 0;
    std::int32_t produced = 0;
    ~Renderer() { locale->release(); }

    // The text of the field; fails when a cell outside min(width, capacity) was touched.
    std::string run(format_fn format, double value, int width, int decimals, int capacity = -1) {
        if (capacity < 0) capacity = width;
        std::fill(cells.begin(), cells.end(), U'~');
        FmtCall call{};
        call.width = width;
        call.decimals = decimals;
        call.input = &value;
        call.output = cells.data() + guard;
        call.capacity = capacity;
        call.number_format = locale;
        code = format(&call, nullptr);
        produced = call.produced;
        const std::size_t limit = static_cast<std::size_t>(std::max(0, std::min(width, capacity)));
        for (std::size_t i = 0; i < cells.size(); ++i)
            if (i < guard || i >= guard + limit) {
                EXPECT_EQ(cells[i], U'~') << "cell " << i << " of " << value << " at width " << width;
            }
        std::u32string text;
        for (std::size_t i = 0; i < limit && cells[guard + i] != U'~'; ++i) text += cells[guard + i];
        return vxhost::to_utf8(text);
    }
};

TEST(ClassicNumbers, EdgeCases) {
    const std::pair<std::string_view, format_fn> named[] = {
        {"fmn", vxfmtzfmn},       {"fmcomma", vxfmtzfmcomma}, {"fmdollar", vxfmtzfmdollar}, {"fmpercent", vxfmtzfmpercent},
        {"fmpercentn", vxfmtzfmpercentn}, {"fmbest", vxfmtzfmbest}, {"fmbestdt", vxfmtzfmbestdt}, {"fmt", vxfmtzfmt},
        {"fme", vxfmtzfme},       {"fmd", vxfmtzfmd}};
    Renderer r;
    for (const case_table::Row& row : case_table::read("classic/numeric_cases.tsv")) {
        const auto format = std::find_if(std::begin(named), std::end(named), [&](auto& n) { return n.first == row[0]; });
        ASSERT_NE(format, std::end(named)) << row.where();
        const double value = row[1] == "missing" ? calendar::missing_value()
                             : row[1] == ".A"    ? calendar::special_missing_value(calendar::missing_code_a)
                                                 : row.number(1);
        EXPECT_EQ(r.run(format->second, value, row.integer(2), row.integer(3)), row[4]) << row.where();
    }
    // BEST beyond 32 cells: blanks in front of a 32-cell rendering.
    const std::string narrow = r.run(vxfmtzfmbest, 1.0 / 3, 32, 0);
    EXPECT_EQ(narrow, "               0.333333333333333");
    EXPECT_EQ(r.run(vxfmtzfmbest, 1.0 / 3, 36, 0), "    " + narrow);
    EXPECT_EQ(r.produced, 36);
}

TEST(ClassicNumbers, DRuleKeepsWhatTheWidthAllows) {
    EXPECT_EQ(classic::d_rule_decimals(3.14159, 6, 4), 4);
    EXPECT_EQ(classic::d_rule_decimals(-3.14159, 6, 4), 3);
    EXPECT_EQ(classic::d_rule_decimals(123456.0, 6, 2), 0);
    EXPECT_EQ(classic::d_rule_decimals(1234567.0, 6, 2), -1);
    EXPECT_EQ(classic::d_rule_decimals(0.0001, 6, 2), -1);
    EXPECT_EQ(classic::d_rule_decimals(0.0, 6, 2), 2);
}

TEST(ClassicNumbers, EveryWidthStaysInItsField) {
    const format_fn formats[] = {vxfmtzfmn,       vxfmtzfmcomma, vxfmtzfmdollar, vxfmtzfmpercent,
                                 vxfmtzfmpercentn, vxfmtzfmbest,  vxfmtzfmbestdt, vxfmtzfmt,
                                 vxfmtzfme,        vxfmtzfmd};
    const double values[] = {0.0, -0.0, 1.5, -1234567.891, 9.995, 1e-7, -1e300, 5e-324, std::nan(""),
                             calendar::missing_value(), HUGE_VAL};
    Renderer r;
    for (format_fn format : formats)
        for (double value : values)
            for (int width = 1; width <= 40; ++width)
                for (int decimals : {0, 2, 12})
                    for (int capacity : {width, width - 1, width / 2}) {
                        r.run(format, value, width, decimals, capacity);
                        ASSERT_LE(r.produced, std::max(width, 0)) << value << " width " << width;
                    }
}

// What the fuzz target does, as a quick random sweep: any bit pattern, widths -5 to 300,
// decimals -2 to 40, capacities at, below and above the width.
TEST(ClassicNumbers, AnyValueWidthAndDecimalsStayInTheField) {
    const format_fn formats[] = {vxfmtzfmn,       vxfmtzfmcomma, vxfmtzfmdollar, vxfmtzfmpercent,
                                 vxfmtzfmpercentn, vxfmtzfmbest,  vxfmtzfmbestdt, vxfmtzfmt,
                                 vxfmtzfme,        vxfmtzfmd};
    std::mt19937_64 rng(13);
    Renderer r;
    for (int i = 0; i < 20000; ++i) {
        const std::uint64_t bits = rng();
        const double value = i % 2 ? std::bit_cast<double>(bits) : static_cast<double>(static_cast<std::int32_t>(bits)) / 1000;
        const int width = static_cast<int>(rng() % 306) - 5;
        const int decimals = static_cast<int>(rng() % 43) - 2;
        const int capacity = std::max(0, width + static_cast<int>(rng() % 9) - 4);
        r.run(formats[i % std::size(formats)], value, width, decimals, std::min(capacity, 320));
        ASSERT_LE(r.produced, std::max(width, 0)) << value << " width " << width;
    }
}

}  // namespace
