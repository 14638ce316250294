/*
 * The any-date reader's template table `vxfmt_templates`: 148 rows in their fixed order, one row
 * per line. Rows of one name are consecutive and tried in table order; the order is the
 * tie-break contract (month-day-year before day-month-year before year-month-day). "DUMMY" ends
 * the table. Exported as it stands; the reader and its index are built from this one copy.
 *
 *   const template_row& row = vxfmt_templates[74];   // B8601DA, "%P%Y%m%d"
 *   std::u32string_view(row.pattern);                 // pattern in the %-directive language
 */
#pragma once

#include <cstddef>
#include <cstdint>

#include "frame/abi.h"

namespace vxlocfmt::dateread {

// One row, in the host's layout.
struct template_row {
    const wchar* name;         // informat name, terminated
    std::int32_t min_length;   // bounds of the text when the row is chosen by name
    std::int32_t max_length;   // (raised by 10 for a pattern with "%S": fractional seconds)
    std::int32_t width;        // nominal width, for the host; the reader never consults it
    std::int32_t any_min;      // bounds when tried as an "ANYDATE" row
    std::int64_t any_max;
    const wchar* kind;         // "DTE" date, "TME" time, "DTM" datetime
    const wchar* pattern;      // %-directives read in the input direction
};
static_assert(offsetof(template_row, any_max) == 24 && offsetof(template_row, pattern) == 40);
static_assert(sizeof(template_row) == 48);

inline constexpr std::size_t template_count = 148;
inline constexpr std::size_t anydate_row_count = 74;  // rows 0 to 73
inline constexpr std::size_t dummy_row = 147;

}  // namespace vxlocfmt::dateread

extern "C" {
// clang-format off
__attribute__((visibility("default"))) inline constexpr vxlocfmt::dateread::template_row
vxfmt_templates[vxlocfmt::dateread::template_count] = {
    {U"ANYDATE", 0, 0, 0, 6, 8, U"DTE", U"%P%m%d%y"},  // 0
    {U"ANYDATE", 0, 0, 0, 6, 8, U"DTE", U"%P%d%m%y"},  // 1
    {U"ANYDATE", 0, 0, 0, 6, 8, U"DTE", U"%P%y%m%d"},  // 2
    {U"ANYDATE", 0, 0, 0, 5, 32, U"DTE", U"%P%y%j"},  // 3
    {U"ANYDATE", 0, 0, 0, 3, 32, U"DTE", U"%P%y%q"},  // 4
    {U"ANYDATE", 0, 0, 0, 4, 32, U"DTE", U"%P%yQ%q"},  // 5
    {U"ANYDATE", 0, 0, 0, 2, 3, U"TME", U"%P%i"},  // 6
    {U"ANYDATE", 0, 0, 0, 4, 6, U"TME", U"%P%i%c%M"},  // 7
    {U"ANYDATE", 0, 0, 0, 4, 32, U"DTE", U"%P%m%y"},  // 8
    {U"ANYDATE", 0, 0, 0, 4, 32, U"DTE", U"%P%y%c%q"},  // 9
    {U"ANYDATE", 0, 0, 0, 4, 32, U"DTE", U"%P%y%m"},  // 10
    {U"ANYDATE", 0, 0, 0, 5, 6, U"TME", U"%P%i%c%p"},  // 11
    {U"ANYDATE", 0, 0, 0, 5, 32, U"DTE", U"%P%m%c%y"},  // 12
    {U"ANYDATE", 0, 0, 0, 5, 32, U"DTE", U"%P%mM%y"},  // 13
    {U"ANYDATE", 0, 0, 0, 5, 7, U"DTE", U"%P%ub%y"},  // 14
    {U"ANYDATE", 0, 0, 0, 5, 32, U"DTE", U"%P%y%c%m"},  // 15
    {U"ANYDATE", 0, 0, 0, 5, 32, U"DTE", U"%P%y%r"},  // 16
    {U"ANYDATE", 0, 0, 0, 5, 32, U"DTE", U"%P%y%ub"},  // 17
    {U"ANYDATE", 0, 0, 0, 5, 32, U"DTE", U"%P%yM%m"},  // 18
    {U"ANYDATE", 0, 0, 0, 6, 32, U"DTE", U"%P%y%c%r"},  // 19
    {U"ANYDATE", 0, 0, 0, 6, 32, U"DTE", U"%P%yQ%r"},  // 20
    {U"ANYDATE", 0, 0, 0, 6, 10, U"DTE", U"%P%d%ub%y"},  // 21
    {U"ANYDATE", 0, 0, 0, 6, 12, U"TME", U"%P%i%c%M%%p"},  // 22
    {U"ANYDATE", 0, 0, 0, 6, 13, U"TME", U"%P%i%c%M%c%p"},  // 23
    {U"ANYDATE", 0, 0, 0, 6, 20, U"TME", U"%P%i%c%M%c%S%p"},  // 24
    {U"ANYDATE", 0, 0, 0, 6, 20, U"TME", U"%P%i%c%M%c%S%c%p"},  // 25
    {U"ANYDATE", 0, 0, 0, 6, 20, U"TME", U"%P%i%c%M%c%S"},  // 26
    {U"ANYDATE", 0, 0, 0, 8, 11, U"DTE", U"%P%d-%ub-%y"},  // 27
    {U"ANYDATE", 0, 0, 0, 8, 11, U"DTE", U"%P%d/%ub/%y"},  // 28
    {U"ANYDATE", 0, 0, 0, 8, 10, U"DTE", U"%P%m%c%d%c%y"},  // 29
    {U"ANYDATE", 0, 0, 0, 8, 10, U"DTE", U"%P%d%c%m%c%y"},  // 30
    {U"ANYDATE", 0, 0, 0, 8, 10, U"DTE", U"%P%y%c%m%c%d"},  // 31
    {U"ANYDATE", 0, 0, 0, 8, 15, U"TME", U"%P%i:%M:%S"},  // 32
    {U"ANYDATE", 0, 0, 0, 9, 13, U"TME", U"%P%i:%M:%SZ"},  // 33
    {U"ANYDATE", 0, 0, 0, 10, 23, U"DTM", U"%P%b%c%d%c%y%c%H%c%M%c%S%c%p"},  // 34
    {U"ANYDATE", 0, 0, 0, 10, 12, U"DTM", U"%P%d%ub%y%c%H"},  // 35
    {U"ANYDATE", 0, 0, 0, 10, 14, U"DTM", U"%P%d-%ub-%y%c%H"},  // 36
    {U"ANYDATE", 0, 0, 0, 10, 14, U"DTM", U"%P%d/%ub/%y%c%H"},  // 37
    {U"ANYDATE", 0, 0, 0, 10, 10, U"DTE", U"%P%y-%m-%d"},  // 38
    {U"ANYDATE", 0, 0, 0, 11, 11, U"DTE", U"%P%d/%ub/%y"},  // 39
    {U"ANYDATE", 0, 0, 0, 11, 11, U"DTE", U"%P%d-%ub-%y"},  // 40
    {U"ANYDATE", 0, 0, 0, 11, 17, U"DTE", U"%P%b%c%d,%c%y"},  // 41
    {U"ANYDATE", 0, 0, 0, 11, 32, U"DTE", U"%P%B%c%d,%c%y"},  // 42
    {U"ANYDATE", 0, 0, 0, 12, 17, U"DTE", U"%P%d%c%b%c%y"},  // 43
    {U"ANYDATE", 0, 0, 0, 13, 15, U"DTM", U"%P%d%ub%y%c%H%c%M"},  // 44
    {U"ANYDATE", 0, 0, 0, 13, 15, U"DTM", U"%P%d%ub%y%c%i%c%p"},  // 45
    {U"ANYDATE", 0, 0, 0, 13, 17, U"DTM", U"%P%d-%ub-%y%c%H%c%M"},  // 46
    {U"ANYDATE", 0, 0, 0, 13, 15, U"DTM", U"%P%d/%ub/%y%c%i%c%p"},  // 47
    {U"ANYDATE", 0, 0, 0, 14, 20, U"TME", U"%P%i:%M:%S+:"},  // 48
    {U"ANYDATE", 0, 0, 0, 14, 40, U"DTM", U"%P%m%c%d%c%y%c%i%c%M"},  // 49
    {U"ANYDATE", 0, 0, 0, 15, 22, U"DTE", U"%P%a,%c%b%c%d,%c%y"},  // 50
    {U"ANYDATE", 0, 0, 0, 15, 22, U"DTM", U"%P%a,%c%d%c%b%c%y"},  // 51
    {U"ANYDATE", 0, 0, 0, 15, 40, U"DTM", U"%P%d%ub%y%c%H%c%M%c%S"},  // 52
    {U"ANYDATE", 0, 0, 0, 15, 42, U"DTM", U"%P%d-%ub-%y%c%H%c%M%c%S"},  // 53
    {U"ANYDATE", 0, 0, 0, 15, 42, U"DTM", U"%P%d/%ub/%y%c%H%c%M%c%S"},  // 54
    {U"ANYDATE", 0, 0, 0, 15, 18, U"DTM", U"%P%d%ub%y%c%i%c%M%c%p"},  // 55
    {U"ANYDATE", 0, 0, 0, 15, 20, U"DTM", U"%P%d-%ub-%y%c%i%c%M%c%p"},  // 56
    {U"ANYDATE", 0, 0, 0, 15, 20, U"DTM", U"%P%d/%ub/%y%c%i%c%M%c%p"},  // 57
    {U"ANYDATE", 0, 0, 0, 17, 40, U"DTM", U"%P%m%c%d%c%y%c%i%c%M%c%p"},  // 58
    {U"ANYDATE", 0, 0, 0, 17, 40, U"DTM", U"%P%m%c%d%c%y%c%i%c%M%c%S"},  // 59
    {U"ANYDATE", 0, 0, 0, 17, 40, U"DTM", U"%P%m%c%d%c%y%c%i%c%M%c%S%c%p"},  // 60
    {U"ANYDATE", 0, 0, 0, 18, 32, U"DTE", U"%P%d%c%B%c%y"},  // 61
    {U"ANYDATE", 0, 0, 0, 19, 40, U"DTM", U"%P%d%ub%y%c%i%c%M%c%S%c%p"},  // 62
    {U"ANYDATE", 0, 0, 0, 19, 42, U"DTM", U"%P%d-%ub-%y%c%i%c%M%c%S%c%p"},  // 63
    {U"ANYDATE", 0, 0, 0, 19, 42, U"DTM", U"%P%d/%ub/%y%c%i%c%M%c%S%c%p"},  // 64
    {U"ANYDATE", 0, 0, 0, 19, 26, U"DTM", U"%P%y-%m-%dT%H:%M:%S"},  // 65
    {U"ANYDATE", 0, 0, 0, 20, 24, U"DTM", U"%P%y-%m-%dT%H:%M:%SZ"},  // 66
    {U"ANYDATE", 0, 0, 0, 20, 37, U"DTM", U"%P%B%c%d,%c%y%c%H%c%M%c%S"},  // 67
    {U"ANYDATE", 0, 0, 0, 23, 28, U"DTE", U"%P%A,%c%b%c%d,%c%y"},  // 68
    {U"ANYDATE", 0, 0, 0, 23, 28, U"DTM", U"%P%A,%c%d%c%b%c%y"},  // 69
    {U"ANYDATE", 0, 0, 0, 25, 35, U"DTM", U"%P%y-%m-%dT%H:%M:%S%G%H:%M"},  // 70
    {U"ANYDATE", 0, 0, 0, 26, 30, U"DTM", U"%P%a%c%b%c%d%c%H%c%M%c%S%c%z%c%y"},  // 71
    {U"ANYDATE", 0, 0, 0, 29, 37, U"DTE", U"%P%A,%c%B%c%d,%c%y"},  // 72
    {U"ANYDATE", 0, 0, 0, 29, 37, U"DTE", U"%P%A,%c%d%c%B%c%y"},  // 73
    {U"B8601DA", 8, 10, 10, 10, 10, U"DTE", U"%P%Y%m%d"},  // 74
    {U"B8601DA", 10, 10, 10, 10, 10, U"DTE", U"%P%Y-%m-%d"},  // 75
    {U"B8601DJ", 15, 29, 19, 19, 29, U"DTM", U"%P%Y-%m-%d%c%H:%M:%S"},  // 76
    {U"B8601DN", 8, 10, 10, 10, 10, U"DTM", U"%P%Y%m%d"},  // 77
    {U"B8601DN", 10, 10, 10, 10, 10, U"DTM", U"%P%Y-%m-%d"},  // 78
    {U"B8601DT", 15, 26, 19, 19, 26, U"DTM", U"%P%Y%m%dT%H%M%S"},  // 79
    {U"B8601DT", 19, 26, 19, 19, 26, U"DTM", U"%P%Y-%m-%dT%H:%M:%S"},  // 80
    {U"B8601DZ", 16, 35, 26, 20, 24, U"DTM", U"%P%Y%m%dT%H%M%SZ"},  // 81
    {U"B8601DZ", 20, 35, 26, 20, 24, U"DTM", U"%P%Y-%m-%dT%H:%M:%SZ"},  // 82
    {U"B8601DZ", 20, 35, 26, 25, 35, U"DTM", U"%P%Y%m%dT%H%M%S%G%H%M"},  // 83
    {U"B8601DZ", 20, 35, 26, 25, 35, U"DTM", U"%P%Y-%m-%dT%H:%M:%S%G%H:%M"},  // 84
    {U"B8601LZ", 9, 20, 14, 14, 20, U"TME", U"%P%0i%M%S%G%H%M"},  // 85
    {U"B8601LZ", 9, 20, 14, 14, 20, U"TME", U"%P%0i%M%S%G%H%M"},  // 86
    {U"B8601LZ", 9, 20, 14, 14, 20, U"TME", U"%P%0i:%M:%S%G%H:%M"},  // 87
    {U"B8601LZ", 9, 20, 14, 14, 20, U"TME", U"%P%0i:%M:%S%G%H:%M"},  // 88
    {U"B8601TM", 6, 15, 8, 8, 15, U"TME", U"%P%0i%M%S"},  // 89
    {U"B8601TM", 8, 15, 8, 8, 15, U"TME", U"%P%0i:%M:%S"},  // 90
    {U"B8601TZ", 7, 20, 14, 9, 13, U"TME", U"%P%0i%M%SZ"},  // 91
    {U"B8601TZ", 9, 20, 14, 9, 13, U"TME", U"%P%0i:%M:%SZ"},  // 92
    {U"B8601TZ", 9, 20, 14, 14, 20, U"TME", U"%P%0i%M%S%G%H%M"},  // 93
    {U"B8601TZ", 9, 20, 14, 14, 20, U"TME", U"%P%0i:%M:%S%G%H:%M"},  // 94
    {U"E8601DA", 10, 10, 10, 10, 10, U"DTE", U"%P%Y-%m-%d"},  // 95
    {U"E8601DN", 10, 10, 10, 10, 10, U"DTM", U"%P%Y-%m-%d"},  // 96
    {U"E8601DT", 19, 26, 19, 19, 26, U"DTM", U"%P%Y-%m-%dT%H:%M:%S"},  // 97
    {U"E8601DZ", 20, 35, 26, 20, 24, U"DTM", U"%P%Y-%m-%dT%H:%M:%SZ"},  // 98
    {U"E8601DZ", 20, 35, 26, 25, 35, U"DTM", U"%P%Y-%m-%dT%H:%M:%S%G%H:%M"},  // 99
    {U"E8601LZ", 9, 20, 14, 14, 20, U"TME", U"%P%0i:%M:%S%G%H:%M"},  // 100
    {U"E8601TM", 8, 15, 8, 8, 15, U"TME", U"%P%0i:%M:%S"},  // 101
    {U"E8601TZ", 9, 20, 14, 9, 13, U"TME", U"%P%0i:%M:%SZ"},  // 102
    {U"E8601TZ", 9, 20, 14, 14, 20, U"TME", U"%P%0i:%M:%S%G%H:%M"},  // 103
    {U"DATE", 7, 32, 7, 7, 10, U"DTE", U"%P%d%ub%y"},  // 104
    {U"DATE", 7, 32, 7, 11, 11, U"DTE", U"%P%d%C%ub%C%y"},  // 105
    {U"DATETIME", 13, 40, 18, 7, 9, U"DTM", U"%P%d%ub%y"},  // 106
    {U"DATETIME", 13, 40, 18, 10, 12, U"DTM", U"%P%d%ub%y:%H"},  // 107
    {U"DATETIME", 13, 40, 18, 13, 15, U"DTM", U"%P%d%ub%y:%H:%M"},  // 108
    {U"DATETIME", 13, 40, 18, 16, 40, U"DTM", U"%P%d%ub%y:%H:%M:%S"},  // 109
    {U"DDMMYY", 6, 32, 6, 6, 8, U"DTE", U"%P%0d%0m%y"},  // 110
    {U"DDMMYY", 6, 32, 6, 8, 8, U"DTE", U"%P%0d%0m%Y"},  // 111
    {U"DDMMYY", 6, 32, 6, 8, 10, U"DTE", U"%P%d%c%m%c%y"},  // 112
    {U"HHMMSS", 1, 20, 8, 1, 2, U"TME", U"%H"},  // 113
    {U"HHMMSS", 1, 20, 8, 4, 4, U"TME", U"%0H%0M"},  // 114
    {U"HHMMSS", 1, 20, 8, 6, 6, U"TME", U"%0H%0M%0S"},  // 115
    {U"HHMMSS", 1, 20, 8, 7, 32, U"TME", U"%H:%M:%S"},  // 116
    {U"IS8601DA", 10, 10, 10, 10, 10, U"DTE", U"%P%Y-%m-%d"},  // 117
    {U"IS8601DN", 10, 10, 10, 10, 10, U"DTM", U"%P%Y-%m-%d"},  // 118
    {U"IS8601DT", 19, 26, 19, 19, 26, U"DTM", U"%P%Y-%m-%dT%H:%M:%S"},  // 119
    {U"IS8601DZ", 20, 35, 26, 20, 24, U"DTM", U"%P%Y-%m-%dT%H:%M:%SZ"},  // 120
    {U"IS8601DZ", 20, 35, 26, 25, 35, U"DTM", U"%P%Y-%m-%dT%H:%M:%S%G%H:%M"},  // 121
    {U"IS8601TM", 8, 15, 8, 8, 15, U"TME", U"%P%0i:%M:%S"},  // 122
    {U"IS8601TZ", 9, 20, 14, 9, 13, U"TME", U"%P%0i:%M:%SZ"},  // 123
    {U"IS8601TZ", 9, 20, 14, 14, 20, U"TME", U"%P%0i:%M:%S+00:00"},  // 124
    {U"JULIAN", 5, 32, 5, 5, 6, U"DTE", U"%P%y%j"},  // 125
    {U"JULIAN", 5, 32, 5, 7, 7, U"DTE", U"%P%Y%j"},  // 126
    {U"MDYAMPM", 8, 40, 19, 17, 40, U"DTM", U"%P%m/%d/%y %i:%M %p"},  // 127
    {U"MDYAMPM", 8, 40, 19, 17, 40, U"DTM", U"%P%m/%d/%y %i:%M:%S %p"},  // 128
    {U"MMDDYY", 6, 32, 6, 6, 8, U"DTE", U"%P%0m%0d%y"},  // 129
    {U"MMDDYY", 6, 32, 6, 8, 8, U"DTE", U"%P%0m%0d%Y"},  // 130
    {U"MMDDYY", 6, 32, 6, 8, 10, U"DTE", U"%P%m%c%d%c%y"},  // 131
    {U"MONYY", 5, 32, 5, 5, 7, U"DTE", U"%P%ub%y"},  // 132
    {U"TIME", 5, 32, 8, 2, 3, U"TME", U"%P%i"},  // 133
    {U"TIME", 5, 32, 8, 4, 6, U"TME", U"%P%i:%M"},  // 134
    {U"TIME", 5, 32, 8, 7, 20, U"TME", U"%P%i:%M:%S"},  // 135
    {U"XYYMMDD", 6, 20, 8, 6, 7, U"DTE", U"%P%0y%0m%0d"},  // 136
    {U"XYYMMDD", 6, 20, 8, 8, 9, U"DTE", U"%P%0y-%m-%d"},  // 137
    {U"XYYMMDD", 6, 20, 8, 10, 12, U"DTE", U"%P%Y-%m-%d"},  // 138
    {U"YYMMDD", 6, 32, 6, 4, 4, U"DTE", U"%P%0y%m"},  // 139
    {U"YYMMDD", 6, 32, 6, 5, 5, U"DTE", U"%P%y-%m"},  // 140
    {U"YYMMDD", 6, 32, 6, 6, 6, U"DTE", U"%P%0y%0m%0d"},  // 141
    {U"YYMMDD", 6, 32, 6, 8, 8, U"DTE", U"%P%Y%0m%0d"},  // 142
    {U"YYMMDD", 6, 32, 6, 8, 10, U"DTE", U"%P%y%c%m%c%d"},  // 143
    {U"YYMMN", 4, 6, 4, 4, 5, U"DTE", U"%P%0y%0m"},  // 144
    {U"YYMMN", 4, 6, 4, 6, 6, U"DTE", U"%P%Y%0m"},  // 145
    {U"YYQ", 4, 32, 4, 4, 32, U"DTE", U"%P%yQ%q"},  // 146
    {U"DUMMY", 0, 0, 0, 1, 1, U"DTE", U"%P"},  // 147
};
// clang-format on
}
