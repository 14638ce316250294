// Character classes: the table path against the Unicode 9.0.0 data for every code point, against
// ICU where ICU's category is still the 9.0.0 one, and the service path against both.

#include <gtest/gtest.h>
#include <unicode/uchar.h>

#include <algorithm>
#include <array>

#include "nls_service.h"
#include "text/char_classes.h"
#include "text/kernel_nls.h"
#include "text/text_exports.h"
#include "text_fixtures.h"


namespace vxlocfmt::text {
namespace {

using testing::code_points;
using testing::ScopedKernelHandle;
using testing::unicode9;

struct ClassCase {
    CharClass k;
    const char* name;
    std::int32_t (*exported)(char32_t);
};
constexpr ClassCase classes[] = {
    {CharClass::digit, "digit", vxnlsisdigit}, {CharClass::lower, "lower", vxnlsislower},
    {CharClass::upper, "upper", vxnlsisupper}, {CharClass::alpha, "alpha", vxnlsisalpha},
    {CharClass::alnum, "alnum", vxnlsisalnum}, {CharClass::print, "print", vxnlsisprint},
    {CharClass::xdigit, "xdigit", vxnlsisxdigit}, {CharClass::punct, "punct", vxnlsispunct},
    {CharClass::graph, "graph", vxnlsisgraph}, {CharClass::cntrl, "cntrl", vxnlsiscntrl},
};

// The class definitions over a general category (numbered as u_charType numbers them).
bool expected(CharClass k, std::uint8_t cat, char32_t c) {
    const std::uint32_t m = U_MASK(cat);
    const bool hex_letter = (c >= U'A' && c <= U'F') || (c >= U'a' && c <= U'f') ||
                            (c >= 0xFF21 && c <= 0xFF26) || (c >= 0xFF41 && c <= 0xFF46);
    const bool graph = !(m & (U_GC_C_MASK | U_GC_Z_MASK));
    switch (k) {
        case CharClass::digit: return m & U_GC_ND_MASK;
        case CharClass::lower: return m & U_GC_LL_MASK;
        case CharClass::upper: return m & U_GC_LU_MASK;
        case CharClass::alpha: return m & U_GC_L_MASK;
        case CharClass::alnum: return m & (U_GC_L_MASK | U_GC_ND_MASK);
        case CharClass::print: return graph || (m & U_GC_ZS_MASK);
        case CharClass::xdigit: return (m & U_GC_ND_MASK) || hex_letter;
        case CharClass::punct: return m & U_GC_P_MASK;
        case CharClass::graph: return graph;
        case CharClass::cntrl: return m & (U_GC_CC_MASK | U_GC_CF_MASK);
    }
    return false;
}

TEST(CharClassTables, EveryCodePointMatchesUnicode9) {
    ScopedKernelHandle no_service(nullptr);
    const auto& u9 = unicode9();
    for (const ClassCase& cc : classes) {
        int wrong = 0;
        for (char32_t c = 0; c < code_points && wrong < 5; ++c) {
            const bool want = expected(cc.k, u9.category[c], c);
            if (table_is_class(cc.k, c) != want || cc.exported(c) != std::int32_t{want}) {
                ADD_FAILURE() << cc.name << " U+" << std::hex << std::uppercase << uint32_t(c);
                ++wrong;
            }
        }
        for (char32_t c : {char32_t{0x110000}, char32_t{0x7FFFFFFF}, char32_t{0xFFFFFFFF}}) {
            EXPECT_EQ(cc.exported(c), 0) << cc.name << " beyond the code space";
        }
    }
}

TEST(CharClassTables, RangeTablesAreSortedAndDisjoint) {
    for (const ClassCase& cc : classes) {
        const auto table = ranges_of(cc.k);
        if (cc.k == CharClass::alnum) {
            EXPECT_TRUE(table.empty());
            continue;
        }
        ASSERT_FALSE(table.empty()) << cc.name;
        for (std::size_t i = 0; i < table.size(); ++i) {
            EXPECT_LE(table[i].low, table[i].high) << cc.name << " " << i;
            EXPECT_LE(table[i].high, 0x10FFFFu) << cc.name << " " << i;
            if (i > 0) {
                EXPECT_LT(table[i - 1].high, table[i].low) << cc.name << " " << i;
            }
        }
    }
    // The fixed sizes, and tables that reach past the basic plane.
    const std::pair<CharClass, std::size_t> sizes[] = {
        {CharClass::digit, 54},  {CharClass::lower, 633},  {CharClass::upper, 627},
        {CharClass::alpha, 571}, {CharClass::print, 641},  {CharClass::xdigit, 58},
        {CharClass::punct, 168}, {CharClass::graph, 641},  {CharClass::cntrl, 20}};
    for (auto [k, n] : sizes) {
        EXPECT_EQ(ranges_of(k).size(), n);
        EXPECT_GT(ranges_of(k).back().high, 0xFFFFu);
    }
    EXPECT_EQ(std::size(spaceranges), 11u);
}

// ICU's own data, where its category of a code point is still the Unicode 9.0.0 one.
TEST(CharClassTables, AgreeWithIcuWhereCategoriesAgree) {
    ScopedKernelHandle no_service(nullptr);
    const auto& u9 = unicode9();
    std::uint32_t compared = 0;
    for (char32_t c = 0; c < code_points; ++c) {
        if (u_charType(static_cast<UChar32>(c)) != u9.category[c]) continue;
        ++compared;
        const UChar32 u = static_cast<UChar32>(c);
        const bool private_use = u_charType(u) == U_PRIVATE_USE_CHAR;
        ASSERT_EQ(vxnlsisdigit(c), u_isdigit(u)) << std::hex << uint32_t(c);
        ASSERT_EQ(vxnlsislower(c), u_islower(u)) << std::hex << uint32_t(c);
        ASSERT_EQ(vxnlsisupper(c), u_isupper(u)) << std::hex << uint32_t(c);
        ASSERT_EQ(vxnlsisalpha(c), u_isalpha(u)) << std::hex << uint32_t(c);
        ASSERT_EQ(vxnlsisxdigit(c), u_isxdigit(u)) << std::hex << uint32_t(c);
        ASSERT_EQ(vxnlsispunct(c), u_ispunct(u)) << std::hex << uint32_t(c);
        // ICU counts private use as graphic; the library's graph is everything outside C and Z.
        ASSERT_EQ(vxnlsisgraph(c), u_isgraph(u) && !private_use) << std::hex << uint32_t(c);
        ASSERT_EQ(vxnlsisprint(c), (u_isgraph(u) && !private_use) || (u_isblank(u) && c != U'\t'))
            << std::hex << uint32_t(c);
        ASSERT_EQ(vxnlsisalnum(c), u_isalnum(u)) << std::hex << uint32_t(c);
    }
    EXPECT_GT(compared, 1000000u);  // the newer versions reassigned only a few thousand
}

TEST(CharClassBlanks, EveryCodePoint) {
    const char32_t listed[] = {9,    10,   11,   12,   13,   32,   133,  160,  5760,
                               8192, 8193, 8194, 8195, 8196, 8197, 8198, 8199, 8200,
                               8201, 8202, 8232, 8233, 8239, 8287, 12288};
    for (void* service : {static_cast<void*>(nullptr), vxhost::nls_service()}) {
        ScopedKernelHandle handle(service);  // the blank test never asks the service
        for (char32_t c = 0; c <= code_points; ++c) {
            const bool want = std::find(std::begin(listed), std::end(listed), c) != std::end(listed);
            ASSERT_EQ(vxnlsisspace(c), std::int32_t{want}) << std::hex << uint32_t(c);
            ASSERT_EQ(want, u_isUWhiteSpace(static_cast<UChar32>(c)) != 0) << std::hex << uint32_t(c);
        }
        EXPECT_EQ(vxnlsisspace(0xFFFFFFFF), 0);
    }
}

TEST(CharClassEdges, Listed) {
    ScopedKernelHandle no_service(nullptr);
    EXPECT_EQ(vxnlsisspace(0x00A0), 1);
    EXPECT_EQ(vxnlsisspace(0x3000), 1);
    EXPECT_EQ(vxnlsisspace(0x200B), 0);
    EXPECT_LT(lowerranges[std::size(lowerranges) - 1].high, 0x1F600u);
    EXPECT_EQ(vxnlsislower(0x1F600), 0);  // beyond the last range: the search ends empty
    EXPECT_EQ(vxnlsisdigit(0x1E950), 1);  // last digit range, beyond the basic plane
    EXPECT_EQ(vxnlsisxdigit(0xFF21), 1);
    EXPECT_EQ(vxnlsisxdigit(U'G'), 0);
    EXPECT_EQ(vxnlsisalnum(U'٣'), 1);
}

TEST(AnsiCcl, EntriesMatchTheTablePath) {
    const auto& u9 = unicode9();
    for (std::uint32_t c = 0; c < 128; ++c) {
        const auto& e = ansi_ccl[c];
        EXPECT_EQ(e[ccl_code_point], c);
        EXPECT_EQ(e[ccl_category], u9.category[c]) << c;
        EXPECT_EQ(e[ccl_upper], u9.upper[c] == c ? 0 : u9.upper[c]) << c;
        EXPECT_EQ(e[ccl_lower], u9.lower[c] == c ? 0 : u9.lower[c]) << c;
        EXPECT_EQ(e[3] | e[6] | e[7], 0u) << c;
        for (const ClassCase& cc : classes) {
            EXPECT_EQ((e[ccl_class_bits] & class_mask_of(cc.k)) != 0, table_is_class(cc.k, c))
                << cc.name << " " << c;
        }
    }
    EXPECT_EQ(ansi_ccl[U'\t'][ccl_class_bits], class_bit::control);
    EXPECT_EQ(ansi_ccl[U' '][ccl_class_bits], class_bit::blank);
}

// With the host's service: ASCII from ansi_ccl, the rest from ICU through the service. Where ICU
// still has the 9.0.0 category, both paths must agree.
TEST(CharClassService, AgreesWithTablePathWhereCategoriesAgree) {
    ScopedKernelHandle with_service(vxhost::nls_service());
    const auto& u9 = unicode9();
    for (char32_t c = 0; c < code_points; ++c) {
        if (c >= 128 && u_charType(static_cast<UChar32>(c)) != u9.category[c]) continue;
        for (const ClassCase& cc : classes) {
            ASSERT_EQ(cc.exported(c), std::int32_t{table_is_class(cc.k, c)})
                << cc.name << " U+" << std::hex << uint32_t(c);
        }
    }
    // A code point assigned after 9.0.0 shows that the service, not the table, answered.
    EXPECT_EQ(vxnlsisalpha(0x10D0), 1);   // Georgian: Lo then, Ll now
    EXPECT_EQ(vxnlsislower(0x10D0), 1);
    EXPECT_EQ(table_is_class(CharClass::lower, 0x10D0), false);
}

// The class database is opened once, on the first question that reaches the service.
TEST(CharClassService, OpensTheDatabaseOnceOnFirstNeed) {
    std::array<void*, kernel_nls::service_words> service;
    std::copy_n(static_cast<void**>(vxhost::nls_service()), service.size(), service.begin());
    service[kernel_nls::word_database] = nullptr;
    ScopedKernelHandle with_service(service.data());
    const auto opens = vxhost::nls_database_opens();

    EXPECT_EQ(vxnlsisalpha(U'a'), 1);  // ASCII: from ansi_ccl, no database
    EXPECT_EQ(vxnlsisspace(0x3000), 1);  // blanks: always the table
    EXPECT_EQ(service[kernel_nls::word_database], nullptr);
    EXPECT_EQ(vxnlsisalpha(U'ж'), 1);
    EXPECT_NE(service[kernel_nls::word_database], nullptr);
    EXPECT_EQ(vxnlsisdigit(U'٣'), 1);
    EXPECT_EQ(vxnlsispunct(U'¿'), 1);
    EXPECT_EQ(vxhost::nls_database_opens(), opens + 1);
}

}  // namespace
}  // namespace vxlocfmt::text
