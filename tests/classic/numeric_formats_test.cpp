// The classic numeric renderers: their edge cases, and every renderer at every width from 1 to
// 40 with guard cells around the field.
#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <random>
#include <string>
#include <vector>

#include "calendar/missing_value.h"
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
    struct Case {
        format_fn format;
        double value;
        int width, decimals;
        const char* text;
    };
    const double missing = calendar::missing_value();
    const Case cases[] = {
        {vxfmtzfmcomma, 1234567.891, 12, 2, "1,234,567.89"},
        {vxfmtzfmcomma, 1234567.891, 11, 2, "1,234,567.9"},
        {vxfmtzfmcomma, -1234.5, 10, 2, " -1,234.50"},
        {vxfmtzfmdollar, 1234.5, 10, 2, " $1,234.50"},
        {vxfmtzfmdollar, -1234.5, 11, 2, " $-1,234.50"},
        {vxfmtzfmdollar, 1234567890123.0, 10, 2, " 1.235E+12"},
        {vxfmtzfmdollar, missing, 6, 2, "     ."},
        {vxfmtzfmn, 1234.5, 8, 2, " 1234.50"},
        {vxfmtzfmn, 2.5, 3, 0, "  3"},
        {vxfmtzfmpercent, -0.25, 8, 0, "(   25%)"},
        {vxfmtzfmpercent, 0.125, 8, 1, "  12.5% "},
        {vxfmtzfmpercent, missing, 8, 0, "     .  "},
        {vxfmtzfmpercent, calendar::special_missing_value(calendar::missing_code_a), 6, 0, "   A  "},
        {vxfmtzfmpercentn, -0.25, 8, 0, "   -25% "},
        {vxfmtzfmpercentn, 0.25, 8, 0, "    25% "},
        {vxfmtzfmbest, 1234.5678, 6, 0, "1234.6"},
        {vxfmtzfmbest, 1e40, 6, 0, " 1E+40"},
        {vxfmtzfmbestdt, 0.1 + 0.2, 12, 0, "         0.3"},
        {vxfmtzfmt, -2.5, 5, 0, " -2.5"},
        {vxfmtzfme, 12345.678, 10, 0, " 1.235E+04"},
        {vxfmtzfme, 12345.678, 7, 0, "1.2E+04"},
        {vxfmtzfme, -12345.678, 7, 0, " -1E+04"},
        {vxfmtzfmd, 3.14159, 6, 4, "3.1416"},
        {vxfmtzfmd, 3.14159, 6, 2, "  3.14"},
        {vxfmtzfmd, 1234567.0, 6, 2, " 1E+06"},
        {vxfmtzfmd, 0.0001, 8, 2, "0.000100"},
        {vxfmtzfmd, missing, 4, 2, "   ."},
    };
    Renderer r;
    for (const Case& c : cases) {
        EXPECT_EQ(r.run(c.format, c.value, c.width, c.decimals), c.text) << c.value << " width " << c.width;
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
