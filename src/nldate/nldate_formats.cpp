#include "nldate/nldate_formats.h"

#include <algorithm>

#include "calendar/day_number.h"
#include "calendar/missing_value.h"
#include "frame/field.h"
#include "frame/kernel.h"
#include "frame/prologue.h"
#include "frame/session_fit.h"
#include "locale/property_numbers.h"
#include "nldate/expander.h"
#include "nldate/zone.h"

namespace vxlocfmt::nldate {

namespace {

namespace prop = locale::prop;

using locale::property_text;

// A candidate ready to expand: its pattern and the width it needs.
struct candidate {
    std::u32string_view pattern;
    std::int64_t needed;
};

candidate candidate_of(const pattern_row& row, const PropertyCache& properties) {
    const auto number = static_cast<std::size_t>(row.number & 0xFF);
    const std::int64_t width = properties.properties[number].width;
    if (!row.literal) return {property_text(properties, number), width};
    const std::u32string_view literal(row.literal);
    if (literal == month_number_literal) return {literal, month_number_width};
    if (literal == weekday_number_literal)
        return {weekday_number_pattern(property_text(properties, number)), weekday_number_width};
    return {literal, width};
}

}  // namespace

std::u32string_view weekday_number_pattern(std::u32string_view week_pattern) {
    // The week directive: "%", flags, then "U", "V" or "W" read in upper case ("%?U" is the
    // weekday digit, not a week).
    for (std::size_t i = 0; i < week_pattern.size(); ++i) {
        if (week_pattern[i] != U'%') continue;
        std::size_t j = i + 1;
        while (j < week_pattern.size() &&
               (week_pattern[j] == U'#' || week_pattern[j] == U'0' || week_pattern[j] == U'+' ||
                (week_pattern[j] >= U'1' && week_pattern[j] <= U'9')))
            ++j;
        if (j == week_pattern.size()) break;
        const wchar letter = week_pattern[j];
        if (letter == U'U') return U"%w";
        if (letter == U'V' || letter == U'W') return U"%u";
        i = j;  // "%%" and other directives are passed whole
    }
    return U"%u";
}

namespace {

// Missing and out-of-range values by the format's kind; false when the field is already written.
bool value_usable(FmtCall& call, value_kind kind) {
    // A value in range is zdatrng's 0 without the call; the rest it writes itself.
    const double value = *static_cast<const double*>(call.input);
    switch (kind) {
    case value_kind::date:
        return calendar::in_day_range(value) ||
               calendar::zdatrng(call, calendar::range_kind_date) == calendar::range_ok;
    case value_kind::datetime:
        return calendar::in_datetime_range(value) ||
               calendar::zdatrng(call, calendar::range_kind_datetime) == calendar::range_ok;
    case value_kind::time:
        // Any time is tried; a negative one is refused by the expander and falls through.
        return !calendar::is_nan(value) || calendar::zdatrng(call, 0) == calendar::range_ok;
    }
    return false;
}

std::int32_t expand_candidate(FmtCall& call, const candidate_format& format, const pattern_row& row,
                              const candidate& c, std::int32_t* produced, NarrowedBytes* narrowed) {
    const PropertyCache& properties = *call.property_cache;
    auto* out = static_cast<wchar*>(call.output);
    const double value = *static_cast<const double*>(call.input);
    const auto decimals = static_cast<std::uint32_t>(std::max(call.decimals, 0));
    const auto length = static_cast<std::int32_t>(c.pattern.size());
    switch (format.kind) {
    case value_kind::date:
        return zkfdate(out, call.capacity, produced, c.pattern.data(), length, properties, value, narrowed);
    case value_kind::datetime:
        if (format.with_zone && !row.literal) {
            // The property by number, with " %z" appended by the expander.
            const auto number = static_cast<std::int32_t>(row.number & 0xFF) | pattern_with_zone;
            return zkfdttm(out, call.capacity, produced, nullptr, number, decimals, properties, zone_object(), value,
                           narrowed);
        }
        return zkfdttm(out, call.capacity, produced, c.pattern.data(), length, decimals, properties, zone_object(),
                       value, narrowed);
    case value_kind::time:
        return zkftime(out, call.capacity, produced, c.pattern.data(), length, decimals, properties, value, narrowed);
    }
    return expand_bad_directive;
}

}  // namespace

status format_by_candidates(FmtCall& call, void* extra, const candidate_format& format) {
    const Start start = begin_nl_format(call, format.limits);
    if (!start.proceed) return start.code;
    if (!value_usable(call, format.kind)) return st::ok;
    const PropertyCache& properties = *call.property_cache;
    const std::int32_t width = std::max(call.width, 0);
    const OutputField field(static_cast<wchar*>(call.output), width, call.capacity);
    // Under the byte wrapper the expander narrows the field into the caller's bytes as it writes
    // it, and the fit test keeps them when they are the whole answer.
    NarrowedBytes target;
    NarrowedBytes* const narrowed = call.byte_mode && narrowing_target(call, width, &target) ? &target : nullptr;

    for (const pattern_row& row : format.rows) {
        if ((row.number & 0xFF) == sibling_row) return format.sibling(&call, extra);
        const candidate c = candidate_of(row, properties);
        if (format.skip_by_width && c.needed > width) continue;
        std::int32_t produced = width;
        if (narrowed) narrowed->cells = narrowed->encoded_cells = 0;
        if (expand_candidate(call, format, row, c, &produced, narrowed) != expand_ok) continue;
        if (call.byte_mode) {
            // The expander writes every stored cell: the text, then blanks.
            const std::u32string_view text(field.data(), static_cast<std::size_t>(std::min(produced, field.stored())));
            if (!(narrowed && fits_narrowed(call, text, field.stored(), *narrowed)) &&
                !fits_session_encoding(call, text, width, field.stored()))
                continue;
        }
        call.produced = produced;
        return st::ok;
    }
    if (format.sibling) return format.sibling(&call, extra);
    star_fill(call);
    return st::ok;
}

namespace {

constexpr const candidate_format& format_named(std::u32string_view name) {
    for (const candidate_format& f : candidate_formats)
        if (f.name == name) return f;
    throw "no such candidate format";  // a compile-time error
}

// The locale's order of date parts, for the field-by-field siblings.
struct date_order {
    bool complete;                          // "M", "D" and "Y" all present
    std::int32_t month, day, year;          // 1-based positions in property 6
    wchar separator;                        // property 153 when one character long, else 0
};

date_order order_of(const PropertyCache& properties) {
    const std::u32string_view order = property_text(properties, prop::date_order);
    const auto position = [&](wchar letter) -> std::int32_t {
        for (std::size_t i = 0; i < order.size(); ++i) {
            const wchar c = order[i];
            if (c == letter || c == letter - U'A' + U'a') return static_cast<std::int32_t>(i + 1);
        }
        return 0;
    };
    date_order o{};
    o.month = position(U'M');
    o.day = position(U'D');
    o.year = position(U'Y');
    o.complete = o.month && o.day && o.year;
    const std::u32string_view separator = property_text(properties, prop::date_separator);
    o.separator = separator.size() == 1 ? separator[0] : 0;
    return o;
}

enum class sibling { mdy, ym, md, yq };

status field_by_field(FmtCall& call, registry::Limits limits, sibling kind) {
    const Start start = begin_nl_format(call, limits);
    if (!start.proceed) return start.code;
    if (calendar::zdatrng(call, calendar::range_kind_date) != calendar::range_ok) return st::ok;
    const date_order o = order_of(*call.property_cache);
    if (!o.complete) {
        star_fill(call);
        return st::ok;
    }
    switch (kind) {
    case sibling::mdy: return mdy_order(call, o.month, o.day, o.year, o.separator);
    case sibling::ym: return mdy_order(call, o.month, 0, o.year, o.separator);
    case sibling::md: return mdy_order(call, o.month, o.day, 0, o.separator);
    case sibling::yq: return qtr_order(call, true, false, o.separator);
    }
    return st::ok;
}

}  // namespace

}  // namespace vxlocfmt::nldate

using namespace vxlocfmt;
using nldate::format_by_candidates;
using nldate::format_named;

#define VX_CANDIDATE_FORMAT(fn, name)                                        \
    VX_EXPORT status fn(FmtCall* call, void* extra) {                       \
        static constexpr const nldate::candidate_format& format = format_named(U"" name); \
        return format_by_candidates(*call, extra, format);                  \
    }

VX_CANDIDATE_FORMAT(vxfmtnldate, "NLDATE")
VX_CANDIDATE_FORMAT(vxfmtnldatel, "NLDATEL")
VX_CANDIDATE_FORMAT(vxfmtnldatem, "NLDATEM")
VX_CANDIDATE_FORMAT(vxfmtnldatew, "NLDATEW")
VX_CANDIDATE_FORMAT(vxfmtnldatemd, "NLDATEMD")
VX_CANDIDATE_FORMAT(vxfmtnldatemdl, "NLDATEMDL")
VX_CANDIDATE_FORMAT(vxfmtnldatemdm, "NLDATEMDM")
VX_CANDIDATE_FORMAT(vxfmtnldatemn, "NLDATEMN")
VX_CANDIDATE_FORMAT(vxfmtnldatewn, "NLDATEWN")
VX_CANDIDATE_FORMAT(vxfmtnldateym, "NLDATEYM")
VX_CANDIDATE_FORMAT(vxfmtnldateyml, "NLDATEYML")
VX_CANDIDATE_FORMAT(vxfmtnldateymm, "NLDATEYMM")
VX_CANDIDATE_FORMAT(vxfmtnldateyq, "NLDATEYQ")
VX_CANDIDATE_FORMAT(vxfmtnldateyql, "NLDATEYQL")
VX_CANDIDATE_FORMAT(vxfmtnldateyqm, "NLDATEYQM")
VX_CANDIDATE_FORMAT(vxfmtnldateyr, "NLDATEYR")
VX_CANDIDATE_FORMAT(vxfmtnldateyw, "NLDATEYW")

#undef VX_CANDIDATE_FORMAT

VX_EXPORT status vxfmtnldates(FmtCall* call, void*) {
    return nldate::field_by_field(*call, registry::limits_of(U"NLDATES"), nldate::sibling::mdy);
}
VX_EXPORT status vxfmtnldateyms(FmtCall* call, void*) {
    return nldate::field_by_field(*call, registry::limits_of(U"NLDATEYMS"), nldate::sibling::ym);
}
VX_EXPORT status vxfmtnldatemds(FmtCall* call, void*) {
    return nldate::field_by_field(*call, registry::limits_of(U"NLDATEMDS"), nldate::sibling::md);
}
VX_EXPORT status vxfmtnldateyqs(FmtCall* call, void*) {
    return nldate::field_by_field(*call, registry::limits_of(U"NLDATEYQS"), nldate::sibling::yq);
}
