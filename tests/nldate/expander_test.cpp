// The date pattern expander: every directive and flag on a hand-filled locale, missing parts,
// the fraction of seconds, the zone offset, calendar years, the output rules, and the C
// library's strftime as an independent oracle for the directives the two share.
#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <ctime>
#include <string>

#include "calendar/missing_value.h"
#include "nldate/expander.h"
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

TEST(Expander, DateDirectives) {
    Properties p = english_like();
    const struct {
        std::u32string_view pattern;
        double day;
        std::u32string_view expected;
    } cases[] = {
        {U"%d%b%Y", 0, U"01Jan1960"},
        {U"%#d", 0, U"1"},
        {U"%a|%A|%#a|%#A|%?A", tuesday, U"Tue|Tuesday|Tu|TUESDAY|Tue"},
        {U"%b|%B|%#b|%#B|%?B", tuesday, U"Mar|March|Mar.|MARCH|Mar"},
        {U"%f|%F|%#F|", tuesday, U"Tue|Tuesday  |TUESDAY  |"},  // padded to "Wednesday"
        {U"%c|%C|%#c|", tuesday, U"March    |March    |MARCH    |"},  // padded to "September"
        {U"%d %D %e %E %#e %#d", tuesday, U"05 05  5 5 5 5"},
        {U"%m %N %o %O %#m %#o %?M", tuesday, U"03 03  3 3 3 3 03"},
        {U"%j %#j", tuesday, U"065 65"},
        {U"%y %#y %Y %#Y", day_of(2005, 1, 9), U"05 5 2005 2005"},
        {U"%q|%Q|%#q|%#Q", tuesday, U"Q1|1st quarter|q1|first quarter"},
        {U"%Q", day_of(2024, 12, 1), U"4th quarter"},
        {U"%u %w", day_of(2024, 3, 3), U"7 0"},  // a Sunday
        {U"[%t%v]", tuesday, U"[]"},
        {U"%%|%?%|%#%", tuesday, U"%|%|%"},
        {U"%9d %0d %#5d %03m", tuesday, U"05 05 5 03"},  // the digit is read and ignored
        {U"%x", tuesday, U"March 5, 2024"},
        {U"<%x>", day_of(1600, 1, 1), U"<January 1, 1600>"},
        {U"%Z", tuesday, U"XST"},
        // 1582: the nine earliest days carry truncated weekdays; outside 0..6 a name is "**".
        {U"%a|%u|%w", -138061, U"**|**|**"},
        {U"%a|%u", -138059, U"Sun|7"},  // deliberate: the calendar's weekday 1 there
    };
    for (const auto& c : cases) {
        const Result r = run(p, c.pattern, c.day);
        EXPECT_EQ(r.code, 0) << u8(c.pattern);
        EXPECT_EQ(u8(r.text), u8(c.expected)) << u8(c.pattern) << " of day " << c.day;
    }
}

TEST(Expander, TimeDirectives) {
    Properties p = english_like();
    const struct {
        double hour;
        std::u32string_view expected;  // "%H %k %I %l %p|%#H %#k %#I %#l"
    } cases[] = {
        {0, U"00 24 12 00 AM|0 24 12 0"},  // midnight: "%k" 24, "%I" 12, "%l" 00
        {12, U"12 12 12 12 PM|12 12 12 12"},
        {13, U"13 13 01 01 PM|13 13 1 1"},
    };
    for (const auto& c : cases) {
        const Result r = run(p, U"%H %k %I %l %p|%#H %#k %#I %#l", tuesday, c.hour, 7, 9);
        EXPECT_EQ(u8(r.text), u8(c.expected)) << "hour " << c.hour;
    }
    EXPECT_EQ(u8(run(p, U"%M:%S %s %T", tuesday, 13, 7, 9.75).text), "07:09 09 13:07:09");
    EXPECT_EQ(u8(run(p, U"%X", tuesday, 13, 7, 9).text), "1:07:09 PM");
    // Hours past 99 keep all their digits; "%n" counts whole days.
    EXPECT_EQ(u8(run(p, U"%H|%k|%n|%T", missing, 150, 0, 0).text), "150|150|6|150:00:00");
}

TEST(Expander, MissingParts) {
    Properties p = english_like();
    const struct {
        std::u32string_view pattern;
        double day, hour, minute, seconds;
        std::u32string_view expected;
    } cases[] = {
        {U"%H:%M", tuesday, missing, missing, missing, U"**:**"},
        {U"%T", tuesday, missing, missing, missing, U"**:**:**"},
        {U"%T", tuesday, 10, missing, 5, U"10:**:05"},  // piecewise
        {U"%I %l %k %n %S %s", tuesday, missing, missing, missing, U"** ** ** ** ** **"},
        {U"%p", tuesday, missing, missing, missing, U"**AM"},  // deliberate: "**", then AM
        {U"%a %A %f %b %B %c %q %Q", missing, 1, 2, 3, U"** ** ** ** ** ** ** **"},
        {U"%d %e %j %m %o %y %Y %u %w %U %V %W %G %g", missing, 1, 2, 3,
         U"** ** ** ** ** ** ** ** ** ** ** ** ** **"},
        {U"%X", tuesday, missing, missing, missing, U"**:**:** **AM"},
    };
    for (const auto& c : cases) {
        const Result r = run(p, c.pattern, c.day, c.hour, c.minute, c.seconds);
        EXPECT_EQ(r.code, 0) << u8(c.pattern);
        EXPECT_EQ(u8(r.text), u8(c.expected)) << u8(c.pattern);
    }
    // Locale without markers: "AM" and "PM".
    p.set(prop::am, U"").set(prop::pm, U"");
    EXPECT_EQ(u8(run(p, U"%p %p", tuesday, 0).text), "AM AM");
    EXPECT_EQ(u8(run(p, U"%p", tuesday, 12).text), "PM");
}

TEST(Expander, FractionOfSeconds) {
    Properties p = english_like();
    const struct {
        double seconds;
        std::uint32_t decimals;
        std::u32string_view expected;
    } cases[] = {
        {5.86, 1, U"05.9"},   // the last digit looks one ahead
        {5.97, 1, U"05.9"},   // a 9 is never raised: no carry
        {5.84, 1, U"05.8"},
        {5.5, 0, U"05"},      // no decimals: no point, no rounding here
        {59.999, 2, U"59.99"},
        {0.125, 3, U"00.125"},
        {7.0, 4, U"07.0000"},
        {missing, 2, U"**.**"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(u8(run(p, U"%S", tuesday, 1, 2, c.seconds, c.decimals).text), u8(c.expected))
            << c.seconds << " with " << c.decimals;
    }
    EXPECT_EQ(u8(run(p, U"%s|%T", tuesday, 1, 2, 5.86, 1).text), "05|01:02:05");  // no fraction there
    p.set(prop::decimal_point, U",");
    EXPECT_EQ(u8(run(p, U"%S", tuesday, 1, 2, 5.86, 1).text), "05,9");
    // Thousands of decimals still measure whole and store what fits.
    std::int32_t width = 0;
    EXPECT_EQ(expand(U"%S", 2, nullptr, 0, &width, 5000, p.cache(), nullptr, 0, 1, 2, 3.25), 2 + 1 + 5000);
}

TEST(Expander, ZoneOffset) {
    Properties p = english_like();
    FakeZone zone;
    const struct {
        double offset;
        std::u32string_view expected;
    } cases[] = {{3600, U"+0100"}, {-19800, U"-0530"}, {0, U"+0000"}, {20700, U"+0545"}, {-43200, U"-1200"}};
    for (const auto& c : cases) {
        zone.offset = c.offset;
        EXPECT_EQ(u8(run(p, U"%z", tuesday, 13, 7, 9.5, 0, &zone).text), u8(c.expected));
        EXPECT_EQ(zone.asked, tuesday * 86400 + (13 * 60 + 7) * 60 + 9.5);
    }
    EXPECT_EQ(u8(run(p, U"%z", tuesday, 13, 7, 9).text), "+0000");  // no zone object
}

TEST(Expander, CalendarYears) {
    Properties p = english_like();
    const struct {
        std::u32string_view code;
        double day;
        std::u32string_view expected;  // "%+Y|%+y|%#+Y"
    } cases[] = {
        {U"TH", tuesday, U"2567|67|2567"},
        {U"TW", tuesday, U"0113|13|113"},
        {U"JP", tuesday, U"0036|36|36"},
        {U"", tuesday, U"2024|24|2024"},
        {U"XX", tuesday, U"2024|24|2024"},
        {U"THA", tuesday, U"2024|24|2024"},  // exactly two characters
        {U"TW", day_of(1911, 6, 1), U"0001|01|1"},
        {U"TW", day_of(1910, 6, 1), U"0002|02|2"},  // before 1912: counted backwards
        // The era rows: the first day of each era is its year 1, the day before ends the last.
        {U"JP", -33506, U"0001|01|1"},
        {U"JP", -33507, U"1868|68|1868"},  // before the first row: the plain year
        {U"JP", day_of(1912, 7, 30), U"0001|01|1"},
        {U"JP", day_of(1912, 7, 29), U"0045|45|45"},
        {U"JP", day_of(1926, 12, 25), U"0001|01|1"},
        {U"JP", day_of(1926, 12, 24), U"0015|15|15"},
        {U"JP", day_of(1989, 1, 8), U"0001|01|1"},
        {U"JP", day_of(1989, 1, 7), U"0064|64|64"},
        {U"JP", day_of(2019, 5, 1), U"0031|31|31"},  // the table ends with the 1989 era: kept
    };
    for (const auto& c : cases) {
        p.set(prop::calendar_code, c.code);
        EXPECT_EQ(u8(run(p, U"%+Y|%+y|%#+Y", c.day).text), u8(c.expected)) << u8(c.code) << " " << c.day;
    }
    // The flag holds from its directive to the end of the pattern; "%G" is not affected.
    p.set(prop::calendar_code, U"TH");
    EXPECT_EQ(u8(run(p, U"%Y %+d %Y %y %G", tuesday).text), "2024 05 2567 67 2024");
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

TEST(Expander, OutputRules) {
    Properties p = english_like();
    std::u32string cells(40, U'~');
    const auto field = [&](std::int32_t n) { return u8(cells.substr(0, static_cast<std::size_t>(n))); };

    std::int32_t width = 12;
    EXPECT_EQ(expand(U"%d", 2, cells.data(), 40, &width, 0, p.cache(), nullptr, tuesday, 0, 0, 0), 0);
    EXPECT_EQ(width, 2);
    EXPECT_EQ(field(13), "05          ~");

    width = -12;  // right alignment
    EXPECT_EQ(expand(U"%d", 2, cells.data(), 40, &width, 0, p.cache(), nullptr, tuesday, 0, 0, 0), 0);
    EXPECT_EQ(width, 2);
    EXPECT_EQ(field(13), "          05~");

    cells.assign(40, U'~');
    width = 7;  // cut: the first 7 characters, the width left as it was
    EXPECT_EQ(expand(U"%B %#d, %Y", 10, cells.data(), 40, &width, 0, p.cache(), nullptr, tuesday, 0, 0, 0), 1);
    EXPECT_EQ(width, 7);
    EXPECT_EQ(field(8), "March 5~");

    // Cut with a zone: the offset takes the last 6 cells and is never cut.
    FakeZone zone;
    zone.offset = -19800;
    for (std::u32string_view pattern : {U"%B %d %Y %H:%M %z", U"%B %d %Y %H:%M %Z"}) {
        cells.assign(40, U'~');
        width = 14;
        EXPECT_EQ(expand(pattern.data(), static_cast<std::int32_t>(pattern.size()), cells.data(), 40, &width, 0,
                         p.cache(), &zone, tuesday, 13, 7, 0),
                  1);
        EXPECT_EQ(field(15), "March 05 -0530~") << u8(pattern);
    }

    // The field never goes past the capacity, even when the width asks for more.
    cells.assign(40, U'~');
    width = 30;
    EXPECT_EQ(expand(U"%B", 2, cells.data(), 3, &width, 0, p.cache(), nullptr, tuesday, 0, 0, 0), 0);
    EXPECT_EQ(field(4), "Mar~");

    // No output: the length of the text, the width untouched.
    width = 3;
    EXPECT_EQ(expand(U"%A, %B %#d", 10, nullptr, 0, &width, 0, p.cache(), nullptr, tuesday, 0, 0, 0), 16);
    EXPECT_EQ(width, 3);
}

// Every width from 0 to past the text: guard cells intact, the cut text is the full text's
// prefix, and a text that fits is followed by blanks.
TEST(Expander, WidthSweep) {
    Properties p = english_like();
    FakeZone zone;
    zone.offset = 3600;
    for (std::u32string_view pattern : {U"%A, %B %#d, %Y", U"%d.%m.%Y %T", U"%x %X %z", U"%j%S"}) {
        const std::u32string full = run(p, pattern, tuesday, 9, 8, 7.25, 2, &zone).text;
        const auto length = static_cast<std::int32_t>(full.size());
        for (std::int32_t w = 0; w <= length + 3; ++w) {
            constexpr std::size_t guard = 4;
            std::u32string cells(static_cast<std::size_t>(w) + 2 * guard, U'~');
            std::int32_t width = w;
            const std::int32_t code = expand(pattern.data(), static_cast<std::int32_t>(pattern.size()),
                                             cells.data() + guard, w, &width, 2, p.cache(), &zone, tuesday, 9, 8, 7.25);
            const std::u32string out = cells.substr(guard, static_cast<std::size_t>(w));
            EXPECT_EQ(cells.substr(0, guard), U"~~~~");
            EXPECT_EQ(cells.substr(guard + static_cast<std::size_t>(w)), U"~~~~");
            if (w >= length) {
                EXPECT_EQ(code, 0);
                EXPECT_EQ(out, full + std::u32string(static_cast<std::size_t>(w - length), U' '));
            } else {
                EXPECT_EQ(code, 1);
                // With a zone the last cells (up to 6) hold the end of " +0100".
                const bool zone = pattern.find(U"%z") != std::u32string_view::npos;
                const std::size_t tail = zone ? std::min<std::size_t>(6, static_cast<std::size_t>(w)) : 0;
                const std::size_t plain = static_cast<std::size_t>(w) - tail;
                EXPECT_EQ(u8(out.substr(0, plain)), u8(full.substr(0, plain))) << u8(pattern) << " width " << w;
                EXPECT_EQ(u8(out.substr(plain)), u8(std::u32string_view(U" +0100").substr(6 - tail)));
            }
        }
    }
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
        {'t', U"%T", -1, nldate::expand_out_of_range},
        {'t', U"%T", missing, nldate::expand_out_of_range},
        {'t', U"", 5, nldate::expand_no_pattern},
        {'t', U"%T", 0, 0},
        {'x', U"%T", 569318630400.0, nldate::expand_out_of_range},
        {'x', U"%T", -11928470401.0, nldate::expand_out_of_range},
        {'x', U"%T", missing, nldate::expand_out_of_range},
        {'x', U"%T", 569318630399.0, 0},
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
    Properties p;
    p.set_all(107, {U"Sun", U"Mon", U"Tue", U"Wed", U"Thu", U"Fri", U"Sat"});
    p.set_all(114, {U"Sunday", U"Monday", U"Tuesday", U"Wednesday", U"Thursday", U"Friday", U"Saturday"});
    p.set_all(59, {U"Jan", U"Feb", U"Mar", U"Apr", U"May", U"Jun", U"Jul", U"Aug", U"Sep", U"Oct", U"Nov", U"Dec"});
    p.set_all(71, {U"January", U"February", U"March", U"April", U"May", U"June", U"July", U"August",
                   U"September", U"October", U"November", U"December"});
    p.set(prop::am, U"AM").set(prop::pm, U"PM");
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
