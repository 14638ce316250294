/*
 * Primitives over counted wide strings: search, verify, translate, strip, copy with blank
 * padding, justify and compare. Indexes are 0-based and a failed search answers -1; "blank" is
 * U+0020 unless a function says otherwise.
 *
 *   auto n = text::strip_trailing_blanks(field);                  // length without trailing blanks
 *   if (text::equal_ignoring_case(word, U"january")) month = 1;
 */
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "frame/abi.h"

namespace vxlocfmt::text {

inline constexpr wchar blank = U' ';

// Index of the first c; -1 if none (an empty text included).
std::int64_t find_char(std::u32string_view s, wchar c);
// Index of the first character other than c; -1 if all are c; 0 for an empty text (deliberate).
std::int64_t find_not_char(std::u32string_view s, wchar c);
// Index of the first occurrence of pattern; 0 for an empty pattern, even in an empty text.
std::int64_t find(std::u32string_view s, std::u32string_view pattern);
// Index of the first character not in set; -1 if all are (or s is empty); 0 for an empty set.
std::int64_t verify(std::u32string_view s, std::u32string_view set);
// Each character equal to from[k] (the first such k) becomes to[k]; to needs from.size() entries.
void translate(std::span<wchar> s, const wchar* to, std::u32string_view from);

// The length without trailing U+0020.
std::size_t strip_trailing_blanks(std::u32string_view s);
// U+0020, U+00A0, U+1680, U+2000-U+200A, U+2028, U+2029, U+202F, U+205F, U+3000.
bool is_unicode_space(wchar c);
// The length without trailing characters for which is_unicode_space holds.
std::size_t strip_trailing_spaces(std::u32string_view s);

// Copies min(src, dst) characters and blank-pads dst to its end; returns the characters copied.
std::size_t copy_padded(std::u32string_view src, std::span<wchar> dst);
// Copies min(src, n) characters to dst and writes a 0 after them (dst holds n + 1).
std::size_t copy_terminated(std::u32string_view src, wchar* dst, std::size_t n);

// Justifies the non-blank content in place: 'L'/'l' left, 'R'/'r' right, 'C'/'c' centre, any
// other letter leaves it. All blank (or empty): {0, 0}.
struct Justified {
    std::int64_t length;  // of the content
    std::int64_t offset;  // its start after the move
};
Justified justify(std::span<wchar> s, wchar alignment);

// Same length, same characters.
bool equal(std::u32string_view a, std::u32string_view b);
// Same length, same characters once both are mapped to lower case.
bool equal_ignoring_case(std::u32string_view a, std::u32string_view b);
// Blank-padded ordering: -2/2 for a real difference (first text smaller/greater once lower-cased),
// -1/1 when they differ in case only (by the first differing raw characters), 0 when identical.
// Trailing blanks of the longer text do not count.
int compare_padded_ignoring_case(std::u32string_view a, std::u32string_view b);

}  // namespace vxlocfmt::text
