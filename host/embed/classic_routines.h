/*
 * Classic routines offered by name although they have no registry rows: the classic formats
 * (classic_formats.cpp: the clocks and the numeric renderers) and the classic value informats
 * (classic_informats.cpp). `vxlocfmt list classic` walks the tables in order.
 *
 *   const FuncInfo* row = classic_row(library, "COMMA", vxlocfmt::row_kind_format);
 *   const ClassicInformat* hex = find_classic_informat("HEX");
 */
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "frame/abi.h"

namespace vxhost {

class Library;

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
const vxlocfmt::FuncInfo* classic_row(const Library& library, const std::string& name, std::uint32_t kind);

// The classic value informats: what each writes to the record's output.
enum class Yields { number, bytes, characters };

struct ClassicInformat {
    const char* name;    // the short name (upper case)
    const char* symbol;  // the exported function
    Yields yields;
};

std::span<const ClassicInformat> classic_informats();
const ClassicInformat* find_classic_informat(std::string_view name);

}  // namespace vxhost
