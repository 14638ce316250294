/*
 * What a format's value or an informat's result means, so callers can convert their own date
 * and time types: days since 1960-01-01, seconds since 1960-01-01T00:00:00, seconds since
 * midnight, or a plain number.
 *
 *   format_value_kind("NLDATM")      // ValueKind::datetime
 *   informat_value_kind("@NLTIME")   // ValueKind::time
 */
#pragma once

#include <string_view>

namespace vxhost {

enum class ValueKind { number, date, datetime, time };

// By the row's name (upper case, '@' allowed): NLDATE*, WEEK*, YYWEEK* dates; NLDATM*, DTWEEKV
// datetimes; NLTIM*, TIME, TIMEAMPM, TOD times; everything else numbers.
ValueKind format_value_kind(std::string_view name);
// As above for the registry's informats; the any-date reader's names by their template rows
// ("ANYDATE" a datetime); the classic informats numbers.
ValueKind informat_value_kind(std::string_view name);

const char* value_kind_name(ValueKind kind);  // "number", "date", "datetime", "time"

}  // namespace vxhost
