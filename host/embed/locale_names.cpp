#include "locale_names.h"

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <vector>

#include "embed/request.h"
#include "locale_data.h"

namespace vxhost {
namespace {

constexpr std::size_t suggestion_count = 4;

std::string folded(std::string_view text) {
    std::string out;
    for (const char c : text) out += c == '-' ? '_' : static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return out;
}

std::size_t edit_distance(const std::string& a, const std::string& b) {
    std::vector<std::size_t> row(b.size() + 1);
    for (std::size_t j = 0; j <= b.size(); ++j) row[j] = j;
    for (std::size_t i = 1; i <= a.size(); ++i) {
        std::size_t diagonal = row[0];
        row[0] = i;
        for (std::size_t j = 1; j <= b.size(); ++j) {
            const std::size_t above = row[j];
            row[j] = std::min({row[j] + 1, row[j - 1] + 1, diagonal + (a[i - 1] == b[j - 1] ? 0 : 1)});
            diagonal = above;
        }
    }
    return row[b.size()];
}

std::string nearest_names(std::string_view name) {
    const std::string wanted = folded(environment_locale_spelling(name));
    std::vector<std::pair<std::size_t, std::string>> ranked;
    for (const std::string& known : locale_names())
        ranked.emplace_back(edit_distance(wanted, folded(known)), known);
    const auto last = ranked.begin() + static_cast<long>(std::min(suggestion_count, ranked.size()));
    std::partial_sort(ranked.begin(), last, ranked.end());
    std::string list;
    for (auto it = ranked.begin(); it != last; ++it) list += (list.empty() ? "" : ", ") + it->second;
    return list;
}

}  // namespace

std::string resolve_locale(std::string_view name) {
    std::string id = canonical_locale(environment_locale_spelling(name));
    if (id.empty())
        throw RequestError("unknown locale " + std::string(name) + " (nearest: " + nearest_names(name) +
                         "; see vxlocfmt list locales)");
    return id;
}

std::string environment_locale() {
    for (const char* variable : {"LC_ALL", "LANG"}) {
        const char* value = std::getenv(variable);
        if (!value || !*value) continue;
        const std::string_view language = std::string_view(value).substr(0, std::string_view(value).find('.'));
        if (language == "C" || language == "POSIX") break;  // no locale chosen: the documented default
        std::string id = canonical_locale(environment_locale_spelling(value));
        if (!id.empty()) return id;
        std::fprintf(stderr, "vxlocfmt: $%s names a locale the host does not know (%s); using en_US\n", variable,
                     value);
        break;
    }
    return "en_US";
}

}  // namespace vxhost
