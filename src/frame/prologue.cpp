#include "frame/prologue.h"

#include "frame/field.h"
#include "frame/instance.h"
#include "locale/property_table.h"

namespace vxlocfmt {

Start begin_format(FmtCall& call, registry::Limits limits) {
    Instance* instance = find_instance(call);
    if (!instance) return {nullptr, st::instance_not_found, false};
    call.produced = call.width;
    if (status code = check_limits(call, limits)) return {nullptr, code, false};
    return {instance, st::ok, true};
}

Start begin_nl_format_building(FmtCall& call, registry::Limits limits, bool return_table_status, Instance* instance) {
    if (const status built = locale::fill_nlfmt_properties(call, *instance); built != st::ok) {
        star_fill(call);
        return {nullptr, return_table_status ? built : st::ok, false};
    }
    call.produced = call.width;
    if (status code = check_limits(call, limits)) return {nullptr, code, false};
    return {instance, st::ok, true};
}

}  // namespace vxlocfmt
