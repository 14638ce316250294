#include "frame/prologue.h"

#include "frame/field.h"
#include "frame/instance.h"
#include "locale/property_table.h"

namespace vxlocfmt {

status check_limits(const FmtCall& call, registry::Limits limits) {
    if (!(call.flags & call_flag_check_limits)) return st::ok;
    if (call.width < 1) return st::width_too_small;
    if (call.width > limits.max_width) return st::width_too_large;
    if (call.decimals < 0) return st::decimals_negative;
    if (call.decimals > limits.max_decimals) return st::decimals_too_large;
    return st::ok;
}

Start begin_format(FmtCall& call, registry::Limits limits) {
    Instance* instance = find_instance(call);
    if (!instance) return {nullptr, st::instance_not_found, false};
    call.produced = call.width;
    if (status code = check_limits(call, limits)) return {nullptr, code, false};
    return {instance, st::ok, true};
}

Start begin_nl_format(FmtCall& call, registry::Limits limits, bool return_table_status) {
    Instance* instance = find_instance(call);
    if (!instance) return {nullptr, st::instance_not_found, false};
    if (!call.property_cache) {
        if (const status built = locale::fill_nlfmt_properties(call, *instance); built != st::ok) {
            star_fill(call);
            return {nullptr, return_table_status ? built : st::ok, false};
        }
    }
    call.produced = call.width;
    if (status code = check_limits(call, limits)) return {nullptr, code, false};
    return {instance, st::ok, true};
}

}  // namespace vxlocfmt
