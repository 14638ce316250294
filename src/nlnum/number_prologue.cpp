#include "nlnum/number_prologue.h"

#include "calendar/missing_value.h"
#include "frame/field.h"
#include "frame/instance.h"
#include "frame/prologue.h"
#include "locale/property_table.h"

namespace vxlocfmt::nlnum {

NumberPrologue number_prologue(FmtCall& call, const registry::Limits& limits) {
    const Instance* instance = find_instance(call);
    if (!instance) return {nullptr, nullptr, st::instance_not_found};
    call.produced = call.width;
    if (const status code = check_limits(call, limits)) return {nullptr, nullptr, code};
    if (calendar::is_nan(*static_cast<const double*>(call.input))) {
        const std::int32_t decimals = call.decimals;
        call.decimals = 0;
        const auto code = static_cast<status>(calendar::zfmmiss(call));
        call.decimals = decimals;
        return {nullptr, nullptr, code};
    }
    if (!call.property_cache && locale::fill_nlfmt_properties(call, *instance) != st::ok) {
        star_fill(call);
        return {nullptr, nullptr, st::ok};
    }
    return {instance, call.property_cache, st::ok};
}

}  // namespace vxlocfmt::nlnum
