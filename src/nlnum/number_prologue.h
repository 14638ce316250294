/*
 * What every locale number, percent and money format does before rendering: find the instance,
 * check the limits, write the missing value (with 0 decimals, the caller's put back), and make
 * sure the call has its property table ("*" over the field, status 0, when it cannot be built).
 *
 *   const NumberPrologue p = number_prologue(call, limits);
 *   if (!p.table) return p.code;       // finished: the status to return
 */
#pragma once

#include "calendar/missing_value.h"
#include "frame/abi.h"
#include "frame/instance.h"
#include "frame/prologue.h"
#include "frame/registry.h"

namespace vxlocfmt::nlnum {

// ---- Interface ----------------------------------------------------------------------------

struct NumberPrologue {
    const Instance* instance;     // set when `table` is
    const PropertyCache* table;   // null: the format is finished and returns `code`
    status code;
};

// Inline: every number call takes it, and after the first call of a record it is a lookup and
// a few tests.
inline NumberPrologue number_prologue(FmtCall& call, const registry::Limits& limits);

// The rarer ends of the prologue: the missing value, and the property table still to build.
NumberPrologue number_prologue_missing(FmtCall& call);
NumberPrologue number_prologue_building(FmtCall& call, const Instance& instance);

// ---- Implementation -----------------------------------------------------------------------

inline NumberPrologue number_prologue(FmtCall& call, const registry::Limits& limits) {
    const Instance* instance = find_instance(call);
    if (!instance) return {nullptr, nullptr, st::instance_not_found};
    call.produced = call.width;
    if (const status code = check_limits(call, limits)) return {nullptr, nullptr, code};
    if (calendar::is_nan(*static_cast<const double*>(call.input))) return number_prologue_missing(call);
    if (!call.property_cache) return number_prologue_building(call, *instance);
    return {instance, call.property_cache, st::ok};
}

}  // namespace vxlocfmt::nlnum
