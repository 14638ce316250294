/*
 * Independent reference computations for the calendar tests, built on the standard library's
 * civil calendar (std::chrono), plus a fake kernel handle whose option lookup the tests steer.
 *
 *   std::int64_t day = oracle::day_number(2000, 2, 29);   // 14669
 *   oracle::FakeKernel kernel; kernel.cutoff = 1920;       // Exported_VXHandle now points at it
 */
#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <string_view>

#include "frame/kernel.h"

namespace oracle {

// 1960-01-01 counted from 1970-01-01.
inline constexpr std::int64_t epoch_offset = -3653;

// The calendar with the 4000-year rule, written independently of the library: Gregorian leap
// years, minus 29 February of every year divisible by 4000.
inline bool is_leap(std::int64_t y) {
    return std::chrono::year(static_cast<int>(y)).is_leap() && y % 4000 != 0;
}

inline unsigned month_length(std::int64_t y, unsigned m) {
    if (m == 2) return is_leap(y) ? 29 : 28;
    using namespace std::chrono;
    return static_cast<unsigned>((year(static_cast<int>(y)) / month(m) / last).day());
}

// Days from 1960-01-01: the Gregorian count less one day for each 29 February of a year
// divisible by 4000 that lies before the date. Valid for years 1 to 32767.
inline std::int64_t day_number(std::int64_t y, unsigned m, unsigned d) {
    using namespace std::chrono;
    const auto gregorian =
        sys_days{year(static_cast<int>(y)) / month(m) / day(d)}.time_since_epoch().count();
    const std::int64_t skipped = (y - 1) / 4000 + (y % 4000 == 0 && m > 2 ? 1 : 0);
    return gregorian - epoch_offset - skipped;
}

// Weekday 1 Sunday .. 7 Saturday of a day number: days simply follow one another, so it is the
// weekday of the Gregorian date the same number of days from 1960-01-01.
inline int weekday(std::int64_t day_number) {
    using namespace std::chrono;
    return static_cast<int>(
               std::chrono::weekday(sys_days{days{day_number + epoch_offset}}).c_encoding()) +
           1;
}

// Collects the first few mismatches of a long loop, so the loop itself stays cheap.
struct Mismatches {
    int count = 0;
    std::string first;
    void add(const std::string& what) {
        if (count++ < 5) first += what + "\n";
    }
};

// Points Exported_VXHandle at a handle table whose option lookup answers `cutoff` with
// `answer`; restores the previous handle when it goes out of scope.
struct FakeKernel {
    void* table[vxlocfmt::kernel::handle_words] = {};
    std::int64_t cutoff = 1950;
    vxlocfmt::status answer = 0;
    int lookups = 0;
    bool name_ok = true;  // every lookup asked for VX_NAME_YEARCUTOFF, length 18, 8 bytes
    void* saved;

    static FakeKernel* current;

    static vxlocfmt::status lookup(void* handle, const vxlocfmt::wchar* name, std::int32_t length,
                                   void* result, std::int32_t size) {
        FakeKernel& k = *current;
        ++k.lookups;
        k.name_ok = k.name_ok && handle == k.table && length == 18 && size == 8 &&
                    std::u32string_view(name, 18) == U"VX_NAME_YEARCUTOFF";
        *static_cast<std::int64_t*>(result) = k.cutoff;  // written even when refusing
        return k.answer;
    }

    FakeKernel() : saved(Exported_VXHandle) {
        table[vxlocfmt::kernel::handle_option_lookup] =
            reinterpret_cast<void*>(&FakeKernel::lookup);
        current = this;
        Exported_VXHandle = table;
    }
    ~FakeKernel() {
        Exported_VXHandle = saved;
        current = nullptr;
    }
    FakeKernel(const FakeKernel&) = delete;
    FakeKernel& operator=(const FakeKernel&) = delete;
};
inline FakeKernel* FakeKernel::current = nullptr;

}  // namespace oracle
