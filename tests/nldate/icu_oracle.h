/*
 * What the ICU oracle tests share: the locales ICU formats with the Gregorian calendar and Latin
 * digits, ICU formatters by style or skeleton, the Unicode-space normalisation, and a
 * deterministic spread of civil dates as both the library and ICU count them.
 *
 *   for (const std::string& id : nldate_oracle::oracle_locales()) { ... }
 *   auto icu = nldate_oracle::icu_style(id.c_str(), UDAT_LONG);   // (*icu)(date.icu_millis())
 */
#pragma once

#include <unicode/ucal.h>
#include <unicode/uchar.h>
#include <unicode/udat.h>
#include <unicode/udatpg.h>
#include <unicode/uloc.h>
#include <unicode/unumsys.h>

#include <chrono>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "icu_text.h"
#include "locale_data.h"
#include "nldate_fixture.h"
#include "session.h"

namespace nldate_oracle {

// A date of the calendar with the 4000-year rule, as the library counts days, and the same
// civil date as ICU counts it (plain Gregorian: from 4000-03-01 on, the two differ by whole
// days, so weekdays differ too; that difference is deliberate).
struct CivilDate {
    int year;
    unsigned month, day;
    double day_number() const {
        return nldate_test::day_of(year, month, day);  // the 29 Februaries of 4000, 8000, ... left out
    }
    UDate icu_millis() const {
        using namespace std::chrono;
        return static_cast<UDate>(sys_days{std::chrono::year(year) / month / day}.time_since_epoch().count()) *
               86400000.0;
    }
    bool weekday_agrees() const { return year < 4000 || (year == 4000 && month <= 2); }
    std::string text() const {
        return std::to_string(year) + "-" + std::to_string(month) + "-" + std::to_string(day);
    }
};

inline bool is_gregorian_latin(const char* id) {
    UErrorCode error = U_ZERO_ERROR;
    UCalendar* calendar = ucal_open(nullptr, 0, id, UCAL_DEFAULT, &error);
    const bool gregorian = U_SUCCESS(error) && std::string(ucal_getType(calendar, &error)) == "gregorian";
    ucal_close(calendar);
    return gregorian && icu_text::latin_digits(id);
}

inline std::vector<std::string> oracle_locales() {
    std::vector<std::string> ids;
    for (int32_t i = 0; i < uloc_countAvailable(); ++i) {
        const char* id = uloc_getAvailable(i);
        if (is_gregorian_latin(id) && vxhost::canonical_locale(id) == id) ids.emplace_back(id);
    }
    return ids;
}

// Any Unicode space character is a blank.
inline std::u32string normalised(std::u32string text) { return icu_text::blanked(std::move(text)); }

inline vxhost::SessionOptions options_for(const std::string& id) {
    vxhost::SessionOptions options;
    options.locale = id;
    return options;
}

struct IcuFormat {
    UDateFormat* format = nullptr;
    ~IcuFormat() {
        if (format) udat_close(format);
    }
    // The pattern's unquoted letters, with quoted text blanked out.
    std::u16string letters() const {
        UChar pattern[256];
        UErrorCode error = U_ZERO_ERROR;
        const int32_t n = udat_toPattern(format, false, pattern, 256, &error);
        std::u16string out;
        bool quoted = false;
        for (int32_t i = 0; i < n; ++i) {
            if (pattern[i] == u'\'') quoted = !quoted;
            out += quoted || pattern[i] == u'\'' ? u' ' : static_cast<char16_t>(pattern[i]);
        }
        return out;
    }
    // A pattern field the directive language cannot show (an era "G", a flexible day period "B")
    // cannot be matched.
    bool shows(UChar letter) const { return letters().find(static_cast<char16_t>(letter)) != std::u16string::npos; }
    bool shows_era() const { return shows(u'G'); }
    // A lone "m" or "s" (minutes or seconds without padding): the directives always pad them.
    bool shows_unpadded(UChar letter) const {
        const std::u16string l = letters();
        for (std::size_t i = 0; i < l.size(); ++i)
            if (l[i] == letter && (i + 1 >= l.size() || l[i + 1] != letter) && (i == 0 || l[i - 1] != letter))
                return true;
        return false;
    }
    std::u32string operator()(UDate when) const {
        UChar buffer[256];
        UErrorCode error = U_ZERO_ERROR;
        const int32_t n = udat_format(format, when, buffer, 256, nullptr, &error);
        return U_SUCCESS(error) ? icu_text::widen(buffer, n) : U"<icu failed>";
    }
};

// A date style, a time style, or both (UDAT_NONE for the part not shown).
inline std::unique_ptr<IcuFormat> icu_style(const char* id, UDateFormatStyle date, UDateFormatStyle time = UDAT_NONE) {
    auto f = std::make_unique<IcuFormat>();
    UErrorCode error = U_ZERO_ERROR;
    f->format = udat_open(time, date, id, u"UTC", -1, nullptr, 0, &error);
    return f;
}

inline std::unique_ptr<IcuFormat> icu_skeleton(const char* id, const UChar* skeleton) {
    auto f = std::make_unique<IcuFormat>();
    UErrorCode error = U_ZERO_ERROR;
    UDateTimePatternGenerator* generator = udatpg_open(id, &error);
    UChar pattern[128];
    const int32_t n = udatpg_getBestPattern(generator, skeleton, -1, pattern, 128, &error);
    udatpg_close(generator);
    f->format = udat_open(UDAT_PATTERN, UDAT_PATTERN, id, u"UTC", -1, pattern, n, &error);
    return f;
}

// A small deterministic generator: the dates differ from locale to locale, so the whole run
// covers every month, every weekday and the span 1600 to 9999.
struct Spread {
    std::uint64_t state;
    std::uint32_t next() {
        state = state * 6364136223846793005ull + 1442695040888963407ull;
        return static_cast<std::uint32_t>(state >> 33);
    }
    CivilDate date() {
        const int year = 1600 + static_cast<int>(next() % 8400);
        const unsigned month = 1 + next() % 12;
        const unsigned last = static_cast<unsigned>(
            (std::chrono::year(year) / std::chrono::month(month) / std::chrono::last).day());
        unsigned day = 1 + next() % last;
        if (year % 4000 == 0 && month == 2 && day == 29) day = 28;  // no 29 February in 4000, 8000
        return {year, month, day};
    }
};

}  // namespace nldate_oracle
