// The year cut-off asked of the kernel's option lookup, and its effect on two-digit years.

#include <gtest/gtest.h>

#include <bit>
#include <cstdint>

#include "calendar/calendar_abi.h"
#include "calendar/date_conversions.h"
#include "calendar/year_cutoff.h"
#include "oracle.h"

namespace cal = vxlocfmt::calendar;

namespace {

TEST(YearCutoff, DefaultWithoutKernel) {
    void* const saved = Exported_VXHandle;
    Exported_VXHandle = nullptr;
    EXPECT_EQ(cal::year_cutoff(), 1950);
    EXPECT_EQ(vxfmtzdatjul(49001), oracle::day_number(2049, 1, 1));
    Exported_VXHandle = saved;
}

TEST(YearCutoff, KernelWithoutLookupService) {
    oracle::FakeKernel kernel;
    kernel.table[vxlocfmt::kernel::handle_option_lookup] = nullptr;
    EXPECT_EQ(cal::year_cutoff(), 1950);
}

TEST(YearCutoff, OptionAnswers) {
    const struct {
        std::int64_t cutoff;
        vxlocfmt::status answer;
        std::int64_t expected;
    } cases[] = {
        {1950, 0, 1950},           // the option set to the default
        {1920, 0, 1920},           // another value
        {2000, 0, 2000},           // a whole century
        {1920, 0x803fc002u, 1950}, // a refusing lookup leaves the default, whatever it wrote
    };
    for (const auto& c : cases) {
        oracle::FakeKernel kernel;
        kernel.cutoff = c.cutoff;
        kernel.answer = c.answer;
        EXPECT_EQ(cal::year_cutoff(), c.expected) << c.cutoff;
        EXPECT_TRUE(kernel.name_ok);
    }
}

// Two-digit years placed by several cut-offs, through each conversion that meets them.
TEST(YearCutoff, TwoDigitJulianDates) {
    const struct {
        std::int64_t cutoff;
        double julian;  // yyddd
        int year;       // the year it lands in
    } cases[] = {
        {1950, 50001, 1950},  // default: 50 is the first year of the span
        {1950, 49001, 2049},  // ... and 49 the last
        {1920, 19001, 2019},  // 19 lies below 20: next century
        {1920, 20001, 1920},  // 20 starts the span
        {1920, 49001, 1949},  // the default would give 2049
        {2000, 99001, 2099},  // a cut-off on a century: 00..99 all in that century
        {2000, 1, 2000},      // julian 1: year 00, day 1
        {1999, 98001, 2098},  // 98 below 99
        {1999, 99001, 1999},
    };
    for (const auto& c : cases) {
        oracle::FakeKernel kernel;
        kernel.cutoff = c.cutoff;
        EXPECT_EQ(vxfmtzdatjul(c.julian), oracle::day_number(c.year, 1, 1))
            << c.julian << " with " << c.cutoff;
        double y = 0, m = 0, d = 0;
        vxfmtzymdjul(c.julian, &y, &m, &d);
        EXPECT_EQ(y, c.year) << c.julian << " with " << c.cutoff;
        const double yy = static_cast<double>(static_cast<int>(c.julian) / 1000);
        EXPECT_EQ(vxfmtzjulymd(yy, 1, 1), c.year * 1000.0 + 1) << c.julian << " with " << c.cutoff;
        EXPECT_EQ(cal::zmdy(1, 1, yy), oracle::day_number(c.year, 1, 1));
    }
}

// The leap test follows the placed year: 29 February of "00" exists for 2000, not for 1900.
TEST(YearCutoff, LeapFollowsThePlacedYear) {
    oracle::FakeKernel kernel;
    kernel.cutoff = 2000;
    EXPECT_EQ(vxfmtzjulymd(0, 2, 29), 2000060);
    kernel.cutoff = 1900;  // 1900-1999: 00 is 1900, not leap
    EXPECT_EQ(std::bit_cast<std::uint64_t>(vxfmtzjulymd(0, 2, 29)), vxlocfmt::missing_bits);
    EXPECT_EQ(std::bit_cast<std::uint64_t>(vxfmtzdatjul(366)), vxlocfmt::missing_bits);
}

// Nothing is cached: each conversion of a two-digit year asks again, and a change takes effect
// at once; four-digit years do not ask at all.
TEST(YearCutoff, AskedOnEveryUse) {
    oracle::FakeKernel kernel;
    vxfmtzdatjul(30001);
    vxfmtzdatjul(30001);
    EXPECT_EQ(kernel.lookups, 2);
    kernel.cutoff = 1920;
    EXPECT_EQ(vxfmtzdatjul(30001), oracle::day_number(1930, 1, 1));
    kernel.cutoff = 1950;
    EXPECT_EQ(vxfmtzdatjul(30001), oracle::day_number(2030, 1, 1));
    const int before = kernel.lookups;
    vxfmtzdatjul(2030001);
    vxfmtzjuldat(0);
    EXPECT_EQ(kernel.lookups, before);
}

}  // namespace
