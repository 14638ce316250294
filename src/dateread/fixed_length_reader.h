/*
 * The fixed-length date reader: a text read with one locale pattern of the expander's
 * %-directive language, in the input direction. Numbers are read with or without their padding,
 * month, weekday and quarter names in any of the locale's four forms (case-blind, an
 * abbreviation's final period optional), AM/PM markers, zone offsets and fractions of seconds;
 * the blanks U+0020, U+00A0 and U+202F stand for one another.
 *
 *   double date, time;
 *   std::int32_t code = dateread::getdate_fixlen(properties, U"21 décembre 2022", U"%#d %B %Y", date, time);
 *   // code 0, date 23000, time 0
 */
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "frame/abi.h"
#include "locale/property_table.h"

namespace vxlocfmt::dateread {

// ---- Interface ----------------------------------------------------------------------------

// Answers of getdate_fixlen.
inline constexpr std::int32_t fixlen_read = 0;          // time fields all present or all absent
inline constexpr std::int32_t fixlen_partial_time = 2;  // a date, and only some of hour, minute, second
inline constexpr std::int32_t fixlen_no_match = -1;

// Reads `text` (trailing blanks already dropped) with `pattern`. `date` is the day number when
// month, day and year were all read (else the missing value); `time` is hour, minute and seconds
// as seconds (absent fields count 0; hours are not wrapped, so a time of 25:00:00 is 90000).
// Without a complete date, a day of the month read is carried into the time as whole days.
// A text that ends where the pattern still has time fields (and no date fields) is read as far
// as it goes, with the code fixlen_partial_time.
std::int32_t getdate_fixlen(const PropertyCache& properties, std::u32string_view text, std::u32string_view pattern,
                            double& date, double& time);

// IETL: 1 when the first n characters of a and b are equal once both are upper-cased by the
// kernel's upper-case service, else 0. At most 160 characters are compared (the room of a
// property value); the caller guarantees n characters in both.
std::int32_t IETL(const wchar* a, const wchar* b, std::size_t n);

}  // namespace vxlocfmt::dateread
