/*
 * The calendar routines the library exports to the host, by their C names. Each is a thin shell
 * over the typed functions of date_conversions.h and clock_parts.h; values are doubles and a
 * refusal answers the missing value.
 *
 *   double day = vxfmtzdatjul(2024001);     // 23376, 2024-01-01
 *   double hour = vxfmtzhour(-1);           // 23
 */
#pragma once

#include "frame/abi.h"

// Julian date yyyyddd to day number.
VX_EXPORT double vxfmtzdatjul(double julian);
// Day number to Julian date; a NaN comes back unchanged.
VX_EXPORT double vxfmtzjuldat(double day_number);
// Julian date to year, month (1..12) and day; missing in all three on failure. Answers 0.
VX_EXPORT vxlocfmt::status vxfmtzymdjul(double julian, double* year, double* month, double* day);
// Year, month, day to Julian date.
VX_EXPORT double vxfmtzjulymd(double year, double month, double day);
// Hour 0..23, minute 0..59 and second [0, 60) of a datetime or time.
VX_EXPORT double vxfmtzhour(double x);
VX_EXPORT double vxfmtzminute(double x);
VX_EXPORT double vxfmtzsecond(double x);
// Day number of a datetime's date (a NaN comes back unchanged), and seconds since its midnight.
VX_EXPORT double vxfmtzdatprt(double datetime);
VX_EXPORT double vxfmtztimprt(double datetime);
