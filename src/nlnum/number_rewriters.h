/*
 * The rewriters of the locale number, percent and money informats: the text as the NLNUM,
 * NLPCT and NLMNY formats write it, rewritten into classic notation ("," grouping, "." point,
 * a leading "-") by one conventions record, then read by a classic informat.
 *
 *   zkifnum(text, call, *conventions_of(table, prop::locale_number_key), extra);   // "1.234,5" in de_DE: 1234.5
 *   zkifmny(text, call, own, other, extra);   // "-1.234,50 €" or "-EUR1.234,50": -1234.5
 *
 * Each answers 0, rewrite_refused (the text was refused before parsing: the result is not
 * written) or the classic informat's status. `text` is what the caller's field holds, already
 * cut to the characters that count; at most 32 are read.
 */
#pragma once

#include <cstdint>
#include <string_view>

#include "frame/abi.h"
#include "locale/property_table.h"

namespace vxlocfmt::nlnum {

inline constexpr std::int32_t rewrite_refused = -1;

// NLNUM, NLNUMI: separators, signs, then the classic numeric informat (NEGPAREN).
std::int32_t zkifnum(std::u32string_view text, FmtCall& call, const NumberConventions& own, void* extra);
// NLPCT, NLPCTI: separators, signs deleted (a "-" put in front), then the classic PERCENT.
std::int32_t zkifpct(std::u32string_view text, FmtCall& call, const NumberConventions& own, void* extra);
// NLMNY, NLMNYI: both records' symbols taken off (the number's own point kept), then as zkifnum
// with the other record's separators and signs.
std::int32_t zkifmny(std::u32string_view text, FmtCall& call, const NumberConventions& own,
                     const NumberConventions& other, void* extra);

class RewriteText;

// zkifnum after its first step, the full route: the separators and signs rewritten in place by
// the record, then the classic NEGPAREN informat. The rewriters take the one-pass reader
// (plain_number.h) first; this reads what it turns away, and is its reference in the tests.
std::int32_t read_rewritten(RewriteText& t, FmtCall& call, const NumberConventions& c, void* extra);

// The number's decimal point in a text whose currency symbol may hold the same character
// ("B/. 1,234.50", "1.234,50 kr."): the position of the character before the last run of digits
// (the mantissa's, when the text ends in an exponent) when it is `point`; npos otherwise.
std::size_t number_point(std::u32string_view text, wchar point);

}  // namespace vxlocfmt::nlnum
