// The host's locale data over every locale: coverage of ICU's list, names, the shape of the raw
// blocks, patterns in the expander's language, invariants between properties, and the display
// widths of the name sets.
#include <unicode/uloc.h>

#include <algorithm>
#include <cctype>
#include <cstring>

#include "library.h"
#include "locale_fixture.h"
#include "session.h"

namespace {

using namespace locale_test;

TEST(LocaleData, CoversEveryIcuLocale) {
    SKIP_UNLESS_DATA_ICU();
    std::vector<std::string> expected = {"root", "en_US_POSIX"};
    for (int32_t i = 0; i < uloc_countAvailable(); ++i) expected.emplace_back(uloc_getAvailable(i));
    std::sort(expected.begin(), expected.end());
    expected.erase(std::unique(expected.begin(), expected.end()), expected.end());
    EXPECT_EQ(vxhost::locale_names(), expected);
}

TEST(LocaleData, Names) {
    const std::pair<const char*, const char*> cases[] = {  // "" unknown
        {"de-DE", "de_DE"},           {"DE-de", "de_DE"},          {"sr-Latn-RS", "sr_Latn_RS"},
        {"zh-CN", "zh_Hans_CN"},      {"zh_TW", "zh_Hant_TW"},     {"sr_RS", "sr_Cyrl_RS"},  // likely scripts
        {"", ""},                     {"de_XX", ""},               {"de_DE_", ""},  // never root
        {"de DE", ""},                {"de_DE@calendar=buddhist", ""},
    };
    for (const auto& [name, id] : cases) {
        EXPECT_EQ(vxhost::canonical_locale(name), id) << name;
        vxhost::LocaleObject* object = vxhost::LocaleObject::create(name);
        EXPECT_EQ(object ? object->id() : "", id) << name;
        if (object) object->release();
    }
    for (const std::string& id : vxhost::locale_names()) EXPECT_EQ(vxhost::canonical_locale(id), id);
    try {
        const vxhost::Library library;
        vxhost::Session session(library, {.locale = "xx_YY"});
        ADD_FAILURE() << "a session opened for an unknown locale";
    } catch (const std::invalid_argument& e) {
        EXPECT_STREQ(e.what(), "unknown locale xx_YY");
    }
}

// Locale text: printable ASCII, every "<" a whole escape, at most 160 bytes; the kernel's bytes
// before the strings are left alone. Then, over the tables built from it: patterns in the
// expander's grammar ("%", an optional "#" or "0", an optional digit 1 to 9, an optional "+", an
// optional "?", then a letter or "%"; never R or r, nor the x and X replaced before), the
// properties agreeing with each other, and the display widths of the name sets.
TEST(LocaleData, EveryLocaleIsWellFormed) {
    for (const std::string& id : vxhost::locale_names()) {
        const unsigned char* block = vxhost::locale_block(id);
        ASSERT_TRUE(block && block == vxhost::locale_block(id)) << id << ": known, and built once";
        EXPECT_TRUE(std::all_of(block, block + vxhost::locale_strings_offset, [](unsigned char b) { return b == 0; }));
        for (std::size_t n = 0; n < vxhost::locale_string_count; ++n) {
            const unsigned char* slot = block + vxhost::locale_strings_offset + n * vxhost::locale_string_stride;
            const std::string text(reinterpret_cast<const char*>(slot + 2), slot[0] | slot[1] << 8);
            ASSERT_LE(text.size(), vxhost::locale_string_bytes) << id << " " << n;
            ASSERT_TRUE(std::all_of(text.begin(), text.end(), [](char b) { return b >= 0x20 && b < 0x7F; })) << id << " " << n;
            for (std::size_t i = text.find('<'); i != std::string::npos; i = text.find('<', i + 1)) {
                ASSERT_TRUE(text.compare(i, 2, "<U") == 0 && text.find_first_not_of("0123456789ABCDEF", i + 2) == i + 6 &&
                            text.compare(i + 6, 1, ">") == 0) << id << " " << n << ": an escape cut or malformed: " << text;
            }
        }

        const Table t(id);
        ASSERT_EQ(t.code(), 0u) << id;
        const bool calendar = !t.text(prop::calendar_code).empty();
        for (std::size_t n = prop::first_pattern; n <= prop::short_date_medium_time; ++n) {
            const std::string p = t.str(n);
            EXPECT_FALSE(p.empty()) << id << " " << n;
            for (std::size_t i = p.find('%'); i != std::string::npos; i = p.find('%', i + 1)) {
                std::size_t j = i + 1;
                for (const char* optional : {"#0", "123456789", "+", "?"})
                    j += j < p.size() && p[j] && std::strchr(optional, p[j]);
                ASSERT_LT(j, p.size()) << id << " " << n << ": " << p;
                EXPECT_TRUE(p[j] == '%' || (std::isalpha(static_cast<unsigned char>(p[j])) && !std::strchr("RrxX", p[j])))
                    << id << " " << n << ": " << p;
                i = j;
            }
            // Calendar years: every year directive carries "+" exactly in the calendar locales
            // (the ISO forms 56 and 57 excepted).
            if (n == prop::iso_date || n == prop::iso_datetime) continue;
            const bool plain_year = p.find("%Y") != std::string::npos || p.find("%y") != std::string::npos;
            EXPECT_FALSE(calendar && plain_year) << id << " " << n << ": " << p;
            EXPECT_FALSE(!calendar && p.find('+') != std::string::npos) << id << " " << n << ": " << p;
        }
        std::string order = t.str(prop::date_order);
        std::sort(order.begin(), order.end());
        EXPECT_EQ(order, "DMY") << id;
        EXPECT_LE(t.text(prop::date_separator).size(), 1u) << id;
        EXPECT_FALSE(t.text(prop::time_separator).empty()) << id;
        for (std::size_t n = prop::month_abbrev; n <= prop::pm; ++n) EXPECT_FALSE(t.text(n).empty()) << id << " " << n;
        for (std::size_t key = prop::locale_number_key; key <= prop::fixed_percent_key; ++key)
            EXPECT_FALSE(t.text(key).empty()) << id << " " << key;
        // A currency, or none at all; a language-only locale has none.
        const bool currency = !t.text(prop::currency_international).empty();
        for (std::size_t n = prop::currency_local; n <= prop::international_currency_key; ++n) {
            if (n == prop::mon_positive_sign || n == prop::mon_grouping) continue;  // empty with a currency too
            EXPECT_EQ(t.text(n).empty(), !currency) << id << " " << n;
        }
        EXPECT_FALSE(t.text(prop::territory).empty() && currency) << id;

        // Every name of a set, and AM and PM, carry the session bytes of the set's widest member:
        // UTF-8 bytes; in Latin-1 (character references standing for what it lacks) and in a wide
        // session, one a character. Other properties than names, AM/PM and patterns carry none.
        for (const char* encoding : {"UTF-8", "ISO-8859-1", ""}) {
            const Table session(id, encoding);
            const auto widest = [&](std::size_t first, std::size_t count) {
                std::size_t bytes = 0;
                for (std::size_t n = first; n < first + count; ++n)
                    bytes = std::max(bytes, *encoding == 'U' ? session.str(n).size() : session.text(n).size());
                for (std::size_t n = first; n < first + count; ++n)
                    ASSERT_EQ(session.width(n), bytes) << id << " " << encoding << " " << n;
            };
            for (int form = 0; form < 4; ++form) {
                widest(vxlocfmt::locale::MonNames[form], 12);
                widest(vxlocfmt::locale::DayNames[form], 7);
                widest(vxlocfmt::locale::QtrNames[form], 4);
            }
            widest(prop::am, 2);
            ASSERT_EQ(session.width(prop::date_separator) | session.width(prop::short_date_medium_time), 0u) << id;
        }
    }
}

}  // namespace
