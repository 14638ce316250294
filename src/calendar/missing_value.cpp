#include "calendar/missing_value.h"

#include "calendar/day_number.h"
#include "frame/field.h"

namespace vxlocfmt::calendar {

namespace {
// Decimals that place the missing-value character as 0 decimals do.
constexpr std::int32_t decimals_as_zero_a = 98;
constexpr std::int32_t decimals_as_zero_b = 99;
}  // namespace

int zfmmiss(FmtCall& call) {
    const OutputField field = OutputField::of(call);
    call.produced = call.width;
    field.fill(U' ');
    const double value = *static_cast<const double*>(call.input);
    const int k = is_nan(value) ? missing_code(value) : 0;
    const std::int64_t decimals =
        call.decimals == decimals_as_zero_a || call.decimals == decimals_as_zero_b ? 0 : call.decimals;
    // In 64 bits: any width and decimals the host sends, however odd, cannot overflow here.
    const std::int64_t at = std::int64_t{call.width} - 1 - decimals;
    if (at >= 0 && at < field.stored())
        field.put(static_cast<std::int32_t>(at), missing_characters[static_cast<std::size_t>(k)]);
    return 0;
}

int zdatrng(FmtCall& call, int kind) {
    const double value = *static_cast<const double*>(call.input);
    if (is_nan(value)) {
        zfmmiss_without_decimals(call);
        return range_missing;
    }
    bool usable = true;
    if (kind == range_kind_date) usable = in_day_range(value);
    else if (kind == range_kind_datetime || kind == range_kind_time) usable = in_datetime_range(value);
    if (usable) return range_ok;
    star_fill(call);
    return range_out;
}

}  // namespace vxlocfmt::calendar
