// WEEKU, WEEKV, WEEKW, YYWEEKU, YYWEEKV, YYWEEKW and DTWEEKV: the week of a date (or of a
// datetime's date) by one of the three week-numbering rules.
#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>

#include "calendar/clock_parts.h"
#include "calendar/day_number.h"
#include "calendar/missing_value.h"
#include "calendar/week_numbering.h"
#include "frame/field.h"
#include "frame/prologue.h"
#include "frame/session_bytes.h"
#include "nldate/byte_answers.h"
#include "nldate/expander.h"

namespace vxlocfmt::nldate {
namespace {

using calendar::range_kind_date;
using calendar::range_ok;

// WEEKU, WEEKV, WEEKW: the layout of zkfweek by width, blanks after it.
status week_format(FmtCall& call, registry::Limits limits, wchar rule) {
    const Start start = begin_nl_format(call, limits, true);
    if (!start.proceed) return start.code;
    if (calendar::zdatrng(call, range_kind_date) != range_ok) return st::ok;
    std::int32_t width = call.width;
    calendar::zkfweek(static_cast<wchar*>(call.output), &width, rule, 0, *static_cast<const double*>(call.input),
                      OutputField::of(call).stored());
    return st::ok;  // the produced length stays the whole width
}

// Text of one directive for a day number into `text`; false when the expander refuses.
constexpr std::int32_t part_cells = 16;  // "%Y" of the largest year: 5 digits and a little room
bool expand_part(const FmtCall& call, std::u32string_view pattern, double day, std::array<wchar, part_cells>& text,
                 std::int32_t& length) {
    length = part_cells;
    return zkfdate(text.data(), part_cells, &length, pattern.data(), static_cast<std::int32_t>(pattern.size()),
                   *call.property_cache, day) == expand_ok;
}

// YYWEEKU, YYWEEKV, YYWEEKW: year and week, laid out by the width (2 to 8).
status year_week_format(FmtCall& call, registry::Limits limits, std::u32string_view year_pattern,
                        std::u32string_view week_pattern) {
    const Start start = begin_nl_format(call, limits, true);
    if (!start.proceed) return start.code;
    if (calendar::zdatrng(call, range_kind_date) != range_ok) return st::ok;
    const double day = *static_cast<const double*>(call.input);
    std::array<wchar, part_cells> year{}, week{};
    std::int32_t year_length = 0, week_length = 0;
    const OutputField field = OutputField::of(call);
    if (!expand_part(call, year_pattern, day, year, year_length) ||
        !expand_part(call, week_pattern, day, week, week_length) || year_length < 4 || week_length != 2) {
        field.fill(U'*');
        return st::ok;
    }
    const std::u32string_view yyyy(year.data() + year_length - 4, 4);
    const std::u32string_view yy = yyyy.substr(2);
    const std::u32string_view ww(week.data(), 2);
    field.fill(U' ');
    switch (call.width) {
    case 2: field.write(0, ww); break;
    case 3: field.write(0, U"W"); field.write(1, ww); break;
    case 4: field.write(0, U" W"); field.write(2, ww); break;
    case 5: field.write(0, yy); field.write(2, U"W"); field.write(3, ww); break;
    case 6: field.write(1, yy); field.write(3, U"W"); field.write(4, ww); break;
    case 7: field.write(0, yyyy); field.write(4, U"W"); field.write(5, ww); break;
    case 8: field.write(0, yyyy); field.write(4, U"-W"); field.write(6, ww); break;
    default:
        field.fill(U'*');
        return st::instance_not_found;  // -1 for a width without a layout, as the format always answered
    }
    return st::ok;
}

// The time of day and date part of a datetime as DTWEEKV splits it (fmod_by_whole: std::fmod
// bit for bit).
struct split_datetime {
    double date;
    double time;
};
split_datetime split(double x) {
    double time;
    if (x >= 0) {
        time = calendar::fmod_by_whole(x, 86400);
    } else {
        const double r = calendar::fmod_by_whole(-x, 86400);
        time = r == 0 ? 0 : 86400 - r;
    }
    return {(x - time) / 86400, time};
}

status dt_week_format(FmtCall& call) {
    constexpr auto limits = registry::limits_of(U"DTWEEKV");
    const Start start = begin_nl_format(call, limits, true);
    if (!start.proceed) return start.code;
    const double value = *static_cast<const double*>(call.input);
    if (calendar::is_nan(value)) {
        calendar::zfmmiss_without_decimals(call);
        return st::ok;
    }
    const auto [date, time] = split(value);
    const OutputField field = OutputField::of(call);
    field.fill(U' ');
    const std::int32_t w = call.width;
    const std::int32_t date_width = w < 12 ? w : w < 20 ? 9 : 11;

    // The date part in its sub-field, as WEEKV writes it. A date in range is zdatrng's 0; the
    // rest goes through zdatrng on a record narrowed to the sub-field, which writes it.
    const std::int32_t date_capacity = std::min(date_width, field.stored());
    if (calendar::in_day_range(date)) {
        std::int32_t width = date_width;
        calendar::zkfweek(field.data(), &width, U'V', 0, date, date_capacity);
    } else {
        FmtCall date_call = call;
        date_call.width = date_width;
        date_call.capacity = date_capacity;
        date_call.input = &date;
        calendar::zdatrng(date_call, range_kind_date);
    }
    call.produced = w;
    if (w < 12) return st::ok;

    field.put(date_width, U':');
    const std::u32string_view pattern = w < 15 ? U"%H" : w < 18 ? U"%H:%M" : U"%H:%M:%S";
    const std::int32_t at = date_width + 1;
    std::int32_t width = w - at;
    zkftime(field.data() + std::min(at, field.stored()), std::max(0, field.stored() - at), &width, pattern.data(),
            static_cast<std::int32_t>(pattern.size()), 0, *call.property_cache, time);
    call.produced = w;
    return st::ok;
}

constexpr registry::Limits week_limits(wchar rule) {
    return rule == U'U' ? registry::limits_of(U"WEEKU")
         : rule == U'V' ? registry::limits_of(U"WEEKV")
                        : registry::limits_of(U"WEEKW");
}

}  // namespace

// The wrapper's answer for week_format's common case, a date in range: the same wide text in
// the stack (week_format's field has the wrapper's stack cells), the same conversion into the
// caller's field, a cut answered 0 (the week formats are left-aligned).
bool week_bytes(FmtCall* call, FmtCall* out, wchar rule, status* result) {
    const std::int32_t width = call->width;
    if (!call->session_transcoder || width < 1 || width > direct_bytes_cells || out->width > direct_bytes_cells)
        return false;
    if (!call->property_cache || !find_instance(*call) || check_limits(*call, week_limits(rule)) != st::ok) return false;
    const double value = *static_cast<const double*>(call->input);
    if (!calendar::in_day_range(value)) return false;
    const std::int32_t field = std::max(0, std::min(out->width, out->capacity));
    auto* const dest = static_cast<unsigned char*>(out->output);
    if (session_bytes::identity_mask_bound(call->session_transcoder) >= 0x80 && (dest || field == 0)) {
        // The week text is ASCII: its bytes are written as it is made, no wide cells between (the
        // wide field's first min(width, field) cells, a cut answered 0 as below).
        const std::int32_t count = std::min(width, field);
        calendar::week_bytes_text(dest, count, rule, value, width);
        out->produced = count;
        *result = st::ok;
        return true;
    }
    wchar cells[direct_bytes_cells];
    std::int32_t layout_width = width;
    calendar::zkfweek(cells, &layout_width, rule, 0, value, width);
    const status converted = session_bytes::convert(call->session_transcoder, cells, width,
                                                    static_cast<unsigned char*>(out->output), field, &out->produced);
    *result = converted == st::does_not_fit ? st::ok : converted;
    return true;
}

}  // namespace vxlocfmt::nldate

using namespace vxlocfmt;
using vxlocfmt::registry::limits_of;

VX_EXPORT status vxfmtweeku(FmtCall* call, void*) { return nldate::week_format(*call, limits_of(U"WEEKU"), U'U'); }
VX_EXPORT status vxfmtweekv(FmtCall* call, void*) { return nldate::week_format(*call, limits_of(U"WEEKV"), U'V'); }
VX_EXPORT status vxfmtweekw(FmtCall* call, void*) { return nldate::week_format(*call, limits_of(U"WEEKW"), U'W'); }
VX_EXPORT status vxfmtdtweekv(FmtCall* call, void*) { return nldate::dt_week_format(*call); }
VX_EXPORT status vxfmtyyweeku(FmtCall* call, void*) {
    return nldate::year_week_format(*call, limits_of(U"YYWEEKU"), U"%Y", U"%U");
}
VX_EXPORT status vxfmtyyweekv(FmtCall* call, void*) {
    return nldate::year_week_format(*call, limits_of(U"YYWEEKV"), U"%G", U"%V");
}
VX_EXPORT status vxfmtyyweekw(FmtCall* call, void*) {
    return nldate::year_week_format(*call, limits_of(U"YYWEEKW"), U"%Y", U"%W");
}
