/*
 * ICU as the oracle for the locale data: the same locale asked directly, a small reader of the
 * %-directive patterns that renders them as the date pattern expander would, and the sample of
 * locales across scripts the oracle tests walk. Only meaningful when the machine's ICU is the one
 * the data came from; the tests skip with a message otherwise.
 *
 *   SKIP_UNLESS_DATA_ICU();
 *   auto text = locale_test::render(U"%#d. %B %Y", table, moment);   // "5. März 2024"
 */
#pragma once

#include <gtest/gtest.h>
#include <unicode/calendar.h>
#include <unicode/locid.h>
#include <unicode/smpdtfmt.h>
#include <unicode/timezone.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>
#include <unicode/uvernum.h>

#include <chrono>
#include <memory>
#include <optional>
#include <string>

#include "locale_data.h"
#include "locale_fixture.h"

#define SKIP_UNLESS_DATA_ICU()                                                                          \
    if (vxhost::locale_data_icu_version() != U_ICU_VERSION)                                            \
    GTEST_SKIP() << "the locale data comes from ICU " << vxhost::locale_data_icu_version()             \
                 << " and this machine has ICU " << U_ICU_VERSION << ": no oracle"

namespace locale_test {

// Across scripts, calendars, digit systems, currencies and sign placements; none has a value cut
// to 160 bytes in the properties the oracle compares.
inline const char* const sample_locales[] = {
    "en_US", "en_GB", "en_IN", "en_US_POSIX", "de_DE", "de_CH", "de_AT", "de",    "fr_FR", "fr_CA",
    "es_ES", "es_MX", "pt_BR", "it_IT", "nl_NL", "sv_SE", "fi_FI", "pl_PL", "cs_CZ", "hu_HU",
    "tr_TR", "ru_RU", "uk_UA", "sr_Cyrl_RS", "sr_Latn_RS", "bg_BG", "el_GR", "he_IL", "ar_EG",
    "ar_SA", "fa_IR", "ur_PK", "hi_IN", "bn_BD", "ta_IN", "th_TH", "km_KH", "my_MM", "ka_GE",
    "hy_AM", "am_ET", "zh_Hans_CN", "zh_Hant_TW", "ja_JP", "ko_KR", "vi_VN", "id_ID", "sw_KE", "root",
};

inline std::u32string wide(const icu::UnicodeString& s) {
    std::u32string out;
    for (int32_t i = 0; i < s.length(); i = s.moveIndex32(i, 1)) {
        const UChar32 c = s.char32At(i);
        out += c > 0xFFFF ? U'?' : static_cast<char32_t>(c);  // the locale encoding has no room beyond
    }
    return out;
}

inline std::string ascii_of(std::u32string_view s) { return std::string(s.begin(), s.end()); }

// The calendars whose years the patterns can show; the data of any other comes from Gregorian.
inline std::string data_calendar(const std::string& default_type) {
    return default_type == "buddhist" || default_type == "roc" || default_type == "japanese" ? default_type
                                                                                               : "gregorian";
}

inline icu::Locale named_locale(const std::string& id) {
    return id == "root" ? icu::Locale::getRoot() : icu::Locale(id.c_str());
}

inline std::string default_calendar(const std::string& id) {
    UErrorCode e = U_ZERO_ERROR;
    std::unique_ptr<icu::Calendar> c(icu::Calendar::createInstance(named_locale(id), e));
    return c->getType();
}

// The locale as the data was taken from it: its calendar (see data_calendar) and Latin digits.
inline icu::Locale data_locale(const std::string& id) {
    icu::Locale l = named_locale(id);
    UErrorCode e = U_ZERO_ERROR;
    l.setKeywordValue("calendar", data_calendar(default_calendar(id)).c_str(), e);
    l.setKeywordValue("numbers", "latn", e);
    return l;
}

// A moment in UTC, and the same moment for ICU.
struct Moment {
    int year, month, day, hour, minute, second;
    int weekday() const {  // 0 Sunday .. 6 Saturday
        using namespace std::chrono;
        return static_cast<int>(std::chrono::weekday(sys_days{std::chrono::year(year) / month / day}).c_encoding());
    }
    UDate icu_date() const {
        using namespace std::chrono;
        const auto days = sys_days{std::chrono::year(year) / month / day}.time_since_epoch().count();
        return (static_cast<double>(days) * 86400 + hour * 3600 + minute * 60 + second) * 1000.0;
    }
};

inline const Moment sample_moments[] = {
    {2024, 3, 5, 15, 4, 5},     // Tuesday afternoon, first quarter
    {2023, 12, 31, 9, 7, 8},    // Sunday morning, fourth quarter
    {2025, 8, 16, 0, 30, 59},   // Saturday just after midnight: 12-hour 12, 0 and 24 forms
};

inline std::u32string digits(long value, int width, bool own) {
    std::u32string s;
    for (const char c : std::to_string(value)) s += static_cast<char32_t>(c);
    while (!own && static_cast<int>(s.size()) < width) s.insert(s.begin(), U'0');
    return s;
}

// Renders a pattern as the date pattern expander does, for the directives the data uses; nullopt
// for one it does not know.
inline std::optional<std::u32string> render(std::u32string_view pattern, const Table& t, const Moment& m) {
    std::u32string out;
    const std::u32string_view code = t.text(prop::calendar_code);
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        if (pattern[i] != U'%') {
            out += pattern[i];
            continue;
        }
        bool own = false, calendar = false;
        if (++i < pattern.size() && pattern[i] == U'#') own = true, ++i;
        if (i < pattern.size() && pattern[i] == U'+') calendar = true, ++i;
        if (i >= pattern.size()) return std::nullopt;
        long year = m.year;
        if (calendar && code == U"TH") year += 543;
        if (calendar && code == U"TW") year -= 1911;
        const int twelve = m.hour <= 12 ? m.hour : m.hour % 12;
        const auto name = [&](std::size_t first, std::size_t long_first, int index) {
            return std::u32string(t.text((own ? long_first : first) + static_cast<std::size_t>(index)));
        };
        switch (pattern[i]) {
        case U'Y': out += digits(year, 4, false); break;
        case U'y': out += digits(year % 100, 2, false); break;
        case U'm': out += digits(m.month, 2, own); break;
        case U'd': out += digits(m.day, 2, own); break;
        case U'H': out += digits(m.hour, 2, own); break;
        case U'I': out += digits(twelve == 0 ? 12 : twelve, 2, own); break;
        case U'k': out += digits(m.hour == 0 ? 24 : m.hour, 2, own); break;
        case U'l': out += digits(twelve, 2, own); break;
        case U'M': out += digits(m.minute, 2, own); break;
        case U'S': out += digits(m.second, 2, own); break;
        case U'b': out += name(59, 83, m.month - 1); break;
        case U'B': out += name(71, 95, m.month - 1); break;
        case U'a': out += name(107, 121, m.weekday()); break;
        case U'A': out += name(114, 128, m.weekday()); break;
        case U'q': out += name(135, 143, (m.month - 1) / 3); break;
        case U'Q': out += name(139, 147, (m.month - 1) / 3); break;
        case U'p': out += t.text(m.hour < 12 ? prop::am : prop::pm); break;
        case U'%': out += U'%'; break;
        default: return std::nullopt;
        }
    }
    return out;
}

// An ICU pattern whose every field the directive language writes as ICU does (no eras, flexible
// day periods, narrow names, numeric quarters or zones).
inline bool comparable(const icu::UnicodeString& pattern) {
    bool quoted = false;
    for (int32_t i = 0; i < pattern.length();) {
        const char16_t c = pattern[i];
        if (c == u'\'') {
            quoted = !quoted;
            ++i;
            continue;
        }
        if (quoted || !((c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z'))) {
            ++i;
            continue;
        }
        int count = 1;
        while (i + count < pattern.length() && pattern[i + count] == c) ++count;
        i += count;
        const std::u16string_view plain = u"yMLdahHKkms";
        if (plain.find(c) != std::u16string_view::npos && count <= 4) continue;
        if ((c == u'E' && count <= 4) || ((c == u'c' || c == u'Q' || c == u'q') && (count == 3 || count == 4))) continue;
        return false;
    }
    return true;
}

inline std::u32string icu_format(const icu::UnicodeString& pattern, const icu::Locale& locale, const Moment& m) {
    UErrorCode e = U_ZERO_ERROR;
    icu::SimpleDateFormat format(pattern, locale, e);
    format.setTimeZone(*icu::TimeZone::getGMT());
    icu::UnicodeString out;
    format.format(m.icu_date(), out);
    return wide(out);
}

// Blank-like characters as one blank, format marks (LRM, RLM, ALM) left out: how two renderings
// of an amount are compared.
inline std::u32string normalized(std::u32string_view s) {
    std::u32string out;
    for (char32_t c : s) {
        if (u_charType(static_cast<UChar32>(c)) == U_FORMAT_CHAR) continue;
        out += (c == 0xA0 || c == 0x202F || c == 0x2009) ? U' ' : c;
    }
    return out;
}

}  // namespace locale_test
