/*
 * The kernel's locale encoding (id 62): printable ASCII as it stands, every other character as
 * "<U" + four upper-case hexadecimal digits + ">", a character beyond U+FFFF as "?"; "<" and a
 * blank at either end of the value are escaped too. A value is
 * cut to 160 bytes at a character boundary, and a pattern also at a directive boundary.
 *
 *   std::string text = locale_text(u"März", Cut::characters);   // "M<U00E4>rz"
 */
#pragma once

#include <cstddef>
#include <string>

#include <unicode/unistr.h>

namespace locale_data {

inline constexpr std::size_t value_bytes = 160;

enum class Cut { characters, directives };

struct Encoded {
    std::string text;
    bool cut;  // the value did not fit in 160 bytes
};

Encoded locale_text(const icu::UnicodeString& value, Cut cut);

}  // namespace locale_data
