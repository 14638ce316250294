// The registry as the host sees it through the loaded library: shape, naming rule, limits.
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <set>
#include <string>

#include "library.h"
#include "library_suite.h"
#include "text_convert.h"

namespace {

using vxlocfmt::FuncInfo;

std::string name_of(const FuncInfo& row) {
    std::u32string_view name(row.name, vxlocfmt::registry_name_length);
    while (!name.empty() && name.back() == U' ') name.remove_suffix(1);
    return vxhost::to_utf8(name);
}

std::string lower(std::string s) {
    std::transform(s.begin(), s.end(), s.begin(), [](unsigned char c) { return char(std::tolower(c)); });
    return s;
}

// The exported symbol a row's function must carry, by the naming rule.
std::string function_symbol(const std::string& name) {
    if (name[0] != '@') return "vxfmt" + lower(name);
    const std::string bare = name.substr(1);
    if (bare == "NLDATEW") return "vxfmtnldatei";
    if (bare == "NLDATMAP" || bare == "NLDATMW") return "vxfmtnldatmi";
    if (bare == "NLTIMAP") return "vxfmtnltimei";
    if (bare.rfind("NLMN", 0) == 0 || bare.rfind("NLNUM", 0) == 0 || bare.rfind("NLPCT", 0) == 0)
        return "vxfmti" + lower(bare);
    return "vxfmt" + lower(bare) + "i";
}

class Registry : public vxtest::LibrarySuite {};

TEST_F(Registry, ShapeAndEndRow) {
    const FuncInfo* rows = library->registry();
    EXPECT_EQ(rows, library->symbol("funcinfo"));
    int count = 0;
    while (rows[count].function) ++count;
    ASSERT_EQ(count, 247);
    for (int i = 0; i < count; ++i) {
        const FuncInfo& row = rows[i];
        const bool informat = i < 97;
        SCOPED_TRACE(name_of(row));
        EXPECT_EQ(row.kind, informat ? 2u : 1u);
        EXPECT_EQ(row.style, informat ? 1u : 2u);
        EXPECT_EQ(name_of(row)[0] == '@', informat);
        EXPECT_EQ(row.byte_function == nullptr, informat);
        EXPECT_EQ(row.min_decimals, 0u);
        EXPECT_EQ(row.reserved, nullptr);
        EXPECT_EQ(row.zero, 0u);
        if (informat) {
            EXPECT_EQ(row.extra_width, 0u);
        }
        EXPECT_LE(row.min_width, row.default_width);
        EXPECT_LE(row.default_width, row.max_width);
        EXPECT_LE(row.default_decimals, row.max_decimals);
    }
    const FuncInfo& end = rows[count];
    EXPECT_EQ(name_of(end), "");
    EXPECT_EQ(end.kind, 1u);
    EXPECT_EQ(end.style, 2u);
    EXPECT_EQ(end.min_width, 2u);
    EXPECT_EQ(end.max_width, 8u);
    EXPECT_EQ(end.default_width, 7u);
    EXPECT_EQ(end.byte_function, nullptr);
}

TEST_F(Registry, FunctionsFollowTheNamingRule) {
    std::set<std::string> names;
    for (const FuncInfo* row = library->registry(); row->function; ++row) {
        const std::string name = name_of(*row);
        SCOPED_TRACE(name);
        EXPECT_TRUE(names.insert(name).second) << "duplicate row";
        const std::string symbol = function_symbol(name);
        EXPECT_EQ(reinterpret_cast<void*>(row->function), library->symbol(symbol.c_str())) << symbol;
        if (row->byte_function) {
            EXPECT_EQ(reinterpret_cast<void*>(row->byte_function), library->symbol((symbol + "_b").c_str()));
        }
    }
}

// The four currency blocks carry the same codes in the same ascending order; a few rows stand
// deliberately out of alphabetical order.
TEST_F(Registry, OrderAndCurrencyRows) {
    const FuncInfo* rows = library->registry();
    for (int k = 0; k < 40; ++k) {
        const std::string code = name_of(rows[5 + k]).substr(6);
        EXPECT_EQ(name_of(rows[5 + k]), "@NLMNI" + code);
        EXPECT_EQ(name_of(rows[45 + k]), "@NLMNL" + code);
        EXPECT_EQ(name_of(rows[147 + k]), "NLMNI" + code);
        EXPECT_EQ(name_of(rows[187 + k]), "NLMNL" + code);
        if (k > 0) {
            EXPECT_LT(name_of(rows[4 + k]), name_of(rows[5 + k]));
        }
    }
    EXPECT_EQ(name_of(rows[5]), "@NLMNIAED");
    EXPECT_EQ(name_of(rows[44]), "@NLMNIZAR");
    EXPECT_EQ(name_of(rows[91]), "@NLTIMAP");
    EXPECT_EQ(name_of(rows[93]), "@NLSTRMON");
    EXPECT_EQ(name_of(rows[242]), "DTWEEKV");
    EXPECT_EQ(name_of(rows[246]), "YYWEEKW");
}

TEST_F(Registry, DeliberateFormatInformatDifferences) {
    const struct {
        const char32_t* name;
        std::uint32_t min_width, max_width, default_width, max_decimals, extra;
    } cases[] = {
        {U"NLDATE", 10, 200, 20, 0, 8},     // the format defaults to 20 ...
        {U"@NLDATE", 10, 200, 10, 0, 0},    // ... its informat to 10
        {U"NLPCT", 4, 32, 6, 31, 0},        // minimum 4 ...
        {U"@NLPCT", 1, 32, 6, 31, 0},       // ... but 1 to read
        {U"WEEKV", 2, 200, 11, 0, 0},       // week formats: no decimals
        {U"@WEEKV", 3, 200, 11, 3, 0},      // week informats: up to 3
        {U"YYWEEKU", 2, 8, 7, 0, 0},        // the narrowest maximum
        {U"NLDATMWZ", 16, 200, 40, 3, 22},
    };
    for (const auto& c : cases) {
        const FuncInfo* row = library->find(c.name);
        ASSERT_NE(row, nullptr) << vxhost::to_utf8(c.name);
        EXPECT_EQ(row->min_width, c.min_width);
        EXPECT_EQ(row->max_width, c.max_width);
        EXPECT_EQ(row->default_width, c.default_width);
        EXPECT_EQ(row->max_decimals, c.max_decimals);
        EXPECT_EQ(row->extra_width, c.extra);
    }
    // Names are matched whole, trailing blanks ignored.
    EXPECT_EQ(library->find(U""), nullptr);
    EXPECT_EQ(library->find(U"        "), nullptr);
    EXPECT_EQ(library->find(U"NLDAT"), nullptr);
    EXPECT_NE(library->find(U"NLDATE  "), nullptr);
}

}  // namespace
