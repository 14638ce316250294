// The C entry points' contracts: return codes, what is left in the result, the date and time
// views of the driver, the local-zone names.
#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "calendar/calendar.h"
#include "dateread/dateread_exports.h"
#include "frame/kernel.h"
#include "frame/reporting.h"
#include "kernel_handle.h"
#include "time_zone.h"

namespace {

using vxlocfmt::calendar::is_nan;
using vxlocfmt::dateread::template_row;

double call_driver(vxlocfmt::status (*fn)(vxlocfmt::FmtCall*, void*), std::u32string_view text, int limit = 1000) {
    double v = 0;
    vxlocfmt::FmtCall call{};
    call.input = text.data();
    call.input_length = static_cast<std::int32_t>(text.size());
    call.text_limit = limit;
    call.output = &v;
    EXPECT_EQ(fn(&call, nullptr), 0u);
    return v;
}

TEST(EntryPoints, ReturnCodesAndResults) {
    double v = 42;
    std::int32_t status_word = -1;
    // No row of the name, or none whose bounds admit the text: 999 and the result untouched.
    EXPECT_EQ(dtm_informat(U"NOSUCH", 6, nullptr, U"2020-03-04", 10, &v, &status_word, 1), 999u);
    EXPECT_EQ(v, 42);
    EXPECT_EQ(dtm_informat(U"YYMMN", 5, nullptr, U"2020031", 7, &v, &status_word, 1), 999u);
    EXPECT_EQ(v, 42);
    // Rows of the name run out: 999, missing left.
    EXPECT_EQ(dtm_informat(U"E8601DA", 7, nullptr, U"2020x03y04z", 10, &v, &status_word, 1), 0u);  // literals
    EXPECT_EQ(dtm_informat(U"YYQ", 3, nullptr, U"20Q", 3, &v, &status_word, 1), 999u);
    EXPECT_EQ(dtm_informat(U"YYQ", 3, nullptr, U"2020Qx", 6, &v, &status_word, 1), 999u);
    EXPECT_TRUE(is_nan(v));
    // The status word tells the kind.
    EXPECT_EQ(dtm_informat(U"TIME", 4, nullptr, U"10:15", 5, &v, &status_word, 1), 0u);
    EXPECT_EQ(status_word, 2);
    EXPECT_EQ(v, 36900);
    // A given row starts the walk there, whatever the name says.
    EXPECT_EQ(dtm_informat(U"ignored", 7, &vxfmt_templates[126], U"2020001", 7, &v, &status_word, 1), 0u);
    EXPECT_EQ(status_word, 1);
    EXPECT_EQ(v, vxlocfmt::calendar::zmdy(1, 1, 2020));
    // A row without a pattern.
    const template_row bare{U"X", 0, 0, 0, 0, 0, U"DTE", nullptr};
    EXPECT_EQ(dtm_informat(U"X", 1, &bare, U"1", 1, &v, &status_word, 1), 1u);
    // Without preprocessing leading blanks still go (%P), runs of blanks stay.
    EXPECT_EQ(dtm_informat(U"DATE", 4, nullptr, U"  04MAR2020", 11, &v, &status_word, 0), 0u);
    EXPECT_EQ(v, vxlocfmt::calendar::zmdy(3, 4, 2020));
}

TEST(EntryPoints, DriverViewsAndLimits) {
    const double day = vxlocfmt::calendar::zmdy(3, 4, 2020);
    EXPECT_EQ(call_driver(dtmAnyDateTime, U"2020-03-04T05:06:07.9"), day * 86400 + 5 * 3600 + 6 * 60 + 7.9);
    EXPECT_EQ(call_driver(dtmAnyDate, U"2020-03-04T05:06:07.9"), day);
    EXPECT_EQ(call_driver(dtmAnyTime, U"2020-03-04T05:06:07.5"), 5 * 3600 + 6 * 60 + 7.5);
    // One second before day 0 is day 0: truncation toward zero, deliberately.
    EXPECT_EQ(call_driver(dtmAnyDate, U"1959-12-31T23:59:59"), 0);
    EXPECT_EQ(call_driver(dtmAnyDate, U"1959-12-31"), -1);
    EXPECT_EQ(call_driver(dtmAnyTime, U"1959-12-31T23:59:59"), -1);  // fmod keeps the sign
    // The text limit cuts the text before reading.
    EXPECT_EQ(call_driver(dtmAnyDate, U"2020-03-04T05:06:07", 10), day);
    EXPECT_TRUE(is_nan(call_driver(dtmAnyDateTime, U"")));
    EXPECT_TRUE(is_nan(call_driver(dtmAnyDate, U"not a date")));
    EXPECT_TRUE(is_nan(call_driver(dtmAnyTime, std::u32string(500, U'1'))));
}

// The two local-zone names answer local time; the other zone names answer UTC.
TEST(EntryPoints, LocalZoneNames) {
    void* saved = Exported_VXHandle;
    Exported_VXHandle = vxhost::kernel_handle();
    const std::string zone = vxhost::time_zone_name();
    ASSERT_TRUE(vxhost::set_time_zone("Asia/Kolkata"));  // +05:30 all year
    double offset = 0;
    vxzdtgmt(&offset);
    EXPECT_EQ(offset, 19800);
    double v = 0;
    std::int32_t status_word = 0;
    for (const auto* name : {U"B8601LZ", U"E8601LZ"}) {
        ASSERT_EQ(dtm_informat(name, 7, nullptr, U"10:15:00+01:00", 14, &v, &status_word, 1), 0u);
        EXPECT_EQ(v, 9 * 3600 + 15 * 60 + 19800);
    }
    ASSERT_EQ(dtm_informat(U"E8601TZ", 7, nullptr, U"10:15:00+01:00", 14, &v, &status_word, 1), 0u);
    EXPECT_EQ(v, 9 * 3600 + 15 * 60);
    vxhost::set_time_zone(zone);
    Exported_VXHandle = saved;
}

}  // namespace

namespace {

// The reader's own date arithmetic gives zmdy's answer on every year class, month and day,
// valid or not, under two cut-offs.
TEST(EntryPoints, DatesAgreeWithTheCalendar) {
    for (const std::int64_t cutoff : {1950, 1920}) {
        vxhost::set_year_cutoff(cutoff);
        void* saved = Exported_VXHandle;
        Exported_VXHandle = vxhost::kernel_handle();
        for (const int y : {0, 19, 49, 50, 99, 100, 1581, 1582, 1900, 2000, 2023, 2024, 4000, 9999}) {
            for (int m = 0; m <= 13; ++m)
                for (const int d : {0, 1, 28, 29, 30, 31, 32}) {
                    const std::string s = std::to_string(y) + "/" + std::to_string(m) + "/" + std::to_string(d);
                    const std::u32string wide(s.begin(), s.end());
                    double v = 0;
                    std::int32_t status_word = 0;
                    dtm_informat(U"YYMMDD", 6, &vxfmt_templates[143], wide.data(), static_cast<std::int32_t>(wide.size()),
                                 &v, &status_word, 1);
                    const double want = vxlocfmt::calendar::zmdy(m, d, y);
                    if (is_nan(want)) EXPECT_TRUE(is_nan(v)) << s;
                    else EXPECT_EQ(v, want) << s;
                }
        }
        Exported_VXHandle = saved;
    }
    vxhost::set_year_cutoff(std::nullopt);
}

}  // namespace
