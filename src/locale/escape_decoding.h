/*
 * One property from the kernel's locale text: converted to wide characters by the instance's
 * primary transcoder, "<Uxxxx>" escapes decoded, U+00A4 turned into the currency placeholder
 * (wide character 1), and characters the session encoding cannot hold replaced by a blank (for
 * U+00A0), a character reference "&#digits;", or "*".
 *
 *   decode_property(raw, raw_length, cache.properties[n], instance.primary_transcoder,
 *                   call.session_transcoder);
 */
#pragma once

#include <cstddef>

#include "locale/property_table.h"

namespace vxlocfmt::locale {

// The wide character that stands for the currency symbol in locale texts.
inline constexpr wchar currency_placeholder = 1;

// Fills the value and length of `out` from `length` raw bytes (at most 160 are read). A null
// session transcoder stands for a wide session, which holds every character.
void decode_property(const unsigned char* raw, std::size_t length, Property& out, void* primary_transcoder,
                     void* session_transcoder);

}  // namespace vxlocfmt::locale
