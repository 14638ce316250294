// NLDATM, NLDATMW and NLTIME through the loaded library against ICU's own medium date-time,
// full-date-plus-medium-time and medium time formatting, for every Gregorian, Latin-digit ICU
// locale, at width 200 (Unicode spaces compared as one blank). Then the datetime formats shrink
// width by width and never write beyond it.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "harness.h"
#include "icu_oracle.h"
#include "library.h"
#include "library_suite.h"
#include "session.h"

namespace {

using namespace vxlocfmt;
using namespace nldate_oracle;
using nldate_test::to_utf8;

class DatetimeOracle : public vxtest::LibrarySuite {};

TEST_F(DatetimeOracle, MediumDatetimeFullDatetimeAndMediumTimeEqualIcu) {
    const std::vector<std::string> ids = oracle_locales();
    ASSERT_GT(ids.size(), 100u);
    int compared = 0, mismatches = 0, skipped = 0;
    std::string report;
    Spread spread{0x2545f4914f6cdd1dull};
    for (const std::string& id : ids) {
        vxhost::Session session(*library, options_for(id));
        const auto medium = icu_style(id.c_str(), UDAT_MEDIUM, UDAT_MEDIUM);
        const auto full = icu_style(id.c_str(), UDAT_FULL, UDAT_MEDIUM);
        const auto time = icu_style(id.c_str(), UDAT_NONE, UDAT_MEDIUM);
        const struct {
            const char32_t* row;
            const IcuFormat* icu;
            bool is_time;
        } rows[] = {{U"NLDATM", medium.get(), false}, {U"NLDATMW", full.get(), false}, {U"NLTIME", time.get(), true}};
        for (int i = 0; i < 4; ++i) {
            const CivilDate date = spread.date();
            const int second = static_cast<int>(spread.next() % 86400);
            for (const auto& r : rows) {
                if (r.icu->shows(u'G') || r.icu->shows(u'B') || r.icu->shows(u'b') || r.icu->shows_unpadded(u'm') ||
                    r.icu->shows_unpadded(u's')) {
                    ++skipped;
                    continue;
                }
                if (!r.is_time && r.row == std::u32string_view(U"NLDATMW") && !date.weekday_agrees()) continue;
                const double value = r.is_time ? second : date.day_number() * 86400 + second;
                const UDate when = r.is_time ? second * 1000.0 : date.icu_millis() + second * 1000.0;
                const vxhost::FormatResult ours = session.format(*library->find(r.row), 200, 0, value);
                const std::u32string expected = normalised((*r.icu)(when));
                const std::u32string got = normalised(std::u32string(ours.text));
                ++compared;
                if (ours.code == 0 && got == expected) continue;
                if (++mismatches <= 25)
                    report += id + " " + to_utf8(r.row) + " " + date.text() + " +" + std::to_string(second) + "s: [" +
                              to_utf8(got) + "] ICU [" + to_utf8(expected) + "]\n";
            }
        }
    }
    EXPECT_EQ(mismatches, 0) << mismatches << " of " << compared << " differ, the first:\n" << report;
    EXPECT_LT(skipped, compared / 20) << "patterns with fields the directives cannot show; too many of them";
}

// Every datetime and time format at every width of its range: nothing beyond the width, and
// a field that is either text, the fall-back or stars.
TEST_F(DatetimeOracle, WidthSweepStaysInsideTheField) {
    const char32_t* names[] = {U"NLDATM",   U"NLDATMAP", U"NLDATMZ",  U"NLDATML",  U"NLDATMM",  U"NLDATMS",
                               U"NLDATMDT", U"NLDATMW",  U"NLDATMWZ", U"NLDATMWN", U"NLDATMMN", U"NLDATMMD",
                               U"NLDATMMDL", U"NLDATMMDM", U"NLDATMMDS", U"NLDATMYM", U"NLDATMYML", U"NLDATMYMM",
                               U"NLDATMYMS", U"NLDATMYQ", U"NLDATMYQL", U"NLDATMYQM", U"NLDATMYQS", U"NLDATMYR",
                               U"NLDATMYW", U"NLDATMTM", U"NLDATMTZ", U"NLTIME",   U"NLTIMAP"};
    for (const char* id : {"en_US", "de_DE", "ja_JP", "fr_FR", "ru_RU"}) {
        vxhost::Session session(*library, options_for(id));
        for (const char32_t* name : names) {
            const FuncInfo& row = *library->find(name);
            for (std::int32_t width = static_cast<std::int32_t>(row.min_width); width <= 200; ++width) {
                for (double value : {2000000000.5, -1.0, 108000.0}) {
                    vxfuzz::GuardedCells<char32_t> out(static_cast<std::size_t>(width));
                    FmtCall& call = session.call();
                    call.width = width;
                    call.decimals = 1;
                    call.capacity = width;
                    call.input = &value;
                    call.output = out.data();
                    EXPECT_EQ(row.function(&call, nullptr), 0u);
                    out.expect_untouched_beyond(static_cast<std::size_t>(width), "datetime format");
                    EXPECT_LE(call.produced, width);
                }
            }
        }
    }
}

TEST_F(DatetimeOracle, EdgeCases) {
    vxhost::Session session(*library, options_for("de_DE"));
    auto text = [&](const char32_t* name, int width, int decimals, double value) {
        return to_utf8(session.format(*library->find(name), width, decimals, value).text);
    };
    EXPECT_EQ(text(U"NLTIME", 20, 0, 30 * 3600), "30:00:00");               // times are not wrapped
    EXPECT_EQ(text(U"NLDATM", 30, 2, 12.345), "01.01.1960, 00:00:12,35");  // the locale's decimal point
    EXPECT_EQ(text(U"NLDATM", 30, 0, 569318630400), std::string(30, '*'));
    EXPECT_EQ(text(U"NLTIME", 20, 0, -5), "            -0:00:05");        // refused: the classic clock
}

}  // namespace
