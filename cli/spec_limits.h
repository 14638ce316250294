/*
 * A SPEC's width and decimals against its registry row: the row's defaults fill what SPEC leaves
 * out, and values outside the row's limits are a usage error naming them, before any call.
 *
 *   const Layout layout = resolve_layout(parse_spec("NLDATE500."), row);
 *   // throws UsageError("NLDATE: width 500 is outside 10 to 200")
 */
#pragma once

#include <string>

#include "arguments.h"
#include "frame/abi.h"

namespace vxcli {

struct Layout {
    int width;
    int decimals;
};

// The row's name without the padding blanks ("@NLDATE", "NLNUM").
std::string row_name(const vxlocfmt::FuncInfo& row);

// Without a width: the row's default width and decimals; with a width and no decimals: 0.
// Unless `unchecked` (--check, where the library's own statuses 2 to 5 are wanted), a width or
// decimals outside the row's limits throws UsageError naming the row and its limits.
Layout resolve_layout(const Spec& spec, const vxlocfmt::FuncInfo& row, bool unchecked = false);

}  // namespace vxcli
