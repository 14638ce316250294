// @NLDATE, @NLDATEW, @NLDATM, @NLDATMAP, @NLDATMW, @NLTIME and @NLTIMAP: the locale's own input
// patterns first, in the order of their lists, then the any-date reader under "DATE",
// "DATETIME" or "TIME".
#include <algorithm>
#include <cstdint>
#include <string_view>

#include "calendar/missing_value.h"
#include "dateread/dateread_exports.h"
#include "dateread/nl_pattern_readers.h"
#include "frame/instance.h"
#include "locale/property_numbers.h"
#include "locale/property_table.h"
#include "text/wide_strings.h"

namespace vxlocfmt::dateread {
namespace {

namespace prop = locale::prop;

// The full date and the full datetime are listed twice on purpose: each list keeps its five and
// seven tries, the second of the pair repeating the first.
constexpr std::int32_t vxfmtnldate_in_pat[] = {prop::date_pattern, prop::date_pattern_medium, prop::full_date,
                                               prop::full_date, prop::weekday_date};
constexpr std::int32_t vxfmtnldatm_in_pat[] = {prop::medium_datetime,  prop::short_datetime,    prop::full_datetime,
                                               prop::full_datetime,    prop::weekday_datetime,  prop::datetime_12h,
                                               prop::short_datetime_12h};
constexpr std::int32_t vxfmtnltime_in_pat[] = {prop::time_pattern};
static_assert(std::size(vxfmtnldate_in_pat) == 5 && std::size(vxfmtnldatm_in_pat) == 7);

constexpr status empty_field = 1;

// What the three informats share before and after their own tries.
struct prepared {
    std::u32string_view text;  // without trailing blanks
    bool proceed;              // false: `code` is the answer
    bool locale_patterns;      // the property table is there
    status code;
};

prepared prepare(FmtCall& call) {
    const std::int32_t limit = std::max(0, std::min(call.input_length, call.text_limit));
    std::u32string_view text;
    if (call.input && limit > 0) text = {static_cast<const wchar*>(call.input), static_cast<std::size_t>(limit)};
    text = text.substr(0, text::strip_trailing_blanks(text));
    Instance* instance = find_instance(call);
    if (!instance) return {text, false, false, st::date_instance_not_found};
    // Unlike the formats, a table that cannot be built still leaves the any-date reader.
    const bool table = call.property_cache || locale::fill_nlfmt_properties(call, *instance) == st::ok;
    if (!call.output) return {text, false, table, text.empty() ? empty_field : no_template_fits};
    *static_cast<double*>(call.output) = calendar::missing_value();  // what the host presets, kept
    if (text.empty()) return {text, false, table, empty_field};
    return {text, true, table, st::ok};
}

status fall_back(FmtCall& call, std::u32string_view text, std::u32string_view name) {
    auto* result = static_cast<double*>(call.output);
    std::int32_t status_word = 0;
    const status code = dtm_informat(name.data(), static_cast<std::int32_t>(name.size()), nullptr, text.data(),
                                     static_cast<std::int32_t>(text.size()), result, &status_word, 1);
    // A template that read the text but built no value (31FEB2020) has not read it.
    if (code == st::ok && calendar::is_nan(*result)) return no_template_fits;
    return code;
}

status nl_date_informat(FmtCall& call) {
    const prepared p = prepare(call);
    if (!p.proceed) return p.code;
    if (p.locale_patterns)
        for (const std::int32_t number : vxfmtnldate_in_pat) {
            double value;
            if (zkpdate(call, p.text, nullptr, number, &value) == 0) {
                *static_cast<double*>(call.output) = value;
                return st::ok;
            }
        }
    return fall_back(call, p.text, U"DATE");
}

status nl_datetime_informat(FmtCall& call) {
    const prepared p = prepare(call);
    if (!p.proceed) return p.code;
    if (p.locale_patterns) {
        bool have_partial = false;
        double partial = 0;
        for (const std::int32_t number : vxfmtnldatm_in_pat) {
            double value;
            const std::int32_t code = zkpdttm(call, p.text, nullptr, number, &value);
            if (code == 0) {
                *static_cast<double*>(call.output) = value;
                return st::ok;
            }
            // A date with only part of its time: the first one stands unless a complete one follows.
            if (code == 2 && !have_partial) {
                have_partial = true;
                partial = value;
            }
        }
        if (have_partial) {
            *static_cast<double*>(call.output) = partial;
            return st::ok;
        }
    }
    return fall_back(call, p.text, U"DATETIME");
}

status nl_time_informat(FmtCall& call) {
    const prepared p = prepare(call);
    if (!p.proceed) return p.code;
    if (p.locale_patterns)
        for (const std::int32_t number : vxfmtnltime_in_pat) {
            double value;
            const std::int32_t code = zkptime(call, p.text, nullptr, number, &value);
            if (code == 0 || code == 2) {
                *static_cast<double*>(call.output) = value;
                return st::ok;
            }
        }
    return fall_back(call, p.text, U"TIME");
}

}  // namespace
}  // namespace vxlocfmt::dateread

using namespace vxlocfmt;

VX_EXPORT status vxfmtnldatei(FmtCall* call, void*) { return dateread::nl_date_informat(*call); }
VX_EXPORT status vxfmtnldatmi(FmtCall* call, void*) { return dateread::nl_datetime_informat(*call); }
VX_EXPORT status vxfmtnltimei(FmtCall* call, void*) { return dateread::nl_time_informat(*call); }
