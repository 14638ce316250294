#include "template_names.h"

#include <cctype>

#include "dateread/template_table.h"

namespace vxhost {
namespace {

std::string narrow(const vxlocfmt::wchar* s) {
    std::string out;
    for (; s && *s; ++s) out += static_cast<char>(*s);
    return out;
}

// The compiled-in table: the loaded library exports the same one.
const vxlocfmt::dateread::template_row* find_template(std::string_view name) {
    for (std::size_t r = 0; r < vxlocfmt::dateread::dummy_row; ++r)
        if (narrow(vxfmt_templates[r].name) == name) return &vxfmt_templates[r];
    return nullptr;
}

bool is_width(std::string_view rest) {  // "", "w.", "w.d"
    if (rest.empty()) return true;
    const auto dot = rest.find('.');
    if (dot == std::string_view::npos || dot == 0) return false;
    for (std::size_t i = 0; i < rest.size(); ++i)
        if (i != dot && !std::isdigit(static_cast<unsigned char>(rest[i]))) return false;
    return true;
}

}  // namespace

std::optional<std::string> template_spec_name(std::string_view spec) {
    std::string upper;
    for (char c : spec) upper += static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    if (!upper.empty() && upper[0] == '@') upper.erase(0, 1);
    for (std::size_t n = upper.size(); n > 0; --n) {  // longest first: DATETIME before DATE
        const std::string name = upper.substr(0, n);
        if (find_template(name) && is_width(std::string_view(upper).substr(n))) return name;
    }
    return std::nullopt;
}

char template_kind(std::string_view name) {
    if (name == "ANYDATE") return 'M';
    const auto* row = find_template(name);
    if (!row) return 0;
    const std::string kind = narrow(row->kind);
    return kind == "DTE" ? 'D' : kind == "TME" ? 'T' : 'M';
}

}  // namespace vxhost
