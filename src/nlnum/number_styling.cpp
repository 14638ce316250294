#include "nlnum/number_styling.h"

#include <algorithm>

#include "nlnum/currency_format_patterns.h"

namespace vxlocfmt::nlnum {
namespace {

// Appends the non-zero cells of a two-cell field.
inline wchar* put_field(wchar* to, const wchar (&field)[2]) {
    if (field[0]) *to++ = field[0];
    if (field[1]) *to++ = field[1];
    return to;
}

inline wchar* put(wchar* to, std::u32string_view text) {
    for (const wchar c : text) *to++ = c;
    return to;
}

}  // namespace

std::int32_t style_number(std::u32string_view plain, std::int32_t decimals, double value, std::int32_t point_length,
                          const NumberConventions& c, StyleState& state, wchar* out) {
    if (plain.size() > plain_cells_max) return style_too_long;
    if (!plain.empty() && plain.front() == U'-') plain.remove_prefix(1);  // the pattern places the sign
    // One pass for the point, the exponent and the stars.
    std::size_t point = plain.size();
    bool exponent = false;
    for (std::size_t i = 0; i < plain.size(); ++i) {
        const wchar ch = plain[i];
        if (ch == U'.') {
            if (point == plain.size()) point = i;
        } else if (ch == U'E') {
            exponent = true;
        } else if (ch == U'*') {
            return style_starred;
        }
    }
    const bool has_point = point < plain.size();

    std::u32string_view integer = plain, fraction;
    if (exponent && has_point) {
        // "E" notation: the digits before the point as they stand, the rest (exponent included)
        // as the fraction.
        integer = plain.substr(0, point);
        fraction = plain.substr(point + 1);
    } else if (decimals > 0) {
        if (has_point) {
            integer = plain.substr(0, point);
            fraction = plain.substr(point + 1);
        } else {
            // The kernel had to drop every decimal: from here on the number goes ungrouped.
            state.grouping_wanted = false;
        }
    }

    const bool negative = value < 0;
    const wchar* pattern = negative ? pattern_for(c.n_cs_precedes, c.n_sep_by_space, c.n_sign_posn)
                                    : pattern_for(c.p_cs_precedes, c.p_sep_by_space, c.p_sign_posn);
    // A group size of 0 means no grouping; a negative one (malformed data) is taken the same way.
    const std::int32_t group = c.grouping[0];
    const bool grouped =
        state.grouping_wanted && !exponent && group > 0 && integer.size() > static_cast<std::size_t>(group);
    if (grouped) state.grouping_done = true;
    if (!fraction.empty() && exponent && point_length == 2) state.long_point_with_exponent = true;

    // The patterned text, straight into `out`: at most 32 + 31 x 2 + 2 for the number, 50 for
    // the symbol, 2 for the sign and 3 more pattern characters (see styled_cells).
    wchar* to = out;
    for (; *pattern; ++pattern) {
        switch (*pattern) {
        case U'V':
            if (grouped) {
                const auto g = static_cast<std::size_t>(group);
                const std::size_t first = integer.size() % g == 0 ? g : integer.size() % g;
                to = put(to, integer.substr(0, first));
                for (std::size_t at = first; at < integer.size(); at += g) {
                    to = put_field(to, c.thousands_sep);
                    to = put(to, integer.substr(at, g));
                }
            } else {
                to = put(to, integer);
            }
            if (!fraction.empty()) {
                // A locale without a decimal point gets no decimals, but "E" notation keeps its
                // ".": dropping it would make another number.
                if (c.decimal_point[0] == 0 && c.decimal_point[1] == 0) *to++ = U'.';
                else to = put_field(to, c.decimal_point);
                to = put(to, fraction);
            }
            break;
        case U'$':
            for (std::size_t i = 0; i < std::size(c.currency_symbol) - 1 && c.currency_symbol[i]; ++i)
                *to++ = c.currency_symbol[i];
            break;
        case U'-': to = put_field(to, negative ? c.negative_sign : c.positive_sign); break;
        case U'(':
        case U')':
            if (negative) *to++ = *pattern;
            break;
        case U' ': *to++ = U' '; break;
        default: break;
        }
    }
    // Blanks around the text go (an empty symbol leaves its separating blank behind).
    wchar* from = out;
    while (from < to && *from == U' ') ++from;
    while (to > from && to[-1] == U' ') --to;
    if (from > out) to = std::copy(from, to, out);
    // Positive amounts line up with parenthesised negatives; zero gets no such blank. Deliberate.
    if (value > 0 && c.n_sign_posn == 0) *to++ = U' ';
    return static_cast<std::int32_t>(to - out);
}

}  // namespace vxlocfmt::nlnum
