/*
 * The pattern readers of the locale date, datetime and time informats: one locale pattern (a
 * property number or a literal) read by getdate_fixlen, the parts checked against the ranges of
 * a date, a datetime or a time, and the value written only when they hold.
 *
 *   double v;
 *   std::int32_t code = dateread::zkpdate(call, text, nullptr, 28, &v);   // 0: v is a day number
 */
#pragma once

#include <cstdint>
#include <string_view>

#include "frame/abi.h"

namespace vxlocfmt::dateread {

// ---- Interface ----------------------------------------------------------------------------

// A part outside its range, or missing.
inline constexpr std::int32_t pattern_out_of_range = -3;

// With a null `pattern` and a length from 1 on, the length is the number of the locale property
// whose text is the pattern; without the call's property table that answers -1. Otherwise the
// answer is getdate_fixlen's code (0 or 2) when the parts are in range, and `result` is written;
// else pattern_out_of_range (a text the pattern does not fit included), nothing written:
//   zkpdate: the date part, a day number in [-138061, 6589336);
//   zkptime: the time part, not missing and not negative (no upper bound);
//   zkpdttm: date part in range and time part in [0, 86400): date * 86400 + time.
std::int32_t zkpdate(const FmtCall& call, std::u32string_view text, const wchar* pattern, std::int32_t length,
                     double* result);
std::int32_t zkptime(const FmtCall& call, std::u32string_view text, const wchar* pattern, std::int32_t length,
                     double* result);
std::int32_t zkpdttm(const FmtCall& call, std::u32string_view text, const wchar* pattern, std::int32_t length,
                     double* result);

}  // namespace vxlocfmt::dateread
