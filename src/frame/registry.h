/*
 * The registry `funcinfo`: one row per format and informat, in the host's order, then an end row
 * whose function is null. Formats look up their own limits here at compile time.
 *
 *   constexpr auto limits = registry::limits_of(U"NLDATE");   // {max width 200, max decimals 0}
 *   const FuncInfo* row = registry::find(U"@NLDATE");
 */
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "frame/abi.h"

namespace vxlocfmt::registry {

struct RowSpec {
    std::u32string_view name;
    std::uint32_t kind;
    std::uint32_t min_width, max_width, default_width, max_decimals, default_decimals, extra;
    char alignment;  // byte variant: 'l' or 'r'; 0 on informats
};

inline constexpr std::array row_specs = {
#define VX_IN(name, fn, minw, maxw, defw, maxd, defd) \
    RowSpec{U"" name, row_kind_informat, minw, maxw, defw, maxd, defd, 0, 0},
#define VX_FMT(name, fn, minw, maxw, defw, maxd, defd, extra, align) \
    RowSpec{U"" name, row_kind_format, minw, maxw, defw, maxd, defd, extra, align},
#include "frame/registry_rows.inc"
};
static_assert(row_specs.size() == registry_rows);

struct Limits {
    std::int32_t max_width;
    std::int32_t max_decimals;
};

// The width and decimals limits of a row, by name (informats with their '@').
consteval Limits limits_of(std::u32string_view name) {
    for (const auto& row : row_specs)
        if (row.name == name)
            return {static_cast<std::int32_t>(row.max_width), static_cast<std::int32_t>(row.max_decimals)};
    throw "no such registry row";  // a compile-time error: consteval cannot throw at run time
}

// The exported table, `registry_rows` rows and the end row.
const FuncInfo* table();
// The row of a name; an empty or all-blank name finds nothing.
const FuncInfo* find(std::u32string_view name);

}  // namespace vxlocfmt::registry
