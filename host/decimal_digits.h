/*
 * Exact decimal digits of a double, rounded half away from zero. The fast path works on the
 * double's binary value with 128-bit integers; everything else starts from the full exact
 * expansion (std::to_chars with as many decimals as the binary fraction has, which is exact) and
 * rounds that digit string, so no value is ever rounded twice.
 *
 *   char text[fixed_text_bytes];
 *   int n = fixed_digits(2.675, 2, text);   // "2.67": the double is 2.67499999...; 0.125 at 2 gives "0.13"
 */
#pragma once

#include <cstdint>

namespace vxhost {

// Longest exact expansion: 309 integer digits or 1074 fraction digits plus "0.".
inline constexpr int exact_text_bytes = 1100;
// Longest fixed text fixed_digits writes: 309 integer digits, point and 340 decimals.
inline constexpr int max_fixed_decimals = 340;
inline constexpr int fixed_text_bytes = 309 + 1 + max_fixed_decimals + 2;

// The significant digits of a finite a >= 0 and its decimal point: a = 0.digits x 10^point
// (zero is the one digit "0" with point 1).
struct ExactDecimal {
    char digits[exact_text_bytes];
    int count;  // significant digits, no leading or trailing zeros
    int point;
};
void exact_decimal(double a, ExactDecimal& out);

// Keeps the first `keep` significant digits, rounding half away from zero (exact: the digit
// string is the whole value). keep < 0 leaves nothing (count 0, the value rounds to zero);
// a carry out of the first digit moves the point.
void round_digits(ExactDecimal& x, int keep);

// Fixed-point text of |a| (finite) with `decimals` digits after the point (0 to
// max_fixed_decimals; no point when 0), half away from zero. Returns the length; no sign.
int fixed_digits(double a, int decimals, char* out);

// The number formatter's everyday request in one step: fixed_digits' text of `value` with its
// sign (none when the text is all zeros) right-aligned in `width` wide cells, blanks before it.
// Answers false, with nothing written, unless decimals is 0 to 19, |value| x 10^decimals
// rounds below 2^64 and the text fits the width; fixed_digits then decides.
bool fixed_in_wide_field(double value, int decimals, int width, char32_t* out);

}  // namespace vxhost
