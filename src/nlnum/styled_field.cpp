#include "nlnum/styled_field.h"

#include <cstring>

#include "nlnum/currency_format_patterns.h"
#include "nlnum/number_styling.h"

namespace vxlocfmt::nlnum {
namespace {

// The renderer's widest field.
constexpr std::int32_t field_cells = 32;
// Longest text before or after the number: a blank, a symbol of 50 and a sign of 2 ("$ -V",
// "V $-"), and the parenthesis blank after a positive amount.
constexpr std::size_t affix_cells = 50 + 2 + 2 + 1;

// n cells: the short runs (groups, the first group, two decimals, a sign) as fixed moves, not a
// call.
inline void put_run(wchar* to, const wchar* from, std::int32_t n) {
    switch (n) {
    case 0: break;
    case 4: std::memcpy(to, from, 4 * sizeof(wchar)); break;
    case 3: std::memcpy(to, from, 3 * sizeof(wchar)); break;
    case 2: std::memcpy(to, from, 2 * sizeof(wchar)); break;
    case 1: *to = *from; break;
    default: std::memcpy(to, from, static_cast<std::size_t>(n) * sizeof(wchar)); break;
    }
}

// n blanks (n <= field_cells), four cells at a time, the last four overlapping the ones before:
// the width is the same from call to call, so the branches are too.
inline void fill_blanks(wchar* to, std::int32_t n) {
    constexpr wchar blanks[4] = {U' ', U' ', U' ', U' '};
    if (n >= 4) {
        for (std::int32_t i = 0; i + 4 < n; i += 4) std::memcpy(to + i, blanks, sizeof blanks);
        std::memcpy(to + n - 4, blanks, sizeof blanks);
    } else {
        for (std::int32_t i = 0; i < n; ++i) to[i] = U' ';
    }
}

// A two-cell field's used (non-zero) cells.
inline wchar* put_after(wchar* to, const wchar (&field)[2]) {
    if (field[0]) *to++ = field[0];
    if (field[1]) *to++ = field[1];
    return to;
}
inline std::int32_t symbol_length(const NumberConventions& c) {
    std::int32_t n = 0;
    while (n < static_cast<std::int32_t>(std::size(c.currency_symbol)) - 1 && c.currency_symbol[n]) ++n;
    return n;
}

// What one pattern letter writes (see CurrencyFormatPatterns).
inline wchar* put_letter(wchar* to, wchar letter, const NumberConventions& c, bool negative) {
    switch (letter) {
    case U'$':
        for (std::int32_t i = 0, n = symbol_length(c); i < n; ++i) *to++ = c.currency_symbol[i];
        return to;
    case U'-': return put_after(to, negative ? c.negative_sign : c.positive_sign);
    case U'(':
    case U')':
        if (negative) *to++ = letter;
        return to;
    case U' ': *to++ = U' '; return to;
    default: return to;
    }
}

}  // namespace

bool style_into_field(std::u32string_view plain, std::int32_t decimals, double value, const NumberConventions& c,
                      wchar* field, std::int32_t width) {
    // The renderer's fields and kernel texts are at most 32 cells; said here, so that the
    // compiler sees every write below stay in its buffer.
    if (width < 1 || width > field_cells || plain.size() > static_cast<std::size_t>(field_cells) ||
        decimals > field_cells)
        return false;
    const wchar* text = plain.data();
    const wchar* const end = text + plain.size();
    if (text != end && *text == U'-') ++text;  // the pattern places the sign
    const wchar* integer_end = end;
    if (decimals > 0) {
        if (end - text < decimals + 2) return false;
        integer_end = end - decimals - 1;
        if (*integer_end != U'.') return false;
    }
    if (integer_end == text || *text == U' ') return false;
    const auto integer = static_cast<std::int32_t>(integer_end - text);

    const bool negative = value < 0;
    const wchar* const pattern = negative ? pattern_for(c.n_cs_precedes, c.n_sep_by_space, c.n_sign_posn)
                                          : pattern_for(c.p_cs_precedes, c.p_sep_by_space, c.p_sign_posn);
    // What the pattern puts before the number and after it. The trimming of the whole text takes
    // the blanks before the one and after the other, no more: the number begins and ends with a
    // digit. Then the blank that lines up positive amounts with parenthesised negatives; zero
    // gets no such blank. Deliberate.
    wchar prefix[affix_cells], suffix[affix_cells];
    wchar* prefix_end = prefix;
    const wchar* letter = pattern;
    for (; *letter != U'V'; ++letter) prefix_end = put_letter(prefix_end, *letter, c, negative);
    wchar* suffix_end = suffix;
    for (++letter; *letter; ++letter) suffix_end = put_letter(suffix_end, *letter, c, negative);
    const wchar* prefix_start = prefix;
    while (prefix_start < prefix_end && *prefix_start == U' ') ++prefix_start;
    while (suffix_end > suffix && suffix_end[-1] == U' ') --suffix_end;
    if (value > 0 && c.n_sign_posn == 0) *suffix_end++ = U' ';

    // A group size of 0 means no grouping; a negative one (malformed data) the same. The first
    // group holds what is left over from whole groups. Groups of 3 divide by a constant: a
    // division by a variable costs more than the rest of the grouping.
    const std::int32_t group = c.grouping[0];
    const bool grouped = group > 0 && integer > group;
    const std::int32_t separators = !grouped ? 0 : group == 3 ? (integer - 1) / 3 : (integer - 1) / group;
    const std::int32_t first = integer - separators * group;
    const auto separator = static_cast<std::int32_t>(cells_used(c.thousands_sep));
    // A locale without a decimal point asks for no decimals; the general attempt would put "."
    // before a fraction all the same.
    const bool no_point = c.decimal_point[0] == 0 && c.decimal_point[1] == 0;
    const std::int32_t point = no_point ? 1 : static_cast<std::int32_t>(cells_used(c.decimal_point));
    const auto length = static_cast<std::int32_t>(prefix_end - prefix_start) + integer +
                        separators * separator + (decimals > 0 ? point + decimals : 0) +
                        static_cast<std::int32_t>(suffix_end - suffix);
    if (length > width) return false;

    wchar* to = field;
    fill_blanks(to, width - length);
    to += width - length;
    put_run(to, prefix_start, static_cast<std::int32_t>(prefix_end - prefix_start));
    to += prefix_end - prefix_start;
    if (grouped) {
        put_run(to, text, first);
        to += first;
        if (group == 3 && separator == 1) {
            // The usual grouping: one separator cell, then three digits in one move.
            const wchar mark = c.thousands_sep[0] ? c.thousands_sep[0] : c.thousands_sep[1];
            for (const wchar* at = text + first; at < integer_end; at += 3, to += 4) {
                to[0] = mark;
                std::memcpy(to + 1, at, 3 * sizeof(wchar));
            }
        } else {
            for (const wchar* at = text + first; at < integer_end; at += group, to += group) {
                to = put_after(to, c.thousands_sep);
                put_run(to, at, group);
            }
        }
    } else {
        put_run(to, text, integer);
        to += integer;
    }
    if (decimals > 0) {
        if (no_point) *to++ = U'.';
        else to = put_after(to, c.decimal_point);
        put_run(to, integer_end + 1, decimals);
        to += decimals;
    }
    put_run(to, suffix, static_cast<std::int32_t>(suffix_end - suffix));
    return true;
}

}  // namespace vxlocfmt::nlnum
