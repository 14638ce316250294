/*
 * Classic routines the CLI offers by name although they have no registry rows: the classic
 * formats (cli/classic_formats.cpp) and whatever other tables join the list in
 * cli/classic_routines.cpp. `vxlocfmt list classic` walks the tables in order.
 *
 *   const FuncInfo* row = classic_row(library, "COMMA", vxlocfmt::row_kind_format);
 */
#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "frame/abi.h"

namespace vxhost {
class Library;
}

namespace vxcli {

struct ClassicRoutine {
    const char* name;
    std::uint32_t kind;  // vxlocfmt::row_kind_format or row_kind_informat
    const char* symbol;  // the exported function
    std::uint32_t min_width, max_width, default_width;
    std::uint32_t max_decimals, default_decimals;
};

extern const std::span<const ClassicRoutine> classic_format_table;

// Every table of classic routines, in listing order.
std::span<const std::span<const ClassicRoutine>> classic_tables();

// A row made for the routine `name` of `kind`, or null when there is none (or the library does
// not export its function).
const vxlocfmt::FuncInfo* classic_row(const vxhost::Library& library, const std::string& name, std::uint32_t kind);

}  // namespace vxcli
