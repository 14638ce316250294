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
    const auto& local = t.conventions(prop::local_currency_key);
    EXPECT_EQ(utf8(field(local.currency_symbol, 51)), "Fr.");
    EXPECT_EQ(utf8(field(local.decimal_point, 2)), ",");
    EXPECT_EQ(utf8(field(local.thousands_sep, 2)), "\u2019");
    // "3;2": each character minus '0', so ';' is 11; ended by a 0.
    EXPECT_EQ(local.grouping[0], 3);
    EXPECT_EQ(local.grouping[1], 11);
    EXPECT_EQ(local.grouping[2], 2);
    EXPECT_EQ(local.grouping[3], 0);
    EXPECT_EQ(utf8(field(local.positive_sign, 2)), "+");
    EXPECT_EQ(utf8(field(local.negative_sign, 2)), "\u2212");
    EXPECT_EQ(local.frac_digits, 12);  // local digits: 163
    // 164, 165, 168, 166, 167, 169 into p_cs, p_sep, p_sign, n_cs, n_sep, n_sign.
    EXPECT_EQ(local.p_cs_precedes, 1);
    EXPECT_EQ(local.p_sep_by_space, 2);
    EXPECT_EQ(local.p_sign_posn, 5);
    EXPECT_EQ(local.n_cs_precedes, 3);
    EXPECT_EQ(local.n_sep_by_space, 4);
    EXPECT_EQ(local.n_sign_posn, 6);

    const auto& international = t.conventions(prop::international_currency_key);
    EXPECT_EQ(utf8(field(international.currency_symbol, 51)), "CHF");
    EXPECT_EQ(international.frac_digits, 4);  // 162
    EXPECT_EQ(international.n_sign_posn, 6);

    const auto& numbers = t.conventions(prop::locale_number_key);
    EXPECT_EQ(utf8(field(numbers.currency_symbol, 51)), "");
    EXPECT_EQ(utf8(field(numbers.decimal_point, 2)), "\u066B");
    EXPECT_EQ(utf8(field(numbers.thousands_sep, 2)), "\u066C");
    EXPECT_EQ(utf8(field(numbers.negative_sign, 2)), "\u200E-");  // two characters fill the field
    EXPECT_EQ(utf8(field(numbers.positive_sign, 2)), "p");
    EXPECT_EQ(numbers.frac_digits, 0);
    // 177, 178, 181, 179, 180, 182; "10" is 10, parsed digit by digit.
    EXPECT_EQ(numbers.p_cs_precedes, 7);
    EXPECT_EQ(numbers.p_sep_by_space, 8);
    EXPECT_EQ(numbers.p_sign_posn, 11);
    EXPECT_EQ(numbers.n_cs_precedes, 9);
    EXPECT_EQ(numbers.n_sep_by_space, 10);
    EXPECT_EQ(numbers.n_sign_posn, 12);

    const auto& fixed = t.conventions(prop::fixed_number_key);
    EXPECT_EQ(utf8(field(fixed.decimal_point, 2)), ".");
    EXPECT_EQ(utf8(field(fixed.thousands_sep, 2)), ",");
    EXPECT_EQ(fixed.grouping[0], 3);
    EXPECT_EQ(fixed.grouping[1], 0);
    EXPECT_EQ(fixed.n_sign_posn, 12);  // the locale's signs and positions

    for (std::size_t key : {prop::locale_percent_key, prop::fixed_percent_key}) {
        const auto& percent = t.conventions(key);
        EXPECT_EQ(utf8(field(percent.currency_symbol, 51)), "%");
        EXPECT_EQ(utf8(field(percent.negative_sign, 2)), "\u200E-");
        const int positions[6] = {percent.p_cs_precedes, percent.p_sep_by_space, percent.p_sign_posn,
                                  percent.n_cs_precedes, percent.n_sep_by_space, percent.n_sign_posn};
        const int fixed_positions[6] = {0, 0, 1, 0, 0, 1};
        for (int i = 0; i < 6; ++i) EXPECT_EQ(positions[i], fixed_positions[i]) << key << " field " << i;
    }
    EXPECT_EQ(utf8(field(t.conventions(prop::locale_percent_key).decimal_point, 2)), "\u066B");
    EXPECT_EQ(utf8(field(t.conventions(prop::fixed_percent_key).decimal_point, 2)), ".");

    for (std::size_t i = 0; i < 6; ++i) {
        const vxlocfmt::NumberConventions* const hung = t.cache().properties[vxlocfmt::locale::NumIndex[i]].conventions;
        EXPECT_EQ(hung, &t.cache().conventions[i]);  // read by value: the record is packed
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
