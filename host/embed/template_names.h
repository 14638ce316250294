/*
 * The any-date reader's informat names as a SPEC names them. Template names hold digits
 * (B8601DA, E8601DT), so the longest known name is taken whole before a width is looked for.
 *
 *   template_spec_name("B8601DA10.")   // "B8601DA"
 *   template_spec_name("NLDATE20.")    // nullopt
 */
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace vxhost {

// The template name a SPEC starts with (upper-cased, an '@' dropped), followed by nothing or a
// width; nullopt when it names no template.
std::optional<std::string> template_spec_name(std::string_view spec);

// What the template rows of `name` read: 'D' dates, 'T' times, 'M' datetimes ("ANYDATE": 'M').
char template_kind(std::string_view name);

}  // namespace vxhost
