/*
 * The renderer's everyday attempt in one pass: the kernel's text when it answered status 0, which
 * means plain fixed point at the decimals asked ("-1234567.89": a sign when below zero, digits,
 * a point before exactly the asked decimals), styled and right-aligned in the field. A text too
 * wide for the field, or one not laid out so, is declined with the field untouched and left to
 * the general attempt of number_styling.h, which writes the same text wherever both apply.
 *
 *   if (first_attempt(locale, -1234567.891, 16, 2, call.capacity, conventions, field)) return zkfnum_done;
 *   // field: "   -1,234,567.89" (en_US numbers; the kernel answered "     -1234567.89")
 */
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string_view>

#include "frame/abi.h"
#include "frame/kernel.h"
#include "locale/property_table.h"
#include "nlnum/currency_format_patterns.h"
#include "nlnum/number_styling.h"

namespace vxlocfmt::nlnum {

// ---- Interface ----------------------------------------------------------------------------

// The kernel's rendering is requested into this many cells.
inline constexpr std::int32_t kernel_cells = 256;
// Plain fixed point: digits, an optional "-" and ".", "E" notation when the digits do not fit.
inline constexpr std::uint32_t mode_fixed_point = 0x1000;

// The first attempt of a wide call whose output has room for its width `w` (1 to 32): asks the
// kernel number formatter of `locale` for `value` at width w and `decimals`, as every attempt
// does (`field_length`: the call's), and when it answers status 0 and the styled text fits,
// writes that right-aligned over the first w cells of `field`, blanks before it, and answers
// true. Grouping is wanted (a first attempt); `value` picks the pattern and the parenthesis
// blank, as in style_number. False, with the field untouched, when the kernel's status is not 0,
// its text is not laid out as status 0 promises, or the styled text is too wide.
// `written`, when given, receives the styled text's length in cells.
[[gnu::always_inline]] inline bool first_attempt(void* locale, double value, std::int32_t w, std::int32_t decimals,
                                                 std::int32_t field_length, const NumberConventions& conventions,
                                                 wchar* field, std::int32_t* written = nullptr);

// ---- Implementation -----------------------------------------------------------------------
// Inline: zkfnum's everyday path, one call fewer per value.

namespace detail {

// The renderer's widest field.
inline constexpr std::int32_t field_cells = 32;
// Longest text before or after the number: a blank, a symbol of 50 and a sign of 2 ("$ -V",
// "V $-"), and the parenthesis blank after a positive amount.
inline constexpr std::size_t affix_cells = 50 + 2 + 2 + 1;

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

// Blanks over n cells (1 to 32), in blocks of 16, 8 or 4 cells from the front and the back,
// which overlap: for the whole field the branches depend on the width alone.
inline constexpr wchar blanks[16] = {U' ', U' ', U' ', U' ', U' ', U' ', U' ', U' ',
                                     U' ', U' ', U' ', U' ', U' ', U' ', U' ', U' '};
inline void fill_blanks(wchar* to, std::int32_t n) {
    const auto both_ends = [&](std::int32_t block) {
        std::memcpy(to, blanks, static_cast<std::size_t>(block) * sizeof(wchar));
        std::memcpy(to + n - block, blanks, static_cast<std::size_t>(block) * sizeof(wchar));
    };
    if (n >= 16) both_ends(16);
    else if (n >= 8) both_ends(8);
    else if (n >= 4) both_ends(4);
    else
        for (std::int32_t i = 0; i < n; ++i) to[i] = U' ';
}

// A two-cell field's used (non-zero) cells.
inline wchar* put_after(wchar* to, const wchar (&field)[2]) {
    if (field[0]) *to++ = field[0];
    if (field[1]) *to++ = field[1];
    return to;
}
// The symbol after `to` (room for at least four cells there); its end. Short symbols, the usual
// ones, are moved as four cells and measured without a loop.
inline wchar* put_symbol(wchar* to, const NumberConventions& c) {
    const wchar* symbol = c.currency_symbol;
    std::memcpy(to, symbol, 4 * sizeof(wchar));
    if (!symbol[0]) return to;
    if (!symbol[1]) return to + 1;
    if (!symbol[2]) return to + 2;
    if (!symbol[3]) return to + 3;
    std::int32_t n = 4;
    for (; n < static_cast<std::int32_t>(std::size(c.currency_symbol)) - 1 && symbol[n]; ++n) to[n] = symbol[n];
    return to + n;
}

// What one pattern letter writes (see CurrencyFormatPatterns).
inline wchar* put_letter(wchar* to, wchar letter, const NumberConventions& c, bool negative) {
    switch (letter) {
    case U'$': return put_symbol(to, c);
    case U'-': return put_after(to, negative ? c.negative_sign : c.positive_sign);
    case U'(':
    case U')':
        if (negative) *to++ = letter;
        return to;
    case U' ': *to++ = U' '; return to;
    default: return to;
    }
}

// A first attempt's text before it is written: where the kernel's digits stand, what the
// pattern puts before and after them, and how they are grouped. The cell writer below and the
// byte writer (styled_bytes.h) write the same text from it.
struct StyledLayout {
    const wchar* text;         // the first integer digit
    const wchar* integer_end;  // the kernel's point, or the end of its digits
    std::int32_t integer;      // integer digits
    std::int32_t group;        // the conventions' group size as it stands
    std::int32_t separators;   // separators put between groups (0: not grouped)
    std::int32_t first;        // digits of the first group
    std::int32_t separator;    // cells of the thousands separator
    bool no_point;             // the locale has no decimal point: "." stands before the decimals
    std::int32_t point;        // cells of the point written
    std::int32_t length;       // cells of the whole text
    std::int32_t prefix_length, suffix_length;
};
// Where lay_out puts the texts before and after the number (apart from the layout, whose fields
// then stay in registers).
struct Affixes {
    wchar prefix[affix_cells + 4], suffix[affix_cells];  // + 4: the prefix may be read as four cells
};

// The layout of `plain` (the kernel's status-0 text, no blanks around it); false when its point
// does not stand before the last `decimals` characters or it has no integer digit.
[[gnu::always_inline]] inline bool lay_out(std::u32string_view plain, std::int32_t decimals, double value,
                                           const NumberConventions& c, Affixes& a, StyledLayout& l) {
    const wchar* text = plain.data();
    const wchar* const end = text + plain.size();
    text += text != end && *text == U'-' ? 1 : 0;  // the pattern places the sign
    const wchar* integer_end = end;
    if (decimals > 0) {
        if (end - text < decimals + 2) return false;
        integer_end = end - decimals - 1;
        if (*integer_end != U'.') return false;
    }
    if (integer_end == text || *text == U' ') return false;
    const auto integer = static_cast<std::int32_t>(integer_end - text);

    // What the pattern puts before the number and after it. Of the trimming of the whole text,
    // the blanks after the suffix go (no more: the number ends in a digit); blanks at the front
    // of the prefix may stay, as right-aligned they are blanks of the field either way (and when
    // they make the text too wide, the retry loop, which trims them, takes the value). Then the
    // blank that lines up positive amounts with parenthesised negatives; zero gets no such
    // blank. Deliberate.
    const bool negative = value < 0;
    const std::int32_t precedes = negative ? c.n_cs_precedes : c.p_cs_precedes;
    const std::int32_t spaced = negative ? c.n_sep_by_space : c.p_sep_by_space;
    const std::int32_t sign_position = negative ? c.n_sign_posn : c.p_sign_posn;
    wchar* prefix_end = a.prefix;
    wchar* suffix_end = a.suffix;
    if (sign_position == 1 && (spaced == 0 || spaced == 1) && (precedes == 0 || precedes == 1)) {
        // "-V$", "-$V", "-V $" and "-$ V", the patterns of most numbers, percentages and amounts,
        // without the walk. The sign's two cells are stored whole and the cursor moves by those
        // used, rather than a test per cell.
        const wchar(&sign)[2] = negative ? c.negative_sign : c.positive_sign;
        prefix_end[0] = sign[0] ? sign[0] : sign[1];
        prefix_end[1] = sign[1];
        prefix_end += cells_used(sign);
        if (precedes) {
            prefix_end = put_symbol(prefix_end, c);
            if (spaced) *prefix_end++ = U' ';
        } else {
            if (spaced) *suffix_end++ = U' ';
            suffix_end = put_symbol(suffix_end, c);
        }
    } else {
        const wchar* letter = pattern_for(precedes, spaced, sign_position);
        for (; *letter != U'V'; ++letter) prefix_end = put_letter(prefix_end, *letter, c, negative);
        for (++letter; *letter; ++letter) suffix_end = put_letter(suffix_end, *letter, c, negative);
    }
    while (suffix_end > a.suffix && suffix_end[-1] == U' ') --suffix_end;
    // The locale's test first: outside parenthesis locales the value's sign steers no branch here.
    if (c.n_sign_posn == 0 && value > 0) *suffix_end++ = U' ';

    // A group size of 0 means no grouping; a negative one (malformed data) the same. The first
    // group holds what is left over from whole groups. Groups of 3 divide by a multiplication
    // (exact below 2^16; integer is at most 32): a division by a variable costs more than the
    // rest of the grouping, and written as a division by 3 the compiler may merge the two into
    // that one.
    const std::int32_t group = c.grouping[0];
    const std::int32_t separators =
        group == 3 ? static_cast<std::int32_t>(static_cast<std::uint32_t>(integer - 1) * 0xAAABu >> 17)
        : group > 0 ? (integer - 1) / group
                    : 0;
    l.text = text;
    l.integer_end = integer_end;
    l.integer = integer;
    l.group = group;
    l.separators = separators;
    l.first = integer - separators * group;
    l.separator = static_cast<std::int32_t>(cells_used(c.thousands_sep));
    // A locale without a decimal point asks for no decimals; the general attempt would put "."
    // before a fraction all the same.
    l.no_point = c.decimal_point[0] == 0 && c.decimal_point[1] == 0;
    l.point = l.no_point ? 1 : static_cast<std::int32_t>(cells_used(c.decimal_point));
    l.prefix_length = static_cast<std::int32_t>(prefix_end - a.prefix);
    l.suffix_length = static_cast<std::int32_t>(suffix_end - a.suffix);
    l.length = l.prefix_length + integer + separators * l.separator + (decimals > 0 ? l.point + decimals : 0) +
               l.suffix_length;
    return true;
}

// The styled `plain` (the kernel's status-0 text, no blanks around it) right-aligned over the
// first `width` cells of `field`; false, with nothing written, when its point does not stand
// before the last `decimals` characters, it has no integer digit, or it is too wide.
[[gnu::always_inline]] inline bool style_into_field(std::u32string_view plain, std::int32_t decimals, double value,
                                                    const NumberConventions& c, wchar* field, std::int32_t width,
                                                    std::int32_t* written) {
    Affixes a;
    StyledLayout l;
    if (!lay_out(plain, decimals, value, c, a, l)) return false;
    const std::int32_t length = l.length;
    if (length > width) return false;
    if (written) *written = length;
    const wchar* const text = l.text;
    const wchar* const integer_end = l.integer_end;
    const std::int32_t integer = l.integer, group = l.group, first = l.first, separator = l.separator;
    const bool grouped = l.separators > 0;
    const bool no_point = l.no_point;
    const wchar* const prefix = a.prefix;
    const wchar* const suffix = a.suffix;
    const wchar* const suffix_end = a.suffix + l.suffix_length;

    // Blanks over the whole field, then the text over them.
    fill_blanks(field, width);
    wchar* to = field + (width - length);
    // A short prefix and a first group of 3 or 4 as four cells whatever their length (a length
    // that changes from value to value would steer a branch). The cells past them are written
    // again by what always follows: at least 4 cells of text from the prefix on, and a group of
    // 3 or 4 after the first.
    const std::int32_t prefix_length = l.prefix_length;
    if (prefix_length <= 4 && length >= 4) std::memcpy(to, prefix, 4 * sizeof(wchar));
    else put_run(to, prefix, prefix_length);
    to += prefix_length;
    if (grouped) {
        if (group == 3 || group == 4) std::memcpy(to, text, 4 * sizeof(wchar));
        else put_run(to, text, first);
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

// The kernel's text for a first attempt, without the blanks before it: false unless it
// answered status 0.
[[gnu::always_inline]] inline bool ask_plain(void* locale, double value, std::int32_t w, std::int32_t decimals,
                                             std::int32_t field_length, wchar (&cells)[kernel_cells],
                                             std::u32string_view& plain) {
    std::int32_t length = field_length;
    const status code = kernel::slot<kernel::number_format_fn>(locale, kernel::locale_number_format_slot)(
        locale, value, w, decimals, mode_fixed_point, cells, kernel_cells, &length);
    if (code != st::ok) return false;
    // Status 0: blanks, then the text up to the produced length, with no blank inside it (plain
    // fixed point). Where the blanks end is found by halving, at most five looks for 32 cells.
    const std::int32_t to = std::clamp(length, 0, w);
    std::int32_t from = 0;
    const auto halve = [&](std::int32_t step) {
        if (from + step <= to && cells[from + step - 1] == U' ') from += step;
    };
    halve(16), halve(8), halve(4), halve(2), halve(1);
    plain = {cells + from, static_cast<std::size_t>(to - from)};
    return true;
}

}  // namespace detail

inline bool first_attempt(void* locale, double value, std::int32_t w, std::int32_t decimals, std::int32_t field_length,
                          const NumberConventions& c, wchar* field, std::int32_t* written) {
    wchar cells[kernel_cells];
    std::u32string_view plain;
    return detail::ask_plain(locale, value, w, decimals, field_length, cells, plain) &&
           detail::style_into_field(plain, decimals, value, c, field, w, written);
}

}  // namespace vxlocfmt::nlnum
