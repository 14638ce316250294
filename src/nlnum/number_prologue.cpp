#include "nlnum/number_prologue.h"

#include "frame/field.h"
#include "locale/property_table.h"

namespace vxlocfmt::nlnum {

NumberPrologue number_prologue_missing(FmtCall& call) {
    const auto code = static_cast<status>(calendar::zfmmiss_without_decimals(call));
    return {nullptr, nullptr, code};
}

NumberPrologue number_prologue_building(FmtCall& call, const Instance& instance) {
    if (locale::fill_nlfmt_properties(call, instance) != st::ok) {
        star_fill(call);
        return {nullptr, nullptr, st::ok};
    }
    return {&instance, call.property_cache, st::ok};
}

}  // namespace vxlocfmt::nlnum
