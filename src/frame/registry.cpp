// The table `funcinfo` itself, built at compile time from registry_rows.inc.
#include "frame/registry.h"

#include <algorithm>

extern "C" {
#define VX_IN(name, fn, minw, maxw, defw, maxd, defd) vxlocfmt::status fn(vxlocfmt::FmtCall*, void*);
#define VX_FMT(name, fn, minw, maxw, defw, maxd, defd, extra, align) \
    vxlocfmt::status fn(vxlocfmt::FmtCall*, void*);                  \
    vxlocfmt::status fn##_b(vxlocfmt::FmtCall*, vxlocfmt::FmtCall*, void*);
#include "frame/registry_rows.inc"
}

namespace vxlocfmt::registry {
namespace {

template <std::size_t N>
constexpr FuncInfo make_row(const char (&name)[N], std::uint32_t kind, format_fn function,
                            std::uint32_t min_width, std::uint32_t max_width,
                            std::uint32_t default_width, std::uint32_t max_decimals,
                            std::uint32_t default_decimals, byte_format_fn byte_function,
                            std::uint32_t extra) {
    static_assert(N - 1 <= registry_name_length);
    FuncInfo row{};
    for (std::size_t i = 0; i < registry_name_length; ++i)
        row.name[i] = i < N - 1 ? static_cast<wchar>(name[i]) : U' ';
    row.kind = kind;
    row.style = kind == row_kind_format ? row_style_format : row_style_informat;
    row.function = function;
    row.min_width = min_width;
    row.max_width = max_width;
    row.default_width = default_width;
    row.min_decimals = 0;
    row.max_decimals = max_decimals;
    row.default_decimals = default_decimals;
    row.reserved = nullptr;
    row.byte_function = byte_function;
    row.extra_width = extra;
    row.zero = 0;
    return row;
}

}  // namespace
}  // namespace vxlocfmt::registry

// Widths of the end row repeat the last real row's on purpose; the end is the null function.
VX_EXPORT const vxlocfmt::FuncInfo funcinfo[vxlocfmt::registry_rows + 1] = {
#define VX_IN(name, fn, minw, maxw, defw, maxd, defd) \
    vxlocfmt::registry::make_row(name, vxlocfmt::row_kind_informat, fn, minw, maxw, defw, maxd, defd, nullptr, 0),
#define VX_FMT(name, fn, minw, maxw, defw, maxd, defd, extra, align) \
    vxlocfmt::registry::make_row(name, vxlocfmt::row_kind_format, fn, minw, maxw, defw, maxd, defd, fn##_b, extra),
#include "frame/registry_rows.inc"
    vxlocfmt::registry::make_row("", vxlocfmt::row_kind_format, nullptr, 2, 8, 7, 0, 0, nullptr, 0),
};

namespace vxlocfmt::registry {

const FuncInfo* table() { return funcinfo; }

const FuncInfo* find(std::u32string_view name) {
    while (!name.empty() && name.back() == U' ') name.remove_suffix(1);
    if (name.empty() || name.size() > registry_name_length) return nullptr;
    for (const FuncInfo* row = funcinfo; row->function; ++row) {
        if (std::equal(name.begin(), name.end(), row->name) &&
            std::all_of(row->name + name.size(), row->name + registry_name_length,
                        [](wchar c) { return c == U' '; }))
            return row;
    }
    return nullptr;
}

}  // namespace vxlocfmt::registry
