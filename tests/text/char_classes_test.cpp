// Character classes over every code point: the table path against the Unicode 9.0.0 data and
// against ICU where ICU's category is still the 9.0.0 one; ansi_ccl and the service path too.

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

// Each class with its exported predicate and its definition as a set of general categories.
const struct ClassCase {
    CharClass k;
    std::int32_t (*exported)(wchar);
    std::uint32_t categories;
} classes[] = {
    {CharClass::digit, vxnlsisdigit, U_GC_ND_MASK},
    {CharClass::lower, vxnlsislower, U_GC_LL_MASK},
    {CharClass::upper, vxnlsisupper, U_GC_LU_MASK},
    {CharClass::alpha, vxnlsisalpha, U_GC_L_MASK},
    {CharClass::alnum, vxnlsisalnum, U_GC_L_MASK | U_GC_ND_MASK},
    {CharClass::print, vxnlsisprint, ~(U_GC_C_MASK | U_GC_Z_MASK) | U_GC_ZS_MASK},
    {CharClass::xdigit, vxnlsisxdigit, U_GC_ND_MASK},  // and the hex letters below
    {CharClass::punct, vxnlsispunct, U_GC_P_MASK},
    {CharClass::graph, vxnlsisgraph, ~(U_GC_C_MASK | U_GC_Z_MASK)},
    {CharClass::cntrl, vxnlsiscntrl, U_GC_CC_MASK | U_GC_CF_MASK},
};

bool expected(const ClassCase& cc, std::uint8_t category, wchar c) {
    const bool hex_letter = (c >= U'A' && c <= U'F') || (c >= U'a' && c <= U'f') ||
                            (c >= 0xFF21 && c <= 0xFF26) || (c >= 0xFF41 && c <= 0xFF46);
    return (U_MASK(category) & cc.categories) || (cc.k == CharClass::xdigit && hex_letter);
}

TEST(CharClassTables, EveryCodePointMatchesUnicode9AndIcu) {
    ScopedKernelHandle no_service(nullptr);
    const auto& u9 = unicode9();
    std::uint32_t icu_compared = 0;
    for (std::uint32_t c = 0; c < code_points; ++c) {
        for (const ClassCase& cc : classes) {
            const bool want = expected(cc, u9.category[c], c);
            ASSERT_EQ(cc.exported(c), std::int32_t{want}) << int(cc.k) << " U+" << std::hex << c;
            ASSERT_EQ(table_is_class(cc.k, c), want) << int(cc.k) << " U+" << std::hex << c;
        }
        const auto u = static_cast<UChar32>(c);
        if (u_charType(u) != u9.category[c]) continue;
        ++icu_compared;
        // ICU's graph takes in private use; its print adds Zl and Zp.
        const bool icu_graph = u_isgraph(u) && u_charType(u) != U_PRIVATE_USE_CHAR;
        const bool icu[] = {
            bool(u_isdigit(u)),  bool(u_islower(u)),
            bool(u_isupper(u)),  bool(u_isalpha(u)),
            bool(u_isalnum(u)),  icu_graph || u_charType(u) == U_SPACE_SEPARATOR,
            bool(u_isxdigit(u)), bool(u_ispunct(u)),
            icu_graph,           u_charType(u) == U_CONTROL_CHAR || u_charType(u) == U_FORMAT_CHAR};
        for (std::size_t k = 0; k < std::size(classes); ++k) {
            ASSERT_EQ(classes[k].exported(c), std::int32_t{icu[k]}) << k << " U+" << std::hex << c;
        }
    }
    EXPECT_GT(icu_compared, 1000000u);  // later versions reassigned only a few thousand
    for (const ClassCase& cc : classes) {
        EXPECT_EQ(cc.exported(0x110000) | cc.exported(0xFFFFFFFF), 0) << int(cc.k);
    }
    EXPECT_EQ(vxnlsislower(0x1F600), 0);  // past the table's last range: the search ends empty
}

TEST(CharClassTables, BlanksOverEveryCodePoint) {
    const wchar listed[] = {9,    10,   11,   12,   13,   32,   133,  160,  5760,
                            8192, 8193, 8194, 8195, 8196, 8197, 8198, 8199, 8200,
                            8201, 8202, 8232, 8233, 8239, 8287, 12288};
    for (void* service : {static_cast<void*>(nullptr), vxhost::nls_service()}) {
        ScopedKernelHandle handle(service);  // blanks never ask the service
        for (std::uint32_t c = 0; c <= code_points; ++c) {
            const bool want =
                std::find(std::begin(listed), std::end(listed), c) != std::end(listed);
            ASSERT_EQ(vxnlsisspace(c), std::int32_t{want}) << std::hex << c;
            ASSERT_EQ(want, bool(u_isUWhiteSpace(static_cast<UChar32>(c)))) << std::hex << c;
        }
        EXPECT_EQ(vxnlsisspace(0xFFFFFFFF), 0);
    }
}

TEST(AnsiCcl, EntriesMatchTheDataAndTheTablePath) {
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
                << int(cc.k) << " " << c;
        }
    }
}

// With the host's service: ASCII from ansi_ccl, the rest from ICU through the service.
TEST(CharClassService, AgreesWithTablesWhereCategoriesAgree) {
    ScopedKernelHandle with_service(vxhost::nls_service());
    const auto& u9 = unicode9();
    for (std::uint32_t c = 0; c < code_points; ++c) {
        if (c >= 128 && u_charType(static_cast<UChar32>(c)) != u9.category[c]) continue;
        for (const ClassCase& cc : classes) {
            ASSERT_EQ(cc.exported(c), std::int32_t{table_is_class(cc.k, c)})
                << int(cc.k) << " U+" << std::hex << c;
        }
    }
    EXPECT_EQ(vxnlsislower(0x10D0), 1);  // Georgian: Lo in 9.0.0, Ll in ICU: the service answered
    EXPECT_FALSE(table_is_class(CharClass::lower, 0x10D0));
}

// The class database is opened once, on the first question that reaches the service.
TEST(CharClassService, OpensTheDatabaseOnceOnFirstNeed) {
    std::array<void*, kernel_nls::service_words> service;
    std::copy_n(static_cast<void**>(vxhost::nls_service()), service.size(), service.begin());
    service[kernel_nls::word_database] = nullptr;
    ScopedKernelHandle with_service(service.data());
    const auto opens = vxhost::nls_database_opens();
    EXPECT_EQ(vxnlsisalpha(U'a') + vxnlsisspace(0x3000), 2);  // ASCII and blanks: no database
    EXPECT_EQ(service[kernel_nls::word_database], nullptr);
    EXPECT_EQ(vxnlsisalpha(U'ж') + vxnlsisdigit(U'٣') + vxnlsispunct(U'¿'), 3);
    EXPECT_NE(service[kernel_nls::word_database], nullptr);
    EXPECT_EQ(vxhost::nls_database_opens(), opens + 1);
}

}  // namespace
}  // namespace vxlocfmt::text
