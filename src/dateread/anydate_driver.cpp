// The ANYDATE driver and its date and time views.
#include <algorithm>
#include <cmath>

#include "calendar/missing_value.h"
#include "dateread/anydate_index.h"
#include "dateread/compiled_pattern.h"
#include "dateread/dateread_exports.h"
#include "dateread/row_reader.h"
#include "dateread/template_facts.h"
#include "dateread/text_preparation.h"
#include "dateread/value_builder.h"

namespace vxlocfmt::dateread {
namespace {

// The row's value as a datetime, or missing; `four_digit_year` reads its "%y" as "%Y". The
// compiled program reads, or (`compiled` off, the plain walk) the pattern text itself.
double try_row(std::size_t r, std::u32string_view text, bool all_digit, bool four_digit_year, bool compiled) {
    read_slots slots;
    const bool read = compiled ? read_compiled(r, text, all_digit, four_digit_year, slots)
                               : read_pattern(pattern_view(r), text, all_digit, four_digit_year, slots);
    if (!read) return calendar::missing_value();
    std::int32_t status_word = 0;
    const double v = build_value(slots, template_facts[r].kind, template_facts[r].local_zone, status_word);
    return status_word == status_date ? v * 86400.0 : v;
}

// The plain walk's admission: length bounds and the colon rule.
bool admitted(std::size_t r, std::size_t length, bool colon) {
    const auto n = static_cast<std::int64_t>(length);
    if (n < vxfmt_templates[r].any_min || n > any_max(r)) return false;
    return colon || template_facts[r].kind != value_kind::time;
}

// Tries row r, then (when `retry` allows) its "%y" as "%Y"; a non-missing value wins.
bool try_with_retry(std::size_t r, const prepared_text& t, bool retry, bool compiled, anydate_answer& answer) {
    for (const bool four : {false, true}) {
        if (four && !(retry && template_facts[r].has_two_digit_year)) break;
        const double v = try_row(r, t.view(), t.all_digit, four, compiled);
        if (!calendar::is_nan(v)) {
            answer = {v, static_cast<std::int32_t>(r), four};
            return true;
        }
    }
    return false;
}

}  // namespace

anydate_answer read_anydate(std::u32string_view text, bool use_index) {
    anydate_answer answer{calendar::missing_value(), -1, false};
    prepared_text t;
    if (use_index) {
        // The traits of the text as given tell whether preparing would change it; mostly it
        // would not, and the text is read in place with one scan fewer.
        const std::u32string_view used = text.substr(0, std::min(text.size(), anydate_text_limit));
        text_traits traits = traits_of(used);
        if (traits.squeeze) {
            prepare_text(text, anydate_text_limit, false, t);
            traits = traits_of(t.view());
        } else {
            t.data = used.data();
            t.length = used.size();
            t.all_digit = is_all_digit(used);
        }
        const row_set rows = candidate_rows(t.view(), traits);
        const bool retry = retry_may_differ(traits, t.all_digit);
        for (std::size_t r = rows.first(); r < anydate_row_count; r = rows.next(r))
            if (runs_fit(r, traits) && try_with_retry(r, t, retry, true, answer)) return answer;
        return answer;
    }
    prepare_text(text, anydate_text_limit, false, t);
    const bool colon = t.view().find(U':') != std::u32string_view::npos;
    for (std::size_t r = 0; r < anydate_row_count; ++r)
        if (admitted(r, t.length, colon) && try_with_retry(r, t, true, false, answer)) return answer;
    return answer;
}

}  // namespace vxlocfmt::dateread

using namespace vxlocfmt;

namespace {

std::u32string_view call_text(const FmtCall* call) {
    const std::int32_t n = std::max(0, std::min(call->input_length, call->text_limit));
    return call->input && n > 0 ? std::u32string_view(static_cast<const wchar*>(call->input), static_cast<std::size_t>(n))
                                : std::u32string_view();
}

// The driver's datetime for the call, or missing; nothing is read without a record or output.
double anydate_of(FmtCall* call) {
    if (!call || !call->output) return calendar::missing_value();
    return dateread::read_anydate(call_text(call)).datetime;
}

void store(FmtCall* call, double v) {
    if (call && call->output) *static_cast<double*>(call->output) = v;
}

}  // namespace

VX_EXPORT status dtmAnyDateTime(FmtCall* call, void*) {
    store(call, anydate_of(call));
    return st::ok;
}

VX_EXPORT status dtmAnyDate(FmtCall* call, void*) {
    double v = anydate_of(call);
    // Whole seconds, then whole days, both toward zero: one second before day 0 is day 0 (kept).
    if (!calendar::is_nan(v)) v = std::trunc(std::trunc(v) / 86400.0);
    store(call, v);
    return st::ok;
}

VX_EXPORT status dtmAnyTime(FmtCall* call, void*) {
    double v = anydate_of(call);
    if (!calendar::is_nan(v)) v = std::fmod(v, 86400.0);
    store(call, v);
    return st::ok;
}

VX_EXPORT std::int32_t dtm_explain(const wchar* name, std::int32_t name_length, const wchar* text, std::int32_t length,
                                   double* result, std::int32_t* four_digit_year) {
    const std::u32string_view n = name && name_length > 0 ? std::u32string_view(name, static_cast<std::size_t>(name_length))
                                                          : std::u32string_view();
    const std::u32string_view t = text && length > 0 ? std::u32string_view(text, static_cast<std::size_t>(length))
                                                     : std::u32string_view();
    double value = calendar::missing_value();
    std::int32_t row = -1, four = 0;
    if (n == U"ANYDATE") {
        const dateread::anydate_answer a = dateread::read_anydate(t);
        value = a.datetime;
        row = a.row;
        four = a.four_digit_year;
    } else {
        std::int32_t status_word = 0;
        dateread::read_named(n, nullptr, t, &value, &status_word, true, &row);
        if (calendar::is_nan(value)) row = -1;
    }
    if (result) *result = value;
    if (four_digit_year) *four_digit_year = four;
    return row;
}
