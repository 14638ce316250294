#include "nlnum/number_styling.h"

#include <algorithm>

#include "nlnum/currency_format_patterns.h"

namespace vxlocfmt::nlnum {
namespace {

// A bounded text under construction: what does not fit is counted, not stored.
template <std::size_t N>
struct Text {
    wchar* cells;
    std::size_t size = 0;
    void push(wchar c) {
        if (size < N) cells[size] = c;
        ++size;
    }
    void push(std::u32string_view s) {
        for (const wchar c : s) push(c);
    }
    void push_field(const wchar (&field)[2]) {
        for (const wchar c : field)
            if (c != 0) push(c);
    }
    bool overflowed() const { return size > N; }
};

// `integer` with a separator before every group of `group` digits after the first group.
template <std::size_t N>
void push_grouped(Text<N>& number, std::u32string_view integer, std::size_t group, const wchar (&separator)[2]) {
    const std::size_t first = integer.size() % group == 0 ? group : integer.size() % group;
    number.push(integer.substr(0, first));
    for (std::size_t at = first; at < integer.size(); at += group) {
        number.push_field(separator);
        number.push(integer.substr(at, group));
    }
}

}  // namespace

std::int32_t style_number(std::u32string_view plain, std::int32_t decimals, double value, std::int32_t point_length,
                          const NumberConventions& c, StyleState& state, wchar* out) {
    constexpr auto npos = std::u32string_view::npos;
    if (!plain.empty() && plain.front() == U'-') plain.remove_prefix(1);  // the pattern places the sign
    const std::size_t point = plain.find(U'.');
    const bool exponent = plain.find(U'E') != npos;

    std::u32string_view integer = plain, fraction;
    if (exponent && point != npos) {
        // "E" notation: the digits before the point as they stand, the rest (exponent included)
        // as the fraction.
        integer = plain.substr(0, point);
        fraction = plain.substr(point + 1);
    } else if (decimals > 0) {
        if (point != npos) {
            integer = plain.substr(0, point);
            fraction = plain.substr(point + 1);
        } else {
            // The kernel had to drop every decimal: from here on the number goes ungrouped.
            state.grouping_wanted = false;
        }
    }

    wchar number_buffer[number_cells];
    Text<number_cells> number{number_buffer};
    // A group size of 0 means no grouping; a negative one (malformed data) is taken the same way.
    const std::int32_t group = c.grouping[0];
    if (state.grouping_wanted && !exponent && group > 0 && integer.size() > static_cast<std::size_t>(group)) {
        push_grouped(number, integer, static_cast<std::size_t>(group), c.thousands_sep);
        state.grouping_done = true;
    } else {
        number.push(integer);
    }
    if (!fraction.empty()) {
        // A locale without a decimal point gets no decimals, but "E" notation keeps its ".":
        // dropping it would make another number.
        if (cells_used(c.decimal_point) == 0) number.push(U'.');
        else number.push_field(c.decimal_point);
        number.push(fraction);
        if (exponent && point_length == 2) state.long_point_with_exponent = true;
    }
    if (number.overflowed()) return style_too_long;
    std::size_t digits_end = number.size;
    while (digits_end > 0 && number_buffer[digits_end - 1] == U' ') --digits_end;
    const std::u32string_view digits(number_buffer, digits_end);

    const bool negative = value < 0;
    const wchar* pattern = negative ? pattern_for(c.n_cs_precedes, c.n_sep_by_space, c.n_sign_posn)
                                    : pattern_for(c.p_cs_precedes, c.p_sep_by_space, c.p_sign_posn);
    Text<styled_cells> styled{out};
    for (; *pattern; ++pattern) {
        switch (*pattern) {
        case U'V': styled.push(digits); break;
        case U'$':
            for (std::size_t i = 0; i < std::size(c.currency_symbol) && c.currency_symbol[i]; ++i)
                styled.push(c.currency_symbol[i]);
            break;
        case U'-': styled.push_field(negative ? c.negative_sign : c.positive_sign); break;
        case U'(':
        case U')':
            if (negative) styled.push(*pattern);
            break;
        case U' ': styled.push(U' '); break;
        default: break;
        }
    }
    // The symbol holds at most 50 characters, so the patterned text always fits its room.
    std::size_t from = 0, to = styled.size;
    while (from < to && out[from] == U' ') ++from;
    while (to > from && out[to - 1] == U' ') --to;
    std::size_t length = to - from;
    if (from > 0) std::copy(out + from, out + to, out);
    // Positive amounts line up with parenthesised negatives; zero gets no such blank. Deliberate.
    if (value > 0 && c.n_sign_posn == 0) out[length++] = U' ';
    return static_cast<std::int32_t>(length);
}

}  // namespace vxlocfmt::nlnum
