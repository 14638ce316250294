/*
 * The D format's choice of decimals: as many as the width leaves after the sign, the integer
 * digits and the point, up to the requested number; -1 (best fit) when the integer digits do
 * not fit or when the value is not zero but would show as zero at those decimals.
 *
 *   d_rule_decimals(3.14159, 6, 4)   // 4: "3.1416"
 *   d_rule_decimals(0.0001, 6, 2)    // -1: "0.00" would hide it
 */
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace vxlocfmt::classic {

// D asks best fit for more decimals than this.
inline constexpr std::int32_t max_d_decimals = 9;

inline int d_rule_decimals(double value, std::int32_t width, std::int32_t decimals) {
    const double a = std::fabs(value);
    const int sign = value < 0 ? 1 : 0;
    int integer_digits = 1;
    for (double limit = 10; a >= limit && integer_digits < 400; limit *= 10) ++integer_digits;
    if (sign + integer_digits > width) return -1;
    const int chosen = std::max(0, std::min(decimals, width - sign - integer_digits - 1));
    if (a != 0 && a < 0.5 * std::pow(10.0, -chosen)) return -1;
    return chosen;
}

}  // namespace vxlocfmt::classic
