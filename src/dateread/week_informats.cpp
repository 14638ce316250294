// @WEEKU, @WEEKV and @WEEKW: what WEEKU, WEEKV, WEEKW and their YY relatives write, read back
// to the day number of that year, week and day (the first day of the week when the text has
// no day).
#include "dateread/week_reader.h"

#include <algorithm>
#include <cmath>

#include "calendar/date_conversions.h"
#include "calendar/day_number.h"
#include "calendar/missing_value.h"
#include "calendar/year_cutoff.h"
#include "text/wide_strings.h"

namespace vxlocfmt::dateread {
namespace {

constexpr bool is_digit(wchar c) { return c >= U'0' && c <= U'9'; }
constexpr bool skipped(wchar c) { return c == U' ' || c == U'-'; }

// The digits of a part, separators skipped; false on any other character or more than 9 digits.
bool digits_of(std::u32string_view part, std::int64_t& value, std::size_t& count) {
    value = 0;
    count = 0;
    for (const wchar c : part) {
        if (skipped(c)) continue;
        if (!is_digit(c) || ++count > 9) return false;
        value = value * 10 + (c - U'0');
    }
    return true;
}

// The cut-off the week informats place two-digit years by: 1960 when the option cannot be read
// (deliberately not the calendar's 1950).
constexpr std::int64_t week_default_cutoff = 1960;

}  // namespace

std::int32_t zkpweek(std::u32string_view text, wchar rule, std::int32_t, double* cell) {
    const std::size_t w = std::min(text.find(U'W'), text.find(U'w'));
    if (w == std::u32string_view::npos) return week_not_digits;
    std::int64_t year, week = 0, day = 1;
    std::size_t year_digits, at = w + 1, week_digits = 0;
    if (!digits_of(text.substr(0, w), year, year_digits) || year_digits == 0) return week_not_digits;
    while (at < text.size() && text[at] == U' ') ++at;
    for (; at < text.size() && week_digits < 2 && is_digit(text[at]); ++at, ++week_digits) week = week * 10 + (text[at] - U'0');
    if (week_digits == 0) return week_not_digits;
    std::size_t day_digits;
    std::int64_t given_day;
    if (!digits_of(text.substr(at), given_day, day_digits)) return week_not_digits;
    if (day_digits) day = given_day;

    if (year_digits <= 2) {
        const double cutoff = *cell;
        if (!(std::fabs(cutoff) < 1e9)) return week_out_of_limits;  // no year (or NaN) to place by
        year = calendar::place_two_digit_year(year, static_cast<std::int64_t>(cutoff));
    }
    if ((year < calendar::first_year || year > calendar::last_year) && year >= 100) return week_out_of_limits;
    if (week > 53 || day > 31) return week_out_of_limits;

    const double january_first = calendar::zmdy(1, 1, static_cast<double>(year));
    if (!calendar::in_day_range(january_first)) return week_out_of_limits;
    // 1 Sunday .. 7 Saturday. Counted here rather than by zwekday, whose answer for 1582-01-01
    // is deliberately -1; day 0 is a Friday.
    const std::int64_t wd = calendar::floor_mod(static_cast<std::int64_t>(january_first) + 5, 7) + 1;
    std::int64_t offset;
    switch (rule) {
    case U'V': offset = 2 - wd + 7 * (wd == 6 || wd == 7 ? week : week - 1) + day; break;
    case U'W': offset = 2 - wd + 7 * week + day - (wd <= 2 ? 7 : 0); break;   // weeks from the first Monday
    default: offset = 1 - wd + 7 * week + day - (wd == 1 ? 7 : 0); break;     // U: from the first Sunday
    }
    const double result = january_first - 1 + static_cast<double>(offset);
    if (!calendar::in_day_range(result)) return week_out_of_limits;
    *cell = result;
    return week_read;
}

namespace {

status week_informat(FmtCall& call, wchar rule) {
    const std::int32_t limit = std::max(0, std::min(call.input_length, call.text_limit));
    std::u32string_view text;
    if (call.input && limit > 0) text = {static_cast<const wchar*>(call.input), static_cast<std::size_t>(limit)};
    text = text.substr(0, text::strip_trailing_blanks(text));
    auto* cell = static_cast<double*>(call.output);
    if (cell) *cell = calendar::missing_value();  // what the host presets, kept on every failure
    if (text.empty()) return 1;
    if (!cell) return st::date_instance_not_found;
    // The cut-off travels to zkpweek in the result cell; a failed read leaves the missing value.
    *cell = static_cast<double>(calendar::year_cutoff_option().value_or(week_default_cutoff));
    if (zkpweek(text, rule, 1, cell) == week_read) return st::ok;
    *cell = calendar::missing_value();
    return st::date_instance_not_found;
}

}  // namespace
}  // namespace vxlocfmt::dateread

using namespace vxlocfmt;

VX_EXPORT status vxfmtweekui(FmtCall* call, void*) { return dateread::week_informat(*call, U'U'); }
VX_EXPORT status vxfmtweekvi(FmtCall* call, void*) { return dateread::week_informat(*call, U'V'); }
VX_EXPORT status vxfmtweekwi(FmtCall* call, void*) { return dateread::week_informat(*call, U'W'); }
