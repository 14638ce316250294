// NLSTRMON, NLSTRQTR and NLSTRWK: the locale's name of a month, quarter or weekday number.
// Decimals are two option bits: bit 0 picks the abbreviated stand-alone set, bit 1 upper-cases.
#include <algorithm>
#include <cmath>
#include <cstring>
#include <span>

#include "calendar/missing_value.h"
#include "frame/field.h"
#include "frame/prologue.h"
#include "frame/session_bytes.h"
#include "frame/session_fit.h"
#include "locale/property_numbers.h"
#include "locale/property_table.h"
#include "nldate/byte_answers.h"
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
        calendar::zfmmiss_without_decimals(call);
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

// The wrapper's answer where it is certain: the name, upper-cased when asked, fits the width in
// session bytes (the format's own test) and the caller's field, and is followed by one 0x20 byte
// for each blank after it (a stateless encoding with blanks below its identity bound converts
// the wide field to exactly these bytes). When the blanks overflow the field they are cut there
// with 0x803fe807, as the wrapper answers a right-aligned text with no leading blank to drop
// ("März" and fifteen blanks in twenty bytes).
bool name_bytes(FmtCall& call, FmtCall& out, registry::Limits limits, name_set set, status* result) {
    void* transcoder = call.session_transcoder;
    const std::int32_t width = call.width;
    if (!transcoder || width < 1 || width > direct_bytes_cells || out.width > direct_bytes_cells || !out.output) return false;
    if (session_bytes::identity_mask_bound(transcoder) <= U' ') return false;
    if (!call.property_cache || !find_instance(call) || check_limits(call, limits) != st::ok) return false;
    const double value = *static_cast<const double*>(call.input);
    if (calendar::is_nan(value) || !(value >= 1 && value <= set.count)) return false;
    const auto index = static_cast<std::size_t>(value - 1);
    const std::size_t number = ((call.decimals & option_abbreviated) ? set.abbrev_first : set.wide_first) + index;
    const Property& name = call.property_cache->properties[number];
    if (name.length > static_cast<std::uint64_t>(width) || name.length > property_value_cells) return false;
    const auto length = static_cast<std::int32_t>(name.length);
    const wchar* text = name.value;
    wchar upper[property_value_cells];
    if (call.decimals & option_upper_case) {
        std::copy_n(name.value, length, upper);
        text::to_upper(std::span(upper, static_cast<std::size_t>(length)));
        text = upper;
    }
    const std::int32_t field = std::max(0, std::min(out.width, out.capacity));
    auto* dest = static_cast<unsigned char*>(out.output);
    // The everyday case, a name below the bound and the field as wide as the width: the name and
    // its blanks in steps fixed by the width (the name's cells past it are read as scratch).
    if (field >= width && width >= 8 && width <= static_cast<std::int32_t>(property_value_cells) &&
        session_bytes::narrow_padded(text, length, width, dest, session_bytes::identity_mask_bound(transcoder))) {
        out.produced = width;
        *result = st::ok;
        return true;
    }
    std::int32_t bytes = 0;
    const std::int32_t room = std::min(field, width);
    const status converted = session_bytes::utf8_here(transcoder, length, dest, room)
                                 ? session_bytes::utf8<true>(text, length, dest, room, &bytes)
                                 : session_bytes::convert(transcoder, text, length, dest, room, &bytes);
    if (converted != st::ok) return false;
    const std::int32_t blanks = width - length;
    if (bytes + blanks <= field) {
        session_bytes::blank_bytes(dest + bytes, blanks);
        out.produced = bytes + blanks;
        *result = st::ok;
        return true;
    }
    // Cut in the blanks; a leading blank (an empty or blank-led name) would have the wrapper
    // convert again and right-justify.
    if (length == 0 || text[0] == U' ') return false;
    session_bytes::blank_bytes(dest + bytes, field - bytes);
    out.produced = field;
    *result = st::does_not_fit;
    return true;
}

constexpr name_set months{12, locale::prop::month_wide_standalone, locale::prop::month_abbrev_standalone};
constexpr name_set quarters{4, locale::prop::quarter_wide_standalone, locale::prop::quarter_abbrev_standalone};
constexpr name_set weekdays{7, locale::prop::weekday_wide_standalone, locale::prop::weekday_abbrev_standalone};

}  // namespace

bool month_name_bytes(FmtCall* call, FmtCall* out, status* result) {
    return name_bytes(*call, *out, registry::limits_of(U"NLSTRMON"), months, result);
}
bool quarter_name_bytes(FmtCall* call, FmtCall* out, status* result) {
    return name_bytes(*call, *out, registry::limits_of(U"NLSTRQTR"), quarters, result);
}
bool weekday_name_bytes(FmtCall* call, FmtCall* out, status* result) {
    return name_bytes(*call, *out, registry::limits_of(U"NLSTRWK"), weekdays, result);
}

}  // namespace vxlocfmt::nldate

using namespace vxlocfmt;

VX_EXPORT status vxfmtnlstrmon(FmtCall* call, void*) {
    return nldate::name_format(*call, registry::limits_of(U"NLSTRMON"), nldate::months);
}
VX_EXPORT status vxfmtnlstrqtr(FmtCall* call, void*) {
    return nldate::name_format(*call, registry::limits_of(U"NLSTRQTR"), nldate::quarters);
}
VX_EXPORT status vxfmtnlstrwk(FmtCall* call, void*) {
    return nldate::name_format(*call, registry::limits_of(U"NLSTRWK"), nldate::weekdays);
}
