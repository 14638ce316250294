/*
 * Numbers of the locale properties. The table holds 189 of them; these are the shared vocabulary
 * of the date, time, number and currency formats, and of the builder that fills them.
 *
 *   std::u32string_view am = locale::property(call, prop::am);
 *   std::u32string_view january = locale::property(call, prop::month_abbrev + 0);
 */
#pragma once

#include <cstddef>

namespace vxlocfmt::locale::prop {

inline constexpr std::size_t locale_id = 0;
inline constexpr std::size_t language = 1;
inline constexpr std::size_t script = 2;        // from the likely subtags when the id has none
inline constexpr std::size_t territory = 3;     // empty for a language-only locale
inline constexpr std::size_t calendar_type = 4; // the ICU calendar the names and patterns come from
inline constexpr std::size_t calendar_code = 5; // "TH", "TW", "JP" or empty
inline constexpr std::size_t date_order = 6;    // "MDY", "DMY", "YMD"
// Carried for the curious (CLI, bug reports); no format reads them.
inline constexpr std::size_t default_calendar = 7;   // the locale's own ICU calendar ("persian")
inline constexpr std::size_t first_weekday = 8;      // 1 Sunday .. 7 Saturday
inline constexpr std::size_t minimal_days = 9;       // in the first week of a year
inline constexpr std::size_t display_name = 10;      // in English
inline constexpr std::size_t numbering_system = 11;  // the locale's own digits; the table's are ASCII
inline constexpr std::size_t percent_sign = 12;

// Patterns in the %-directive language; widths are precomputed for 28 to 57.
inline constexpr std::size_t first_pattern = 28;
inline constexpr std::size_t date_pattern = 28;   // substituted for "%x": the long date
inline constexpr std::size_t date_pattern_medium = 29;  // the medium date again, for the "%x" family
inline constexpr std::size_t medium_date = 30;
inline constexpr std::size_t long_date = 31;
inline constexpr std::size_t full_date = 32;
inline constexpr std::size_t weekday_date = 33;         // skeleton yMMMEd
inline constexpr std::size_t year_month_long = 34;      // yMMMM
inline constexpr std::size_t year_month = 35;           // yMMM
inline constexpr std::size_t month_day_long = 36;       // MMMMd
inline constexpr std::size_t month_day = 37;            // MMMd
inline constexpr std::size_t year_long = 38;            // "%Y"
inline constexpr std::size_t year_short = 39;           // "%y"
inline constexpr std::size_t year_quarter_long = 40;    // yQQQQ
inline constexpr std::size_t year_quarter = 41;         // yQQQ
inline constexpr std::size_t week_pattern = 42;         // holds the week letter NLDATEWN looks for
inline constexpr std::size_t year_week = 43;
inline constexpr std::size_t datetime_12h = 44;         // medium date, hms
inline constexpr std::size_t short_datetime_12h = 45;   // short date, hm
inline constexpr std::size_t medium_datetime = 46;      // medium + medium
inline constexpr std::size_t short_datetime = 47;       // short + short
inline constexpr std::size_t medium_date_short_time = 48;
inline constexpr std::size_t long_datetime = 49;        // long + medium
inline constexpr std::size_t full_datetime = 50;        // full + medium
inline constexpr std::size_t weekday_datetime = 51;     // yMMMEd + medium time
inline constexpr std::size_t time_12h = 52;             // hms
inline constexpr std::size_t time_pattern = 53;         // substituted for "%X": the medium time
inline constexpr std::size_t short_time = 54;
inline constexpr std::size_t short_date = 55;
inline constexpr std::size_t iso_date = 56;             // "%Y-%m-%d"
inline constexpr std::size_t iso_datetime = 57;         // "%Y-%m-%dT%H:%M:%S"
inline constexpr std::size_t last_pattern = 57;
inline constexpr std::size_t short_date_medium_time = 58;

// Name sets: first property of each form (abbreviated and wide in format and stand-alone forms).
inline constexpr std::size_t month_abbrev = 59;
inline constexpr std::size_t month_wide = 71;
inline constexpr std::size_t month_abbrev_standalone = 83;
inline constexpr std::size_t month_wide_standalone = 95;
inline constexpr std::size_t weekday_abbrev = 107;  // Sunday first
inline constexpr std::size_t weekday_wide = 114;
inline constexpr std::size_t weekday_abbrev_standalone = 121;
inline constexpr std::size_t weekday_wide_standalone = 128;
inline constexpr std::size_t quarter_abbrev = 135;
inline constexpr std::size_t quarter_wide = 139;
inline constexpr std::size_t quarter_abbrev_standalone = 143;
inline constexpr std::size_t quarter_wide_standalone = 147;

inline constexpr std::size_t am = 151;
inline constexpr std::size_t pm = 152;
inline constexpr std::size_t date_separator = 153;  // one character, or empty
inline constexpr std::size_t time_separator = 154;

// Monetary conventions of the locale's currency, POSIX style (all empty without a currency).
inline constexpr std::size_t currency_international = 155;  // "EUR"
inline constexpr std::size_t currency_local = 156;          // "€"
inline constexpr std::size_t mon_decimal_point = 157;
inline constexpr std::size_t mon_thousands_sep = 158;
inline constexpr std::size_t mon_grouping = 159;            // "3", "3;2"
inline constexpr std::size_t mon_positive_sign = 160;
inline constexpr std::size_t mon_negative_sign = 161;
inline constexpr std::size_t int_frac_digits = 162;
inline constexpr std::size_t frac_digits = 163;
inline constexpr std::size_t mon_p_cs_precedes = 164;
inline constexpr std::size_t mon_p_sep_by_space = 165;
inline constexpr std::size_t mon_n_cs_precedes = 166;
inline constexpr std::size_t mon_n_sep_by_space = 167;
inline constexpr std::size_t mon_p_sign_posn = 168;
inline constexpr std::size_t mon_n_sign_posn = 169;
inline constexpr std::size_t local_currency_key = 170;
inline constexpr std::size_t international_currency_key = 171;

// Numeric conventions.
inline constexpr std::size_t decimal_point = 172;
inline constexpr std::size_t thousands_sep = 173;
inline constexpr std::size_t grouping = 174;
inline constexpr std::size_t positive_sign = 175;
inline constexpr std::size_t negative_sign = 176;
inline constexpr std::size_t p_cs_precedes = 177;
inline constexpr std::size_t p_sep_by_space = 178;
inline constexpr std::size_t n_cs_precedes = 179;
inline constexpr std::size_t n_sep_by_space = 180;
inline constexpr std::size_t p_sign_posn = 181;
inline constexpr std::size_t n_sign_posn = 182;
inline constexpr std::size_t locale_number_key = 183;
inline constexpr std::size_t fixed_number_key = 184;
inline constexpr std::size_t locale_percent_key = 185;
inline constexpr std::size_t fixed_percent_key = 186;
// ICU's own decimal and currency patterns, as the sources of the position values.
inline constexpr std::size_t decimal_pattern_source = 187;
inline constexpr std::size_t currency_pattern_source = 188;

}  // namespace vxlocfmt::locale::prop

namespace vxlocfmt::locale {

// The name groups: the first property of each of the four forms, and the group sizes.
inline constexpr std::size_t MonNames[4] = {prop::month_abbrev, prop::month_wide, prop::month_abbrev_standalone,
                                            prop::month_wide_standalone};
inline constexpr std::size_t DayNames[4] = {prop::weekday_abbrev, prop::weekday_wide, prop::weekday_abbrev_standalone,
                                            prop::weekday_wide_standalone};
inline constexpr std::size_t QtrNames[4] = {prop::quarter_abbrev, prop::quarter_wide, prop::quarter_abbrev_standalone,
                                            prop::quarter_wide_standalone};
inline constexpr std::size_t vnames[3] = {12, 7, 4};
// The keys of the six NumberConventions records, in their order in the table.
inline constexpr std::size_t NumIndex[6] = {prop::local_currency_key, prop::international_currency_key,
                                            prop::locale_number_key,  prop::fixed_number_key,
                                            prop::locale_percent_key, prop::fixed_percent_key};

}  // namespace vxlocfmt::locale
