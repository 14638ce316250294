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
#include "locale/property_table.h"
#include "locale_object.h"
#include "nldate/expander.h"

namespace {

using namespace vxlocfmt;

// Every name 160 characters long, and "%x" (property 28) a pattern of forty "%A%B" pairs.
std::unique_ptr<PropertyCache> longest_names() {
    auto t = std::make_unique<PropertyCache>();
    std::memset(t.get(), 0, sizeof(PropertyCache));
    for (std::uint32_t n = 0; n < property_count; ++n) {
        Property& p = t->properties[n];
        p.number = n;
        p.length = property_value_cells;
        for (std::size_t i = 0; i < property_value_cells; ++i)
            p.value[i] = n == 28 ? U"%A%B"[i % 4] : static_cast<wchar>(U'a' + i % 26);
    }
    return t;
}

TEST(WorstCase, ExpanderTextFarBeyondItsWorkingCells) {
    const auto table = longest_names();
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
        EXPECT_EQ(out.data()[0], width > 0 ? U'a' : U'a');
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
