/*
 * UTF-8 and wide text for the host and the CLI.
 *
 *   std::u32string wide = vxhost::from_utf8("Jänner");
 *   std::string narrow = vxhost::to_utf8(wide);
 */
#pragma once

#include <string>
#include <string_view>

namespace vxhost {

// Ill-formed input becomes U+FFFD per bad byte.
std::u32string from_utf8(std::string_view text);
// Code points that UTF-8 cannot hold (surrogates, above U+10FFFF) become U+FFFD.
std::string to_utf8(std::u32string_view text);
void append_utf8(std::string& out, char32_t c);

}  // namespace vxhost
