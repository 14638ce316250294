// The NLDATM formats (a datetime) and NLTIME, NLTIMAP (a time): the NLDATE frame with the
// datetime or time expander, the call's decimals as fraction digits of the seconds, the zone
// offset for the Z formats, and the classic clock formats as the last fall-back of the time ones.
#include <algorithm>

#include "calendar/clock_parts.h"
#include "calendar/missing_value.h"
#include "classic/time_formats.h"
#include "frame/prologue.h"
#include "nldate/nldate_formats.h"

extern "C" {
// The siblings the candidate lists hand over to.
VX_EXPORT vxlocfmt::status vxfmtnldatms(vxlocfmt::FmtCall* call, void* extra);
VX_EXPORT vxlocfmt::status vxfmtnldatmw(vxlocfmt::FmtCall* call, void* extra);
VX_EXPORT vxlocfmt::status vxfmtnldatmmds(vxlocfmt::FmtCall* call, void* extra);
VX_EXPORT vxlocfmt::status vxfmtnldatmyms(vxlocfmt::FmtCall* call, void* extra);
VX_EXPORT vxlocfmt::status vxfmtnldatmyqs(vxlocfmt::FmtCall* call, void* extra);
vxlocfmt::status vxfmtnldatmss(vxlocfmt::FmtCall* call, void* extra);
vxlocfmt::status vxfmtnldatmssd(vxlocfmt::FmtCall* call, void* extra);
}

namespace vxlocfmt::nldate {
namespace {

using registry::limits_of;

// The lists of the formats that skip a candidate wider than the field by its precomputed width.
inline constexpr pattern_row nldatml_pat[] = {{nullptr, 49}, {nullptr, 48}, {nullptr, 47}, {nullptr, sibling_row}};
inline constexpr pattern_row nldatmm_pat[] = {{nullptr, 48}, {nullptr, 47}, {nullptr, sibling_row}};
inline constexpr pattern_row nldatms_pat[] = {{nullptr, sibling_row}};
inline constexpr pattern_row nldatmdt_pat[] = {{nullptr, 31}, {nullptr, 30}, {nullptr, sibling_row}};
inline constexpr pattern_row nldatmw_pat[] = {{nullptr, 50}, {nullptr, 51}, {nullptr, 32},
                                              {nullptr, 33}, {U"%#A", 128}, {U"%#a", 121}};
inline constexpr pattern_row nldatmwn_pat[] = {{U"%#A", 128}, {U"%#a", 121}, {U"u", 42}};
inline constexpr pattern_row nldatmmn_pat[] = {{U"%#B", 95}, {U"%#b", 83}, {U"%o", 0}};
inline constexpr pattern_row nldatmmdl_pat[] = {{nullptr, 36}, {nullptr, 37}, {nullptr, sibling_row}};
inline constexpr pattern_row nldatmmdm_pat[] = {{nullptr, 37}, {nullptr, sibling_row}};
inline constexpr pattern_row nldatmyml_pat[] = {{nullptr, 34}, {nullptr, 35}, {nullptr, sibling_row}};
inline constexpr pattern_row nldatmymm_pat[] = {{nullptr, 35}, {nullptr, sibling_row}};
inline constexpr pattern_row nldatmyql_pat[] = {{nullptr, 40}, {nullptr, 41}, {nullptr, sibling_row}};
inline constexpr pattern_row nldatmyqm_pat[] = {{nullptr, 41}, {nullptr, sibling_row}};

// The candidates of the formats that expand each one in turn.
inline constexpr pattern_row nldatm_candidates[] = {{nullptr, 46}, {nullptr, 47}, {nullptr, sibling_row}};
inline constexpr pattern_row nldatmap_candidates[] = {{nullptr, 44}, {nullptr, 47}, {nullptr, sibling_row}};
inline constexpr pattern_row nldatmss_candidates[] = {{nullptr, 58}, {nullptr, sibling_row}};
inline constexpr pattern_row nldatmwz_candidates[] = {{nullptr, 50}, {nullptr, 51}, {nullptr, sibling_row}};
inline constexpr pattern_row nldatmmd_candidates[] = {{nullptr, 36}, {nullptr, 37}};
inline constexpr pattern_row nldatmym_candidates[] = {{nullptr, 34}, {nullptr, 35}};
inline constexpr pattern_row nldatmyq_candidates[] = {{nullptr, 40}, {nullptr, 41}};
inline constexpr pattern_row nldatmyr_candidates[] = {{nullptr, 38}, {nullptr, 39}};
inline constexpr pattern_row nldatmyw_candidates[] = {{nullptr, 42}, {nullptr, 43}};
inline constexpr pattern_row time_candidates[] = {{nullptr, 53}, {nullptr, sibling_row}};
inline constexpr pattern_row time_12h_candidates[] = {{nullptr, 52}, {nullptr, sibling_row}};

constexpr auto datetime = value_kind::datetime;
constexpr auto time = value_kind::time;
// NLDATMSS has no registry row; it checks the limits NLDATMS would.
constexpr registry::Limits internal_limits = limits_of(U"NLDATMS");

inline constexpr candidate_format datm_formats[] = {
    {U"NLDATM", limits_of(U"NLDATM"), nldatm_candidates, false, vxfmtnldatms, datetime},
    {U"NLDATMAP", limits_of(U"NLDATMAP"), nldatmap_candidates, false, vxfmtnldatms, datetime},
    {U"NLDATMZ", limits_of(U"NLDATMZ"), nldatm_candidates, false, vxfmtnldatms, datetime, true},
    {U"NLDATML", limits_of(U"NLDATML"), nldatml_pat, true, vxfmtnldatmss, datetime},
    {U"NLDATMM", limits_of(U"NLDATMM"), nldatmm_pat, true, vxfmtnldatmss, datetime},
    {U"NLDATMS", limits_of(U"NLDATMS"), nldatms_pat, true, vxfmtnldatmss, datetime},
    {U"NLDATMSS", internal_limits, nldatmss_candidates, false, vxfmtnldatmssd, datetime},
    {U"NLDATMDT", limits_of(U"NLDATMDT"), nldatmdt_pat, true, vxfmtnldatmssd, datetime},
    {U"NLDATMW", limits_of(U"NLDATMW"), nldatmw_pat, true, nullptr, datetime},
    {U"NLDATMWZ", limits_of(U"NLDATMWZ"), nldatmwz_candidates, false, vxfmtnldatmw, datetime, true},
    {U"NLDATMWN", limits_of(U"NLDATMWN"), nldatmwn_pat, true, nullptr, datetime},
    {U"NLDATMMN", limits_of(U"NLDATMMN"), nldatmmn_pat, true, nullptr, datetime},
    {U"NLDATMMD", limits_of(U"NLDATMMD"), nldatmmd_candidates, false, nullptr, datetime},
    {U"NLDATMMDL", limits_of(U"NLDATMMDL"), nldatmmdl_pat, true, vxfmtnldatmmds, datetime},
    {U"NLDATMMDM", limits_of(U"NLDATMMDM"), nldatmmdm_pat, true, vxfmtnldatmmds, datetime},
    {U"NLDATMYM", limits_of(U"NLDATMYM"), nldatmym_candidates, false, nullptr, datetime},
    {U"NLDATMYML", limits_of(U"NLDATMYML"), nldatmyml_pat, true, vxfmtnldatmyms, datetime},
    {U"NLDATMYMM", limits_of(U"NLDATMYMM"), nldatmymm_pat, true, vxfmtnldatmyms, datetime},
    {U"NLDATMYQ", limits_of(U"NLDATMYQ"), nldatmyq_candidates, false, nullptr, datetime},
    {U"NLDATMYQL", limits_of(U"NLDATMYQL"), nldatmyql_pat, true, vxfmtnldatmyqs, datetime},
    {U"NLDATMYQM", limits_of(U"NLDATMYQM"), nldatmyqm_pat, true, vxfmtnldatmyqs, datetime},
    {U"NLDATMYR", limits_of(U"NLDATMYR"), nldatmyr_candidates, false, nullptr, datetime},
    {U"NLDATMYW", limits_of(U"NLDATMYW"), nldatmyw_candidates, false, nullptr, datetime},
    {U"NLDATMTM", limits_of(U"NLDATMTM"), time_candidates, false, vxfmtzfmtod, datetime},
    {U"NLDATMTZ", limits_of(U"NLDATMTZ"), time_candidates, false, vxfmtzfmtod, datetime, true},
    {U"NLTIME", limits_of(U"NLTIME"), time_candidates, false, vxfmtzfmtime, time},
    {U"NLTIMAP", limits_of(U"NLTIMAP"), time_12h_candidates, false, vxfmtzfmtimm, time},
};

constexpr const candidate_format& datm_format(std::u32string_view name) {
    for (const candidate_format& f : datm_formats)
        if (f.name == name) return f;
    throw "no such datetime format";  // a compile-time error
}

// The field-by-field siblings: the datetime's date part, written by the NLDATE sibling. The inner
// call checks no limits (the datetime row's were checked) and shows no decimals.
status on_date_part(FmtCall& call, void* extra, registry::Limits limits, format_fn date_sibling) {
    const Start start = begin_nl_format(call, limits);
    if (!start.proceed) return start.code;
    if (calendar::zdatrng(call, calendar::range_kind_datetime) != calendar::range_ok) return st::ok;
    const double day = calendar::date_part(*static_cast<const double*>(call.input));
    FmtCall date_call = call;
    date_call.input = &day;
    date_call.decimals = 0;
    date_call.flags = static_cast<std::uint8_t>(call.flags & ~call_flag_check_limits);
    const status code = date_sibling(&date_call, extra);
    call.produced = date_call.produced;
    return code;
}

}  // namespace
}  // namespace vxlocfmt::nldate

using namespace vxlocfmt;

#define VX_DATETIME_FORMAT(fn, name)                                                            \
    VX_EXPORT status fn(FmtCall* call, void* extra) {                                          \
        static constexpr const nldate::candidate_format& format = nldate::datm_format(U"" name); \
        return nldate::format_by_candidates(*call, extra, format);                             \
    }

VX_DATETIME_FORMAT(vxfmtnldatm, "NLDATM")
VX_DATETIME_FORMAT(vxfmtnldatmap, "NLDATMAP")
VX_DATETIME_FORMAT(vxfmtnldatmz, "NLDATMZ")
VX_DATETIME_FORMAT(vxfmtnldatml, "NLDATML")
VX_DATETIME_FORMAT(vxfmtnldatmm, "NLDATMM")
VX_DATETIME_FORMAT(vxfmtnldatms, "NLDATMS")
VX_DATETIME_FORMAT(vxfmtnldatmdt, "NLDATMDT")
VX_DATETIME_FORMAT(vxfmtnldatmw, "NLDATMW")
VX_DATETIME_FORMAT(vxfmtnldatmwz, "NLDATMWZ")
VX_DATETIME_FORMAT(vxfmtnldatmwn, "NLDATMWN")
VX_DATETIME_FORMAT(vxfmtnldatmmn, "NLDATMMN")
VX_DATETIME_FORMAT(vxfmtnldatmmd, "NLDATMMD")
VX_DATETIME_FORMAT(vxfmtnldatmmdl, "NLDATMMDL")
VX_DATETIME_FORMAT(vxfmtnldatmmdm, "NLDATMMDM")
VX_DATETIME_FORMAT(vxfmtnldatmym, "NLDATMYM")
VX_DATETIME_FORMAT(vxfmtnldatmyml, "NLDATMYML")
VX_DATETIME_FORMAT(vxfmtnldatmymm, "NLDATMYMM")
VX_DATETIME_FORMAT(vxfmtnldatmyq, "NLDATMYQ")
VX_DATETIME_FORMAT(vxfmtnldatmyql, "NLDATMYQL")
VX_DATETIME_FORMAT(vxfmtnldatmyqm, "NLDATMYQM")
VX_DATETIME_FORMAT(vxfmtnldatmyr, "NLDATMYR")
VX_DATETIME_FORMAT(vxfmtnldatmyw, "NLDATMYW")
VX_DATETIME_FORMAT(vxfmtnldatmtm, "NLDATMTM")
VX_DATETIME_FORMAT(vxfmtnldatmtz, "NLDATMTZ")
VX_DATETIME_FORMAT(vxfmtnltime, "NLTIME")
VX_DATETIME_FORMAT(vxfmtnltimap, "NLTIMAP")

#undef VX_DATETIME_FORMAT

// The two internal fall-backs have no registry rows and are not exported.
extern "C" status vxfmtnldatmss(FmtCall* call, void* extra) {
    static constexpr const nldate::candidate_format& format = nldate::datm_format(U"NLDATMSS");
    return nldate::format_by_candidates(*call, extra, format);
}
extern "C" status vxfmtnldatmssd(FmtCall* call, void* extra) {
    return nldate::on_date_part(*call, extra, nldate::internal_limits, vxfmtnldates);
}
VX_EXPORT status vxfmtnldatmmds(FmtCall* call, void* extra) {
    return nldate::on_date_part(*call, extra, registry::limits_of(U"NLDATMMDS"), vxfmtnldatemds);
}
VX_EXPORT status vxfmtnldatmyms(FmtCall* call, void* extra) {
    return nldate::on_date_part(*call, extra, registry::limits_of(U"NLDATMYMS"), vxfmtnldateyms);
}
VX_EXPORT status vxfmtnldatmyqs(FmtCall* call, void* extra) {
    return nldate::on_date_part(*call, extra, registry::limits_of(U"NLDATMYQS"), vxfmtnldateyqs);
}
