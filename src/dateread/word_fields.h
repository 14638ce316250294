/*
 * The word directives of a template: month and weekday names, the roman quarter, the AM/PM
 * mark, a zone name, a zone sign and the separators "%c" and "%C". A word is the run of
 * characters up to a blank, a digit, "," or "."; the letter directives take letters only, the
 * mark directives ("%c", "%C", "%G") non-letters only (a leading blank included for "%c").
 *
 *   std::size_t t = 0; read_slots s; bool zone = false;
 *   read_word_field(U'b', U"MARCH 4", t, s, zone);   // month 3, t == 5
 */
#pragma once

#include <string_view>

#include "dateread/row_reader.h"

namespace vxlocfmt::dateread {

constexpr bool is_ascii_letter(wchar c) { return (c >= U'A' && c <= U'Z') || (c >= U'a' && c <= U'z'); }
// Letters beyond ASCII (accented month names and the like) belong to a letter word too; they
// simply match no name.
constexpr bool is_letter(wchar c) { return is_ascii_letter(c) || (c >= 0xC0 && c != 0xD7 && c != 0xF7); }
// A character a mark word ("%c", "%C", "%G") takes.
constexpr bool is_mark(wchar c) {
    return !is_letter(c) && !(c >= U'0' && c <= U'9') && c != U',' && c != U'.';
}

// Reads the word of directive `d` at text[pos] into the slots; false when the word does not
// fit the directive or `d` is not a word directive (an unknown directive fails the row).
bool read_word_field(wchar d, std::u32string_view text, std::size_t& pos, read_slots& slots, bool& in_zone);

}  // namespace vxlocfmt::dateread
