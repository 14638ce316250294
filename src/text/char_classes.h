/*
 * Character classes of single code points: digit, lower, upper, alpha, alnum, print, hex digit,
 * punctuation, graphic, control and blank. Answered from the library's Unicode 9.0.0 tables when
 * the kernel has no national-language service, through that service when it has one.
 *
 *   if (text::is_digit(c)) value = value * 10 + digit;
 *   while (n > 0 && text::is_space(s[n - 1])) --n;
 */
#pragma once

#include <cstdint>
#include <span>

#include "frame/abi.h"
#include "text/unicode_tables.h"

namespace vxlocfmt::text {

enum class CharClass { digit, lower, upper, alpha, alnum, print, xdigit, punct, graph, cntrl };

// Both paths: the range tables without a service; with one, ansi_ccl below 128, else the service.
bool is_class(CharClass k, wchar c);
// The table path alone, whatever the kernel offers.
bool table_is_class(CharClass k, wchar c);
// The kernel class mask sent to the service for a class.
std::uint32_t class_mask_of(CharClass k);
// The range table of a class (alnum has none: it is alpha or digit).
std::span<const CodeRange> ranges_of(CharClass k);

inline bool is_digit(wchar c) { return is_class(CharClass::digit, c); }
inline bool is_lower(wchar c) { return is_class(CharClass::lower, c); }
inline bool is_upper(wchar c) { return is_class(CharClass::upper, c); }
inline bool is_alpha(wchar c) { return is_class(CharClass::alpha, c); }
inline bool is_alnum(wchar c) { return is_class(CharClass::alnum, c); }
inline bool is_print(wchar c) { return is_class(CharClass::print, c); }
inline bool is_xdigit(wchar c) { return is_class(CharClass::xdigit, c); }
inline bool is_punct(wchar c) { return is_class(CharClass::punct, c); }
inline bool is_graph(wchar c) { return is_class(CharClass::graph, c); }
inline bool is_cntrl(wchar c) { return is_class(CharClass::cntrl, c); }

// Blanks (tab to carriage return, space, U+0085, U+00A0, U+1680, U+2000-U+200A, U+2028,
// U+2029, U+202F, U+205F, U+3000): always from the table, never from the service.
bool is_space(wchar c);

}  // namespace vxlocfmt::text
