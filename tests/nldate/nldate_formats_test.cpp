// The NLDATE formats on hand-filled and host locales: a sweep of every format over every width
// (the bound, and the order candidate, candidate, sibling, "*"), the candidate lists and width
// skipping, the numeric siblings, the weekday-number row, byte mode and the frame's guards.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "calendar/missing_value.h"
#include "case_table.h"
#include "frame/registry.h"
#include "library.h"
#include "locale_data.h"
#include "nldate/nldate_formats.h"
#include "nldate_fixture.h"
#include "session.h"
#include "transcoder.h"

namespace {

using namespace vxlocfmt;
using namespace nldate_test;

const double tuesday = day_of(2024, 3, 5);
const double sunday = day_of(2024, 3, 3);

std::string u8(std::u32string_view s) { return to_utf8(s); }

struct Named {
    std::u32string_view name;
    format_fn function;
};
const Named all_formats[] = {
    {U"NLDATE", vxfmtnldate},       {U"NLDATEL", vxfmtnldatel},     {U"NLDATEM", vxfmtnldatem},
    {U"NLDATEMD", vxfmtnldatemd},   {U"NLDATEMDL", vxfmtnldatemdl}, {U"NLDATEMDM", vxfmtnldatemdm},
    {U"NLDATEMDS", vxfmtnldatemds}, {U"NLDATEMN", vxfmtnldatemn},   {U"NLDATES", vxfmtnldates},
    {U"NLDATEW", vxfmtnldatew},     {U"NLDATEWN", vxfmtnldatewn},   {U"NLDATEYM", vxfmtnldateym},
    {U"NLDATEYML", vxfmtnldateyml}, {U"NLDATEYMM", vxfmtnldateymm}, {U"NLDATEYMS", vxfmtnldateyms},
    {U"NLDATEYQ", vxfmtnldateyq},   {U"NLDATEYQL", vxfmtnldateyql}, {U"NLDATEYQM", vxfmtnldateyqm},
    {U"NLDATEYQS", vxfmtnldateyqs}, {U"NLDATEYR", vxfmtnldateyr},   {U"NLDATEYW", vxfmtnldateyw},
};

const Named* format_named(const std::string& name) {
    for (const Named& f : all_formats)
        if (u8(f.name) == name) return &f;
    return nullptr;
}

// The case table: the candidate lists and width skipping (which the sweep below takes from the
// format table), and the numeric siblings.
TEST(NldateFormats, CandidatesAndSiblings) {
    Properties en = english_like();
    Properties de = german_like();
    ASSERT_EQ(en.width(31), 18u);  // "%B %#d, %Y": September, a day, ", " and the year
    for (const case_table::Row& row : case_table::read("nldate/nldate_cases.tsv")) {
        SCOPED_TRACE(row.where());
        const Named* format = format_named(row[1]);
        ASSERT_NE(format, nullptr);
        const std::string& d = row[2];
        const std::size_t dash = d.find('-');
        Harness h(row[0] == "german_like" ? de : en);
        EXPECT_EQ(h.run(format->function, day_of(std::stoi(d), std::stoul(d.substr(dash + 1)), std::stoul(d.substr(dash + 4))),
                        row.integer(3)),
                  st::ok);
        EXPECT_EQ(u8(h.field()), row[4]);
        if (row[5] != "-") {
            EXPECT_EQ(h.call().produced, row.integer(5));
        }
    }
    // A separator of more than one character is no separator.
    en.set(prop::date_separator, U", ");
    Harness h(en);
    h.run(vxfmtnldates, tuesday, 8);
    EXPECT_EQ(u8(h.field()), "03052024");
    // An order without all of M, D and Y: "*", also for the year-quarter sibling.
    en.set(prop::date_order, U"MD");
    for (format_fn f : {vxfmtnldates, vxfmtnldateyms, vxfmtnldatemds, vxfmtnldateyqs}) {
        h.run(f, tuesday, 6);
        EXPECT_EQ(u8(h.field()), "******");
    }
    en.set(prop::date_separator, U"-").set(prop::date_order, U"y-m-d");  // lower case, other characters between
    h.run(vxfmtnldates, tuesday, 10);
    EXPECT_EQ(u8(h.field()), "2024-03-05");
}

TEST(NldateFormats, QuarterOrder) {
    Properties p = english_like();
    Harness h(p);
    const struct {
        double day;
        bool year, roman;
        wchar separator;
        std::int32_t width;
        std::string expected;
    } cases[] = {
        {day_of(2024, 1, 31), true, true, U'-', 8, "  2024-I"},  {day_of(2024, 9, 1), true, true, U'-', 7, " 24-III"},
        {day_of(2024, 12, 31), true, true, 0, 6, "2024IV"},      {day_of(2024, 12, 31), false, false, U'-', 3, "  4"},
    };
    for (const auto& c : cases) {
        h.run(vxfmtnldateyqs, c.day, c.width);  // sets up the field
        EXPECT_EQ(nldate::qtr_order(h.call(), c.year, c.roman, c.separator), st::ok);
        EXPECT_EQ(u8(h.field()), c.expected);
    }
}

TEST(NldateFormats, WeekdayNumberRow) {
    const struct {
        std::u32string_view week_pattern;
        std::u32string_view expected;
    } cases[] = {
        {U"%Y-W%U", U"%w"}, {U"%G-W%V", U"%u"},  {U"%Y%W", U"%u"},  {U"", U"%u"},
        {U"%?U%V", U"%u"},  {U"%%U %U", U"%w"},  {U"%#U", U"%w"},   {U"W%u", U"%u"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(u8(nldate::weekday_number_pattern(c.week_pattern)), u8(c.expected)) << u8(c.week_pattern);

    // Reached only when neither weekday name fits: Sunday is 7 Monday-first, 0 Sunday-first.
    for (auto [make, expected] : {std::pair{&english_like, "7   "}, std::pair{&german_like, "0   "}}) {
        Properties p = make();
        p.width(121, 5);
        Harness h(p);
        h.run(vxfmtnldatewn, sunday, 4);
        EXPECT_EQ(u8(h.field()), expected);
        EXPECT_EQ(h.call().produced, 1);
        h.run(vxfmtnldatewn, sunday, 5);
        EXPECT_NE(u8(h.field()).substr(0, 1), std::string(1, expected[0]));  // a name fits again
    }
}

TEST(NldateFormats, ByteModeTriesTheNextCandidate) {
    Properties p = german_like();
    Harness h(p);
    // "5. März 2024" is 12 characters and 13 bytes of UTF-8.
    h.run(vxfmtnldate, tuesday, 12);
    EXPECT_EQ(u8(h.text()), "5. März 2024");
    vxhost::Transcoder* utf8 = vxhost::Transcoder::to_session("UTF-8");
    vxhost::Transcoder* latin1 = vxhost::Transcoder::to_session("ISO-8859-1");
    ASSERT_TRUE(utf8 && latin1);
    h.call().byte_mode = 1;
    h.call().session_transcoder = utf8;
    h.run(vxfmtnldate, tuesday, 12);
    EXPECT_EQ(u8(h.text()), "05.03.2024");
    h.run(vxfmtnldate, tuesday, 13);
    EXPECT_EQ(u8(h.text()), "5. März 2024");

    h.call().session_transcoder = latin1;  // one byte for "ä"
    h.run(vxfmtnldate, tuesday, 12);
    EXPECT_EQ(u8(h.text()), "5. März 2024");
    p.set(73, U"Marcő");  // not in Latin-1: the candidate does not fit, whatever the width
    h.run(vxfmtnldate, tuesday, 40);
    EXPECT_EQ(u8(h.text()), "05.03.2024");

    h.call().session_transcoder = nullptr;  // no transcoder: nothing fits, the sibling writes
    h.run(vxfmtnldate, tuesday, 12);
    EXPECT_EQ(u8(h.field()), "  05.03.2024");
    utf8->release();
    latin1->release();
}

TEST(NldateFormats, FrameGuards) {
    Properties p = english_like();
    for (const Named& f : all_formats) {
        const std::string name = u8(f.name);
        Harness h(p);
        // Out of range: "*" over the width, status 0.
        for (double day : {6589336.0, -138062.0, 1e300}) {
            EXPECT_EQ(h.run(f.function, day, 12), st::ok) << name;
            EXPECT_EQ(u8(h.field()), "************") << name;
            EXPECT_EQ(h.call().produced, 12);
        }
        // Missing values: their character in the last cell.
        EXPECT_EQ(h.run(f.function, calendar::missing_value(), 6), st::ok);
        EXPECT_EQ(u8(h.field()), "     .") << name;
        h.run(f.function, calendar::special_missing_value(calendar::missing_code_a), 6);
        EXPECT_EQ(u8(h.field()), "     A") << name;
        // Limits under flag bit 0.
        h.call().flags = call_flag_check_limits;
        EXPECT_EQ(h.run(f.function, tuesday, 201), st::width_too_large) << name;
        EXPECT_EQ(h.run(f.function, tuesday, 0), st::width_too_small) << name;
        h.call().flags = 0;
        // No instance in the session: tests/frame/prologue_test.cpp, and every row in
        // tests/hardening/abi_edges_test.cpp.
        // A buffer smaller than the width: nothing past the capacity either.
        for (std::int32_t capacity = 0; capacity <= 30; ++capacity) {
            Harness c(p);
            c.run(f.function, tuesday, 30, capacity);
            EXPECT_TRUE(c.guards_intact()) << name << " capacity " << capacity;
        }
    }
}

const registry::RowSpec& row_of(std::u32string_view name) {
    for (const auto& row : registry::row_specs)
        if (row.name == name) return row;
    throw std::logic_error("no row");
}

format_fn function_of(std::u32string_view name) {
    for (const Named& f : all_formats)
        if (f.name == name) return f.function;
    throw std::logic_error("no format");
}

// The candidates' texts at full width (empty: the candidate does not expand) and their
// needed widths, worked out from the pattern lists with the expander alone.
struct Stages {
    std::vector<std::u32string> texts;
    std::vector<std::int64_t> needed;
};

Stages stages_of(PropertyCache& p, const nldate::candidate_format& f, double day) {
    Stages s;
    for (const nldate::pattern_row& row : f.rows) {
        const auto n = static_cast<std::size_t>(row.number & 0xFF);
        if (n == nldate::sibling_row) break;
        std::u32string pattern = row.literal ? std::u32string(row.literal) : std::u32string(locale::property_text(p, n));
        std::int64_t needed = p.properties[n].width;
        if (pattern == U"%o") needed = 2;
        if (pattern == U"u") {
            pattern = nldate::weekday_number_pattern(locale::property_text(p, n));
            needed = 1;
        }
        std::u32string cells(200, U' ');
        std::int32_t width = 200;
        const std::int32_t code = nldate::zkfdate(cells.data(), 200, &width, pattern.data(),
                                                  static_cast<std::int32_t>(pattern.size()), p, day);
        s.texts.push_back(code == 0 ? cells.substr(0, static_cast<std::size_t>(width)) : U"");
        s.needed.push_back(needed);
    }
    return s;
}

// Every width from 200 down to the minimum: nothing written past the field, the text is the one
// the rules choose, and as the width shrinks the format moves only forward through its
// candidates, then to its sibling, then to "*". Below the minimum (limits unchecked) only the
// bound is checked.
void sweep(PropertyCache& p, double day, const std::string& locale) {
    for (const nldate::candidate_format& f : nldate::candidate_formats) {
        const std::string name = u8(f.name);
        const format_fn format = function_of(f.name);
        const Stages s = stages_of(p, f, day);
        const auto sibling_stage = static_cast<std::int32_t>(s.texts.size());
        const std::int32_t star_stage = sibling_stage + 1;
        const auto min_width = static_cast<std::int32_t>(row_of(f.name).min_width);
        std::int32_t previous = 0;
        for (std::int32_t width = 200; width >= 0; --width) {
            Harness h(p);
            ASSERT_EQ(h.run(format, day, width), st::ok) << name;
            ASSERT_TRUE(h.guards_intact()) << name << " width " << width;
            ASSERT_GE(h.call().produced, 0);
            ASSERT_LE(h.call().produced, width);
            if (width < min_width) continue;
            const std::u32string field = h.field();

            std::int32_t expected = f.sibling ? sibling_stage : star_stage;
            for (std::size_t k = 0; k < s.texts.size(); ++k) {
                if (s.texts[k].empty() || s.texts[k].size() > static_cast<std::size_t>(width)) continue;
                if (f.skip_by_width && s.needed[k] > width) continue;
                expected = static_cast<std::int32_t>(k);
                break;
            }
            std::u32string wanted;
            if (expected < sibling_stage) {
                wanted = s.texts[static_cast<std::size_t>(expected)];
                wanted.resize(static_cast<std::size_t>(width), U' ');
                EXPECT_EQ(h.call().produced, static_cast<std::int32_t>(s.texts[static_cast<std::size_t>(expected)].size()));
            } else if (expected == sibling_stage) {
                Harness g(p);
                g.run(f.sibling, day, width);
                wanted = g.field();
            } else {
                wanted.assign(static_cast<std::size_t>(width), U'*');
            }
            ASSERT_EQ(u8(field), u8(wanted)) << locale << " " << name << " width " << width << " day " << day;
            EXPECT_GE(expected, previous) << name << " width " << width;
            previous = expected;
        }
    }
    // The field-by-field siblings: right-aligned over exactly the width.
    for (format_fn sibling : {vxfmtnldates, vxfmtnldateyms, vxfmtnldatemds, vxfmtnldateyqs}) {
        for (std::int32_t width = 0; width <= 200; ++width) {
            Harness h(p);
            ASSERT_EQ(h.run(sibling, day, width), st::ok);
            ASSERT_TRUE(h.guards_intact());
            ASSERT_EQ(h.call().produced, width);
            if (width > 0) {
                EXPECT_NE(h.field().back(), U' ') << width;
            }
        }
    }
}

TEST(NldateFormats, WidthSweep) {
    const double days[] = {tuesday, day_of(2024, 9, 25), day_of(1600, 2, 29), 6589335, -138061};
    for (auto make : {english_like, german_like}) {
        Properties p = make();
        for (double day : days) sweep(p.cache(), day, "sample");
    }
}

// The same sweep on real locales: their tables built by the library in a host session.
TEST(NldateFormats, WidthSweepOnHostLocales) {
    vxhost::Library library;
    int swept = 0;
    for (const char* id : {"en_US", "de_DE", "fr_FR", "ja_JP", "th_TH", "ar_EG", "hi_IN", "ru_RU", "zh_Hans_CN", "lo"}) {
        if (vxhost::canonical_locale(id) != id) continue;
        vxhost::SessionOptions options;
        options.locale = id;
        vxhost::Session session(library, options);
        session.format(*library.find(U"NLDATE"), 20, 0, 0);  // builds the table
        PropertyCache* table = session.call().property_cache;
        ASSERT_NE(table, nullptr);
        if (table->properties[28].length == 0) continue;  // no locale data built in
        for (double day : {tuesday, day_of(2024, 9, 25)}) sweep(*table, day, id);
        ++swept;
    }
    if (swept == 0) GTEST_SKIP() << "the host's locale blocks have no patterns: locale data not built in";
}

}  // namespace
