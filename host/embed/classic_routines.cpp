#include "classic_routines.h"

#include <algorithm>
#include <array>
#include <map>

#include "library.h"

namespace vxhost {

std::span<const std::span<const ClassicRoutine>> classic_tables() {
    static const std::array tables{classic_format_table};
    return tables;
}

const vxlocfmt::FuncInfo* classic_row(const Library& library, const std::string& name, std::uint32_t kind) {
    static std::map<std::string, vxlocfmt::FuncInfo> rows;  // one made row per routine, kept
    for (std::span<const ClassicRoutine> table : classic_tables())
        for (const ClassicRoutine& routine : table) {
            if (name != routine.name || kind != routine.kind) continue;
            vxlocfmt::FuncInfo& row = rows[name];
            std::fill(std::begin(row.name), std::end(row.name), U' ');
            std::copy(name.begin(), name.end(), row.name);
            row.kind = kind;
            row.style = kind == vxlocfmt::row_kind_format ? vxlocfmt::row_style_format : vxlocfmt::row_style_informat;
            row.function = reinterpret_cast<vxlocfmt::format_fn>(library.symbol(routine.symbol));
            row.min_width = routine.min_width;
            row.max_width = routine.max_width;
            row.default_width = routine.default_width;
            row.max_decimals = routine.max_decimals;
            row.default_decimals = routine.default_decimals;
            return row.function ? &row : nullptr;
        }
    return nullptr;
}

}  // namespace vxhost
