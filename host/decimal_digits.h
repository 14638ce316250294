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

#include <bit>
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

// q = |a| x 10^decimals rounded half away from zero (a >= 0), when a is finite, decimals is 0 to
// 19 and q fits 64 bits; false otherwise (fixed_digits then knows the digits).
bool scaled_by_power_of_ten(double a, int decimals, std::uint64_t& q);

inline constexpr std::uint64_t powers_of_ten[20] = {1ull,
                                                    10ull,
                                                    100ull,
                                                    1000ull,
                                                    10000ull,
                                                    100000ull,
                                                    1000000ull,
                                                    10000000ull,
                                                    100000000ull,
                                                    1000000000ull,
                                                    10000000000ull,
                                                    100000000000ull,
                                                    1000000000000ull,
                                                    10000000000000ull,
                                                    100000000000000ull,
                                                    1000000000000000ull,
                                                    10000000000000000ull,
                                                    100000000000000000ull,
                                                    1000000000000000000ull,
                                                    10000000000000000000ull};

// Decimal digits of q (1 for 0).
constexpr int count_digits(std::uint64_t q);

// ---- Implementation -----------------------------------------------------------------------

constexpr int count_digits(std::uint64_t q) {
    const int guess = (static_cast<int>(std::bit_width(q | 1)) * 1233) >> 12;  // log10 from log2
    return guess + (q >= powers_of_ten[guess] ? 1 : 0);
}

}  // namespace vxhost
