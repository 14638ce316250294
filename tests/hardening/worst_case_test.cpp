// The fixed buffers at their worst cases, run under the sanitizers in CI: the expander's 2048-cell
// working text overrun by names of 160 characters, and the clock text with 10 hour digits and 39
// decimals.
#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "classic/time_formats.h"
#include "harness.h"
#include "longest_table.h"
#include "locale/property_table.h"
#include "locale_object.h"
#include "nldate/expander.h"

namespace {

using namespace vxlocfmt;

TEST(WorstCase, ExpanderTextFarBeyondItsWorkingCells) {
    // "%x" (property 28) is a pattern of forty "%A%B" pairs; every name is 160 characters.
    const auto table = vxfuzz::longest_table(U"%A%B");
    // Each "%x" becomes 80 names of 160 characters: 12,800 characters, six times the 2048 cells.
    const std::u32string pattern = U"%x%x%x";
    std::int32_t measured = 0;
    const std::int32_t length = nldate::expand(pattern.data(), static_cast<std::int32_t>(pattern.size()), nullptr, 0,
                                               &measured, 0, *table, nullptr, 0, 0, 0, 0);
    EXPECT_EQ(length, 3 * 80 * 160);  // measured whole, though only 2048 cells are kept
    for (std::int32_t width : {200, -200, 2048, 2049}) {
        vxfuzz::GuardedCells<char32_t> out(static_cast<std::size_t>(std::abs(width)));
        std::int32_t w = width;
        EXPECT_EQ(nldate::expand(pattern.data(), static_cast<std::int32_t>(pattern.size()), out.data(), std::abs(width),
                                 &w, 0, *table, nullptr, 0, 0, 0, 0),
                  nldate::expand_cut);
        out.expect_untouched_beyond(static_cast<std::size_t>(std::abs(width)), "expander");
        EXPECT_TRUE(out.data()[0] >= U'a' && out.data()[0] <= U'z');  // the cut keeps the text's start
    }
}

TEST(WorstCase, ClockTextWithTenHourDigitsAndThirtyNineDecimals) {
    vxhost::LocaleObject* locale = vxhost::LocaleObject::create("en_US");
    for (double value : {2147483647.0 * 3600 + 59.5, -2147483647.0 * 3600 - 3599.999999, 1e300}) {
        for (std::int32_t decimals : {0, 39}) {
            vxfuzz::GuardedCells<char32_t> out(40);
            FmtCall call{};
            call.width = 40;
            call.decimals = decimals;
            call.input = &value;
            call.output = out.data();
            call.capacity = 40;
            call.number_format = locale;
            for (format_fn f : {vxfmtzfmtime, vxfmtzfmtimm, vxfmtzfmtod}) {
                f(&call, nullptr);
                out.expect_untouched_beyond(40, "clock format");
            }
        }
    }
    locale->release();
}

}  // namespace
