// The date pattern expander: the C library's strftime as an oracle for the directives the two
// share, then on a hand-filled locale what it does not know: flags, names by set, missing parts,
// the fraction of seconds, the zone offset, calendar years, refusals and the output rules.
#include <gtest/gtest.h>

#include <chrono>
#include <ctime>
#include <string>

#include "calendar/missing_value.h"
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

// What the oracles below do not know, one pattern a row: flags, names by set, "**" parts, the
// fraction of seconds, calendar years.
TEST(Expander, Directives) {
    Properties p = english_like();
    const struct {
        std::u32string_view calendar, pattern;
        double day, hour, minute, seconds;
        std::uint32_t decimals;
        std::u32string_view expected;
    } cases[] = {
        {U"", U"%#a|%#A|%?A|%#b|%#B|%?B", tuesday, 0, 0, 0, 0, U"Tu|TUESDAY|Tue|Mar.|MARCH|Mar"},
        {U"", U"%f|%F|%#F|%c|%C|%#c", tuesday, 0, 0, 0, 0, U"Tue|Tuesday  |TUESDAY  |March    |March    |MARCH    "},
        {U"", U"%D %E %#e %N %O %#o %?M %#y", day_of(2005, 3, 5), 0, 0, 0, 0, U"05 5 5 03 3 3 03 5"},
        {U"", U"%q|%#q|%#Q|%Q", day_of(2024, 12, 1), 0, 0, 0, 0, U"Q4|q4|fourth quarter|4th quarter"},
        {U"", U"[%t%v]%%|%?%|%#%|%Z", tuesday, 0, 0, 0, 0, U"[]%|%|%|XST"},
        {U"", U"%9d %0d %#5d %03m", tuesday, 0, 0, 0, 0, U"05 05 5 03"},  // the digit is read and ignored
        {U"", U"%x|<%x>", day_of(1600, 1, 1), 0, 0, 0, 0, U"January 1, 1600|<January 1, 1600>"},
        // 1582: the nine earliest days carry truncated weekdays; outside 0..6 a name is "**".
        {U"", U"%a|%u|%w", -138061, 0, 0, 0, 0, U"**|**|**"},
        {U"", U"%a|%u", -138059, 0, 0, 0, 0, U"Sun|7"},  // deliberate: the calendar's weekday 1 there
        {U"", U"%H %k %I %l %p|%#H %#k %#I %#l", tuesday, 0, 7, 9, 0, U"00 24 12 00 AM|0 24 12 0"},  // midnight
        {U"", U"%s %T|%X", tuesday, 13, 7, 9.75, 0, U"09 13:07:09|1:07:09 PM"},
        // Missing parts: "**", piecewise; "%p" writes "**" and then AM (deliberate).
        {U"", U"%T|%I %l %k %n %S %s|%p", tuesday, missing, missing, missing, 0, U"**:**:**|** ** ** ** ** **|**AM"},
        {U"", U"%T %X", tuesday, 10, missing, 5, 0, U"10:**:05 10:**:05 AM"},
        {U"", U"%a %A %f %b %B %c %q %Q", missing, 1, 2, 3, 0, U"** ** ** ** ** ** ** **"},
        {U"", U"%d %e %j %m %o %y %Y %u %w %U %V %W %G %g", missing, 1, 2, 3, 0,
         U"** ** ** ** ** ** ** ** ** ** ** ** ** **"},
        // Fractions: only the last digit looks ahead, and a 9 is never raised (no carry).
        {U"", U"%S", tuesday, 1, 2, 5.86, 1, U"05.9"},
        {U"", U"%S", tuesday, 1, 2, 5.97, 1, U"05.9"},
        {U"", U"%S", tuesday, 1, 2, 5.84, 1, U"05.8"},
        {U"", U"%S|%s|%T", tuesday, 1, 2, 59.999, 2, U"59.99|59|01:02:59"},
        {U"", U"%S", tuesday, 1, 2, 5.5, 0, U"05"},  // no decimals: no point, no rounding here
        {U"", U"%S", tuesday, 1, 2, missing, 2, U"**.**"},
        // Calendar years ("%+Y|%+y|%#+Y"): the first day of each era is its year 1.
        {U"TH", U"%+Y|%+y|%#+Y", tuesday, 0, 0, 0, 0, U"2567|67|2567"},
        {U"TW", U"%+Y|%+y|%#+Y", tuesday, 0, 0, 0, 0, U"0113|13|113"},
        {U"JP", U"%+Y|%+y|%#+Y", tuesday, 0, 0, 0, 0, U"0036|36|36"},
        {U"THA", U"%+Y|%+y|%#+Y", tuesday, 0, 0, 0, 0, U"2024|24|2024"},  // exactly two characters
        {U"TW", U"%+Y|%+y|%#+Y", day_of(1911, 6, 1), 0, 0, 0, 0, U"0001|01|1"},
        {U"TW", U"%+Y|%+y|%#+Y", day_of(1910, 6, 1), 0, 0, 0, 0, U"0002|02|2"},  // before 1912: backwards
        {U"JP", U"%+Y|%+y", -33506, 0, 0, 0, 0, U"0001|01"},
        {U"JP", U"%+Y|%+y", -33507, 0, 0, 0, 0, U"1868|68"},  // before the first row: the plain year
        {U"JP", U"%+Y|%+y", day_of(1912, 7, 30), 0, 0, 0, 0, U"0001|01"},
        {U"JP", U"%+Y|%+y", day_of(1912, 7, 29), 0, 0, 0, 0, U"0045|45"},
        {U"JP", U"%+Y|%+y", day_of(1989, 1, 8), 0, 0, 0, 0, U"0001|01"},
        {U"JP", U"%+Y|%+y", day_of(1989, 1, 7), 0, 0, 0, 0, U"0064|64"},
        {U"JP", U"%+Y|%+y", day_of(2019, 5, 1), 0, 0, 0, 0, U"0031|31"},  // the table ends with 1989: kept
        {U"TH", U"%Y %+d %Y %y %G", tuesday, 0, 0, 0, 0, U"2024 05 2567 67 2024"},  // from the flag on; not %G
    };
    for (const auto& c : cases) {
        p.set(prop::calendar_code, c.calendar);
        const Result r = run(p, c.pattern, c.day, c.hour, c.minute, c.seconds, c.decimals);
        EXPECT_EQ(r.code, 0) << u8(c.pattern);
        EXPECT_EQ(u8(r.text), u8(c.expected)) << u8(c.calendar) << " " << u8(c.pattern) << " " << c.day;
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
