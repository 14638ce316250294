/*
 * The steps every NL format and informat takes before its own work: find the instance, have the
 * locale property table built, set the produced length, check width and decimals when asked.
 *
 *   auto start = begin_nl_format(*call, registry::limits_of(U"NLDATE"));
 *   if (!start.proceed) return start.code;
 */
#pragma once

#include "frame/abi.h"
#include "frame/registry.h"

namespace vxlocfmt {

struct Start {
    Instance* instance;  // null when the call ends here
    status code;         // the call's return code when it ends here
    bool proceed;
};

// Width and decimals against the row's limits; 0 when they pass (checked only under flag bit 0).
status check_limits(const FmtCall& call, registry::Limits limits);

// Format prologue: instance lookup (0xFFFFFFFF), property table (a failure fills "*" and returns
// 0, or the builder's status when asked), produced length = width, limits (2 to 5). The value is
// the format's own business.
Start begin_nl_format(FmtCall& call, registry::Limits limits, bool return_table_status = false);

// Format prologue without the property table, for formats that do not read locale data.
Start begin_format(FmtCall& call, registry::Limits limits);

}  // namespace vxlocfmt
