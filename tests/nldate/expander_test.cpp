// The date pattern expander: the C library's strftime as an oracle for the directives the two
// share, then on a hand-filled locale what it does not know: flags, names by set, missing parts,
// the fraction of seconds, the zone offset, calendar years, refusals and the output rules.
#include <gtest/gtest.h>

#include <chrono>
#include <ctime>
#include <string>

#include "calendar/missing_value.h"
#include "case_table.h"
#include "nldate_fixture.h"

namespace {

using namespace vxlocfmt;
using namespace nldate_test;
using nldate::expand;

const double missing = calendar::missing_value();
const double tuesday = day_of(2024, 3, 5);  // 2024-03-05, day of year 65

struct Result {
    std::int32_t code;
    std::u32string text;
};

// Expands into a 200-cell field; the text is what the width pointer says was produced.
Result run(Properties& p, std::u32string_view pattern, double day, double hour = missing,
           double minute = missing, double seconds = missing, std::uint32_t decimals = 0,
           void* zone = nullptr) {
    std::u32string cells(200, U'~');
    std::int32_t width = 200;
    const std::int32_t code = expand(pattern.data(), static_cast<std::int32_t>(pattern.size()), cells.data(), 200,
                                     &width, decimals, p.cache(), zone, day, hour, minute, seconds);
    return {code, code == 0 ? cells.substr(0, static_cast<std::size_t>(width)) : cells};
}

std::string u8(std::u32string_view s) { return to_utf8(s); }

// A zone object whose operation 4 answers a fixed offset and remembers what it was asked.
struct FakeZone {
    std::array<void*, 8> words{};
    double offset = 0;
    double asked = 0;
    FakeZone() { words[4] = reinterpret_cast<void*>(&answer); }
    static double answer(void* zone, double datetime) {
        auto* self = static_cast<FakeZone*>(zone);
        self->asked = datetime;
        return self->offset;
    }
};

// The case table: what the oracles below do not know.
TEST(Expander, Directives) {
    Properties p = english_like();
    const auto value = [](const std::string& s) {
        if (s == "missing") return missing;
        if (s.size() == 10 && s[4] == '-') return day_of(std::stoi(s), std::stoul(s.substr(5)), std::stoul(s.substr(8)));
        return std::stod(s);
    };
    for (const case_table::Row& row : case_table::read("nldate/expander_cases.tsv")) {
        p.set(prop::calendar_code, row[0] == "-" ? U"" : row.wide(0));
        const Result r = run(p, row.wide(1), value(row[2]), value(row[3]), value(row[4]), value(row[5]),
                             static_cast<std::uint32_t>(row.integer(6)));
        EXPECT_EQ(r.code, 0) << row.where();
        EXPECT_EQ(u8(r.text), row[7]) << row.where();
    }
    p.set(prop::calendar_code, U"").set(prop::decimal_point, U",").set(prop::am, U"").set(prop::pm, U"");
    EXPECT_EQ(u8(run(p, U"%S|%p|%p", tuesday, 0, 2, 5.86, 1).text), "05,9|AM|AM");  // no markers: AM and PM
    EXPECT_EQ(u8(run(p, U"%p", tuesday, 12).text), "PM");
    // Thousands of decimals still measure whole and store what fits.
    std::int32_t width = 0;
    EXPECT_EQ(expand(U"%S", 2, nullptr, 0, &width, 5000, p.cache(), nullptr, 0, 1, 2, 3.25), 2 + 1 + 5000);
}

TEST(Expander, ZoneOffset) {
    Properties p = english_like();
    FakeZone zone;
    for (const auto& [offset, expected] : {std::pair{3600.0, "+0100"}, {-19800.0, "-0530"}, {20700.0, "+0545"},
                                           {-43200.0, "-1200"}}) {
        zone.offset = offset;
        EXPECT_EQ(u8(run(p, U"%z", tuesday, 13, 7, 9.5, 0, &zone).text), expected);
        EXPECT_EQ(zone.asked, tuesday * 86400 + (13 * 60 + 7) * 60 + 9.5);
    }
    EXPECT_EQ(u8(run(p, U"%z", tuesday, 13, 7, 9).text), "+0000");  // no zone object
}

TEST(Expander, UnsupportedDirectives) {
    Properties p = english_like();
    for (std::u32string_view pattern : {U"%R", U"%r", U"%#x", U"%#X", U"%+x", U"%?X", U"%-d", U"%é", U"%1",
                                        U"abc%", U"%#", U"%0", U"%+", U"%?", U"%##d", U"%1+?", U"%d%;"}) {
        EXPECT_EQ(run(p, pattern, tuesday).code, nldate::expand_bad_directive) << u8(pattern);
    }
    // Pass 1 substitutes once: a "%x" inside the date pattern is not expanded again.
    p.set(prop::date_pattern, U"%x");
    EXPECT_EQ(run(p, U"%x", tuesday).code, nldate::expand_bad_directive);
}

// Cut with a zone: the offset takes the last 6 cells and is never cut, "%Z" as "%z"; with no
// output, the length of the text and the width untouched. Widths and capacities: fast paths.
TEST(Expander, OutputRules) {
    Properties p = english_like();
    FakeZone zone;
    zone.offset = -19800;
    for (std::u32string_view pattern : {U"%B %d %Y %H:%M %z", U"%B %d %Y %H:%M %Z"}) {
        std::u32string cells(40, U'~');
        std::int32_t width = 14;
        EXPECT_EQ(expand(pattern.data(), static_cast<std::int32_t>(pattern.size()), cells.data(), 40, &width, 0,
                         p.cache(), &zone, tuesday, 13, 7, 0),
                  1);
        EXPECT_EQ(u8(cells.substr(0, 15)), "March 05 -0530~") << u8(pattern);
    }
    std::int32_t width = 3;
    EXPECT_EQ(expand(U"%A, %B %#d", 10, nullptr, 0, &width, 0, p.cache(), nullptr, tuesday, 0, 0, 0), 16);
    EXPECT_EQ(width, 3);
}

TEST(EntryFunctions, Refusals) {
    Properties p = english_like();
    wchar cells[40];
    std::int32_t width = 40;
    const struct {
        char kind;  // d: zkfdate, t: zkftime, x: zkfdttm
        std::u32string_view pattern;
        double value;
        std::int32_t expected;
    } cases[] = {
        {'d', U"", 0, nldate::expand_no_pattern},
        {'d', U"%d", 6589336, nldate::expand_out_of_range},
        {'d', U"%d", -138062, nldate::expand_out_of_range},
        {'d', U"%d", missing, nldate::expand_out_of_range},
        {'d', U"%d", -138061, 0},
        {'d', U"%d", 6589335, 0},
        {'d', U"%R", 0, nldate::expand_bad_directive},
        {'t', U"", 5, nldate::expand_no_pattern},  // the ranges of times and datetimes: fast paths
    };
    for (const auto& c : cases) {
        width = 40;
        const auto n = static_cast<std::int32_t>(c.pattern.size());
        const std::int32_t code =
            c.kind == 'd'   ? nldate::zkfdate(cells, 40, &width, c.pattern.data(), n, p.cache(), c.value)
            : c.kind == 't' ? nldate::zkftime(cells, 40, &width, c.pattern.data(), n, 0, p.cache(), c.value)
                            : nldate::zkfdttm(cells, 40, &width, c.pattern.data(), n, 0, p.cache(), nullptr, c.value);
        EXPECT_EQ(code, c.expected) << c.kind << " " << u8(c.pattern) << " " << c.value;
    }
    // Property numbers: none (length 0), or an empty property.
    EXPECT_EQ(nldate::zkfdttm(cells, 40, &width, nullptr, 0, 0, p.cache(), nullptr, 0), nldate::expand_no_pattern);
    EXPECT_EQ(nldate::zkfdttm(cells, 40, &width, nullptr, 58, 0, p.cache(), nullptr, 0), nldate::expand_no_pattern);
    EXPECT_EQ(nldate::zkfdttm(cells, 40, &width, nullptr, 58 | nldate::pattern_with_zone, 0, p.cache(), nullptr, 0),
              nldate::expand_no_pattern);
}

TEST(EntryFunctions, DatetimesAndTimes) {
    Properties p = english_like();
    p.set(44, U"%d %H:%M");
    FakeZone zone;
    zone.offset = 3600;
    const auto datetime = [&](const wchar* pattern, std::int32_t length, std::uint32_t decimals, double x) {
        std::u32string cells(60, U'~');
        std::int32_t width = 60;
        const std::int32_t code =
            nldate::zkfdttm(cells.data(), 60, &width, pattern, length, decimals, p.cache(), &zone, x);
        return code == 0 ? u8(cells.substr(0, static_cast<std::size_t>(width))) : "status " + std::to_string(code);
    };
    const double t = tuesday * 86400 + 13 * 3600 + 7 * 60 + 9;
    // A property number as the pattern, and the bit that appends " %z".
    EXPECT_EQ(datetime(nullptr, 44, 0, t), "05 13:07");
    EXPECT_EQ(datetime(nullptr, 44 | nldate::pattern_with_zone, 0, t), "05 13:07 +0100");
    EXPECT_EQ(datetime(nullptr, 44 | nldate::pattern_with_zone | 0x1000, 0, t), "05 13:07 +0100");  // high bits ignored
    // Rounded to the decimals before the split: 23:59:59.96 with one decimal is the next day.
    const double last = tuesday * 86400 + 86399.96;
    EXPECT_EQ(datetime(U"%d %T|%S", 8, 1, last), "06 00:00:00|00.0");
    EXPECT_EQ(datetime(U"%d %T|%S", 8, 2, last), "05 23:59:59|59.96");
    EXPECT_EQ(datetime(U"%d %T", 5, 0, last - 0.5), "05 23:59:59");  // .46 rounds down
    EXPECT_EQ(datetime(U"%d %T", 5, 0, -0.5), "01 00:00:00");        // a half rounds up
    EXPECT_EQ(datetime(U"%d %T", 5, 0, -1), "31 23:59:59");

    const auto time = [&](double x, std::uint32_t decimals = 0) {
        std::u32string cells(60, U'~');
        std::int32_t width = 60;
        const std::int32_t code = nldate::zkftime(cells.data(), 60, &width, U"%H:%M:%S|%n|%d", 14, decimals, p.cache(), x);
        return code == 0 ? u8(cells.substr(0, static_cast<std::size_t>(width))) : "status " + std::to_string(code);
    };
    EXPECT_EQ(time(30 * 3600 + 61), "30:01:01|1|**");  // no wrap at 24, no date
    EXPECT_EQ(time(3599.6), "01:00:00|0|**");
    EXPECT_EQ(time(3599.6, 1), "00:59:59.6|0|**");
}

// The C library's strftime knows the C locale's names and the same week rules: every
// directive the two share must agree, day after day.
TEST(Expander, AgreesWithStrftime) {
    Properties p = english_like();  // its plain names and markers are the C locale's
    constexpr std::u32string_view pattern = U"%a %A %b %B %d %e %j %m %u %w %U %W %V %G %g %y %Y %H %I %M %S %p";
    const std::string c_pattern = u8(pattern);

    int checked = 0, failures = 0;
    const auto check = [&](std::int64_t day, std::int32_t second_of_day) {
        using namespace std::chrono;
        const sys_days date{days{day - 3653}};
        const year_month_day ymd{date};
        std::tm tm{};
        tm.tm_year = static_cast<int>(ymd.year()) - 1900;
        tm.tm_mon = static_cast<int>(static_cast<unsigned>(ymd.month())) - 1;
        tm.tm_mday = static_cast<int>(static_cast<unsigned>(ymd.day()));
        tm.tm_wday = static_cast<int>(weekday{date}.c_encoding());
        tm.tm_yday = static_cast<int>((date - sys_days{ymd.year() / January / 1}).count());
        tm.tm_hour = second_of_day / 3600;
        tm.tm_min = second_of_day / 60 % 60;
        tm.tm_sec = second_of_day % 60;
        char expected[256];
        std::strftime(expected, sizeof expected, c_pattern.c_str(), &tm);
        std::u32string cells(200, U' ');
        std::int32_t width = 200;
        const double x = static_cast<double>(day) * 86400 + second_of_day;
        const std::int32_t code = nldate::zkfdttm(cells.data(), 200, &width, pattern.data(),
                                                  static_cast<std::int32_t>(pattern.size()), 0, p.cache(), nullptr, x);
        const std::string got = code == 0 ? u8(cells.substr(0, static_cast<std::size_t>(width))) : "?";
        ++checked;
        if (got != expected && ++failures <= 5) ADD_FAILURE() << "day " << day << ": " << got << " != " << expected;
    };
    const auto first = static_cast<std::int64_t>(day_of(1600, 1, 1));
    const auto last = static_cast<std::int64_t>(day_of(3999, 12, 31));
    for (std::int64_t day = first; day <= last; day += 37) check(day, static_cast<std::int32_t>((day * 7919) % 86400 + 86400) % 86400);
    // Every day of 28 years holds every kind of year, leap or not, starting on any weekday.
    for (auto day = static_cast<std::int64_t>(day_of(1999, 12, 20)); day <= day_of(2028, 1, 10); ++day)
        check(day, static_cast<std::int32_t>(day % 86400));
    for (std::int32_t s = 0; s < 86400; s += 7) check(23440, s);
    EXPECT_EQ(failures, 0) << "of " << checked;
    EXPECT_GT(checked, 30000);
}

}  // namespace
