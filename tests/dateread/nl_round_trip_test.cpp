// Write, then read back: every NL date, datetime, time and month-name format in every Gregorian,
// Latin-digit locale, read with its informat, must give the value it was written from. A few
// texts cannot come back by the informats' own rules (their pattern lists, the fall-back's
// templates); each is sorted into its reason, and nothing may be left unexplained. The share
// per format is printed. The week informats have their own loop: they do not depend on the
// locale.
#include <gtest/gtest.h>

#include "library_suite.h"

#include <chrono>
#include <cmath>
#include <cstdio>
#include <map>
#include <string>
#include <vector>

#include "calendar/date_conversions.h"
#include "calendar/week_numbering.h"
#include "kernel_handle.h"
#include "nldate/icu_oracle.h"

namespace {

using namespace vxlocfmt;
using namespace nldate_oracle;
using nldate_test::to_utf8;

enum class kind { date, datetime, time, month };

struct trip {
    const char32_t* format;
    std::int32_t width;  // 0: the row's default
    std::int32_t decimals;
    const char32_t* informat;
    kind value;
};

constexpr trip trips[] = {
    {U"NLDATE", 0, 0, U"@NLDATE", kind::date},      {U"NLDATE", 200, 0, U"@NLDATE", kind::date},
    {U"NLDATEW", 0, 0, U"@NLDATEW", kind::date},    {U"NLDATM", 0, 0, U"@NLDATM", kind::datetime},
    {U"NLDATMAP", 0, 0, U"@NLDATM", kind::datetime}, {U"NLDATMW", 0, 0, U"@NLDATM", kind::datetime},
    {U"NLTIME", 0, 0, U"@NLTIME", kind::time},      {U"NLTIMAP", 0, 0, U"@NLTIME", kind::time},
    {U"NLSTRMON", 0, 0, U"@NLSTRMON", kind::month}, {U"NLSTRMON", 0, 1, U"@NLSTRMON", kind::month},
};

// Why a text did not come back; every miss must have one.
enum class reason {
    none,
    stars,              // the name is longer than the width
    no_year,            // a weekday name alone: NLDATEW's and NLDATMW's last candidates
    date_only,          // NLDATMW wrote the full date (32, 33) and no pattern of @NLDATM ends where it ends
    no_seconds,         // the datetime pattern that fit shows hours and minutes: a partial match
    numeric_fallback,   // NLDATE field by field (NLDATES): neither @NLDATE's patterns nor "DATE" read it
    no_marker,          // the locale's twelve-hour pattern 44 has no AM/PM: 5 pm reads as 5 am
    twelve_hour_time,   // NLTIMAP's pattern 52 is not @NLTIME's, and "TIME" reads no AM/PM
    month_prefix,       // @NLSTRMON: another month's name and the text agree on min(lengths) characters
    unexplained,
};
constexpr const char* reason_names[] = {"",  "stars", "no year", "date only", "no seconds", "numeric fall-back",
                                        "no AM/PM", "twelve-hour time", "month prefix", "UNEXPLAINED"};

int digit_runs(std::u32string_view s) {
    int runs = 0;
    for (std::size_t i = 0; i < s.size(); ++i)
        if (s[i] >= U'0' && s[i] <= U'9' && (i == 0 || s[i - 1] < U'0' || s[i - 1] > U'9')) ++runs;
    return runs;
}

std::u32string digits(int n, int width) {
    std::string s = std::to_string(n);
    while (static_cast<int>(s.size()) < width) s.insert(s.begin(), '0');
    return vxhost::from_utf8(s);
}

reason explain(const trip& t, std::u32string_view text, double value, int year, const vxhost::ReadResult& back) {
    const std::u32string_view format(t.format);
    if (text.find_first_not_of(U"*") == std::u32string_view::npos) return reason::stars;
    const bool dated = t.value == kind::date || t.value == kind::datetime;
    if (dated && text.find(digits(year, 4)) == std::u32string_view::npos &&
        text.find(digits(year % 100, 2)) == std::u32string_view::npos)
        return reason::no_year;
    if (t.value == kind::datetime && digit_runs(text) < 4) return reason::date_only;
    if (t.value == kind::datetime && back.code == 0 && back.value == std::floor(value / 60) * 60) {
        // Only when the text shows no seconds after the minutes.
        const int minute = static_cast<int>(std::fmod(value, 3600) / 60), second = static_cast<int>(std::fmod(value, 60));
        bool shown = false;
        for (const char32_t* separator : {U":", U"."})
            shown |= text.find(digits(minute, 2) + separator + digits(second, 2)) != std::u32string_view::npos;
        if (!shown) return reason::no_seconds;
    }
    if (t.value == kind::datetime && back.code == 0 && value - back.value == 43200) return reason::no_marker;
    if (format == U"NLDATE" && t.width == 0) return reason::numeric_fallback;
    if (format == U"NLTIMAP") return reason::twelve_hour_time;
    if (t.value == kind::month && back.code == 0) return reason::month_prefix;
    return reason::unexplained;
}

CivilDate in_cutoff_century(CivilDate d) {
    d.year = 1950 + d.year % 100;
    if (d.month == 2 && d.day == 29 && !std::chrono::year(d.year).is_leap()) d.day = 28;
    return d;
}

class NlRoundTrip : public vxtest::LibrarySuite {};

TEST_F(NlRoundTrip, EveryGregorianLatinLocale) {
    vxhost::set_year_cutoff(1950);
    const std::vector<std::string> ids = oracle_locales();
    ASSERT_GT(ids.size(), 100u);
    constexpr int values_per_locale = 6;
    struct tally {
        int total = 0, back = 0;
        std::map<reason, int> misses;
        std::string examples;
    };
    std::map<std::size_t, tally> tallies;
    Spread spread{0x9e3779b97f4a7c15ull};
    for (const std::string& id : ids) {
        vxhost::Session session(*library, options_for(id));
        for (std::size_t k = 0; k < std::size(trips); ++k) {
            const trip& t = trips[k];
            const FuncInfo& format = *library->find(t.format);
            const FuncInfo& informat = *library->find(t.informat);
            const std::int32_t width = t.width ? t.width : static_cast<std::int32_t>(format.default_width);
            for (int i = 0; i < values_per_locale; ++i) {
                CivilDate date = spread.date();  // 1600 to 9999; the first of each six from 1582 on
                if (i == 0) {
                    date.year = 1582 + static_cast<int>(spread.next() % 18);
                    if (date.month == 2 && date.day == 29 && !std::chrono::year(date.year).is_leap()) date.day = 28;
                }
                const int second = static_cast<int>(spread.next() % 86400);
                const double month = 1 + spread.next() % 12;
                auto value_of = [&](const CivilDate& d) {
                    switch (t.value) {
                    case kind::date: return d.day_number();
                    case kind::datetime: return d.day_number() * 86400 + second;
                    case kind::time: return static_cast<double>(second);
                    case kind::month: return month;
                    }
                    return 0.0;
                };
                double value = value_of(date);
                std::u32string text(session.format(format, width, t.decimals, value).text);
                // A pattern with a two-digit year: dates of the cut-off's hundred years only.
                if (t.value == kind::date || t.value == kind::datetime) {
                    if (text.find(vxhost::from_utf8(std::to_string(date.year))) == std::u32string::npos) {
                        date = in_cutoff_century(date);
                        value = value_of(date);
                        text = session.format(format, width, t.decimals, value).text;
                    }
                }
                const vxhost::ReadResult back =
                    session.read(informat, static_cast<std::int32_t>(informat.default_width), 0, text);
                tally& n = tallies[k];
                ++n.total;
                if (back.code == 0 && back.value == value) {
                    ++n.back;
                    continue;
                }
                const reason why = explain(t, text, value, date.year, back);
                if (++n.misses[why] <= 3 || why == reason::unexplained)
                    n.examples += "    " + std::string(reason_names[static_cast<int>(why)]) + ": " + id + " [" +
                                  to_utf8(text) + "] " + std::to_string(value) + " -> " + std::to_string(back.code) +
                                  " " + std::to_string(back.value) + "\n";
            }
        }
    }
    std::string report;
    int unexplained = 0;
    for (const auto& [k, n] : tallies) {
        char line[160];
        std::snprintf(line, sizeof line, "%-9s w%-3d d%d -> %-10s %5d/%5d back (%.1f%%)", to_utf8(trips[k].format).c_str(),
                      trips[k].width, trips[k].decimals, to_utf8(trips[k].informat).c_str(), n.back, n.total,
                      100.0 * n.back / n.total);
        report += line;
        for (const auto& [why, count] : n.misses) report += std::string("; ") + reason_names[static_cast<int>(why)] + " " + std::to_string(count);
        report += "\n" + n.examples;
        if (n.misses.count(reason::unexplained)) unexplained += n.misses.at(reason::unexplained);
    }
    std::printf("%s", report.c_str());
    EXPECT_EQ(unexplained, 0) << report;
    // The formats whose every text is one of the informat's own patterns come back whole.
    for (std::size_t k : {1u, 6u})
        EXPECT_EQ(tallies[k].back, tallies[k].total) << to_utf8(trips[k].format);
}

}  // namespace
