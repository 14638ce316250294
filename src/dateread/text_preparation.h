/*
 * Preparing a text for the template rows: at most `limit` characters are copied, blanks after
 * a blank or a separator (" -/:") are squeezed out in two passes with the text left-justified
 * around them, trailing blanks are dropped, and a digit-test copy decides whether the text counts
 * as all-digit (which fixes the widths of its numeric fields). The names YYMMDD, DDMMYY and
 * MMDDYY put a "0" before an all-digit text of odd length below 8.
 *
 *   prepared_text t; prepare_text(U"  12 -  03 - 2020", 64, false, t);   // "12 -03 -2020"
 *   bool digits = is_all_digit(U"20200304T101500");                       // true
 */
#pragma once

#include <cstddef>
#include <string_view>

#include "frame/abi.h"

namespace vxlocfmt::dateread {

// ---- Interface ----------------------------------------------------------------------------

inline constexpr std::size_t named_text_limit = 64;   // dtm_informat's copy
inline constexpr std::size_t anydate_text_limit = 200; // the ANYDATE driver's copy

struct prepared_text {
    // Longest: the driver's 200 characters, or 64 with a leading "0" put in front.
    wchar buffer[anydate_text_limit + 1];
    const wchar* data = buffer;  // the caller's own text when preparing changes nothing in it
    std::size_t length = 0;
    bool all_digit = false;
    std::u32string_view view() const { return {data, length}; }
};

// The digit-test copy's verdict: digits only once a "T" at position 9 (1-based, text of 10 or
// more), a final "Z" and, for 11 or 20 characters, a "+" or "-" five places before the end are
// taken for "0", and so is the point of a basic fraction (place 7 or 16, a digit after it).
// Empty text is not all-digit.
bool is_all_digit(std::u32string_view text);

// A blank after one of these is squeezed out.
constexpr bool is_squeeze_trigger(wchar c) { return c == U' ' || c == U'-' || c == U'/' || c == U':'; }

// Whether the passes or the trim would change the text: a blank at either end, or a blank after
// a blank or a separator. Without one, the first pass deletes nothing and the second sees the
// same text.
bool needs_squeeze(std::u32string_view text);

// Copies at most `limit` characters of `text`, squeezes and trims them, tests for digits and,
// when `odd_zero` is set, puts the leading "0" in front of an odd all-digit text below 8.
void prepare_text(std::u32string_view text, std::size_t limit, bool odd_zero, prepared_text& out);

}  // namespace vxlocfmt::dateread
