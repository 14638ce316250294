/*
 * A slow, obviously exact decimal expansion of a double for the number formatter's tests:
 * m x 2^e written in base 10^9 limbs by repeated multiplication (by 2^k or by 5^k), then
 * rounded half away from zero on the digit string.
 */
#pragma once

#include <cmath>
#include <cstdint>
#include <string>
#include <vector>

namespace reference {

// |a| = 0.digits x 10^point; digits without leading or trailing zeros ("" for zero).
struct Decimal {
    std::string digits;
    int point = 0;
};

inline void multiply(std::vector<std::uint32_t>& limbs, std::uint32_t factor) {  // little endian
    std::uint64_t carry = 0;
    for (auto& limb : limbs) {
        const std::uint64_t v = std::uint64_t(limb) * factor + carry;
        limb = static_cast<std::uint32_t>(v % 1000000000);
        carry = v / 1000000000;
    }
    while (carry) {
        limbs.push_back(static_cast<std::uint32_t>(carry % 1000000000));
        carry /= 1000000000;
    }
}

inline Decimal expand(double value) {
    Decimal out;
    const double a = std::fabs(value);
    if (a == 0) return out;
    int e = 0;
    const double f = std::frexp(a, &e);
    auto m = static_cast<std::uint64_t>(std::ldexp(f, 53));
    e -= 53;
    while (m % 2 == 0) m /= 2, ++e;
    std::vector<std::uint32_t> limbs{static_cast<std::uint32_t>(m % 1000000000),
                                     static_cast<std::uint32_t>(m / 1000000000 % 1000000000),
                                     static_cast<std::uint32_t>(m / 1000000000000000000ull)};
    for (int k = e; k > 0; k -= std::min(k, 16)) multiply(limbs, 1u << std::min(k, 16));
    for (int k = -e; k > 0; k -= std::min(k, 13)) multiply(limbs, static_cast<std::uint32_t>(std::pow(5, std::min(k, 13))));
    std::string text;
    for (auto it = limbs.rbegin(); it != limbs.rend(); ++it) {
        std::string limb = std::to_string(*it);
        text += std::string(9 - limb.size(), '0') + limb;
    }
    const auto first = text.find_first_not_of('0');
    text = text.substr(first);
    // text is the integer m x 5^-e (e < 0) or m x 2^e: the point sits -e places from its end.
    out.point = static_cast<int>(text.size()) + std::min(e, 0);
    while (!text.empty() && text.back() == '0') text.pop_back();
    out.digits = text;
    return out;
}

// Keeps `keep` significant digits, half away from zero.
inline Decimal round(Decimal x, int keep) {
    if (keep >= static_cast<int>(x.digits.size())) return x;
    if (keep < 0) return {};
    const bool up = x.digits[keep] >= '5';
    x.digits.resize(keep);
    if (up) {
        int i = keep - 1;
        while (i >= 0 && x.digits[i] == '9') x.digits[i--] = '0';
        if (i < 0) {
            x.digits.insert(x.digits.begin(), '1');
            ++x.point;
        } else {
            ++x.digits[i];
        }
    }
    while (!x.digits.empty() && x.digits.back() == '0') x.digits.pop_back();
    return x;
}

inline char digit_at(const Decimal& x, int i) {  // i-th digit counted from the point's left side
    return i >= 0 && i < static_cast<int>(x.digits.size()) ? x.digits[i] : '0';
}

// "-12.340" style text at `decimals`, no sign for a result of zero.
inline std::string fixed(double value, int decimals) {
    Decimal x = expand(value);
    x = round(x, x.point + decimals);
    std::string text = x.digits.empty() || !std::signbit(value) ? "" : "-";
    if (x.point <= 0 || x.digits.empty()) text += '0';
    for (int i = 0; i < x.point && !x.digits.empty(); ++i) text += digit_at(x, i);
    if (decimals > 0) text += '.';
    for (int k = 0; k < decimals; ++k) text += x.digits.empty() ? '0' : digit_at(x, x.point + k);
    return text;
}

// "-1.2340E+05" style text with `fraction` mantissa decimals.
inline std::string scientific(double value, int fraction) {
    Decimal x = expand(value);
    if (x.digits.empty()) x = {"0", 1};
    x = round(x, fraction + 1);
    std::string text = std::signbit(value) && value != 0 ? "-" : "";
    text += x.digits[0];
    if (fraction > 0) text += '.';
    for (int i = 1; i <= fraction; ++i) text += digit_at(x, i);
    const int exponent = value == 0 ? 0 : x.point - 1;
    std::string digits = std::to_string(std::abs(exponent));
    if (digits.size() < 2) digits = "0" + digits;
    return text + "E" + (exponent < 0 ? "-" : "+") + digits;
}

}  // namespace reference
