/*
 * The steps every NL format and informat takes before its own work: find the instance, have the
 * locale property table built, set the produced length, check width and decimals when asked.
 *
 *   auto start = begin_nl_format(*call, registry::limits_of(U"NLDATE"));
 *   if (!start.proceed) return start.code;
 */
#pragma once

#include "frame/abi.h"
#include "frame/instance.h"
#include "frame/registry.h"

namespace vxlocfmt {

struct Start {
    Instance* instance;  // null when the call ends here
    status code;         // the call's return code when it ends here
    bool proceed;
};

// Width and decimals against the row's limits; 0 when they pass (checked only under flag bit 0).
inline status check_limits(const FmtCall& call, registry::Limits limits);

// Format prologue: instance lookup (0xFFFFFFFF), property table (a failure fills "*" and returns
// 0, or the builder's status when asked), produced length = width, limits (2 to 5). The value is
// the format's own business. Inline: every NL call takes it, and after the first call of a
// record it is a lookup and two tests.
inline Start begin_nl_format(FmtCall& call, registry::Limits limits, bool return_table_status = false);

// begin_nl_format for a record without its property table yet: builds it, then goes on as above.
Start begin_nl_format_building(FmtCall& call, registry::Limits limits, bool return_table_status, Instance* instance);

// ---- Implementation -----------------------------------------------------------------------

inline status check_limits(const FmtCall& call, registry::Limits limits) {
    if (!(call.flags & call_flag_check_limits)) return st::ok;
    if (call.width < 1) return st::width_too_small;
    if (call.width > limits.max_width) return st::width_too_large;
    if (call.decimals < 0) return st::decimals_negative;
    if (call.decimals > limits.max_decimals) return st::decimals_too_large;
    return st::ok;
}

inline Start begin_nl_format(FmtCall& call, registry::Limits limits, bool return_table_status) {
    Instance* instance = find_instance(call);
    if (!instance) return {nullptr, st::instance_not_found, false};
    if (!call.property_cache) return begin_nl_format_building(call, limits, return_table_status, instance);
    call.produced = call.width;
    if (status code = check_limits(call, limits)) return {nullptr, code, false};
    return {instance, st::ok, true};
}

// Format prologue without the property table, for formats that do not read locale data.
Start begin_format(FmtCall& call, registry::Limits limits);

}  // namespace vxlocfmt
