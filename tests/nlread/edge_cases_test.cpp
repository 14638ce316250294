// The locale number and currency informats on the cases that decide their rules: separators,
// sign forms, the symbol-with-a-point rule, no implied decimals, the 32-character cap, blanks
// typed where the locale writes a no-break space (and the other way round), refusals that leave
// the result untouched, and the caller's record as it was after every call.
#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <string>

#include "case_table.h"
#include "frame/abi.h"
#include "library.h"
#include "pool.h"
#include "locale/property_numbers.h"
#include "locale/property_table.h"
#include "session.h"
#include "text_convert.h"

namespace {

using vxlocfmt::FmtCall;
constexpr double untouched = 42.5;  // the result's value before the call
const double missing = std::bit_cast<double>(vxlocfmt::missing_bits);

struct Case {
    const char* locale;
    const char32_t* informat;
    int width, decimals;
    const char32_t* text;
    vxlocfmt::status code;
    double expected;  // `untouched`, `missing` (NaN) or the value
};

struct Outcome {
    vxlocfmt::status code;
    double value;
};

// One raw call on the session's warm record; the caller's fields must come back as they went.
Outcome call(vxhost::Library& library, vxhost::Session& session, const char32_t* name, int width, int decimals,
             std::u32string_view text) {
    FmtCall& c = session.call();
    double result = untouched;
    c.width = width;
    c.decimals = decimals;
    c.input = text.data();
    c.input_length = c.text_limit = static_cast<std::int32_t>(text.size());
    c.output = &result;
    const vxlocfmt::status code = library.find(name)->function(&c, nullptr);
    EXPECT_EQ(c.width, width) << vxhost::to_utf8(text);
    EXPECT_EQ(c.decimals, decimals) << vxhost::to_utf8(text);
    EXPECT_EQ(c.input, text.data()) << vxhost::to_utf8(text);
    EXPECT_EQ(c.input_length, static_cast<std::int32_t>(text.size())) << vxhost::to_utf8(text);
    return {code, result};
}

void expect(const Case& k, const Outcome& o) {
    const std::string what = std::string(k.locale) + " " + vxhost::to_utf8(k.informat) + " «" + vxhost::to_utf8(k.text) + "»";
    EXPECT_EQ(o.code, k.code) << what;
    if (std::isnan(k.expected)) EXPECT_TRUE(std::isnan(o.value)) << what << " gave " << o.value;
    else EXPECT_EQ(o.value, k.expected) << what;
}

constexpr double m = std::numeric_limits<double>::quiet_NaN();

// The case table: separators, sign forms, the symbol-with-a-point rule, no implied decimals, the
// 32-character cap, blanks typed where the locale writes a no-break space, refusals.
TEST(NumberInformats, EdgeCases) {
    // One instance per locale: the fixed-currency informats keep the first call's conventions.
    for (const case_table::Row& row : case_table::read("nlread/edge_cases.tsv")) {
        SCOPED_TRACE(row.where());
        const std::u32string informat = row.wide(1), text = row.wide(4);
        const double expected = row[6] == "untouched" ? untouched : row[6] == "missing" ? m : row.number(6);
        vxhost::Library library;
        vxhost::Session session(library, {.locale = row[0]});
        expect({row[0].c_str(), informat.c_str(), row.integer(2), row.integer(3), text.c_str(),
                static_cast<vxlocfmt::status>(row.integer(5)), expected},
               call(library, session, informat.c_str(), row.integer(2), row.integer(3), text));
    }
}

// Conventions no shipped locale has, set by hand on the call's property table: negatives in
// parentheses, and an apostrophe as the group separator.
TEST(NumberInformats, HandMadeConventions) {
    vxhost::Library library;
    vxhost::Session session(library, {.locale = "en_US"});
    call(library, session, U"@NLNUM", 6, 0, U"1");  // builds the table
    vxlocfmt::PropertyCache& table = *session.call().property_cache;
    vxlocfmt::NumberConventions& number = *table.properties[vxlocfmt::locale::prop::locale_number_key].conventions;
    number.n_sign_posn = 0;
    number.thousands_sep[0] = U'\'';
    const Case hand[] = {
        {"", U"@NLNUM", 12, 0, U"(12)", 0, -12},
        {"", U"@NLNUM", 12, 0, U"'1'000'", 1, untouched},
        {"", U"@NLNUM", 12, 0, U"1'000", 0, 1000},
        {"", U"@NLNUM", 12, 2, U"(1'234.50)", 0, -1234.5},
    };
    for (const Case& k : hand) expect(k, call(library, session, k.informat, k.width, k.decimals, k.text));

    // The fixed-currency informats take the instance's conventions from the first call's table.
    vxhost::Library other;
    vxhost::Session money(other, {.locale = "en_US"});
    call(other, money, U"@NLNUM", 6, 0, U"1");
    vxlocfmt::Property& n_sign_posn = money.call().property_cache->properties[vxlocfmt::locale::prop::mon_n_sign_posn];
    n_sign_posn.value[0] = U'0';
    const Case parenthesised[] = {
        {"", U"@NLMNIUSD", 12, 2, U"(USD12.00)", 0, -12},
        {"", U"@NLMNIUSD", 12, 2, U"USD12.00 ", 0, 12},
    };
    for (const Case& k : parenthesised) expect(k, call(other, money, k.informat, k.width, k.decimals, k.text));
}

// Without locale data the number informats read classic notation (implied decimals included,
// as the classic informat has them) and the fixed-currency ones leave the missing value.
TEST(NumberInformats, NoLocaleData) {
    vxhost::Library library;
    vxhost::Session session(library, {.locale = "en_US"});
    session.call().number_format = nullptr;
    const Case without[] = {
        {"", U"@NLNUM", 12, 2, U"-1,234.50", 0, -1234.5},
        {"", U"@NLNUM", 12, 2, U"1234", 0, 12.34},
        {"", U"@NLPCT", 12, 0, U"(12.5%)", 0, -0.125},
        {"", U"@NLMNIUSD", 12, 2, U"USD1.00", 0, m},
    };
    for (const Case& k : without) {
        session.call().property_cache = nullptr;
        expect(k, call(library, session, k.informat, k.width, k.decimals, k.text));
    }
}

// The one status 1 of the fixed-currency informats: no memory for the monetary conventions.
TEST(NumberInformats, NoMemoryForTheMonetaryConventions) {
    vxhost::Library library;
    vxhost::Session session(library, {.locale = "en_US"});
    call(library, session, U"@NLNUM", 6, 0, U"1");  // the property table, before the pool fails
    vxhost::fail_allocations_after(0);
    const Outcome o = call(library, session, U"@NLMNIUSD", 12, 2, U"USD1.00");
    vxhost::fail_allocations_after(-1);
    expect({"", U"@NLMNIUSD", 12, 2, U"", 1, m}, o);
}

}  // namespace
