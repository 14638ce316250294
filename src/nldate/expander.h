/*
 * The date pattern expander: a pattern in the %-directive language ("%#d %B %Y", "%H:%M:%S %z")
 * and a value split into day number, hour, minute and seconds become text in a field. Literal
 * characters are copied; each directive becomes a part of the date or time taken from the
 * calendar or from the call's locale property table. zkfdate, zkfdttm and zkftime prepare the
 * call for a date, a datetime and a time.
 *
 *   std::int32_t width = 20;
 *   std::int32_t r = nldate::zkfdate(out, 20, &width, U"%d%b%Y", 6, properties, 0);  // "01JAN1960"
 */
#pragma once

#include <cstddef>
#include <cstdint>

#include "calendar/day_number.h"
#include "calendar/missing_value.h"
#include "frame/abi.h"
#include "frame/narrowed_bytes.h"
#include "locale/property_table.h"

namespace vxlocfmt::nldate {

// ---- Interface ----------------------------------------------------------------------------

// Answers of expand and of the three entry functions (with no output, expand answers the text's
// length instead).
inline constexpr std::int32_t expand_ok = 0;
inline constexpr std::int32_t expand_cut = 1;              // longer than the width: cut
inline constexpr std::int32_t expand_no_pattern = -1;      // length 0 (or no pattern)
inline constexpr std::int32_t expand_bad_directive = -2;   // unknown or unsupported directive
inline constexpr std::int32_t expand_out_of_range = -3;    // the value is outside the calendar

// Working text of one expansion, on the stack. Worst case the pattern substitutes 160-character
// names again and again; text past this is not kept (it could only ever be cut), but it is
// counted, so a measuring call still answers the whole length.
inline constexpr std::int32_t work_cells = 2048;

// The kernel's time-zone object: a table of operations whose operation 4 answers the offset
// east of universal time, in seconds, at a datetime (seconds from 1960-01-01T00:00:00 UTC).
using zone_offset_fn = double (*)(void* zone, double datetime);
inline constexpr std::size_t zone_offset_slot = 4;

// Expands `pattern` (length characters) for the value (day number, hour, minute, seconds; any of
// them the missing value when the call has no such part).
//   output, capacity: the field's cells; null output only measures. At most
//     min(|*width|, capacity) cells are written.
//   width: the field width; negative asks for right alignment within |*width|. Replaced by the
//     text's length when the text fits.
//   decimals: fraction digits of "%S".
//   zone: the kernel's zone object for "%z" (null: offset 0).
//   narrowed: under the byte wrapper, where the field's cells may also go one byte each
//     (frame/narrowed_bytes.h); its `cells` says how many did. Null: the field only.
// Answers expand_ok, expand_cut (the first |width| characters are kept, the zone offset last when
// "%z" or "%Z" was used), expand_bad_directive, or with no output the text's length.
std::int32_t expand(const wchar* pattern, std::int32_t length, wchar* output, std::int32_t capacity,
                    std::int32_t* width, std::uint32_t decimals, const PropertyCache& properties,
                    void* zone, double day_number, double hour, double minute, double seconds,
                    NarrowedBytes* narrowed = nullptr);

// A date: expand_no_pattern for an empty pattern, expand_out_of_range for a day number outside
// [-138061, 6589336) or missing; else expand with no time parts, decimals 0 and no zone.
inline std::int32_t zkfdate(wchar* output, std::int32_t capacity, std::int32_t* width, const wchar* pattern,
                            std::int32_t length, const PropertyCache& properties, double day_number,
                            NarrowedBytes* narrowed = nullptr);

// Bit of a property-number length that appends " %z" to the property's pattern.
inline constexpr std::int32_t pattern_with_zone = 256;

// A datetime. With a null pattern and a positive length, the length's low 8 bits name the
// property whose text is the pattern, and pattern_with_zone appends " %z". The datetime is
// rounded to 10^-decimals second (at most 10^-9) and split into its date and clock parts.
std::int32_t zkfdttm(wchar* output, std::int32_t capacity, std::int32_t* width, const wchar* pattern,
                     std::int32_t length, std::uint32_t decimals, const PropertyCache& properties,
                     void* zone, double datetime, NarrowedBytes* narrowed = nullptr);

// A time of day or a duration (seconds, not negative): rounded as datetimes are; the hour is
// not wrapped at 24 (30 hours shows hour 30); there is no date.
std::int32_t zkftime(wchar* output, std::int32_t capacity, std::int32_t* width, const wchar* pattern,
                     std::int32_t length, std::uint32_t decimals, const PropertyCache& properties,
                     double time, NarrowedBytes* narrowed = nullptr);

// Powers of ten 10^0 to 10^9 for rounding a datetime or time to its decimals.
inline constexpr double zpowten[] = {1e0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9};
inline constexpr std::uint32_t max_rounding_decimals = 9;

// The Japanese eras the "%+Y" and "%+y" directives count from, newest last. The table stops at
// the 1989 era by design of its data (later dates count on in that era); kept as it is.
struct reign {
    std::int64_t start_day;  // day number of the era's first day
    std::int64_t first_year;
};
inline constexpr reign reigns[] = {{-33506, 1868}, {-17321, 1912}, {-12060, 1926}, {10600, 1989}};

// The year a calendar code shows for a Gregorian year ("TW", "TH", "JP"; any other code: the year).
std::int64_t calendar_year(std::u32string_view code, std::int64_t year, std::int64_t day_number);

// ---- Implementation -----------------------------------------------------------------------

inline std::int32_t zkfdate(wchar* output, std::int32_t capacity, std::int32_t* width, const wchar* pattern,
                            std::int32_t length, const PropertyCache& properties, double day_number,
                            NarrowedBytes* narrowed) {
    if (!pattern || length <= 0) return expand_no_pattern;
    if (!calendar::in_day_range(day_number)) return expand_out_of_range;
    const double missing = calendar::missing_value();
    return expand(pattern, length, output, capacity, width, 0, properties, nullptr, day_number, missing, missing,
                  missing, narrowed);
}

}  // namespace vxlocfmt::nldate
