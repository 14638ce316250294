/*
 * Clock parts of a datetime (seconds from 1960-01-01T00:00:00) or a time (seconds since
 * midnight): hour, minute, second, and the date and time parts of a datetime. Each refuses a
 * value outside the datetime range, NaN included, with the missing value.
 *
 *   double h = calendar::clock_hour(-1);     // 23: one second before day 0
 *   double d = calendar::date_part(-1);      // -1, and time_part(-1) is 86399
 */
#pragma once

namespace vxlocfmt::calendar {

// Hour 0..23 of the day; a time past one day wraps (30 hours gives 6).
double clock_hour(double x);
// Minute 0..59.
double clock_minute(double x);
// Seconds within the minute, [0, 60), fraction kept.
double clock_second(double x);
// Day number of the datetime's date. A NaN comes back unchanged.
double date_part(double x);
// Seconds since midnight of the datetime's day, [0, 86400).
double time_part(double x);

}  // namespace vxlocfmt::calendar
