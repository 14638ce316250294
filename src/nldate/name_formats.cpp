// NLSTRMON, NLSTRQTR and NLSTRWK: the locale's name of a month, quarter or weekday number.
// Decimals are two option bits: bit 0 picks the abbreviated stand-alone set, bit 1 upper-cases.
#include <cmath>
#include <span>

#include "calendar/missing_value.h"
#include "frame/field.h"
#include "frame/prologue.h"
#include "frame/session_fit.h"
#include "locale/property_numbers.h"
#include "locale/property_table.h"
#include "text/case_mapping.h"

namespace vxlocfmt::nldate {
namespace {

struct name_set {
    double count;              // values 1..count
    std::size_t wide_first;    // bit 0 clear
    std::size_t abbrev_first;  // bit 0 set
};

constexpr std::int32_t option_abbreviated = 1;
constexpr std::int32_t option_upper_case = 2;

status name_format(FmtCall& call, registry::Limits limits, name_set set) {
    const Start start = begin_nl_format(call, limits);
    if (!start.proceed) return start.code;
    const double value = *static_cast<const double*>(call.input);
    // Out of range or missing: the missing-value field, all blank for a value that is not a NaN.
    if (calendar::is_nan(value) || !(value >= 1 && value <= set.count)) {
        const std::int32_t decimals = call.decimals;
        call.decimals = 0;
        calendar::zfmmiss(call);
        call.decimals = decimals;
        return st::ok;
    }
    const auto index = static_cast<std::size_t>(value - 1);  // a fraction is truncated
    const std::size_t number = ((call.decimals & option_abbreviated) ? set.abbrev_first : set.wide_first) + index;
    const Property& name = call.property_cache->properties[number];
    const OutputField field = OutputField::of(call);
    if (name.length > static_cast<std::uint64_t>(std::max(call.width, 0))) {
        field.fill(U'*');
        return st::ok;
    }
    field.fill(U' ');
    const std::u32string_view text(name.value, static_cast<std::size_t>(name.length));
    field.write(0, text);
    const std::int32_t written = std::min(static_cast<std::int32_t>(text.size()), field.stored());
    if (call.decimals & option_upper_case) text::to_upper(std::span(field.data(), static_cast<std::size_t>(written)));
    // The name itself must fit the width in session bytes; the blanks after it are the wrapper's.
    if (call.byte_mode) {
        if (!fits_session_encoding(call, {field.data(), static_cast<std::size_t>(written)}, call.width,
                                   field.stored()))
            field.fill(U'*');
        else
            blanks_follow_fitted(call, field.stored() - written);
    }
    return st::ok;
}

}  // namespace
}  // namespace vxlocfmt::nldate

using namespace vxlocfmt;
namespace prop = vxlocfmt::locale::prop;

VX_EXPORT status vxfmtnlstrmon(FmtCall* call, void*) {
    return nldate::name_format(*call, registry::limits_of(U"NLSTRMON"),
                               {12, prop::month_wide_standalone, prop::month_abbrev_standalone});
}
VX_EXPORT status vxfmtnlstrqtr(FmtCall* call, void*) {
    return nldate::name_format(*call, registry::limits_of(U"NLSTRQTR"),
                               {4, prop::quarter_wide_standalone, prop::quarter_abbrev_standalone});
}
VX_EXPORT status vxfmtnlstrwk(FmtCall* call, void*) {
    return nldate::name_format(*call, registry::limits_of(U"NLSTRWK"),
                               {7, prop::weekday_wide_standalone, prop::weekday_abbrev_standalone});
}
