// The host's locale data over every locale: coverage of ICU's list, names, the shape of the raw
// blocks, patterns in the expander's language, invariants between properties, and the cost of
// opening a locale.
#include <gtest/gtest.h>
#include <unicode/uloc.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <stdexcept>

#include "icu_oracle.h"
#include "library.h"
#include "session.h"

namespace {

using namespace locale_test;

// Opening a locale: the locale object (its block built on first use) and the property table of
// a first NL call, on locales no test before has opened. Reported for the record; the bound is
// loose for sanitizer builds.
TEST(LocaleData, OpeningALocaleIsCheap) {
    using clock = std::chrono::steady_clock;
    const auto t_index = clock::now();
    vxhost::locale_names();  // the data file is indexed once per process
    const double index_us = std::chrono::duration<double, std::micro>(clock::now() - t_index).count();
    const char* const fresh[] = {"kk_KZ", "ne_NP", "mk_MK", "is_IS", "ga_IE", "cy_GB", "eu_ES", "gl_ES",
                                 "lt_LT", "lv_LV", "et_EE", "sl_SI", "sk_SK", "hr_HR", "ro_RO", "ms_MY"};
    double block_us = 0, table_us = 0;
    for (const char* id : fresh) {
        const auto t0 = clock::now();
        vxhost::LocaleObject* object = vxhost::LocaleObject::create(id);
        const auto t1 = clock::now();
        ASSERT_NE(object, nullptr) << id;
        object->release();
        Table t(id);  // the host objects of a session, and a first build
        const auto t2 = clock::now();
        ASSERT_EQ(t.build(), 0u);  // the builder alone, into the table it made
        const auto t3 = clock::now();
        block_us += std::chrono::duration<double, std::micro>(t1 - t0).count();
        table_us += std::chrono::duration<double, std::micro>(t3 - t2).count();
    }
    const double n = std::size(fresh);
    std::printf("opening a locale: block %.1f us, property table %.1f us (mean of %.0f); data index %.0f us "
                "(first use in this process only)\n",
                block_us / n, table_us / n, n, index_us);
    RecordProperty("block_us", static_cast<int>(block_us / n));
    RecordProperty("table_us", static_cast<int>(table_us / n));
    EXPECT_LT((block_us + table_us) / n, 1000.0);
}

TEST(LocaleData, CoversEveryIcuLocale) {
    SKIP_UNLESS_DATA_ICU();
    std::vector<std::string> expected = {"root", "en_US_POSIX"};
    for (int32_t i = 0; i < uloc_countAvailable(); ++i) expected.emplace_back(uloc_getAvailable(i));
    std::sort(expected.begin(), expected.end());
    expected.erase(std::unique(expected.begin(), expected.end()), expected.end());
    EXPECT_EQ(vxhost::locale_names(), expected);
}

TEST(LocaleData, Names) {
    const struct {
        const char* name;
        const char* id;  // "" unknown
    } cases[] = {
        {"de_DE", "de_DE"},          {"de-DE", "de_DE"},           {"DE-de", "de_DE"},
        {"sr-Latn-RS", "sr_Latn_RS"}, {"en_US_POSIX", "en_US_POSIX"}, {"root", "root"},
        {"de", "de"},                 {"zh-CN", "zh_Hans_CN"},     // no zh_CN: its likely script
        {"zh_TW", "zh_Hant_TW"},      {"sr_RS", "sr_Cyrl_RS"},      {"zh_Hans_CN", "zh_Hans_CN"},
        {"", ""},                     {"xx", ""},                   {"de_XX", ""},  // never root
        {"de_DE_", ""},               {"de DE", ""},                {"de_DE@calendar=buddhist", ""},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(vxhost::canonical_locale(c.name), c.id) << c.name;
        vxhost::LocaleObject* object = vxhost::LocaleObject::create(c.name);
        EXPECT_EQ(object != nullptr, *c.id != 0) << c.name;
        if (object) {
            EXPECT_EQ(object->id(), c.id);
            object->release();
        }
    }
    for (const std::string& id : vxhost::locale_names()) EXPECT_EQ(vxhost::canonical_locale(id), id);
}

TEST(LocaleData, UnknownLocaleIsAnError) {
    const vxhost::Library library;
    try {
        vxhost::Session session(library, {.locale = "xx_YY"});
        FAIL() << "a session opened for an unknown locale";
    } catch (const std::invalid_argument& e) {
        EXPECT_STREQ(e.what(), "unknown locale xx_YY");
    }
}

// Locale text: printable ASCII, every "<" a whole escape, at most 160 bytes; the kernel's
// bytes before the strings are left alone.
TEST(LocaleData, EveryBlockIsLocaleText) {
    auto hex = [](unsigned char c) { return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'F'); };
    for (const std::string& id : vxhost::locale_names()) {
        const unsigned char* block = vxhost::locale_block(id);
        ASSERT_NE(block, nullptr) << id;
        EXPECT_EQ(block, vxhost::locale_block(id)) << "built once";
        EXPECT_TRUE(std::all_of(block, block + vxhost::locale_strings_offset, [](unsigned char b) { return b == 0; }));
        for (std::size_t n = 0; n < vxhost::locale_string_count; ++n) {
            const unsigned char* slot = block + vxhost::locale_strings_offset + n * vxhost::locale_string_stride;
            const std::size_t count = slot[0] | slot[1] << 8;
            ASSERT_LE(count, vxhost::locale_string_bytes) << id << " " << n;
            const unsigned char* text = slot + 2;
            for (std::size_t i = 0; i < count; ++i) {
                ASSERT_TRUE(text[i] >= 0x20 && text[i] < 0x7F) << id << " " << n << " byte " << i;
                if (text[i] != '<') continue;
                ASSERT_TRUE(i + 7 <= count && text[i + 1] == 'U' && hex(text[i + 2]) && hex(text[i + 3]) &&
                            hex(text[i + 4]) && hex(text[i + 5]) && text[i + 6] == '>')
                    << id << " " << n << ": an escape cut or malformed at byte " << i;
                i += 6;
            }
        }
    }
}

// The directive grammar of the date pattern expander: "%", an optional "#" or "0", an optional
// digit 1 to 9, an optional "+", an optional "?", then a letter or "%". R and r are errors; x and X
// are replaced before, so a stored pattern must not hold them.
std::string bad_directive(std::u32string_view p) {
    for (std::size_t i = 0; i < p.size(); ++i) {
        if (p[i] != U'%') continue;
        std::size_t j = i + 1;
        if (j < p.size() && (p[j] == U'#' || p[j] == U'0')) ++j;
        if (j < p.size() && p[j] >= U'1' && p[j] <= U'9') ++j;
        if (j < p.size() && p[j] == U'+') ++j;
        if (j < p.size() && p[j] == U'?') ++j;
        if (j == p.size()) return "a '%' at the end";
        const char32_t c = p[j];
        const bool letter = (c >= U'a' && c <= U'z') || (c >= U'A' && c <= U'Z');
        if (c != U'%' && !letter) return "no letter after '%' at " + std::to_string(i);
        if (c == U'R' || c == U'r' || c == U'x' || c == U'X') return "%" + std::string(1, static_cast<char>(c));
        i = j;
    }
    return {};
}

TEST(LocaleData, EveryPatternUsesOnlyExpanderDirectives) {
    for (const std::string& id : vxhost::locale_names()) {
        const Table t(id);
        ASSERT_EQ(t.code(), 0u) << id;
        for (std::size_t n = prop::first_pattern; n <= prop::short_date_medium_time; ++n) {
            EXPECT_FALSE(t.text(n).empty()) << id << " " << n;
            EXPECT_EQ(bad_directive(t.text(n)), "") << id << " " << n << ": " << utf8(t.text(n));
        }
    }
}

bool has_plain_year(std::u32string_view p) {
    return p.find(U"%Y") != std::u32string_view::npos || p.find(U"%y") != std::u32string_view::npos;
}

TEST(LocaleData, PropertiesAgreeWithEachOther) {
    for (const std::string& id : vxhost::locale_names()) {
        const Table t(id);
        std::string order = ascii_of(t.text(prop::date_order));
        std::sort(order.begin(), order.end());
        EXPECT_EQ(order, "DMY") << id;
        EXPECT_LE(t.text(prop::date_separator).size(), 1u) << id;
        EXPECT_FALSE(t.text(prop::time_separator).empty()) << id;
        for (std::size_t key : {prop::locale_number_key, prop::fixed_number_key, prop::locale_percent_key, prop::fixed_percent_key})
            EXPECT_FALSE(t.text(key).empty()) << id << " " << key;
        // A currency, or none at all; a language-only locale has none.
        const bool currency = !t.text(prop::currency_international).empty();
        for (std::size_t n = prop::currency_local; n <= prop::international_currency_key; ++n) {
            if (n == prop::mon_positive_sign || n == prop::mon_grouping) continue;  // empty with a currency too
            EXPECT_EQ(t.text(n).empty(), !currency) << id << " " << n;
        }
        EXPECT_FALSE(t.text(prop::territory).empty() && currency) << id;
        // Calendar years: every year directive carries "+" exactly in the calendar locales (the ISO
        // forms 56 and 57 excepted).
        const bool calendar = !t.text(prop::calendar_code).empty();
        for (std::size_t n = prop::first_pattern; n <= prop::short_date_medium_time; ++n) {
            if (n == prop::iso_date || n == prop::iso_datetime) continue;
            EXPECT_FALSE(calendar && has_plain_year(t.text(n))) << id << " " << n << ": " << utf8(t.text(n));
            EXPECT_FALSE(!calendar && t.text(n).find(U'+') != std::u32string_view::npos) << id << " " << n;
        }
        for (std::size_t n = prop::month_abbrev; n < prop::am + 2; ++n) EXPECT_FALSE(t.text(n).empty()) << id << " " << n;
    }
}

}  // namespace
