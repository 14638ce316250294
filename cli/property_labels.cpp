#include "property_labels.h"

#include <iterator>

#include "locale/property_numbers.h"

namespace vxcli {
namespace {

namespace prop = vxlocfmt::locale::prop;

// Runs of properties; a run of more than one numbers its members from 1 (months, weekdays from
// Sunday, quarters).
struct Run {
    std::size_t first;
    std::size_t count;
    const char* label;
};

constexpr Run runs[] = {
    {prop::locale_id, 1, "locale id"},
    {prop::language, 1, "language"},
    {prop::script, 1, "script"},
    {prop::territory, 1, "territory"},
    {prop::calendar_type, 1, "calendar of the names and patterns"},
    {prop::calendar_code, 1, "calendar code (TH, TW, JP)"},
    {prop::date_order, 1, "date order"},
    {prop::default_calendar, 1, "the locale's own calendar"},
    {prop::first_weekday, 1, "first weekday (1 Sunday)"},
    {prop::minimal_days, 1, "minimal days in the first week"},
    {prop::display_name, 1, "display name"},
    {prop::numbering_system, 1, "numbering system"},
    {prop::percent_sign, 1, "percent sign"},
    {13, 15, "unused"},
    {prop::date_pattern, 1, "pattern: long date (%x)"},
    {prop::date_pattern_medium, 1, "pattern: medium date (%x family)"},
    {prop::medium_date, 1, "pattern: medium date"},
    {prop::long_date, 1, "pattern: long date"},
    {prop::full_date, 1, "pattern: full date"},
    {prop::weekday_date, 1, "pattern: weekday, day, month, year"},
    {prop::year_month_long, 1, "pattern: wide month and year"},
    {prop::year_month, 1, "pattern: month and year"},
    {prop::month_day_long, 1, "pattern: wide month and day"},
    {prop::month_day, 1, "pattern: month and day"},
    {prop::year_long, 1, "pattern: year"},
    {prop::year_short, 1, "pattern: two-digit year"},
    {prop::year_quarter_long, 1, "pattern: wide quarter and year"},
    {prop::year_quarter, 1, "pattern: quarter and year"},
    {prop::week_pattern, 1, "pattern: week date"},
    {prop::year_week, 1, "pattern: year and week"},
    {prop::datetime_12h, 1, "pattern: medium date, time with seconds"},
    {prop::short_datetime_12h, 1, "pattern: short date, time"},
    {prop::medium_datetime, 1, "pattern: medium date and time"},
    {prop::short_datetime, 1, "pattern: short date and time"},
    {prop::medium_date_short_time, 1, "pattern: medium date, short time"},
    {prop::long_datetime, 1, "pattern: long date, medium time"},
    {prop::full_datetime, 1, "pattern: full date, medium time"},
    {prop::weekday_datetime, 1, "pattern: weekday date, medium time"},
    {prop::time_12h, 1, "pattern: time with seconds"},
    {prop::time_pattern, 1, "pattern: medium time (%X)"},
    {prop::short_time, 1, "pattern: short time"},
    {prop::short_date, 1, "pattern: short date"},
    {prop::iso_date, 1, "pattern: ISO 8601 date"},
    {prop::iso_datetime, 1, "pattern: ISO 8601 datetime"},
    {prop::short_date_medium_time, 1, "pattern: short date, medium time"},
    {prop::month_abbrev, 12, "month name, abbreviated"},
    {prop::month_wide, 12, "month name, wide"},
    {prop::month_abbrev_standalone, 12, "month name, abbreviated, stand-alone"},
    {prop::month_wide_standalone, 12, "month name, wide, stand-alone"},
    {prop::weekday_abbrev, 7, "weekday name, abbreviated"},
    {prop::weekday_wide, 7, "weekday name, wide"},
    {prop::weekday_abbrev_standalone, 7, "weekday name, abbreviated, stand-alone"},
    {prop::weekday_wide_standalone, 7, "weekday name, wide, stand-alone"},
    {prop::quarter_abbrev, 4, "quarter name, abbreviated"},
    {prop::quarter_wide, 4, "quarter name, wide"},
    {prop::quarter_abbrev_standalone, 4, "quarter name, abbreviated, stand-alone"},
    {prop::quarter_wide_standalone, 4, "quarter name, wide, stand-alone"},
    {prop::am, 1, "AM"},
    {prop::pm, 1, "PM"},
    {prop::date_separator, 1, "date separator"},
    {prop::time_separator, 1, "time separator"},
    {prop::currency_international, 1, "currency: ISO code"},
    {prop::currency_local, 1, "currency: symbol"},
    {prop::mon_decimal_point, 1, "money: decimal point"},
    {prop::mon_thousands_sep, 1, "money: group separator"},
    {prop::mon_grouping, 1, "money: grouping"},
    {prop::mon_positive_sign, 1, "money: positive sign"},
    {prop::mon_negative_sign, 1, "money: negative sign"},
    {prop::int_frac_digits, 1, "money: international fraction digits"},
    {prop::frac_digits, 1, "money: fraction digits"},
    {prop::mon_p_cs_precedes, 1, "money: p_cs_precedes"},
    {prop::mon_p_sep_by_space, 1, "money: p_sep_by_space"},
    {prop::mon_n_cs_precedes, 1, "money: n_cs_precedes"},
    {prop::mon_n_sep_by_space, 1, "money: n_sep_by_space"},
    {prop::mon_p_sign_posn, 1, "money: p_sign_posn"},
    {prop::mon_n_sign_posn, 1, "money: n_sign_posn"},
    {prop::local_currency_key, 2, "currency key"},
    {prop::decimal_point, 1, "number: decimal point"},
    {prop::thousands_sep, 1, "number: group separator"},
    {prop::grouping, 1, "number: grouping"},
    {prop::positive_sign, 1, "number: positive sign"},
    {prop::negative_sign, 1, "number: negative sign"},
    {prop::p_cs_precedes, 1, "number: p_cs_precedes"},
    {prop::p_sep_by_space, 1, "number: p_sep_by_space"},
    {prop::n_cs_precedes, 1, "number: n_cs_precedes"},
    {prop::n_sep_by_space, 1, "number: n_sep_by_space"},
    {prop::p_sign_posn, 1, "number: p_sign_posn"},
    {prop::n_sign_posn, 1, "number: n_sign_posn"},
    {prop::locale_number_key, 4, "number convention key"},
    {prop::decimal_pattern_source, 1, "source: decimal pattern"},
    {prop::currency_pattern_source, 1, "source: currency pattern"},
};

// Every number from 0 to 188 in exactly one run, in order.
constexpr bool runs_cover_the_table() {
    std::size_t next = 0;
    for (const Run& run : runs) {
        if (run.first != next) return false;
        next += run.count;
    }
    return next == 189;
}
static_assert(runs_cover_the_table());

}  // namespace

std::string property_label(std::size_t number) {
    for (const Run& run : runs) {
        if (number < run.first || number >= run.first + run.count) continue;
        if (run.count == 1 || run.first == 13) return run.label;
        return std::string(run.label) + ", " + std::to_string(number - run.first + 1);
    }
    return "unknown";
}

}  // namespace vxcli
