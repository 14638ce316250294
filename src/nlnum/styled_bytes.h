/*
 * The renderer's everyday attempt written straight in the session's bytes: the text the wide
 * first attempt styles (styled_field.h), right-aligned by its size in bytes over the first
 * `width` bytes of a byte field, blanks (0x20) before it. That is the byte wrapper's conversion
 * of what the renderer writes in byte mode when its text fits: the blanks, then the text's bytes,
 * `width` in all. Declined, as the wide attempt declines, with the field's bytes then
 * meaningless, when the text's bytes do not fit the width or a cell of it has no bytes here.
 *
 *   const SessionForm form{.utf8 = true, .bound = 0x80};
 *   if (first_attempt_bytes(locale, 1234.5, 12, 2, 256, conventions, form, bytes)) ...
 *   // bytes: "1.234,50 \xe2\x82\xac", 12 bytes (de_DE money; the kernel answered "     1234.50")
 */
#pragma once

#include <cstdint>
#include <cstring>
#include <string_view>

#include "frame/abi.h"
#include "frame/session_bytes.h"
#include "locale/property_table.h"
#include "nlnum/styled_field.h"

namespace vxlocfmt::nlnum {

// ---- Interface ----------------------------------------------------------------------------

// How a cell becomes bytes in the session: UTF-8 (the transcoder promises it), or one byte a
// cell below the identity bound, and no bytes here at all for a cell at or above it.
struct SessionForm {
    bool utf8;
    wchar bound;  // a power of two above the blank
};

// first_attempt (styled_field.h) into `width` (1 to 32) bytes at `bytes`, which has room for
// them: the kernel asked alike, the same text. False when the kernel's status is not 0, its text
// is not laid out as status 0 promises, the text's bytes are more than the width, or a cell has
// no bytes in the form (nothing is written past the width either way).
[[gnu::always_inline]] inline bool first_attempt_bytes(void* locale, double value, std::int32_t width,
                                                       std::int32_t decimals, std::int32_t field_length,
                                                       const NumberConventions& conventions, SessionForm form,
                                                       unsigned char* bytes);

// ---- Implementation -----------------------------------------------------------------------

namespace detail {

// Bytes of the texts around the number: a cell of UTF-8 takes up to 4.
inline constexpr std::size_t affix_bytes = 4 * (affix_cells + 4);

// `count` cells into their UTF-8 bytes at `to` (room for 4 a cell): their length, or -1 when a
// code point is no character UTF-8 holds. Out of line: the text below the bound is the usual one.
[[gnu::noinline]] inline std::int32_t encode_utf8(const wchar* from, std::int32_t count, unsigned char* to) {
    std::int32_t produced = 0;
    return session_bytes::utf8<true>(from, count, to, 4 * count, &produced) == st::ok ? produced : -1;
}

// `count` cells into their bytes at `to` (room for 4 a cell); their length, or -1 when a cell
// has none in the form.
[[gnu::always_inline]] inline std::int32_t encode_cells(const wchar* from, std::int32_t count, unsigned char* to,
                                                        SessionForm form) {
    // A byte a cell when every cell is below the bound, ASCII in UTF-8: the usual signs and points.
    wchar seen = 0;
    for (std::int32_t i = 0; i < count; ++i) {
        seen |= from[i];
        to[i] = static_cast<unsigned char>(from[i]);
    }
    if (seen < (form.utf8 ? 0x80 : form.bound)) return count;
    return form.utf8 ? encode_utf8(from, count, to) : -1;
}

// The used cells of a two-cell field (a separator, a point) as bytes; their length, or -1.
[[gnu::always_inline]] inline std::int32_t encode_pair(const wchar (&field)[2], unsigned char* to, SessionForm form) {
    const wchar cells[2] = {field[0] ? field[0] : field[1], field[1]};
    return encode_cells(cells, static_cast<std::int32_t>(cells_used(field)), to, form);
}

// n bytes (0 to 8, more by a call): the short runs as fixed moves.
[[gnu::always_inline]] inline void put_bytes(unsigned char* to, const unsigned char* from, std::int32_t n) {
    switch (n) {
    case 0: break;
    case 1: *to = *from; break;
    case 2: std::memcpy(to, from, 2); break;
    case 3: std::memcpy(to, from, 3); break;
    case 4: std::memcpy(to, from, 4); break;
    default: std::memcpy(to, from, static_cast<std::size_t>(n)); break;
    }
}

// n digit cells narrowed to bytes; what they hold is or-ed into `seen` (the caller tests it).
[[gnu::always_inline]] inline void put_digits(unsigned char* to, const wchar* from, std::int32_t n, wchar& seen) {
    for (std::int32_t i = 0; i < n; ++i) {
        seen |= from[i];
        to[i] = static_cast<unsigned char>(from[i]);
    }
}

// The styled `plain` right-aligned over the first `width` bytes of `field`, as style_into_field
// writes it in cells; false when it declines, or when the text's bytes are more than the width
// or a cell has none.
[[gnu::always_inline]] inline bool style_into_bytes(std::u32string_view plain, std::int32_t decimals, double value,
                                                    const NumberConventions& c, SessionForm form, unsigned char* field,
                                                    std::int32_t width) {
    Affixes a;
    StyledLayout l;
    if (!lay_out(plain, decimals, value, c, a, l) || l.length > width) return false;
    unsigned char prefix[affix_bytes], suffix[affix_bytes], separator[8], point[8];
    const std::int32_t prefix_bytes = encode_cells(a.prefix, l.prefix_length, prefix, form);
    const std::int32_t suffix_bytes = encode_cells(a.suffix, l.suffix_length, suffix, form);
    const std::int32_t separator_bytes = l.separators > 0 ? encode_pair(c.thousands_sep, separator, form) : 0;
    std::int32_t point_bytes = 0;
    if (decimals > 0) {
        point[0] = '.';  // the locale has no point: "." all the same (see lay_out)
        point_bytes = l.no_point ? 1 : encode_pair(c.decimal_point, point, form);
    }
    if ((prefix_bytes | suffix_bytes | separator_bytes | point_bytes) < 0) return false;
    // The digits take a byte each (checked as they are written).
    const std::int32_t length = prefix_bytes + l.integer + l.separators * separator_bytes +
                                (decimals > 0 ? point_bytes + decimals : 0) + suffix_bytes;
    if (length > width) return false;

    session_bytes::blank_bytes(field, width - length);
    unsigned char* to = field + (width - length);
    put_bytes(to, prefix, prefix_bytes);
    to += prefix_bytes;
    wchar seen = 0;
    const wchar* at = l.text;
    put_digits(to, at, l.first, seen);  // all the digits when not grouped
    to += l.first, at += l.first;
    if (separator_bytes == 1 && l.group == 3) {
        // The usual grouping: one separator byte, then three digits.
        for (; at < l.integer_end; at += 3, to += 4) {
            to[0] = separator[0];
            put_digits(to + 1, at, 3, seen);
        }
    } else {
        for (; at < l.integer_end; at += l.group) {
            put_bytes(to, separator, separator_bytes);
            to += separator_bytes;
            put_digits(to, at, l.group, seen);
            to += l.group;
        }
    }
    if (decimals > 0) {
        put_bytes(to, point, point_bytes);
        to += point_bytes;
        put_digits(to, l.integer_end + 1, decimals, seen);
        to += decimals;
    }
    put_bytes(to, suffix, suffix_bytes);
    return seen < (form.utf8 ? 0x80 : form.bound);
}

}  // namespace detail

inline bool first_attempt_bytes(void* locale, double value, std::int32_t width, std::int32_t decimals,
                                std::int32_t field_length, const NumberConventions& c, SessionForm form,
                                unsigned char* bytes) {
    wchar cells[kernel_cells];
    std::u32string_view plain;
    return detail::ask_plain(locale, value, width, decimals, field_length, cells, plain) &&
           detail::style_into_bytes(plain, decimals, value, c, form, bytes, width);
}

}  // namespace vxlocfmt::nlnum
