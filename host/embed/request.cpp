#include "request.h"

#include <cctype>
#include <charconv>

#include "text_convert.h"

namespace vxhost {

Spec parse_spec(std::string_view spec_text) {
    const std::string text(spec_text);
    Spec spec;
    std::size_t i = 0;
    if (i < text.size() && text[i] == '@') spec.name += text[i++];
    while (i < text.size() && std::isalpha(static_cast<unsigned char>(text[i])))
        spec.name += static_cast<char>(std::toupper(static_cast<unsigned char>(text[i++])));
    const std::string rest = text.substr(i);
    if (spec.name.empty() || spec.name == "@") throw RequestError("bad SPEC '" + text + "': no name");
    if (rest.empty()) return spec;
    const auto dot = rest.find('.');
    if (dot == std::string::npos) throw RequestError("bad SPEC '" + text + "': write NAMEw. or NAMEw.d");
    auto number = [&](const std::string& digits) {
        int value = 0;
        const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
        if (error != std::errc() || end != digits.data() + digits.size())
            throw RequestError("bad SPEC '" + text + "': '" + digits + "' is not a number");
        return value;
    };
    if (dot > 0) spec.width = number(rest.substr(0, dot));
    if (dot + 1 < rest.size()) spec.decimals = number(rest.substr(dot + 1));
    return spec;
}

std::string row_name(const vxlocfmt::FuncInfo& row) {
    std::u32string_view name(row.name, vxlocfmt::registry_name_length);
    while (!name.empty() && name.back() == U' ') name.remove_suffix(1);
    return vxhost::to_utf8(name);
}

Layout resolve_layout(const Spec& spec, const vxlocfmt::FuncInfo& row, bool unchecked) {
    const Layout layout{spec.width.value_or(static_cast<int>(row.default_width)),
                        spec.decimals.value_or(spec.width ? 0 : static_cast<int>(row.default_decimals))};
    if (unchecked) return layout;
    auto outside = [&](const char* what, int value, std::uint32_t low, std::uint32_t high) {
        return RequestError(row_name(row) + ": " + what + " " + std::to_string(value) + " is outside " +
                          std::to_string(low) + " to " + std::to_string(high));
    };
    if (layout.width < static_cast<long long>(row.min_width) || layout.width > static_cast<long long>(row.max_width))
        throw outside("width", layout.width, row.min_width, row.max_width);
    if (layout.decimals < static_cast<long long>(row.min_decimals) ||
        layout.decimals > static_cast<long long>(row.max_decimals))
        throw outside("decimals", layout.decimals, row.min_decimals, row.max_decimals);
    return layout;
}

}  // namespace vxhost
