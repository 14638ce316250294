// WEEKU, WEEKV, WEEKW, YYWEEK* and DTWEEKV through the registry, against the C library's
// strftime (%U, %W, %V, %G, %u) on a proleptic calendar computed independently.
#include <gtest/gtest.h>

#include <cstdio>
#include <ctime>
#include <string>

#include "calendar/oracle.h"
#include "library.h"
#include "session.h"
#include "text_convert.h"

namespace {

long day_number(int y, unsigned m, unsigned d) { return static_cast<long>(oracle::day_number(y, m, d)); }

struct Week {
    std::string yyyy, ww, dd;
};

// The civil year of a day number, on the calendar with the 4000-year rule.
int year_of(long dn) {
    int y = 1582;
    while (oracle::day_number(y + 1, 1, 1) <= dn) ++y;
    while (oracle::day_number(y, 1, 1) > dn) --y;
    return y;
}

// Rule U: Sunday-first weeks, day 1 Sunday; W: Monday-first, day 1 Monday; V: ISO (whose
// strftime leap test is the plain one, as rule V's is).
Week oracle_week(long dn, char rule, int y) {
    std::tm tm{};
    tm.tm_year = y - 1900;
    tm.tm_yday = static_cast<int>(dn - oracle::day_number(y, 1, 1));
    tm.tm_wday = oracle::weekday(dn) - 1;
    char text[32];
    std::strftime(text, sizeof text, rule == 'U' ? "%Y %U" : rule == 'W' ? "%Y %W" : "%G %V", &tm);
    char yyyy[16], ww[8];
    std::sscanf(text, "%15s %7s", yyyy, ww);
    const int iso_day = tm.tm_wday == 0 ? 7 : tm.tm_wday;
    const int day_of_week = rule == 'U' ? tm.tm_wday + 1 : iso_day;
    std::string day = "0";  // appended, not "0" + temporary, which trips GCC 12's -Wrestrict
    day += std::to_string(day_of_week);
    return {yyyy, ww, day};
}
Week oracle_week(long dn, char rule) { return oracle_week(dn, rule, year_of(dn)); }

std::string week_layout(const Week& w, int width) {
    std::string text;
    // A year beyond 9999 (the ISO year 10000 of 9999's last days) shows its last four digits.
    const std::string yyyy = w.yyyy.substr(w.yyyy.size() - 4);
    const std::string yy = w.yyyy.substr(w.yyyy.size() - 2);
    if (width <= 2) text = w.ww;
    else if (width <= 4) text = "W" + w.ww;
    else if (width <= 6) text = yy + "W" + w.ww;
    else if (width <= 8) text = yy + "W" + w.ww + w.dd;
    else if (width <= 10) text = yyyy + "W" + w.ww + w.dd;
    else text = yyyy + "-W" + w.ww + "-" + w.dd;
    if (static_cast<int>(text.size()) < width) text.append(static_cast<std::size_t>(width) - text.size(), ' ');
    return text;
}

std::string year_week_layout(const Week& w, int width) {
    const std::string yy = w.yyyy.substr(2);
    switch (width) {
    case 2: return w.ww;
    case 3: return "W" + w.ww;
    case 4: return " W" + w.ww;
    case 5: return yy + "W" + w.ww;
    case 6: return " " + yy + "W" + w.ww;
    case 7: return w.yyyy + "W" + w.ww;
    default: return w.yyyy + "-W" + w.ww;
    }
}

class WeekFormats : public ::testing::Test {
protected:
    static void SetUpTestSuite() {
        library = new vxhost::Library();
        session = new vxhost::Session(*library, {});
    }
    static void TearDownTestSuite() {
        delete session;
        delete library;
    }
    static std::string format(const char32_t* name, int width, double value) {
        const auto result = session->format(*library->find(name), width, 0, value);
        EXPECT_EQ(result.code, 0u);
        return vxhost::to_utf8(result.text);
    }
    static vxhost::Library* library;
    static vxhost::Session* session;
};
vxhost::Library* WeekFormats::library = nullptr;
vxhost::Session* WeekFormats::session = nullptr;

TEST_F(WeekFormats, EveryLayoutAgainstStrftime) {
    const struct {
        const char32_t* week;
        const char32_t* year_week;
        char rule;
    } rules[] = {{U"WEEKU", U"YYWEEKU", 'U'}, {U"WEEKV", U"YYWEEKV", 'V'}, {U"WEEKW", U"YYWEEKW", 'W'}};
    int failures = 0;
    // Every 47th day of 1583 to 9999 walks every weekday and week position many times over.
    int y = 1583;
    for (long dn = day_number(1583, 1, 1); dn <= day_number(9999, 12, 31) && failures < 10; dn += 47) {
        while (day_number(y + 1, 1, 1) <= dn) ++y;
        for (const auto& r : rules) {
            const Week w = oracle_week(dn, r.rule, y);
            for (int width = 2; width <= 8; ++width) {
                const std::string got = format(r.year_week, width, double(dn));
                if (got != year_week_layout(w, width) && ++failures < 10)
                    ADD_FAILURE() << "day " << dn << " width " << width << ": " << got << " vs " << year_week_layout(w, width);
            }
        }
    }
}

// Every day of 1583 to 9999, every width from 2 to 11, by all three rules.
TEST_F(WeekFormats, EveryDayEveryWidth) {
    const struct {
        const char32_t* name;
        char rule;
    } rules[] = {{U"WEEKU", 'U'}, {U"WEEKV", 'V'}, {U"WEEKW", 'W'}};
    const vxlocfmt::FuncInfo* rows[3];
    for (int k = 0; k < 3; ++k) rows[k] = library->find(rules[k].name);
    int failures = 0;
    int y = 1583;
    for (long dn = day_number(1583, 1, 1); dn <= day_number(9999, 12, 31); ++dn) {
        while (day_number(y + 1, 1, 1) <= dn) ++y;
        for (int k = 0; k < 3; ++k) {
            const Week week = oracle_week(dn, rules[k].rule, y);
            for (int width = 2; width <= 11; ++width) {
                const auto result = session->format(*rows[k], width, 0, double(dn));
                const std::string expected = week_layout(week, width);
                bool same = result.text.size() == expected.size();
                for (std::size_t i = 0; same && i < expected.size(); ++i) same = result.text[i] == char32_t(expected[i]);
                if (!same && ++failures <= 5)
                    ADD_FAILURE() << "day " << dn << " width " << width << ": " << vxhost::to_utf8(result.text) << " vs "
                                  << expected;
            }
        }
    }
    EXPECT_EQ(failures, 0);
}

TEST_F(WeekFormats, DatetimeWeeksAroundMidnightAndBefore1960) {
    for (long dn : {day_number(1959, 12, 31), day_number(1960, 1, 1), day_number(2020, 12, 31), day_number(1582, 1, 10)}) {
        for (double second : {0.0, 1.0, 86399.0, 43210.0}) {
            const double datetime = double(dn) * 86400 + second;
            const Week w = oracle_week(dn, 'V');
            const int s = static_cast<int>(second);
            char clock[16];
            std::snprintf(clock, sizeof clock, "%02d:%02d:%02d", s / 3600, s / 60 % 60, s % 60);
            const std::string c(clock);
            EXPECT_EQ(format(U"DTWEEKV", 20, datetime), week_layout(w, 11) + ":" + c) << datetime;
            EXPECT_EQ(format(U"DTWEEKV", 18, datetime), week_layout(w, 9) + ":" + c) << datetime;
            EXPECT_EQ(format(U"DTWEEKV", 16, datetime), week_layout(w, 9) + ":" + c.substr(0, 5) + " ") << datetime;
            EXPECT_EQ(format(U"DTWEEKV", 12, datetime), week_layout(w, 9) + ":" + c.substr(0, 2)) << datetime;
            EXPECT_EQ(format(U"DTWEEKV", 11, datetime), week_layout(w, 11)) << datetime;
        }
    }
    EXPECT_EQ(format(U"DTWEEKV", 20, -1), "1959-W53-04:23:59:59");
}

TEST_F(WeekFormats, RangeEndsMissingValuesAndOddWidths) {
    EXPECT_EQ(format(U"WEEKV", 11, 6589335), "0001-W01-02");  // 20000-12-31: year's last four digits
    EXPECT_EQ(format(U"WEEKV", 11, 6589336), "***********");
    EXPECT_EQ(format(U"WEEKU", 6, -138062), "******");
    EXPECT_EQ(format(U"YYWEEKU", 6, double(day_number(2023, 1, 1))), " 23W01");
    EXPECT_EQ(format(U"WEEKV", 13, double(day_number(2024, 1, 3))), "2024-W01-03  ");
    const double dot_a = std::bit_cast<double>(0xFFFFFD0000000000ull);  // ".A"... k = 3
    EXPECT_EQ(format(U"WEEKW", 5, dot_a), "    A");
    // YYWEEK at a width the layout table lacks (unchecked call): stars and -1.
    const auto result = session->format(*library->find(U"YYWEEKV"), 9, 0, 0);
    EXPECT_EQ(result.code, 0xFFFFFFFFu);
    EXPECT_EQ(vxhost::to_utf8(result.text), "*********");
}

}  // namespace
