// NLBEST, NLD, NLPCTN and NLPCTP through the loaded library: in a locale whose decimal point is
// "," each is its en_US text (the classic renderer's) with the first "." replaced.
#include <gtest/gtest.h>

#include <string>

#include "library.h"
#include "session.h"
#include "text_convert.h"

namespace {

vxhost::SessionOptions options_for(const char* id) {
    vxhost::SessionOptions options;
    options.locale = id;
    return options;
}

TEST(PointReplaced, CommaLocaleIsTheClassicTextWithItsFirstPointReplaced) {
    vxhost::Library library;
    vxhost::Session english(library, options_for("en_US"));
    vxhost::Session german(library, options_for("de_DE"));
    const double values[] = {0.0, 1.5, -0.25, 1234.5678, -9.995, 1.5e20, -1.25e-30, 1e15, 0.125};
    for (const char32_t* name : {U"NLBEST", U"NLD", U"NLPCTN", U"NLPCTP"}) {
        const vxlocfmt::FuncInfo& row = *library.find(name);
        for (double value : values)
            for (int width = 1; width <= 32; ++width) {
                std::u32string expected(english.format(row, width, 2, value).text);
                if (const auto dot = expected.find(U'.'); dot != std::u32string::npos) expected[dot] = U',';
                const vxhost::FormatResult got = german.format(row, width, 2, value);
                ASSERT_EQ(vxhost::to_utf8(got.text), vxhost::to_utf8(expected)) << value << " width " << width;
                ASSERT_EQ(got.code, 0u);
            }
    }
}

TEST(PointReplaced, EdgeCases) {
    vxhost::Library library;
    vxhost::Session german(library, options_for("de_DE"));
    auto text = [&](const char32_t* name, int width, int decimals, double value) {
        return vxhost::to_utf8(german.format(*library.find(name), width, decimals, value).text);
    };
    EXPECT_EQ(text(U"NLBEST", 12, 0, 1.5), "         1,5");
    EXPECT_EQ(text(U"NLBEST", 8, 0, 1.5e20), " 1,5E+20");  // "E" notation keeps its point replaced too
    EXPECT_EQ(text(U"NLPCTN", 8, 1, -0.25), " -25,0% ");
    EXPECT_EQ(text(U"NLPCTP", 8, 0, -0.25), "(   25%)");
    EXPECT_EQ(text(U"NLD", 8, 2, 1234.5), " 1234,50");
}

}  // namespace
