/*
 * Independent references for the calendar and date-format tests, on the standard library's civil
 * calendar, a seeded random source, and a fake kernel handle whose option lookup the tests steer.
 *
 *   std::int64_t day = oracle::day_number(2000, 2, 29);   // 14669
 *   oracle::FakeKernel kernel; kernel.cutoff = 1920;       // Exported_VXHandle points at it
 */
#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <string_view>

#include "frame/kernel.h"

namespace oracle {

inline bool is_leap(std::int64_t y) {
    return std::chrono::year(static_cast<int>(y)).is_leap() && y % 4000 != 0;
}

inline unsigned month_length(std::int64_t y, unsigned m) {
    using namespace std::chrono;
    if (m == 2) return is_leap(y) ? 29 : 28;
    return static_cast<unsigned>((year(static_cast<int>(y)) / month(m) / last).day());
}

// Days from 1960-01-01: the Gregorian count less one for each 29 February of a year divisible
// by 4000 before the date. Years 1 to 32767.
inline std::int64_t day_number(std::int64_t y, unsigned m, unsigned d) {
    using namespace std::chrono;
    const auto from_1970 = sys_days{year(static_cast<int>(y)) / month(m) / day(d)}.time_since_epoch().count();
    return from_1970 + 3653 - (y - 1) / 4000 - (y % 4000 == 0 && m > 2 ? 1 : 0);
}

// 1 Sunday .. 7 Saturday: days simply follow one another from 1960-01-01.
inline int weekday(std::int64_t day_number) {
    using namespace std::chrono;
    return static_cast<int>(std::chrono::weekday(sys_days{days{day_number - 3653}}).c_encoding()) + 1;
}

// The first few mismatches of a long loop, so the loop itself stays cheap.
struct Mismatches {
    int count = 0;
    std::string first;
    void add(const std::string& what) {
        if (count++ < 5) first += what + "\n";
    }
};

// splitmix64: the same values on every run.
struct Random {
    std::uint64_t state;
    std::uint64_t next() {
        std::uint64_t z = (state += 0x9E3779B97F4A7C15ull);
        z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ull;
        z = (z ^ (z >> 27)) * 0x94D049BB133111EBull;
        return z ^ (z >> 31);
    }
    double unit() { return static_cast<double>(next() >> 11) * 0x1p-53; }  // [0, 1)
};

// Points Exported_VXHandle at a table whose option lookup writes `cutoff` and answers `answer`;
// restores the previous handle on destruction.
struct FakeKernel {
    void* table[vxlocfmt::kernel::handle_words] = {};
    std::int64_t cutoff = 1950;
    vxlocfmt::status answer = 0;
    int lookups = 0;
    bool name_ok = true;
    void* saved = Exported_VXHandle;
    static inline FakeKernel* current = nullptr;

    static vxlocfmt::status lookup(void* handle, const vxlocfmt::wchar* name, std::int32_t length,
                                   void* result, std::int32_t size) {
        FakeKernel& k = *current;
        ++k.lookups;
        k.name_ok = k.name_ok && handle == k.table && length == 18 && size == 8 &&
                    std::u32string_view(name, 18) == U"VX_NAME_YEARCUTOFF";
        *static_cast<std::int64_t*>(result) = k.cutoff;
        return k.answer;
    }
    FakeKernel() {
        table[vxlocfmt::kernel::handle_option_lookup] = reinterpret_cast<void*>(&lookup);
        current = this;
        Exported_VXHandle = table;
    }
    ~FakeKernel() { Exported_VXHandle = saved; }
    FakeKernel(const FakeKernel&) = delete;
    FakeKernel& operator=(const FakeKernel&) = delete;
};

}  // namespace oracle
