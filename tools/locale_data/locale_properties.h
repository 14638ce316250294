/*
 * The 189 properties of one locale as ICU gives them: ids, patterns translated to the
 * %-directive language, names, AM/PM, separators, and the POSIX-style monetary and numeric
 * conventions. An empty string is an empty property.
 *
 *   Properties p = locale_properties("de_DE");
 *   // p[71] == u"Januar", p[28] == u"%#d. %B %Y", p[155] == u"EUR"
 */
#pragma once

#include <array>
#include <string>
#include <utility>
#include <vector>

#include <unicode/unistr.h>

namespace locale_data {

inline constexpr std::size_t property_count = 189;
using Properties = std::array<icu::UnicodeString, property_count>;

// Every locale the data covers: ICU's available locales, en_US_POSIX and root, sorted.
std::vector<std::string> all_locales();

// Ids without their script ("zh_CN") for the locales whose script is the likely one
// ("zh_Hans_CN"), where no locale has the short id; sorted.
std::vector<std::pair<std::string, std::string>> locale_aliases(const std::vector<std::string>& ids);

// The properties of a locale id as all_locales() spells it; properties with text beyond 160
// bytes in the locale encoding are cut later, by the writer.
Properties locale_properties(const std::string& id);

}  // namespace locale_data
