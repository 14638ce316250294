/*
 * The values every row of bench_formats formats, generated once from a fixed seed so that every
 * run, every locale and every peer sees the same sequence: day numbers (days from 1960-01-01)
 * and datetimes (whole seconds from 1960-01-01T00:00:00) drawn uniformly from 1900-01-01 to
 * 2100-12-31, the time of day of each datetime, and the month of each day.
 *
 *   const vxbench::Values& v = vxbench::make_values(1'000'000);
 *   for (double day : v.days) ...;
 *
 * The civil-date arithmetic here is the plain proleptic Gregorian one; the floors use it too.
 */
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace vxbench {

// Days from 1970-01-01 to y-m-d (proleptic Gregorian), and back.
constexpr std::int64_t days_from_civil(std::int64_t y, unsigned m, unsigned d) {
    y -= m <= 2;
    const std::int64_t era = (y >= 0 ? y : y - 399) / 400;
    const auto yoe = static_cast<unsigned>(y - era * 400);
    const unsigned doy = (153 * (m > 2 ? m - 3 : m + 9) + 2) / 5 + d - 1;
    const unsigned doe = yoe * 365 + yoe / 4 - yoe / 100 + doy;
    return era * 146097 + static_cast<std::int64_t>(doe) - 719468;
}

struct Civil {
    std::int32_t year;
    std::uint32_t month;  // 1..12
    std::uint32_t day;    // 1..31
};

constexpr Civil civil_from_days(std::int64_t z) {
    z += 719468;
    const std::int64_t era = (z >= 0 ? z : z - 146096) / 146097;
    const auto doe = static_cast<unsigned>(z - era * 146097);
    const unsigned yoe = (doe - doe / 1460 + doe / 36524 - doe / 146096) / 365;
    const unsigned doy = doe - (365 * yoe + yoe / 4 - yoe / 100);
    const unsigned mp = (5 * doy + 2) / 153;
    const unsigned d = doy - (153 * mp + 2) / 5 + 1;
    const unsigned m = mp < 10 ? mp + 3 : mp - 9;
    return {static_cast<std::int32_t>(static_cast<std::int64_t>(yoe) + era * 400 + (m <= 2)), m, d};
}

// 1960-01-01 counted from 1970-01-01.
inline constexpr std::int64_t epoch_1960 = days_from_civil(1960, 1, 1);
static_assert(epoch_1960 == -3653);
inline constexpr std::int64_t first_day = days_from_civil(1900, 1, 1) - epoch_1960;
inline constexpr std::int64_t last_day = days_from_civil(2100, 12, 31) - epoch_1960;

struct Values {
    std::vector<double> days;       // day numbers
    std::vector<double> datetimes;  // whole seconds
    std::vector<double> times;      // seconds of the day of each datetime, [0, 86400)
    std::vector<double> months;     // month of each day, 1..12
};

// splitmix64: the same sequence on every platform and standard library.
struct SplitMix {
    std::uint64_t state;
    std::uint64_t next() {
        std::uint64_t z = (state += 0x9E3779B97F4A7C15ull);
        z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ull;
        z = (z ^ (z >> 27)) * 0x94D049BB133111EBull;
        return z ^ (z >> 31);
    }
    // Uniform enough in [0, n): n is far below 2^64.
    std::int64_t below(std::int64_t n) { return static_cast<std::int64_t>(next() % static_cast<std::uint64_t>(n)); }
};

inline constexpr std::uint64_t value_seed = 0x76786C6F63666D74ull;  // "vxlocfmt"

inline Values make_values(std::size_t count) {
    Values v;
    v.days.reserve(count);
    v.datetimes.reserve(count);
    v.times.reserve(count);
    v.months.reserve(count);
    SplitMix rng{value_seed};
    const std::int64_t day_span = last_day - first_day + 1;
    for (std::size_t i = 0; i < count; ++i) {
        const std::int64_t day = first_day + rng.below(day_span);
        const std::int64_t datetime = first_day * 86400 + rng.below(day_span * 86400);
        v.days.push_back(static_cast<double>(day));
        v.datetimes.push_back(static_cast<double>(datetime));
        v.times.push_back(static_cast<double>(((datetime % 86400) + 86400) % 86400));
        v.months.push_back(static_cast<double>(civil_from_days(day + epoch_1960).month));
    }
    return v;
}

}  // namespace vxbench
