/*
 * Building a template row's value from what was read: the quarter gives its first month, a day
 * of year counts from 1 January, a missing day is 1, missing clock parts are 0 when any is
 * there, a zone brings the time to UTC (and the local-zone names back to local time), and the
 * row's kind picks the date, the time or date * 86400 + time (one fused multiply-add).
 *
 *   std::int32_t status = 0;
 *   double v = build_value(slots, value_kind::datetime, false, status);   // status 3, or missing
 */
#pragma once

#include <cstdint>

#include "dateread/row_reader.h"
#include "dateread/template_facts.h"

namespace vxlocfmt::dateread {

// Status word values.
inline constexpr std::int32_t status_date = 1;
inline constexpr std::int32_t status_time = 2;
inline constexpr std::int32_t status_datetime = 3;

// The day number of the slots' date, or missing.
double date_of(const read_slots& slots);
// The day number of a year (0 to 99 through the cut-off), month and day as read, or missing:
// date_of's answer for slots holding just these three.
double day_number_of(std::int64_t year, std::int64_t month, std::int64_t day);
// Seconds since midnight UTC (local for `local_zone`), or missing when no clock part was read.
double time_of(const read_slots& slots, bool local_zone);
// The row's value by its kind; writes the status word (left 0 for a datetime that is missing).
double build_value(const read_slots& slots, value_kind kind, bool local_zone, std::int32_t& status);

}  // namespace vxlocfmt::dateread
