/*
 * The missing value and the guard every date, datetime and time format runs before writing.
 * The ordinary missing value is the NaN 0xFFFFFE0000000000; special missing values "._" and
 * ".A" to ".Z" differ from it in byte 5 only. A format shows a missing value as one character.
 *
 *   if (int r = calendar::zdatrng(call, calendar::range_kind_date); r != calendar::range_ok)
 *       return st::ok;   // the field is already written: "*"s or the missing-value character
 */
#pragma once

#include <bit>
#include <cstdint>
#include <string_view>

#include "frame/abi.h"

namespace vxlocfmt::calendar {

// ---- Interface ----------------------------------------------------------------------------

constexpr double missing_value();
constexpr bool is_nan(double x);

// Missing-value codes k: 1 "._", 2 "." (the ordinary one), 3 to 28 ".A" to ".Z".
inline constexpr int missing_code_underscore = 1;
inline constexpr int missing_code_ordinary = 2;
inline constexpr int missing_code_a = 3;
inline constexpr int missing_code_z = 28;

// k of a NaN: byte 5 negated modulo 256; anything outside [1, 28] counts as ordinary.
constexpr int missing_code(double nan);
// The NaN of code k in [1, 28].
constexpr double special_missing_value(int k);

// Indexed by k; index 0 (a blank) is what zfmmiss writes for a value that is not a NaN.
inline constexpr std::u32string_view missing_characters = U" _.ABCDEFGHIJKLMNOPQRSTUVWXYZ";
static_assert(missing_characters.size() == missing_code_z + 1);

// Kinds of value zdatrng checks, and its answers.
inline constexpr int range_kind_date = 1;
inline constexpr int range_kind_datetime = 2;
inline constexpr int range_kind_time = 3;
inline constexpr int range_ok = 0;
inline constexpr int range_out = 1;      // field filled with "*", produced length = width
inline constexpr int range_missing = 2;  // field holds the missing-value text

// Reads the call's value through call.input (a const double*). A NaN: writes the missing-value
// field as if decimals were 0 and answers 2. Outside the range of its kind: "*" over the width,
// answers 1. Otherwise 0; a kind other than 1, 2, 3 is not checked.
int zdatrng(FmtCall& call, int kind);

// Blanks over the width (produced length = width), then the character of the value's missing
// code at width - 1 - decimals (decimals 98 and 99 count as 0); a position outside the field is
// not written. Answers 0.
int zfmmiss(FmtCall& call);

// zfmmiss as the formats call it for a missing or out-of-range value: decimals taken as 0 for the
// call and put back after, so the code's character lands in the field's last cell.
inline int zfmmiss_without_decimals(FmtCall& call) {
    const std::int32_t decimals = call.decimals;
    call.decimals = 0;
    const int code = zfmmiss(call);
    call.decimals = decimals;
    return code;
}

// ---- Implementation -----------------------------------------------------------------------

constexpr double missing_value() { return std::bit_cast<double>(missing_bits); }

constexpr bool is_nan(double x) { return x != x; }

constexpr int missing_code(double nan) {
    const auto byte5 = static_cast<unsigned>((std::bit_cast<std::uint64_t>(nan) >> 40) & 0xFFu);
    const int k = static_cast<int>((256u - byte5) & 0xFFu);
    return k >= missing_code_underscore && k <= missing_code_z ? k : missing_code_ordinary;
}

constexpr double special_missing_value(int k) {
    const std::uint64_t byte5 = static_cast<std::uint64_t>((256 - k) & 0xFF);
    return std::bit_cast<double>((missing_bits & ~(0xFFull << 40)) | (byte5 << 40));
}

static_assert(missing_code(missing_value()) == missing_code_ordinary);
static_assert(std::bit_cast<std::uint64_t>(special_missing_value(missing_code_ordinary)) ==
              missing_bits);
static_assert(missing_code(special_missing_value(missing_code_a)) == missing_code_a);

}  // namespace vxlocfmt::calendar
