// The six NumberConventions records: which property feeds which field, the fixed records, and the
// local symbol that became a character reference.
#include <gtest/gtest.h>

#include "locale_fixture.h"

namespace {

using namespace locale_test;

std::u32string field(const wchar* cells, std::size_t n) {
    std::u32string s;
    for (std::size_t i = 0; i < n && cells[i]; ++i) s += cells[i];
    return s;
}

// Every position property holds a different digit, so a swapped field shows.
Block monetary_and_numeric() {
    Block b;
    b.set(155, "CHF").set(156, "Fr.").set(157, ",").set(158, "<U2019>").set(159, "3;2");
    b.set(160, "+").set(161, "<U2212>").set(162, "4").set(163, "12");
    b.set(164, "1").set(165, "2").set(166, "3").set(167, "4").set(168, "5").set(169, "6");
    b.set(170, "CHF").set(171, "CHF");
    b.set(172, "<U066B>").set(173, "<U066C>").set(174, "3").set(175, "p").set(176, "<U200E>-");
    b.set(177, "7").set(178, "8").set(179, "9").set(180, "10").set(181, "11").set(182, "12");
    b.set(183, "latn").set(184, "fixed").set(185, "latn").set(186, "fixed");
    return b;
}

TEST(NumberConventions, FieldsFromTheirProperties) {
    const Table t(monetary_and_numeric(), "UTF-8");
    const struct {
        std::size_t key;
        const char *symbol, *point, *separator, *positive, *negative;
        std::int32_t grouping[4], frac_digits;
        int positions[6];  // p_cs_precedes, p_sep_by_space, p_sign_posn, n_cs_precedes, n_sep_by_space, n_sign_posn
    } records[] = {
        // 164, 165, 168, 166, 167, 169 in record order; local fraction digits from 163; "3;2" is
        // each character minus '0', so ';' is 11.
        {170, "Fr.", ",", "\u2019", "+", "\u2212", {3, 11, 2, 0}, 12, {1, 2, 5, 3, 4, 6}},
        {171, "CHF", ",", "\u2019", "+", "\u2212", {3, 11, 2, 0}, 4, {1, 2, 5, 3, 4, 6}},
        // 177, 178, 181, 179, 180, 182; "10" parsed digit by digit; two characters fill a sign.
        {183, "", "\u066B", "\u066C", "p", "\u200E-", {3, 0}, 0, {7, 8, 11, 9, 10, 12}},
        {184, "", ".", ",", "p", "\u200E-", {3, 0}, 0, {7, 8, 11, 9, 10, 12}},
        {185, "%", "\u066B", "\u066C", "p", "\u200E-", {3, 0}, 0, {0, 0, 1, 0, 0, 1}},
        {186, "%", ".", ",", "p", "\u200E-", {3, 0}, 0, {0, 0, 1, 0, 0, 1}},
    };
    for (std::size_t i = 0; i < std::size(records); ++i) {
        const auto& r = records[i];
        const vxlocfmt::NumberConventions& c = t.conventions(r.key);
        EXPECT_EQ(&c, &t.cache().conventions[i]) << "records in the order of NumIndex";
        EXPECT_EQ(utf8(field(c.currency_symbol, 51)), r.symbol) << r.key;
        EXPECT_EQ(utf8(field(c.decimal_point, 2)), r.point) << r.key;
        EXPECT_EQ(utf8(field(c.thousands_sep, 2)), r.separator) << r.key;
        EXPECT_EQ(utf8(field(c.positive_sign, 2)), r.positive) << r.key;
        EXPECT_EQ(utf8(field(c.negative_sign, 2)), r.negative) << r.key;
        for (int g = 0; g < 4; ++g) EXPECT_EQ(c.grouping[g], r.grouping[g]) << r.key << " group " << g;
        EXPECT_EQ(c.frac_digits, r.frac_digits) << r.key;
        const int positions[6] = {c.p_cs_precedes, c.p_sep_by_space, c.p_sign_posn,
                                  c.n_cs_precedes, c.n_sep_by_space, c.n_sign_posn};
        for (int f = 0; f < 6; ++f) EXPECT_EQ(positions[f], r.positions[f]) << r.key << " position " << f;
    }
}

// A local symbol longer than 4 characters containing "&#" gives way to the international one.
TEST(NumberConventions, ReferencedSymbolGivesWayToTheCode) {
    const struct {
        const char* symbol;
        const char* encoding;
        const char* local;  // what the local record shows
    } cases[] = {
        {"<U20BD>", "ISO-8859-1", "RUB"},        // "&#8381;" is 7 characters
        {"<U20BD>", "UTF-8", "\u20BD"},          // held: kept
        {"&#1;", "UTF-8", "&#1;"},               // only 4 characters: kept, deliberately
        {"a&#12", "UTF-8", "RUB"},               // any text of 5 with "&#"
        {"<U0436><U0436>", "ISO-8859-1", "RUB"},
    };
    for (const auto& c : cases) {
        Block b = monetary_and_numeric();
        b.set(155, "RUB").set(156, c.symbol);
        const Table t(b, c.encoding);
        EXPECT_EQ(utf8(field(t.conventions(prop::local_currency_key).currency_symbol, 51)), c.local) << c.symbol;
        EXPECT_EQ(utf8(field(t.conventions(prop::international_currency_key).currency_symbol, 51)), "RUB");
    }
}

TEST(NumberConventions, RealLocaleInLatin1) {
    // The rouble sign is beyond Latin-1; the local money format falls back to the code.
    const Table ru("ru_RU", "ISO-8859-1");
    EXPECT_EQ(utf8(ru.text(prop::currency_local)), "&#8381;");
    EXPECT_EQ(utf8(field(ru.conventions(prop::local_currency_key).currency_symbol, 51)), "RUB");
    const Table ru_utf8("ru_RU", "UTF-8");
    EXPECT_EQ(utf8(field(ru_utf8.conventions(prop::local_currency_key).currency_symbol, 51)), "\u20BD");
    // A language-only locale has no currency: empty keys, so the money formats fall back.
    const Table de("de", "UTF-8");
    EXPECT_EQ(de.text(prop::local_currency_key).size(), 0u);
    EXPECT_EQ(de.text(prop::international_currency_key).size(), 0u);
    EXPECT_NE(de.text(prop::locale_number_key).size(), 0u);
}

}  // namespace
