// Case mapping: the tables against the Unicode 9.0.0 simple mappings for every code point, round
// trips against ICU's, strings in place, and the service path.

#include <gtest/gtest.h>
#include <unicode/uchar.h>

#include "nls_service.h"
#include "text/case_mapping.h"
#include "text/text_exports.h"
#include "text_fixtures.h"

namespace vxlocfmt::text {
namespace {

using testing::code_points;
using testing::ScopedKernelHandle;
using testing::unicode9;

TEST(CaseTables, EveryCodePointMatchesUnicode9) {
    ScopedKernelHandle no_service(nullptr);
    const auto& u9 = unicode9();
    std::uint32_t changed_beyond_bmp = 0;
    for (char32_t c = 0; c < code_points; ++c) {
        const char32_t lower = c < 0x10000 ? u9.lower[c] : c;  // the tables stop at U+FFFF
        const char32_t upper = c < 0x10000 ? u9.upper[c] : c;
        ASSERT_EQ(table_to_lower(c), lower) << std::hex << uint32_t(c);
        ASSERT_EQ(table_to_upper(c), upper) << std::hex << uint32_t(c);
        ASSERT_EQ(vxtolower(c), lower) << std::hex << uint32_t(c);
        ASSERT_EQ(vxtoupper(c), upper) << std::hex << uint32_t(c);
        if (c >= 0x10000 && (u9.lower[c] != c || u9.upper[c] != c)) ++changed_beyond_bmp;
    }
    EXPECT_GT(changed_beyond_bmp, 0u);  // Deseret, Osage, Adlam...: left unchanged on purpose
    for (char32_t c : {char32_t{0x110000}, char32_t{0xFFFFFFFF}}) {
        EXPECT_EQ(vxtolower(c), c);
        EXPECT_EQ(vxtoupper(c), c);
    }
}

// Where ICU still maps a basic-plane code point as Unicode 9.0.0 did, lower-then-upper and
// upper-then-lower land where ICU's do; that covers the asymmetric pairs (U+0130, U+212A, ...).
TEST(CaseTables, RoundTripsAgreeWithIcu) {
    ScopedKernelHandle no_service(nullptr);
    const auto& u9 = unicode9();
    std::uint32_t round_trips = 0, asymmetric = 0;
    for (char32_t c = 0; c < 0x10000; ++c) {
        const auto u = static_cast<UChar32>(c);
        const auto agrees = [&](char32_t x) {
            return static_cast<char32_t>(u_tolower(static_cast<UChar32>(x))) == u9.lower[x] &&
                   static_cast<char32_t>(u_toupper(static_cast<UChar32>(x))) == u9.upper[x];
        };
        if (!agrees(c) || !agrees(u9.lower[c]) || !agrees(u9.upper[c])) continue;
        ASSERT_EQ(vxtoupper(vxtolower(c)), static_cast<char32_t>(u_toupper(u_tolower(u))))
            << std::hex << uint32_t(c);
        ASSERT_EQ(vxtolower(vxtoupper(c)), static_cast<char32_t>(u_tolower(u_toupper(u))))
            << std::hex << uint32_t(c);
        ASSERT_EQ(vxtolower(vxtolower(c)), vxtolower(c)) << std::hex << uint32_t(c);
        ASSERT_EQ(vxtoupper(vxtoupper(c)), vxtoupper(c)) << std::hex << uint32_t(c);
        if (vxtolower(c) != c) {
            ++round_trips;
            if (vxtoupper(vxtolower(c)) != c) ++asymmetric;
        }
    }
    EXPECT_GT(round_trips, 1000u);
    EXPECT_GT(asymmetric, 0u);
}

TEST(CaseStrings, InPlace) {
    ScopedKernelHandle no_service(nullptr);
    char32_t word[] = U"ÄBC\U00010400";
    vxzstlo(word, 0), vxzstlo(word, -3), vxzstlo(nullptr, 3);  // null, below 1: nothing
    EXPECT_EQ(std::u32string_view(word), U"ÄBC\U00010400");
    EXPECT_EQ(vxzstlo(word, 4), 0u);
    EXPECT_EQ(std::u32string_view(word), U"äbc\U00010400");  // beyond the basic plane: unchanged
    EXPECT_EQ(vxzstup(word, 2), 0u);
    EXPECT_EQ(std::u32string_view(word), U"ÄBc\U00010400");
}

// With the service, ASCII keeps the table mapping and everything else is ICU's, beyond the basic
// plane included.
TEST(CaseService, AsksTheServiceAboveAscii) {
    ScopedKernelHandle with_service(vxhost::nls_service());
    for (char32_t c = 0; c < code_points; ++c) {
        const auto u = static_cast<UChar32>(c);
        const char32_t lower = c < 128 ? table_to_lower(c) : static_cast<char32_t>(u_tolower(u));
        const char32_t upper = c < 128 ? table_to_upper(c) : static_cast<char32_t>(u_toupper(u));
        ASSERT_EQ(vxtolower(c), lower) << std::hex << uint32_t(c);
        ASSERT_EQ(vxtoupper(c), upper) << std::hex << uint32_t(c);
    }
    EXPECT_EQ(vxtolower(0x10400), 0x10428u);
    char32_t text[] = U"ÄBC\U00010400";
    vxzstlo(text, 4);
    EXPECT_EQ(std::u32string_view(text), U"äbc\U00010428");
}

}  // namespace
}  // namespace vxlocfmt::text
