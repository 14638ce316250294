// zkpdate, zkptime and zkpdttm: getdate_fixlen's parts under the range rules of their value.
#include "dateread/nl_pattern_readers.h"

#include "calendar/day_number.h"
#include "calendar/missing_value.h"
#include "dateread/fixed_length_reader.h"
#include "locale/property_table.h"

namespace vxlocfmt::dateread {
namespace {

enum class rule { date, time, datetime };

std::int32_t read_with(const FmtCall& call, std::u32string_view text, const wchar* pattern, std::int32_t length,
                       double* result, rule r) {
    std::u32string_view p;
    if (pattern) {
        p = {pattern, static_cast<std::size_t>(std::max(length, 0))};
    } else if (length >= 1) {
        if (!call.property_cache) return fixlen_no_match;
        const auto number = static_cast<std::size_t>(length) & 0xFF;
        if (number >= property_count) return fixlen_no_match;
        p = locale::property_text(*call.property_cache, number);
    } else {
        return fixlen_no_match;
    }
    if (!call.property_cache) return fixlen_no_match;
    double date, time;
    // A text the pattern does not fit leaves both parts missing: out of range like any other.
    const std::int32_t code = getdate_fixlen(*call.property_cache, text, p, date, time);
    const bool date_ok = calendar::in_day_range(date);
    const bool time_ok = !calendar::is_nan(time) && time >= 0;
    switch (r) {
    case rule::date:
        if (!date_ok) return pattern_out_of_range;
        *result = date;
        break;
    case rule::time:
        if (!time_ok) return pattern_out_of_range;
        *result = time;
        break;
    case rule::datetime:
        if (!date_ok || !time_ok || time >= 86400) return pattern_out_of_range;
        // The fused multiply-add the value is defined by, without the library call: a whole day
        // number below 2^23 times 86400 is exact, so both round once, at the addition.
        *result = date * 86400.0 + time;
        break;
    }
    return code;
}

}  // namespace

std::int32_t zkpdate(const FmtCall& call, std::u32string_view text, const wchar* pattern, std::int32_t length,
                     double* result) {
    return read_with(call, text, pattern, length, result, rule::date);
}
std::int32_t zkptime(const FmtCall& call, std::u32string_view text, const wchar* pattern, std::int32_t length,
                     double* result) {
    return read_with(call, text, pattern, length, result, rule::time);
}
std::int32_t zkpdttm(const FmtCall& call, std::u32string_view text, const wchar* pattern, std::int32_t length,
                     double* result) {
    return read_with(call, text, pattern, length, result, rule::datetime);
}

}  // namespace vxlocfmt::dateread
