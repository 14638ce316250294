// The year cut-off asked of the kernel's option lookup, and its effect on two-digit years.

#include <gtest/gtest.h>

#include <cstdint>

#include "calendar/calendar_abi.h"
#include "calendar/date_conversions.h"
#include "calendar/year_cutoff.h"
#include "oracle.h"

namespace cal = vxlocfmt::calendar;

namespace {

TEST(YearCutoff, WhatTheKernelAnswers) {
    {
        oracle::FakeKernel kernel;
        Exported_VXHandle = nullptr;  // no kernel at all
        EXPECT_EQ(cal::year_cutoff(), 1950);
        Exported_VXHandle = kernel.table;
        kernel.table[vxlocfmt::kernel::handle_option_lookup] = nullptr;  // no lookup service
        EXPECT_EQ(cal::year_cutoff(), 1950);
    }
    oracle::FakeKernel kernel;
    kernel.cutoff = 1920;
    EXPECT_EQ(cal::year_cutoff(), 1920);
    EXPECT_TRUE(kernel.name_ok);
    kernel.cutoff = INT64_MAX;  // no year: the default, and no overflow below
    EXPECT_EQ(cal::year_cutoff(), 1950);
    kernel.cutoff = 1920;
    kernel.answer = vxlocfmt::st::no_memory;  // a refusal leaves 1950, whatever was written
    EXPECT_EQ(cal::year_cutoff(), 1950);
}

TEST(YearCutoff, TwoDigitYears) {
    const struct {
        std::int64_t cutoff;
        double julian;  // yyddd
        int year;       // where it lands
    } cases[] = {
        {1950, 50001, 1950},  // the default: 50 opens the span
        {1950, 49001, 2049},  // ... and 49 closes it
        {1920, 19001, 2019},  // below 20: the next century
        {1920, 49001, 1949},  // the default would give 2049
        {2000, 99001, 2099},  // a cut-off on a century keeps 00..99 in it
        {2000, 1, 2000},      // julian 1: year 00
    };
    for (const auto& c : cases) {
        oracle::FakeKernel kernel;
        kernel.cutoff = c.cutoff;
        const double yy = static_cast<double>(static_cast<int>(c.julian) / 1000);
        EXPECT_EQ(vxfmtzdatjul(c.julian), oracle::day_number(c.year, 1, 1)) << c.julian << " / " << c.cutoff;
        EXPECT_EQ(vxfmtzjulymd(yy, 1, 1), c.year * 1000.0 + 1) << c.julian << " / " << c.cutoff;
    }
}

// Nothing is cached: every two-digit conversion asks again and a change takes effect at once;
// four-digit years do not ask.
TEST(YearCutoff, AskedOnEveryUse) {
    oracle::FakeKernel kernel;
    kernel.cutoff = 1920;
    EXPECT_EQ(vxfmtzdatjul(30001), oracle::day_number(1930, 1, 1));
    kernel.cutoff = 1950;
    EXPECT_EQ(vxfmtzdatjul(30001), oracle::day_number(2030, 1, 1));
    EXPECT_EQ(kernel.lookups, 2);
    vxfmtzdatjul(2030001);
    cal::zmdy(1, 1, 2030);
    EXPECT_EQ(kernel.lookups, 2);
}

}  // namespace
