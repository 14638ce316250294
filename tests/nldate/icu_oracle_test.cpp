// The NLDATE formats through the loaded library against ICU's own formatting of the same date:
// for every ICU locale whose calendar is Gregorian and whose digits are Latin, NLDATEL, NLDATEM,
// NLDATEW and NLDATEYM at width 200 equal ICU's long, medium and full date styles and its
// "yMMMM" skeleton. The only normalisation: any Unicode space character compares as a blank.
// The same sessions then sweep every format over every width through the C ABI with guard cells.
#include <gtest/gtest.h>

#include <unicode/ucal.h>
#include <unicode/uchar.h>
#include <unicode/udat.h>
#include <unicode/udatpg.h>
#include <unicode/uloc.h>
#include <unicode/unumsys.h>

#include <chrono>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include "library.h"
#include "locale_data.h"
#include "nldate_fixture.h"
#include "session.h"

namespace {

using namespace vxlocfmt;
using nldate_test::to_utf8;

// A date of the calendar with the 4000-year rule, as the library counts days, and the same
// civil date as ICU counts it (plain Gregorian: from 4000-03-01 on, the two differ by whole
// days, so weekdays differ too; that difference is deliberate).
struct CivilDate {
    int year;
    unsigned month, day;
    double day_number() const {
        const std::int64_t skipped = (year - 1) / 4000 + (year % 4000 == 0 && month > 2 ? 1 : 0);
        return nldate_test::day_of(year, month, day) - static_cast<double>(skipped);
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

bool is_gregorian_latin(const char* id) {
    UErrorCode error = U_ZERO_ERROR;
    UCalendar* calendar = ucal_open(nullptr, 0, id, UCAL_DEFAULT, &error);
    const bool gregorian = U_SUCCESS(error) && std::string(ucal_getType(calendar, &error)) == "gregorian";
    ucal_close(calendar);
    error = U_ZERO_ERROR;
    UNumberingSystem* numbers = unumsys_open(id, &error);
    const bool latin = U_SUCCESS(error) && std::string(unumsys_getName(numbers)) == "latn";
    unumsys_close(numbers);
    return gregorian && latin;
}

std::vector<std::string> oracle_locales() {
    std::vector<std::string> ids;
    for (int32_t i = 0; i < uloc_countAvailable(); ++i) {
        const char* id = uloc_getAvailable(i);
        if (is_gregorian_latin(id) && vxhost::canonical_locale(id) == id) ids.emplace_back(id);
    }
    return ids;
}

vxhost::SessionOptions options_for(const std::string& id) {
    vxhost::SessionOptions options;
    options.locale = id;
    return options;
}

// Any Unicode space character is a blank.
std::u32string normalised(std::u32string text) {
    for (char32_t& c : text)
        if (u_isUWhiteSpace(static_cast<UChar32>(c)) || u_charType(static_cast<UChar32>(c)) == U_SPACE_SEPARATOR) c = U' ';
    return text;
}

std::u32string widen(const UChar* text, int32_t length) {
    std::u32string out;
    for (int32_t i = 0; i < length;) {
        UChar32 c;
        U16_NEXT(text, i, length, c);
        out += static_cast<char32_t>(c);
    }
    return out;
}

struct IcuFormat {
    UDateFormat* format = nullptr;
    ~IcuFormat() {
        if (format) udat_close(format);
    }
    // The directive language has no era: a pattern that shows one cannot be matched.
    bool shows_era() const {
        UChar pattern[256];
        UErrorCode error = U_ZERO_ERROR;
        const int32_t n = udat_toPattern(format, false, pattern, 256, &error);
        bool quoted = false;
        for (int32_t i = 0; i < n; ++i) {
            if (pattern[i] == u'\'') quoted = !quoted;
            else if (!quoted && pattern[i] == u'G') return true;
        }
        return false;
    }
    std::u32string operator()(UDate when) const {
        UChar buffer[256];
        UErrorCode error = U_ZERO_ERROR;
        const int32_t n = udat_format(format, when, buffer, 256, nullptr, &error);
        return U_SUCCESS(error) ? widen(buffer, n) : U"<icu failed>";
    }
};

std::unique_ptr<IcuFormat> icu_style(const char* id, UDateFormatStyle style) {
    auto f = std::make_unique<IcuFormat>();
    UErrorCode error = U_ZERO_ERROR;
    f->format = udat_open(UDAT_NONE, style, id, u"UTC", -1, nullptr, 0, &error);
    return f;
}

std::unique_ptr<IcuFormat> icu_skeleton(const char* id, const UChar* skeleton) {
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

// Dates every locale sees: the ends of the span, a leap day, the turn of a year.
constexpr CivilDate fixed_dates[] = {{1600, 1, 1}, {2024, 2, 29}, {1999, 12, 31}, {9999, 12, 31}};
constexpr int spread_dates_per_locale = 6;

class IcuOracle : public ::testing::Test {
protected:
    static void SetUpTestSuite() { library = new vxhost::Library(); }
    static void TearDownTestSuite() {
        delete library;
        library = nullptr;
    }
    // Skips when the host's locale data has no patterns (the data file not built in).
    static bool has_locale_data() {
        vxhost::Session session(*library, options_for("en_US"));
        const double day = 0;
        session.format(*library->find(U"NLDATE"), 20, 0, day);
        const PropertyCache* table = session.call().property_cache;
        return table && table->properties[28].length > 0;
    }
    static vxhost::Library* library;
};
vxhost::Library* IcuOracle::library = nullptr;

TEST_F(IcuOracle, LongMediumFullAndYearMonthEqualIcu) {
    if (!has_locale_data()) GTEST_SKIP() << "the en_US locale block has no patterns: locale data not built in";
    const std::u32string_view rows[] = {U"NLDATEL", U"NLDATEM", U"NLDATEW", U"NLDATEYM"};
    const std::vector<std::string> ids = oracle_locales();
    ASSERT_GT(ids.size(), 100u);

    int compared = 0, mismatches = 0, with_era = 0;
    std::string report;
    Spread spread{0x9e3779b97f4a7c15ull};
    for (const std::string& id : ids) {
        vxhost::Session session(*library, options_for(id));
        std::vector<std::unique_ptr<IcuFormat>> icu;
        icu.push_back(icu_style(id.c_str(), UDAT_LONG));
        icu.push_back(icu_style(id.c_str(), UDAT_MEDIUM));
        icu.push_back(icu_style(id.c_str(), UDAT_FULL));
        icu.push_back(icu_skeleton(id.c_str(), u"yMMMM"));
        std::vector<CivilDate> dates(std::begin(fixed_dates), std::end(fixed_dates));
        for (int i = 0; i < spread_dates_per_locale; ++i) dates.push_back(spread.date());
        for (const CivilDate& date : dates) {
            for (std::size_t k = 0; k < std::size(rows); ++k) {
                if (rows[k] == U"NLDATEW" && !date.weekday_agrees()) continue;
                if (icu[k]->shows_era()) {
                    ++with_era;
                    continue;
                }
                const vxhost::FormatResult ours = session.format(*library->find(rows[k]), 200, 0, date.day_number());
                const std::u32string expected = normalised((*icu[k])(date.icu_millis()));
                const std::u32string got = normalised(std::u32string(ours.text));
                ++compared;
                if (ours.code == 0 && got == expected) continue;
                if (++mismatches <= 25)
                    report += id + " " + to_utf8(rows[k]) + " " + date.text() + ": [" + to_utf8(got) + "] ICU [" +
                              to_utf8(expected) + "]\n";
            }
        }
    }
    EXPECT_EQ(mismatches, 0) << mismatches << " of " << compared << " differ, the first:\n" << report;
    EXPECT_LT(with_era, compared / 100) << "patterns with an era field are not compared; too many of them";
}

}  // namespace
