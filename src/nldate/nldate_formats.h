/*
 * The NLDATE formats: each owns an ordered list of candidate patterns, mostly locale properties,
 * writes the first that fits the field, and when none fits hands the call to its compact numeric
 * sibling (NLDATES, NLDATEMDS, NLDATEYMS, NLDATEYQS) or fills the field with "*". The siblings
 * build their text field by field (mdy_order, qtr_order) from the locale's order of date parts.
 *
 *   for (const pattern_row& row : nldatel_pat) ...;          // 31, 30, then the sibling
 *   status s = nldate::mdy_order(call, 1, 2, 3, U'/');        // "05/01/2024"
 */
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "frame/abi.h"
#include "frame/registry.h"
#include "locale/property_table.h"
#include "nldate/nldate_exports.h"

namespace vxlocfmt::nldate {

// ---- Interface ----------------------------------------------------------------------------

// One candidate. Only the low 8 bits of `number` are read: the property whose text is the
// pattern (no literal) or whose precomputed width the literal needs; sibling_row hands the call
// to the sibling.
struct pattern_row {
    const wchar* literal;
    std::uint64_t number;
};
inline constexpr std::uint64_t sibling_row = 190;
// The literal "%o" needs 2 cells whatever its number says.
inline constexpr std::u32string_view month_number_literal = U"%o";
inline constexpr std::int32_t month_number_width = 2;
// The weekday-number row of NLDATEWN: its literal begins with "u"; the pattern is built from the
// week letter of property 42 ("%w" for Sunday-first weeks, "%u" otherwise), one cell wide.
inline constexpr std::u32string_view weekday_number_literal = U"u";
inline constexpr std::int32_t weekday_number_width = 1;

// The lists of the formats that skip a candidate wider than the field by its precomputed width.
inline constexpr pattern_row nldatel_pat[] = {{nullptr, 31}, {nullptr, 30}, {nullptr, sibling_row}};
inline constexpr pattern_row nldatem_pat[] = {{nullptr, 30}, {nullptr, sibling_row}};
inline constexpr pattern_row nldatew_pat[] = {{nullptr, 32}, {nullptr, 33}, {U"%#A", 128}, {U"%#a", 121}};
inline constexpr pattern_row nldateyml_pat[] = {{nullptr, 34}, {nullptr, 35}, {nullptr, sibling_row}};
inline constexpr pattern_row nldateymm_pat[] = {{nullptr, 35}, {nullptr, sibling_row}};
inline constexpr pattern_row nldateyql_pat[] = {{nullptr, 40}, {nullptr, 41}, {nullptr, sibling_row}};
inline constexpr pattern_row nldateyqm_pat[] = {{nullptr, 41}, {nullptr, sibling_row}};
inline constexpr pattern_row nldatemdl_pat[] = {{nullptr, 36}, {nullptr, 37}, {nullptr, sibling_row}};
inline constexpr pattern_row nldatemdm_pat[] = {{nullptr, 37}, {nullptr, sibling_row}};
inline constexpr pattern_row nldatemn_pat[] = {{U"%#B", 95}, {U"%#b", 83}, {U"%o", 0}};
inline constexpr pattern_row nldatewn_pat[] = {{U"%#A", 128}, {U"%#a", 121}, {U"u", 42}};

// The candidates of the formats that expand each one in turn without looking at widths.
inline constexpr pattern_row nldate_candidates[] = {{nullptr, 28}, {nullptr, 29}, {nullptr, sibling_row}};
inline constexpr pattern_row nldatemd_candidates[] = {{nullptr, 36}, {nullptr, 37}};
inline constexpr pattern_row nldateym_candidates[] = {{nullptr, 34}, {nullptr, 35}};
inline constexpr pattern_row nldateyq_candidates[] = {{nullptr, 40}, {nullptr, 41}};
inline constexpr pattern_row nldateyr_candidates[] = {{nullptr, 38}, {nullptr, 39}};
inline constexpr pattern_row nldateyw_candidates[] = {{nullptr, 42}, {nullptr, 43}};

// What a format's value is, and so how its candidates are expanded: zkfdate, zkfdttm with the
// call's decimals (and the zone offset when asked), or zkftime.
enum class value_kind { date, datetime, time };

// A format that writes one of its candidates.
struct candidate_format {
    std::u32string_view name;
    registry::Limits limits;
    std::span<const pattern_row> rows;
    bool skip_by_width;  // the formats that own a pattern list
    format_fn sibling;   // null: "*" when nothing fits
    value_kind kind = value_kind::date;
    bool with_zone = false;  // property patterns get " %z" appended
};

inline constexpr candidate_format candidate_formats[] = {
    {U"NLDATE", registry::limits_of(U"NLDATE"), nldate_candidates, false, vxfmtnldates},
    {U"NLDATEL", registry::limits_of(U"NLDATEL"), nldatel_pat, true, vxfmtnldates},
    {U"NLDATEM", registry::limits_of(U"NLDATEM"), nldatem_pat, true, vxfmtnldates},
    {U"NLDATEW", registry::limits_of(U"NLDATEW"), nldatew_pat, true, nullptr},
    {U"NLDATEMD", registry::limits_of(U"NLDATEMD"), nldatemd_candidates, false, nullptr},
    {U"NLDATEMDL", registry::limits_of(U"NLDATEMDL"), nldatemdl_pat, true, vxfmtnldatemds},
    {U"NLDATEMDM", registry::limits_of(U"NLDATEMDM"), nldatemdm_pat, true, vxfmtnldatemds},
    {U"NLDATEMN", registry::limits_of(U"NLDATEMN"), nldatemn_pat, true, nullptr},
    {U"NLDATEWN", registry::limits_of(U"NLDATEWN"), nldatewn_pat, true, nullptr},
    {U"NLDATEYM", registry::limits_of(U"NLDATEYM"), nldateym_candidates, false, nullptr},
    {U"NLDATEYML", registry::limits_of(U"NLDATEYML"), nldateyml_pat, true, vxfmtnldateyms},
    {U"NLDATEYMM", registry::limits_of(U"NLDATEYMM"), nldateymm_pat, true, vxfmtnldateyms},
    {U"NLDATEYQ", registry::limits_of(U"NLDATEYQ"), nldateyq_candidates, false, nullptr},
    {U"NLDATEYQL", registry::limits_of(U"NLDATEYQL"), nldateyql_pat, true, vxfmtnldateyqs},
    {U"NLDATEYQM", registry::limits_of(U"NLDATEYQM"), nldateyqm_pat, true, vxfmtnldateyqs},
    {U"NLDATEYR", registry::limits_of(U"NLDATEYR"), nldateyr_candidates, false, nullptr},
    {U"NLDATEYW", registry::limits_of(U"NLDATEYW"), nldateyw_candidates, false, nullptr},
};

// The common frame of the candidate formats: prologue, range guard, the candidates in order
// (expanded by zkfdate into the field), the transcoder test in byte mode, then the sibling
// (handed the unchanged call) or "*".
status format_by_candidates(FmtCall& call, void* extra, const candidate_format& format);

// The pattern of the NLDATEWN weekday-number row, from the week directive of a year-week
// pattern: "%w" (Sunday 0 .. Saturday 6) when it numbers weeks from Sunday ("%U"), else "%u"
// (Monday 1 .. Sunday 7).
std::u32string_view weekday_number_pattern(std::u32string_view week_pattern);

// Field by field, right-aligned, from month, day and year places (0: not shown; else the part's
// place among the shown ones) and a separator (0: none). See docs/nldate.md for the rules that
// drop separators and parts as the width shrinks.
status mdy_order(FmtCall& call, std::int32_t month_place, std::int32_t day_place, std::int32_t year_place,
                 wchar separator);
// Year (when shown), separator and quarter digit ("I" to "IV" with the roman option).
status qtr_order(FmtCall& call, bool year_shown, bool roman, wchar separator);

// ---- Implementation -----------------------------------------------------------------------

namespace detail {
constexpr bool rows_are_valid(std::span<const pattern_row> rows) {
    for (const pattern_row& row : rows) {
        const std::uint64_t n = row.number & 0xFF;
        if (n != sibling_row && n >= property_count) return false;
    }
    return true;
}
// (Whether a sibling row has a sibling cannot be asked here: under the sanitizers a function's
// address is not a constant. The formats test walks every list.)
constexpr bool formats_are_valid() {
    for (const candidate_format& f : candidate_formats)
        if (!rows_are_valid(f.rows)) return false;
    return true;
}
static_assert(formats_are_valid());
}  // namespace detail

}  // namespace vxlocfmt::nldate
