// Character classes and case mapping over every code point: the tables against the Unicode 9.0.0
// data (and that data against ICU's), the service path against ICU, ansi_ccl, and strings in place.

#include <gtest/gtest.h>
#include <unicode/uchar.h>

#include <algorithm>
#include <array>
#include <span>

#include "nls_service.h"
#include "text/case_mapping.h"
#include "text/char_classes.h"
#include "text/kernel_nls.h"
#include "text/text_exports.h"
#include "text_fixtures.h"
#include "unicode9_tables.h"

namespace vxlocfmt::text {
namespace {

using testing::use_service;

constexpr std::uint32_t code_points = 0x110000;

// The Unicode 9.0.0 data: general categories numbered as ansi_ccl numbers them, and the simple
// case mappings (identity where none).
std::uint8_t category(std::uint32_t c) {
    const auto& runs = testdata::category_runs;
    const auto after = [](std::uint32_t c, const auto& run) { return c < run.first; };
    return std::prev(std::upper_bound(std::begin(runs), std::end(runs), c, after))->category;
}
char32_t mapped(std::span<const testdata::Mapping> table, char32_t c) {
    const auto it = std::lower_bound(table.begin(), table.end(), c, [](const auto& m, char32_t c) { return m.from < c; });
    return it != table.end() && it->from == c ? it->to : c;
}
char32_t lower9(char32_t c) { return mapped(testdata::simple_lower, c); }
char32_t upper9(char32_t c) { return mapped(testdata::simple_upper, c); }

// Each class with its exported predicate and its definition as a set of general categories.
const struct ClassCase {
    CharClass k;
    std::int32_t (*exported)(wchar);
    std::uint32_t categories;
} classes[] = {
    {CharClass::digit, vxnlsisdigit, U_GC_ND_MASK},         {CharClass::lower, vxnlsislower, U_GC_LL_MASK},
    {CharClass::upper, vxnlsisupper, U_GC_LU_MASK},         {CharClass::alpha, vxnlsisalpha, U_GC_L_MASK},
    {CharClass::alnum, vxnlsisalnum, U_GC_L_MASK | U_GC_ND_MASK},
    {CharClass::print, vxnlsisprint, ~(U_GC_C_MASK | U_GC_Z_MASK) | U_GC_ZS_MASK},
    {CharClass::xdigit, vxnlsisxdigit, U_GC_ND_MASK},  // and the hex letters below
    {CharClass::punct, vxnlsispunct, U_GC_P_MASK},          {CharClass::graph, vxnlsisgraph, ~(U_GC_C_MASK | U_GC_Z_MASK)},
    {CharClass::cntrl, vxnlsiscntrl, U_GC_CC_MASK | U_GC_CF_MASK},
};

TEST(CharClassTables, EveryCodePointMatchesUnicode9AndIcu) {
    use_service(nullptr);
    std::uint32_t icu_compared = 0;
    for (std::uint32_t c = 0; c < code_points; ++c) {
        const bool hex_letter = (c >= U'A' && c <= U'F') || (c >= U'a' && c <= U'f') || (c >= 0xFF21 && c <= 0xFF26) ||
                                (c >= 0xFF41 && c <= 0xFF46);
        for (const ClassCase& cc : classes) {
            const bool want = (U_MASK(category(c)) & cc.categories) || (cc.k == CharClass::xdigit && hex_letter);
            ASSERT_EQ(cc.exported(c), std::int32_t{want}) << int(cc.k) << " U+" << std::hex << c;
        }
        const auto u = static_cast<UChar32>(c);
        const auto type = u_charType(u);
        if (type != category(c)) continue;
        ++icu_compared;
        // ICU's graph takes in private use; its print adds Zl and Zp.
        const bool graph = u_isgraph(u) && type != U_PRIVATE_USE_CHAR;
        const bool icu[] = {bool(u_isdigit(u)),  bool(u_islower(u)), bool(u_isupper(u)), bool(u_isalpha(u)),
                            bool(u_isalnum(u)),  graph || type == U_SPACE_SEPARATOR,    bool(u_isxdigit(u)),
                            bool(u_ispunct(u)), graph, type == U_CONTROL_CHAR || type == U_FORMAT_CHAR};
        for (std::size_t k = 0; k < std::size(classes); ++k)
            ASSERT_EQ(classes[k].exported(c), std::int32_t{icu[k]}) << k << " U+" << std::hex << c;
    }
    EXPECT_GT(icu_compared, 1000000u);  // later versions reassigned only a few thousand
    for (const ClassCase& cc : classes) EXPECT_EQ(cc.exported(0xFFFFFFFF), 0) << int(cc.k);
}

// Blanks are ICU's White_Space, with or without the service (they never ask it).
TEST(CharClassTables, BlanksOverEveryCodePoint) {
    for (void* service : {static_cast<void*>(nullptr), vxhost::nls_service()}) {
        use_service(service);
        for (std::uint32_t c = 0; c <= code_points; ++c)
            ASSERT_EQ(vxnlsisspace(c), std::int32_t{u_isUWhiteSpace(static_cast<UChar32>(c))}) << std::hex << c;
        EXPECT_EQ(vxnlsisspace(0xFFFFFFFF), 0);
    }
}

// With the host's service: ASCII from ansi_ccl (whose other words are the Unicode 9.0.0 data), the
// rest from ICU through the service.
TEST(CharClassService, AgreesWithTablesWhereCategoriesAgree) {
    use_service(vxhost::nls_service());
    for (std::uint32_t c = 0; c < 128; ++c) {
        const auto& e = ansi_ccl[c];
        const std::uint32_t want[8] = {c, e[1], category(c), 0, upper9(c) == c ? 0 : upper9(c), lower9(c) == c ? 0 : lower9(c)};
        EXPECT_TRUE(std::equal(e, e + 8, want)) << c;
    }
    for (std::uint32_t c = 0; c < code_points; ++c) {
        if (c >= 128 && u_charType(static_cast<UChar32>(c)) != category(c)) continue;
        for (const ClassCase& cc : classes)
            ASSERT_EQ(cc.exported(c), std::int32_t{table_is_class(cc.k, c)}) << int(cc.k) << " U+" << std::hex << c;
    }
    EXPECT_EQ(vxnlsislower(0x10D0), 1);  // Georgian: Lo in 9.0.0, Ll in ICU: the service answered
}

// The class database is opened once, on the first question that reaches the service.
TEST(CharClassService, OpensTheDatabaseOnceOnFirstNeed) {
    std::array<void*, kernel_nls::service_words> service;
    std::copy_n(static_cast<void**>(vxhost::nls_service()), service.size(), service.begin());
    service[kernel_nls::word_database] = nullptr;
    use_service(service.data());
    const auto opens = vxhost::nls_database_opens();
    EXPECT_EQ(vxnlsisalpha(U'a') + vxnlsisspace(0x3000), 2);  // ASCII and blanks: no database
    EXPECT_EQ(service[kernel_nls::word_database], nullptr);
    EXPECT_EQ(vxnlsisalpha(U'ж') + vxnlsisdigit(U'٣') + vxnlsispunct(U'¿'), 3);
    EXPECT_EQ(vxhost::nls_database_opens(), opens + 1);
    use_service(nullptr);  // not past the copy's life
}

TEST(CaseTables, EveryCodePointMatchesUnicode9) {
    use_service(nullptr);
    std::uint32_t icu_agrees = 0, changed_beyond_bmp = 0;
    for (char32_t c = 0; c < code_points; ++c) {
        const bool bmp = c < 0x10000;  // the tables stop at U+FFFF
        ASSERT_EQ(vxtolower(c), bmp ? lower9(c) : c) << std::hex << uint32_t(c);
        ASSERT_EQ(vxtoupper(c), bmp ? upper9(c) : c) << std::hex << uint32_t(c);
        const auto u = static_cast<UChar32>(c);
        icu_agrees += char32_t(u_tolower(u)) == lower9(c) && char32_t(u_toupper(u)) == upper9(c);
        changed_beyond_bmp += !bmp && (lower9(c) != c || upper9(c) != c);
    }
    EXPECT_GT(icu_agrees, code_points - 400);  // the data is Unicode's: later versions added few pairs
    EXPECT_GT(changed_beyond_bmp, 0u);         // Deseret, Osage, Adlam...: left unchanged on purpose
}

// With the service, ASCII keeps the table mapping and everything else is ICU's, beyond the basic
// plane included.
TEST(CaseService, AsksTheServiceAboveAscii) {
    use_service(vxhost::nls_service());
    for (char32_t c = 0; c < code_points; ++c) {
        const auto u = static_cast<UChar32>(c);
        ASSERT_EQ(vxtolower(c), c < 128 ? table_to_lower(c) : char32_t(u_tolower(u))) << std::hex << uint32_t(c);
        ASSERT_EQ(vxtoupper(c), c < 128 ? table_to_upper(c) : char32_t(u_toupper(u))) << std::hex << uint32_t(c);
    }
}

TEST(CaseStrings, InPlace) {
    use_service(nullptr);
    char32_t word[] = U"ÄBC\U00010400";
    vxzstlo(word, 0), vxzstlo(word, -3), vxzstlo(nullptr, 3);  // null, below 1: nothing
    EXPECT_EQ(std::u32string_view(word), U"ÄBC\U00010400");
    EXPECT_EQ(vxzstlo(word, 4) | vxzstup(word, 2), 0u);
    EXPECT_EQ(std::u32string_view(word), U"ÄBc\U00010400");  // beyond the basic plane: unchanged
}

}  // namespace
}  // namespace vxlocfmt::text
