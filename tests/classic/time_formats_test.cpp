// The clock formats against an independent integer computation of h:mm:ss, plus the carries,
// the 12-hour clock and the time of day.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <string>
#include <vector>

#include "case_table.h"
#include "classic/time_formats.h"
#include "locale_object.h"
#include "text_convert.h"

namespace {

using namespace vxlocfmt;

struct Clock {
    vxhost::LocaleObject* locale = vxhost::LocaleObject::create("en_US");
    std::vector<wchar> cells = std::vector<wchar>(80, U'~');
    ~Clock() { locale->release(); }

    std::string run(format_fn format, double value, int width, int decimals, status* code = nullptr) {
        std::fill(cells.begin(), cells.end(), U'~');
        FmtCall call{};
        call.width = width;
        call.decimals = decimals;
        call.input = &value;
        call.output = cells.data() + 4;
        call.capacity = width;
        call.number_format = locale;
        const status s = format(&call, nullptr);
        if (code) *code = s;
        for (std::size_t i = 0; i < cells.size(); ++i) {
            const bool inside = i >= 4 && i < 4 + static_cast<std::size_t>(std::max(width, 0));
            EXPECT_EQ(cells[i] != U'~', inside) << "cell " << i << " of " << value << " at width " << width;
        }
        EXPECT_EQ(call.produced, width);
        return vxhost::to_utf8({cells.data() + 4, static_cast<std::size_t>(std::max(width, 0))});
    }
};

std::string right(const std::string& text, int width) {
    return text.size() >= static_cast<std::size_t>(width) ? text : std::string(width - text.size(), ' ') + text;
}

TEST(ClockFormats, WholeSecondsMatchIntegerArithmetic) {
    Clock clock;
    for (long s = -90000; s <= 400000; s += 7) {
        const long a = std::labs(s);
        char text[40];
        std::snprintf(text, sizeof text, "%s%ld:%02ld:%02ld", s < 0 ? "-" : "", a / 3600, a / 60 % 60, a % 60);
        ASSERT_EQ(clock.run(vxfmtzfmtime, double(s), 12, 0), right(text, 12)) << s;
    }
}

TEST(ClockFormats, FractionsRoundWithoutShowingSixtySeconds) {
    Clock clock;
    // Hundredths plus a thousandth: never a tie, so the expected text is plain integer work.
    for (long centis = 0; centis < 3 * 360000; centis += 13) {
        const double value = centis / 100.0 + 0.001;
        const long rounded = centis;  // 0.001 rounds away at two decimals
        char text[40];
        std::snprintf(text, sizeof text, "%ld:%02ld:%02ld.%02ld", rounded / 360000, rounded / 6000 % 60,
                      rounded / 100 % 60, rounded % 100);
        ASSERT_EQ(clock.run(vxfmtzfmtime, value, 14, 2), right(text, 14)) << value;
    }
}

TEST(ClockFormats, EdgeCases) {
    Clock clock;
    for (const case_table::Row& row : case_table::read("classic/clock_cases.tsv")) {
        const format_fn format = row[0] == "time" ? vxfmtzfmtime : row[0] == "timm" ? vxfmtzfmtimm : vxfmtzfmtod;
        EXPECT_EQ(clock.run(format, row.number(1), row.integer(2), row.integer(3)), row[4]) << row.where();
    }
}

TEST(ClockFormats, MissingOutOfRangeAndLimits) {
    Clock clock;
    status code = 99;
    EXPECT_EQ(clock.run(vxfmtzfmtime, std::nan(""), 8, 2, &code), "       .");
    EXPECT_EQ(code, 0u);
    EXPECT_EQ(clock.run(vxfmtzfmtime, 6e11, 8, 0, &code), "********");
    EXPECT_EQ(code, 1u);  // the range service's own code
    const struct {
        int width, decimals;
        status expected;
    } limits[] = {{1, 0, 2}, {41, 0, 3}, {8, -1, 4}, {8, 40, 5}, {40, 39, 0}};
    for (const auto& c : limits) {
        for (format_fn format : {vxfmtzfmtime, vxfmtzfmtimm, vxfmtzfmtod}) {
            double value = 1;
            std::vector<wchar> out(64);
            FmtCall call{};
            call.width = c.width;
            call.decimals = c.decimals;
            call.input = &value;
            call.output = out.data();
            call.capacity = 64;
            call.number_format = clock.locale;
            call.flags = call_flag_check_limits;
            EXPECT_EQ(format(&call, nullptr), c.expected) << c.width << "." << c.decimals;
        }
    }
}

}  // namespace
