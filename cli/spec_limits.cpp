#include "spec_limits.h"

#include "text_convert.h"

namespace vxcli {

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
        return UsageError(row_name(row) + ": " + what + " " + std::to_string(value) + " is outside " +
                          std::to_string(low) + " to " + std::to_string(high));
    };
    if (layout.width < static_cast<long long>(row.min_width) || layout.width > static_cast<long long>(row.max_width))
        throw outside("width", layout.width, row.min_width, row.max_width);
    if (layout.decimals < static_cast<long long>(row.min_decimals) ||
        layout.decimals > static_cast<long long>(row.max_decimals))
        throw outside("decimals", layout.decimals, row.min_decimals, row.max_decimals);
    return layout;
}

}  // namespace vxcli
