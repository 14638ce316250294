// The locale informats' own rules, case by case: the order of the datetime tries, the ranges of
// a time alone and inside a datetime, the fall-back, the blanks that match each other, names
// read case-blind and with or without their period, the week informats' cut-off and limits,
// and the codes without an instance or a text. Then the week informats read back what the week
// formats write, over the whole calendar.
#include <gtest/gtest.h>

#include <cmath>
#include <optional>
#include <string>

#include "calendar/date_conversions.h"
#include "calendar/missing_value.h"
#include "dateread/fixed_length_reader.h"
#include "kernel_handle.h"
#include "library.h"
#include "library_suite.h"
#include "nldate/nldate_fixture.h"
#include "session.h"

VX_EXPORT vxlocfmt::status vxfmtnldatei(vxlocfmt::FmtCall*, void*);
VX_EXPORT vxlocfmt::status vxfmtnldatmi(vxlocfmt::FmtCall*, void*);
VX_EXPORT vxlocfmt::status vxfmtnltimei(vxlocfmt::FmtCall*, void*);

namespace {

using namespace vxlocfmt;
using calendar::zmdy;
using nldate_test::to_utf8;

constexpr double missing = std::numeric_limits<double>::quiet_NaN();  // any NaN: "the missing value"

class NlInformats : public vxtest::LibrarySuite {
protected:
    void TearDown() override { vxhost::set_year_cutoff(1950); }
};

void expect_read(const vxhost::ReadResult& got, vxlocfmt::status code, double value, const std::string& what) {
    EXPECT_EQ(got.code, code) << what;
    if (std::isnan(value)) EXPECT_TRUE(std::isnan(got.value)) << what << " gave " << got.value;
    else EXPECT_EQ(got.value, value) << what;
}

TEST_F(NlInformats, LocaleData) {
    const double d2022 = zmdy(12, 21, 2022);  // 23000
    const struct {
        const char* locale;
        const char32_t* informat;
        const char32_t* text;
        vxlocfmt::status code;
        double value;
    } cases[] = {
        {"fr_FR", U"@NLDATE", U"21 décembre 2022", 0, d2022},
        {"en_US", U"@NLDATE", U"DECEMBER 21, 2022", 0, d2022},              // names case-blind
        {"en_US", U"@NLDATE", U"   Dec 21, 2022", 0, d2022},                // the medium date, 29, right-aligned
        {"en_US", U"@NLDATE", U"Dec. 21, 2022", 0, d2022},                  // a period after an abbreviation
        {"en_US", U"@NLDATE", U"Mar 4, 2020", 0, zmdy(3, 4, 2020)},         // "Mar", not "March"
        {"en_US", U"@NLDATE", U"Wednesday, December 21, 2022", 0, d2022},   // the full date, 32
        {"de_DE", U"@NLDATE", U"21. Dez 2022", 0, d2022},                   // "%B" reads every month form
        {"de_DE", U"@NLDATEW", U"Mi, 21. Dez 2022", 0, d2022},              // 33 without the periods
        {"de_DE", U"@NLDATE", U"01JAN2020", 0, zmdy(1, 1, 2020)},           // the fall-back "DATE"
        {"de_DE", U"@NLDATE", U"31.02.2020", 999, missing},                 // no such day, nowhere
        {"de_DE", U"@NLDATE", U"   ", 1, missing},                          // empty field
        {"en_US", U"@NLDATM", U"Dec 21, 2022, 10:30:15 PM", 0, d2022 * 86400 + 81015},
        {"en_US", U"@NLDATM", U"Dec 21, 2022, 10:30:15\u00A0pm", 0, d2022 * 86400 + 81015},  // U+00A0 for U+202F
        {"en_US", U"@NLDATM", U"Dec 21, 2022, 12:00:00 AM", 0, d2022 * 86400},
        {"en_US", U"@NLDATM", U"12/21/22, 10:30 PM", 0, d2022 * 86400 + 81000},             // partial: no seconds
        {"en_US", U"@NLDATM", U"Dec 21, 2022", 0, d2022 * 86400},                           // the time left out
        {"de_DE", U"@NLDATM", U"21.12.2022, 10:30:15,25", 0, d2022 * 86400 + 37815.25},     // a fraction
        {"de_DE", U"@NLDATM", U"21.12.2022, 25:00:00", 999, missing},       // not inside a datetime
        {"de_DE", U"@NLDATM", U"21.12.2022, 10:75:00", 999, missing},       // minutes up to 59
        {"de_DE", U"@NLDATM", U"21DEC2022:10:30", 0, d2022 * 86400 + 37800},  // the fall-back "DATETIME"
        {"de_DE", U"@NLTIME", U"25:00:00", 0, 90000},                       // a time alone has no bound
        {"de_DE", U"@NLTIME", U"10:30", 0, 37800},                          // hour and minute: partial, read
        {"en_US", U"@NLTIME", U"12:30:00 PM", 0, 45000},
        {"en_US", U"@NLTIME", U"12:30:00 AM", 0, 1800},
        {"ja_JP", U"@NLDATM", U"2022/12/21 9:05:00", 0, d2022 * 86400 + 32700},
        {"ko_KR", U"@NLTIME", U"오후 3:04:05", 0, 54245},                    // the marker before the hour
        {"en_US", U"@NLSTRMON", U"Mar", 0, 3},
        {"en_US", U"@NLSTRMON", U"March", 0, 3},
        {"en_US", U"@NLSTRMON", U"Smarch", 0, missing},
        {"en_US", U"@NLSTRMON", U"", 0, missing},
    };
    for (const auto& c : cases) {
        vxhost::Session session(*library, {.locale = c.locale});
        const FuncInfo& row = *library->find(c.informat);
        expect_read(session.read(row, static_cast<std::int32_t>(row.default_width), 0, c.text), c.code, c.value,
                    std::string(c.locale) + " " + to_utf8(c.informat) + " [" + to_utf8(c.text) + "]");
    }
}

// A date with only hour and minute (pattern 47) is kept aside; a complete match later in the
// list (51, with no time fields at all) wins; without it the first partial one stands, not a
// later one (50).
TEST_F(NlInformats, DatetimePartialAgainstCompleteMatch) {
    nldate_test::Properties p = nldate_test::english_like();
    p.set(46, U"%Y-%m-%d").set(47, U"%d/%m/%Y %H:%M").set(50, U"%d/%m/%Y %M:%S").set(51, U"%d/%m/%Y %U:%U");
    p.set(44, U"").set(45, U"");
    nldate_test::Harness h(p);
    const auto read = [&](std::u32string_view text) {
        double v = missing;
        FmtCall& call = h.call();
        call.input = text.data();
        call.input_length = call.text_limit = static_cast<std::int32_t>(text.size());
        call.output = &v;
        EXPECT_EQ(vxfmtnldatmi(&call, nullptr), 0u) << to_utf8(text);
        return v;
    };
    const double day = zmdy(12, 21, 2022) * 86400;
    EXPECT_EQ(read(U"21/12/2022 10:30"), day);  // 51's complete reading: midnight
    p.set(51, U"");
    EXPECT_EQ(read(U"21/12/2022 10:30"), day + 10 * 3600 + 30 * 60);  // 47's, not 50's 00:10:30
}

// "%x" and "%X" are the locale's date and time patterns, replaced once as the expander does.
TEST_F(NlInformats, SubstitutedPatterns) {
    nldate_test::Properties p = nldate_test::english_like();
    double date, time;
    EXPECT_EQ(dateread::getdate_fixlen(p.cache(), U"December 21, 2022 10:30:15 PM", U"%x %X", date, time), 0);
    EXPECT_EQ(date, zmdy(12, 21, 2022));
    EXPECT_EQ(time, 81015);
    EXPECT_EQ(dateread::getdate_fixlen(p.cache(), U"Dec 21, 2022", U"%x %X", date, time), 2);  // the time left out
    EXPECT_EQ(dateread::getdate_fixlen(p.cache(), U"December 21, 2022", U"%#x", date, time), -1);  // refused
}

TEST_F(NlInformats, WithoutInstanceOrTable) {
    nldate_test::Properties p = nldate_test::english_like();
    nldate_test::Harness h(p);
    h.drop_instance();
    double v = 7;
    FmtCall& call = h.call();
    call.input = U"Dec 21, 2022";
    call.input_length = call.text_limit = 12;
    call.output = &v;
    for (format_fn f : {vxfmtnldatei, vxfmtnldatmi, vxfmtnltimei}) EXPECT_EQ(f(&call, nullptr), 0x80000000u);
    EXPECT_EQ(v, 7);  // nothing written

    // A table that cannot be built (no locale object) still reads through the fall-back.
    vxhost::Session session(*library, {.locale = "en_US"});
    FmtCall& s = session.call();
    s.property_cache = nullptr;
    s.number_format = nullptr;
    s.input = U"01JAN2020";
    s.input_length = s.text_limit = 9;
    s.output = &v;
    EXPECT_EQ(vxfmtnldatei(&s, nullptr), 0u);
    EXPECT_EQ(v, zmdy(1, 1, 2020));
}

TEST_F(NlInformats, WeekTexts) {
    const double jan3 = zmdy(1, 3, 2024);  // a Wednesday; 2024 begins on a Monday
    const struct {
        const char32_t* informat;
        const char32_t* text;
        vxlocfmt::status code;
        double value;
    } cases[] = {
        {U"@WEEKV", U"2024-W01-03", 0, jan3},
        {U"@WEEKV", U"2024W0103", 0, jan3},
        {U"@WEEKV", U"24W0103", 0, jan3},
        {U"@WEEKV", U"2024-W01", 0, jan3 - 2},        // no day: the first of the week
        {U"@WEEKV", U"2024 w 01 - 03", 0, jan3},      // blanks and "-" between the parts, a lower "w"
        {U"@WEEKW", U"2024-W01-03", 0, jan3},
        {U"@WEEKU", U"2024-W01-04", 0, jan3 + 7},     // Sunday first: week 1 begins on 7 January
        {U"@WEEKU", U"2024-W00-02", 0, jan3 - 2},     // week 0: the days before the first Sunday
        {U"@WEEKV", U"2020-W53-05", 0, zmdy(1, 1, 2021)},
        {U"@WEEKV", U"2024-W01-31", 0, jan3 + 28},    // a day up to 31 is taken
        {U"@WEEKV", U"2024-W01-32", 0x80000000u, missing},
        {U"@WEEKV", U"2024-W54-01", 0x80000000u, missing},
        {U"@WEEKV", U"1500-W01-01", 0x80000000u, missing},
        {U"@WEEKV", U"W01", 0x80000000u, missing},    // no year
        {U"@WEEKV", U"2024-01-03", 0x80000000u, missing},
        {U"@WEEKV", U"2024-W01-03:10:30", 0x80000000u, missing},
        {U"@WEEKV", U"  ", 1, missing},
    };
    vxhost::Session session(*library, {.locale = "en_US"});
    for (const auto& c : cases) {
        const FuncInfo& row = *library->find(c.informat);
        expect_read(session.read(row, 11, 0, c.text), c.code, c.value, to_utf8(c.informat) + " " + to_utf8(c.text));
    }
    // Two-digit years by the cut-off option; 1960 when it cannot be read.
    vxhost::set_year_cutoff(1920);
    expect_read(session.read(*library->find(U"@WEEKV"), 11, 0, U"55W0101"), 0, zmdy(1, 3, 1955) + 0, "cut-off 1920");
    vxhost::set_year_cutoff(std::nullopt);
    expect_read(session.read(*library->find(U"@WEEKV"), 11, 0, U"55W0101"), 0, zmdy(1, 4, 2055), "no option: 1960");
}

// What the week formats write comes back: the day itself where the text has the day, else the
// first day of its week (the first day of a week 0 may lie in the year before).
TEST_F(NlInformats, WeekFormatsReadBack) {
    vxhost::set_year_cutoff(1950);
    vxhost::Session session(*library, {.locale = "en_US"});
    int checked = 0;
    for (const char32_t rule : {U'U', U'V', U'W'}) {
        const std::u32string r(1, rule);
        const FuncInfo& week = *library->find(U"WEEK" + r);
        const FuncInfo& year_week = *library->find(U"YYWEEK" + r);
        const FuncInfo& informat = *library->find(U"@WEEK" + r);
        const double monday_first = rule == U'U' ? 0 : 1;  // days after Sunday the week begins
        for (double day = zmdy(1, 1, 1583); day < zmdy(12, 31, 9999); day += 89) {
            // A two-digit year reads back within the cut-off's hundred years only.
            const bool in_century = day >= zmdy(1, 8, 1950) && day < zmdy(12, 24, 2049);
            const struct {
                const FuncInfo& row;
                std::int32_t width;
                bool has_day, four_digit_year;
            } layouts[] = {{week, 11, true, true},        {week, 9, true, true},         {week, 7, true, false},
                           {week, 5, false, false},       {year_week, 8, false, true},   {year_week, 7, false, true},
                           {year_week, 6, false, false},  {year_week, 5, false, false}};
            for (const auto& l : layouts) {
                if (!l.four_digit_year && !in_century) continue;
                const std::u32string text(session.format(l.row, l.width, 0, day).text);
                const vxhost::ReadResult back = session.read(informat, 11, 0, text);
                const double weekday = std::fmod(std::fmod(day + 5, 7) + 7, 7);  // 0 Sunday; day 0 a Friday
                const double first = day - std::fmod(weekday - monday_first + 7, 7);
                ASSERT_EQ(back.code, 0u) << to_utf8(text);
                ASSERT_EQ(back.value, l.has_day ? day : first) << to_utf8(r) << " [" << to_utf8(text) << "] of " << day;
                ++checked;
            }
        }
    }
    EXPECT_GT(checked, 400000);
}

}  // namespace
