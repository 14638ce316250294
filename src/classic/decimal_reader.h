/*
 * The standard number reader: a decimal number in wide characters to the double nearest to it.
 * It is what the host's numeric reader answers with (host/numeric_reader.cpp), and what the
 * classic informats fall back on when the kernel offers no reader. Header-only so that both
 * sides build the very same rules (docs/reading.md lists them).
 *
 *   double v;
 *   status s = classic::read_decimal(U" -1,234.5e1 ", 12, &v);   // s == 0, v == -12345
 */
#pragma once

#include <charconv>
#include <cstddef>
#include <cstdint>

#include "frame/abi.h"

namespace vxlocfmt::classic {

// The reader's one refusal: an empty, blank or unreadable text, or a number beyond the double
// range. Stable: callers and docs rely on it.
inline constexpr status reader_refused = 1;

// Blanks skipped around the number and after its sign. The no-break spaces are there so that
// text copied from locale output (grouping or sign separators) reads back.
constexpr bool is_reader_blank(wchar c) { return c == U' ' || c == U'\t' || c == U'\u00A0' || c == U'\u202F'; }

namespace detail {

// Significant digits kept exactly. A double's halfway points need at most 767 significant digits
// to be decided; beyond that a sticky 1 stands for any non-zero digits dropped.
inline constexpr int kept_digits = 800;
// A decimal exponent past this only makes the number overflow or underflow: clamped to it.
inline constexpr long exponent_clamp = 100000;
// Digit count plus exponent beyond these: certainly above DBL_MAX, or certainly rounds to 0.
inline constexpr long overflow_magnitude = 310;
inline constexpr long underflow_magnitude = -330;
// Room for the kept digits, a sticky digit, 'e', a sign and the exponent.
inline constexpr std::size_t normal_form_capacity = kept_digits + 1 + 1 + 1 + 12;

constexpr bool is_digit(wchar c) { return c >= U'0' && c <= U'9'; }

// The fast path (Clinger's): up to 15 significant digits are an integer below 2^53, and 10^0 to
// 10^22 are exact doubles, so one multiplication or division rounds once, correctly.
inline constexpr int fast_digits = 15;
inline constexpr long fast_exponent = 22;
inline constexpr double exact_powers[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                          1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                          1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};

// A text without its blanks at both ends and its sign ("+" or "-", and the blanks after it).
struct Unsigned {
    const wchar* begin;
    const wchar* end;
    bool negative;
};
// False when only blanks (or nothing) are given.
inline bool take_blanks_and_sign(const wchar* text, std::int32_t length, Unsigned& u) {
    if (!text || length <= 0) return false;
    const wchar* p = text;
    const wchar* end = text + length;
    while (p < end && is_reader_blank(*p)) ++p;
    while (end > p && is_reader_blank(end[-1])) --end;
    if (p == end) return false;
    bool negative = false;
    if (*p == U'+' || *p == U'-') {
        negative = *p == U'-';
        ++p;
        while (p < end && is_reader_blank(*p)) ++p;
    }
    u = {p, end, negative};
    return true;
}

// The general route after the sign, every rule.
inline status read_unsigned_general(const Unsigned& u, double* out) {
    const wchar* const start = u.begin;
    const wchar* p = u.begin;
    const wchar* const end = u.end;
    const bool negative = u.negative;

    char digits[normal_form_capacity];
    int count = 0;        // significant digits kept
    long exponent = 0;    // value = digits x 10^exponent
    bool sticky = false;  // a non-zero digit was dropped
    bool any_digit = false;
    std::uint64_t mantissa = 0;  // the first fast_digits significant digits as an integer
    const auto take = [&](wchar c, bool fraction) {
        any_digit = true;
        if (count == 0 && c == U'0') {
            if (fraction) --exponent;
            return;
        }
        if (count < kept_digits) {
            if (count < fast_digits) mantissa = mantissa * 10 + static_cast<std::uint64_t>(c - U'0');
            digits[count++] = static_cast<char>(c);
            if (fraction) --exponent;
        } else {
            if (!fraction) ++exponent;
            sticky |= c != U'0';
        }
    };
    // Whole part: "," only between two digits; so are the no-break spaces, the group separators
    // of many locales, which a user may type where the locale writes the other one.
    while (p < end) {
        if (detail::is_digit(*p)) {
            take(*p++, false);
        } else if ((*p == U',' || *p == U'\u00A0' || *p == U'\u202F') && p > start && detail::is_digit(p[-1]) &&
                   any_digit && p + 1 < end && detail::is_digit(p[1])) {
            ++p;
        } else {
            break;
        }
    }
    if (p < end && *p == U'.') {
        ++p;
        while (p < end && detail::is_digit(*p)) take(*p++, true);
    }
    if (!any_digit) return reader_refused;
    if (p < end && (*p == U'E' || *p == U'e')) {
        ++p;
        bool minus = false;
        if (p < end && (*p == U'+' || *p == U'-')) minus = *p++ == U'-';
        if (p == end || !detail::is_digit(*p)) return reader_refused;
        long e = 0;
        while (p < end && detail::is_digit(*p)) {
            if (e < exponent_clamp) e = e * 10 + static_cast<long>(*p - U'0');
            ++p;
        }
        exponent += minus ? -e : e;
    }
    if (p != end) return reader_refused;

    double value = 0;
    if (count > 0 && count <= fast_digits && exponent >= -fast_exponent && exponent <= fast_exponent) {
        const double m = static_cast<double>(mantissa);
        value = exponent < 0 ? m / exact_powers[-exponent] : m * exact_powers[exponent];
    } else if (count > 0) {
        const long magnitude = count + exponent;  // the value lies below 10^magnitude
        if (magnitude > overflow_magnitude) return reader_refused;
        if (magnitude >= underflow_magnitude) {
            if (sticky) {
                digits[count++] = '1';
                --exponent;
            }
            char* q = digits + count;
            *q++ = 'e';
            q = std::to_chars(q, digits + sizeof digits, exponent).ptr;
            const auto [stop, error] = std::from_chars(digits, q, value);
            (void)stop;
            if (error == std::errc::result_out_of_range) {
                if (magnitude > 0) return reader_refused;
                value = 0;
            } else if (error != std::errc()) {
                return reader_refused;
            }
        }
    }
    *out = negative ? -value : value;
    return 0;
}

// The everyday shape after the sign: digits, at most one "." and digits, nothing else, 15 digits
// at most. Their integer is below 2^53 and 10^(fraction digits) is exact, so one division rounds
// once, correctly: what the general route's fast branch computes for the same text. False: not
// this shape, nothing written.
inline bool read_plain_decimal(const wchar* p, const wchar* end, bool negative, double* out) {
    if (end - p > fast_digits + 1) return false;
    std::uint64_t mantissa = 0;
    const wchar* q = p;
    for (; q < end && is_digit(*q); ++q) mantissa = mantissa * 10 + static_cast<std::uint64_t>(*q - U'0');
    const long whole = q - p;
    long fraction = 0;
    if (q < end && *q == U'.') {
        const wchar* first = ++q;
        for (; q < end && is_digit(*q); ++q) mantissa = mantissa * 10 + static_cast<std::uint64_t>(*q - U'0');
        fraction = q - first;
    }
    if (q != end || whole + fraction == 0 || whole + fraction > fast_digits) return false;
    const double value = static_cast<double>(mantissa) / exact_powers[fraction];
    *out = negative ? -value : value;
    return true;
}

}  // namespace detail

// Reads `length` characters of `text`: blanks, an optional sign ("+" or "-") and blanks, digits
// with optional "," (or U+00A0, U+202F) grouping between digits of the whole part, an optional "." and fraction, an
// optional exponent ("E" or "e", optional sign, digits), blanks. At least one digit is needed.
// Writes the nearest double (correctly rounded; underflow gives a signed 0) and answers 0, or
// answers reader_refused and leaves *out as it was.
inline status read_decimal(const wchar* text, std::int32_t length, double* out) {
    detail::Unsigned u;
    if (!detail::take_blanks_and_sign(text, length, u)) return reader_refused;
    if (detail::read_plain_decimal(u.begin, u.end, u.negative, out)) return 0;
    return detail::read_unsigned_general(u, out);
}

// The general route of read_decimal alone, for the test that holds the two to the same answers.
inline status read_decimal_general(const wchar* text, std::int32_t length, double* out) {
    detail::Unsigned u;
    if (!detail::take_blanks_and_sign(text, length, u)) return reader_refused;
    return detail::read_unsigned_general(u, out);
}

}  // namespace vxlocfmt::classic
