// COMMA, DOLLAR and PERCENT output read back by the informats made for it (N, DOLLAR with "$",
// PERCENT with "%" and parentheses).
#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <vector>

#include "classic/numeric_formats.h"
#include "classic/value_informats.h"
#include "locale_object.h"

namespace {

using namespace vxlocfmt;

TEST(ClassicReadBack, CommaDollarAndPercentOutputReadsBack) {
    const struct {
        format_fn format;
        format_fn informat;
        double shown;  // the format shows value x shown
    } pairs[] = {{vxfmtzfmcomma, vxfmtzifmn, 1}, {vxfmtzfmdollar, vxfmtzifmdlr, 1}, {vxfmtzfmpercent, vxfmtzifmpct, 100}};
    vxhost::LocaleObject* locale = vxhost::LocaleObject::create("en_US");
    std::mt19937_64 random(83);
    for (const auto& pair : pairs) {
        for (int i = 0; i < 2000; ++i) {
            const double value = std::ldexp(static_cast<double>(static_cast<std::int64_t>(random() % 2000001) - 1000000), -7);
            std::vector<wchar> text(24, U' ');
            FmtCall call{};
            call.width = 20;
            call.decimals = 2;
            call.input = &value;
            call.output = text.data();
            call.capacity = 20;
            call.number_format = locale;
            const status written = pair.format(&call, nullptr);
            ASSERT_TRUE(written == 0 || written == st::number_shortened) << value;
            double back = 0;
            FmtCall read{};
            read.width = call.produced;
            read.input = text.data();
            read.input_length = call.produced;
            read.output = &back;
            ASSERT_EQ(pair.informat(&read, nullptr), 0u) << value;
            EXPECT_NEAR(back, value, 0.005 / pair.shown + 1e-9) << value;
        }
    }
    locale->release();
}

}  // namespace
