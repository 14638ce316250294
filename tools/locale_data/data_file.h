/*
 * The committed locale data file: a header line saying how it was made, then one block per
 * locale. A block opens with "@ID" or "@ID BASE" and lists, as "N TEXT" lines, the properties
 * whose locale text differs from BASE's ("N" alone: empty where BASE has text). BASE is the
 * nearest shorter id in the file ("de" for "de_AT"), else root; root lists every non-empty value.
 * "=ALIAS ID" lines at the end name a locale by a second id ("=zh_CN zh_Hans_CN").
 *
 *   std::string file = data_file(ids, texts, aliases, "ICU 72.1 (CLDR 42.0, Unicode 15.0)");
 */
#pragma once

#include <array>
#include <string>
#include <vector>

#include "locale_properties.h"

namespace locale_data {

using Texts = std::array<std::string, property_count>;

// `ids` sorted, with `texts` in the same order.
std::string data_file(const std::vector<std::string>& ids, const std::vector<Texts>& texts,
                      const std::vector<std::pair<std::string, std::string>>& aliases, const std::string& source);

}  // namespace locale_data
