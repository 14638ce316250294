/*
 * Numbers of the locale properties the formats read. The table holds 189 of them; these are the
 * shared vocabulary of the date, time, number and currency formats.
 *
 *   std::u32string_view am = locale::property(call, prop::am);
 *   std::u32string_view january = locale::property(call, prop::month_abbrev + 0);
 */
#pragma once

#include <cstddef>

namespace vxlocfmt::locale::prop {

inline constexpr std::size_t locale_id = 0;
inline constexpr std::size_t language = 1;
inline constexpr std::size_t script = 2;
inline constexpr std::size_t territory = 3;
inline constexpr std::size_t calendar_type = 4;
inline constexpr std::size_t calendar_code = 5;   // "TH", "TW", "JP" or empty
inline constexpr std::size_t date_order = 6;      // "MDY", "DMY", "YMD"

inline constexpr std::size_t first_pattern = 28;
inline constexpr std::size_t date_pattern = 28;   // substituted for "%x"
inline constexpr std::size_t time_pattern = 53;   // substituted for "%X"
inline constexpr std::size_t last_pattern = 57;
inline constexpr std::size_t week_pattern = 42;   // holds the week letter NLDATEWN looks for

// Name sets: first property of each form (abbreviated and wide in format and stand-alone forms).
inline constexpr std::size_t month_abbrev = 59;
inline constexpr std::size_t month_wide = 71;
inline constexpr std::size_t month_abbrev_standalone = 83;
inline constexpr std::size_t month_wide_standalone = 95;
inline constexpr std::size_t weekday_abbrev = 107;
inline constexpr std::size_t weekday_wide = 114;
inline constexpr std::size_t weekday_abbrev_standalone = 121;
inline constexpr std::size_t weekday_wide_standalone = 128;
inline constexpr std::size_t quarter_abbrev = 135;
inline constexpr std::size_t quarter_wide = 139;
inline constexpr std::size_t quarter_abbrev_standalone = 143;
inline constexpr std::size_t quarter_wide_standalone = 147;

inline constexpr std::size_t am = 151;
inline constexpr std::size_t pm = 152;
inline constexpr std::size_t date_separator = 153;
inline constexpr std::size_t time_separator = 154;

inline constexpr std::size_t currency_international = 155;
inline constexpr std::size_t currency_local = 156;
inline constexpr std::size_t local_currency_key = 170;
inline constexpr std::size_t international_currency_key = 171;
inline constexpr std::size_t decimal_point = 172;
inline constexpr std::size_t locale_number_key = 183;
inline constexpr std::size_t fixed_number_key = 184;
inline constexpr std::size_t locale_percent_key = 185;
inline constexpr std::size_t fixed_percent_key = 186;

}  // namespace vxlocfmt::locale::prop
