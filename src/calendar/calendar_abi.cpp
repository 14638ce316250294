#include "calendar/calendar_abi.h"

#include "calendar/clock_parts.h"
#include "calendar/date_conversions.h"
#include "calendar/missing_value.h"

namespace cal = vxlocfmt::calendar;

VX_EXPORT double vxfmtzdatjul(double julian) { return cal::day_from_julian(julian); }

VX_EXPORT double vxfmtzjuldat(double day_number) { return cal::julian_from_day(day_number); }

VX_EXPORT vxlocfmt::status vxfmtzymdjul(double julian, double* year, double* month, double* day) {
    // Outputs the host leaves null are simply not written.
    double y = 0, m = 0, d = 0;
    cal::civil_from_julian(julian, &y, &m, &d);
    if (year) *year = y;
    if (month) *month = m;
    if (day) *day = d;
    return vxlocfmt::st::ok;
}

VX_EXPORT double vxfmtzjulymd(double year, double month, double day) {
    return cal::julian_from_civil(year, month, day);
}

VX_EXPORT double vxfmtzhour(double x) { return cal::clock_hour(x); }
VX_EXPORT double vxfmtzminute(double x) { return cal::clock_minute(x); }
VX_EXPORT double vxfmtzsecond(double x) { return cal::clock_second(x); }
VX_EXPORT double vxfmtzdatprt(double datetime) { return cal::date_part(datetime); }
VX_EXPORT double vxfmtztimprt(double datetime) { return cal::time_part(datetime); }
