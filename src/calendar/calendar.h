/*
 * The calendar subsystem in one include: day numbers and the 4000-year calendar, Julian and
 * calendar-date conversions, the year cut-off, clock parts, week numbering, the missing-value
 * field and range guard, the digit writers and the actual/actual day count.
 *
 *   #include "calendar/calendar.h"
 *   double day = vxlocfmt::calendar::zmdy(1, 3, 2024);   // 23378
 */
#pragma once

#include "calendar/calendar_abi.h"
#include "calendar/clock_parts.h"
#include "calendar/date_conversions.h"
#include "calendar/day_count.h"
#include "calendar/day_number.h"
#include "calendar/digits.h"
#include "calendar/missing_value.h"
#include "calendar/week_numbering.h"
#include "calendar/year_cutoff.h"
