/*
 * What every locale number, percent and money format does before rendering: find the instance,
 * check the limits, write the missing value (with 0 decimals, the caller's put back), and make
 * sure the call has its property table ("*" over the field, status 0, when it cannot be built).
 *
 *   const NumberPrologue p = number_prologue(call, limits);
 *   if (!p.table) return p.code;       // finished: the status to return
 */
#pragma once

#include "frame/abi.h"
#include "frame/registry.h"

namespace vxlocfmt::nlnum {

struct NumberPrologue {
    const Instance* instance;     // set when `table` is
    const PropertyCache* table;   // null: the format is finished and returns `code`
    status code;
};

NumberPrologue number_prologue(FmtCall& call, const registry::Limits& limits);

}  // namespace vxlocfmt::nlnum
