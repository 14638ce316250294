/*
 * Formats and informats as users name them: SPEC is NAME, NAMEw. or NAMEw.d (NLDATE20.,
 * NLNUM12.2, WEEKV), the row's defaults filling what it leaves out, and the row's limits checked
 * before any call. Every refusal is a RequestError whose text names what was refused; the CLI
 * prints it as it stands, the bindings raise it.
 *
 *   const Spec spec = parse_spec("NLDATE500.");                 // {"NLDATE", 500, nullopt}
 *   const Layout layout = resolve_layout(spec, row);
 *   // throws RequestError("NLDATE: width 500 is outside 10 to 200")
 */
#pragma once

#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

#include "frame/abi.h"

namespace vxhost {

struct RequestError : std::invalid_argument {
    using std::invalid_argument::invalid_argument;
};

struct Spec {
    std::string name;  // upper case, as the registry writes it; an informat may start with '@'
    std::optional<int> width;
    std::optional<int> decimals;
};

// "bad SPEC 'TEXT': ..." for anything but NAME, NAMEw. or NAMEw.d.
Spec parse_spec(std::string_view text);

struct Layout {
    int width;
    int decimals;
};

// The row's name without the padding blanks ("@NLDATE", "NLNUM").
std::string row_name(const vxlocfmt::FuncInfo& row);

// Without a width: the row's default width and decimals; with a width and no decimals: 0.
// Unless `unchecked` (the caller wants the library's own statuses 2 to 5), a width or decimals
// outside the row's limits throws RequestError naming the row and its limits.
Layout resolve_layout(const Spec& spec, const vxlocfmt::FuncInfo& row, bool unchecked = false);

}  // namespace vxhost
