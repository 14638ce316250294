/*
 * The year cut-off: the first year of the hundred-year span into which two-digit years are
 * placed. It is the kernel option VX_NAME_YEARCUTOFF, asked anew on every use (never cached, so a
 * change by the host takes effect at once); 1950 when the kernel does not answer.
 *
 *   std::int64_t y = calendar::place_two_digit_year(49);        // 2049 with the default 1950
 *   static_assert(calendar::place_two_digit_year(49, 1920) == 1949);
 */
#pragma once

#include <cstdint>
#include <optional>

namespace vxlocfmt::calendar {

// ---- Interface ----------------------------------------------------------------------------

inline constexpr std::int64_t default_year_cutoff = 1950;

// The option's current value, or 1950 when there is no kernel handle, no lookup service, the
// lookup answers a non-zero status, or its value lies beyond +-1e9.
std::int64_t year_cutoff();
// The option as the kernel answers it; empty when the lookup fails (the callers choose their
// own default: 1950 above, 1960 for the week informats).
std::optional<std::int64_t> year_cutoff_option();

// yy in [0, 99] placed in [cutoff, cutoff + 99].
constexpr std::int64_t place_two_digit_year(std::int64_t yy, std::int64_t cutoff);
// The same with the kernel's current cut-off.
std::int64_t place_two_digit_year(std::int64_t yy);

// ---- Implementation -----------------------------------------------------------------------

constexpr std::int64_t place_two_digit_year(std::int64_t yy, std::int64_t cutoff) {
    // Floor remainder, so that a (nonsensical) negative cut-off still gives a base that is a
    // multiple of 100 at or below it.
    const std::int64_t offset = ((cutoff % 100) + 100) % 100;  // [0, 99]
    const std::int64_t base = cutoff - offset;
    return yy + base + (yy < offset ? 100 : 0);
}

static_assert(place_two_digit_year(50, 1950) == 1950);
static_assert(place_two_digit_year(99, 1950) == 1999);
static_assert(place_two_digit_year(0, 1950) == 2000);
static_assert(place_two_digit_year(49, 1950) == 2049);

}  // namespace vxlocfmt::calendar
