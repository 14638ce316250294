/*
 * Reading a text with one template pattern: the pattern and the text are walked together,
 * literals consume one character without comparing, numeric directives read digits (a fixed
 * count when the text is all-digit), word directives read a run of letters or of marks. What
 * was read lands in `read_slots`; the value is built from them separately (value_builder.h).
 *
 *   read_slots s;
 *   bool ok = read_pattern(U"%P%y-%m-%d", U"2020-03-04", false, false, s);   // year 2020 ...
 */
#pragma once

#include <cstdint>
#include <limits>
#include <string_view>

#include "frame/abi.h"

namespace vxlocfmt::dateread {

// ---- Interface ----------------------------------------------------------------------------

// The numeric slots, in the order of their directive letters "ymdHMSqjw".
enum slot : std::uint8_t { year, month, day, hour, minute, second, quarter, day_of_year, weekday, slot_count };

inline constexpr std::int64_t absent = std::numeric_limits<std::int64_t>::min();

struct read_slots {
    std::int64_t field[slot_count] = {absent, absent, absent, absent, absent, absent, absent, absent, absent};
    double fraction = 0;           // of a second
    std::int32_t zone_sign = 0;    // +1 or -1 after "%G"; 0 without a zone
    std::int64_t zone_hour = 0;
    std::int64_t zone_minute = 0;
    wchar am_pm = 0;               // first letter of the "%p" word, upper case
};

// Up to 19 decimal digits at text[pos], as `readdigs` reads them.
struct digit_run {
    std::uint64_t value;  // the first 19 digits; later ones are consumed and ignored
    std::int32_t count;   // [1, 19]
};

// Reads the digits at text[pos] and advances pos past all of them; false when there is none.
bool readdigs(std::u32string_view text, std::size_t& pos, digit_run& run);

// Reads `text` (already prepared) with `pattern`. `all_digit` fixes the numeric widths;
// `four_digit_year` reads "%y" as "%Y" (the driver's retry). True when text and pattern end
// together; the slots then hold what was read.
bool read_pattern(std::u32string_view pattern, std::u32string_view text, bool all_digit, bool four_digit_year,
                  read_slots& slots);

}  // namespace vxlocfmt::dateread
