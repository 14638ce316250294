// The kernel number formatter. Fixed-point (mode 0x1000) rounds half away from zero on the exact
// decimal value of the double; the other modes arrive with the number formats.
#include "number_formatter.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <limits>

namespace vxhost {
namespace {

constexpr int max_decimals = 40;
// Longest text: 309 integer digits, sign, point and 40 decimals.
constexpr std::size_t text_bytes = 400;

// True when value lies exactly halfway between two multiples of 10^-decimals. With value =
// m * 2^e (m odd), value * 10^d * 2 = m * 5^d * 2^(e + d + 1) is an odd integer exactly when
// e + d + 1 == 0.
bool is_decimal_tie(double value, int decimals) {
    if (value == 0 || !std::isfinite(value)) return false;
    int exponent = 0;
    const double mantissa = std::frexp(std::fabs(value), &exponent);
    auto m = static_cast<std::uint64_t>(std::ldexp(mantissa, 53));
    int e = exponent - 53;
    const int zeros = std::countr_zero(m);
    e += zeros;
    return e + decimals + 1 == 0;
}

// No decimals and below 2^53 (the clock formats' seconds, on every call): std::round is half
// away from zero on the exact value, which is what the tie nudge and "%.0f" give below, and
// costs no printf. "-0" cannot come out: a result of zero is written without its sign.
int whole_text(double value, char* out) {
    const double r = std::round(value);
    auto magnitude = static_cast<std::uint64_t>(std::fabs(r));
    char digits[20];
    int n = 0;
    do {
        digits[n++] = static_cast<char>('0' + magnitude % 10);
        magnitude /= 10;
    } while (magnitude != 0);
    int length = 0;
    if (r < 0) out[length++] = '-';
    while (n > 0) out[length++] = digits[--n];
    out[length] = '\0';
    return length;
}

// Fixed-point text of value with `decimals` digits after the point, half away from zero.
int fixed_text(double value, int decimals, char* out, std::size_t size) {
    if (decimals == 0 && std::fabs(value) < 9007199254740992.0) return whole_text(value, out);
    if (is_decimal_tie(value, decimals))
        value = std::nextafter(value, std::copysign(std::numeric_limits<double>::infinity(), value));
    int n = std::snprintf(out, size, "%.*f", decimals, value);
    // "-0.00" after rounding shows no sign.
    if (n > 1 && out[0] == '-' && std::strspn(out + 1, "0.") == static_cast<std::size_t>(n - 1)) {
        std::memmove(out, out + 1, static_cast<std::size_t>(n));
        --n;
    }
    return n;
}

}  // namespace

extern "C" vxlocfmt::status format_number(void*, double value, std::int32_t width, std::int32_t decimals,
                                          std::uint32_t mode, vxlocfmt::wchar* out, std::int32_t capacity,
                                          std::int32_t* length) {
    if (length) *length = 0;
    if (mode != mode_fixed) return vxlocfmt::st::not_implemented;
    if (!out || width <= 0) return vxlocfmt::st::number_shortened;
    const std::int32_t cells = std::min(width, capacity);
    if (cells <= 0) return vxlocfmt::st::number_shortened;
    if (!std::isfinite(value)) {
        for (std::int32_t i = 0; i < cells; ++i) out[i] = U'*';
        if (length) *length = cells;
        return vxlocfmt::st::number_shortened;
    }
    char text[text_bytes];
    int d = std::clamp(decimals, 0, max_decimals);
    int n = fixed_text(value, d, text, sizeof text);
    vxlocfmt::status result = 0;
    // Too long: fewer decimals first, then stars.
    while (n > width && d > 0) {
        n = fixed_text(value, --d, text, sizeof text);
        result = vxlocfmt::st::number_shortened;
    }
    if (n > width) {
        for (std::int32_t i = 0; i < cells; ++i) out[i] = U'*';
        if (length) *length = cells;
        return vxlocfmt::st::number_shortened;
    }
    const std::int32_t pad = width - n;
    for (std::int32_t i = 0; i < cells; ++i) out[i] = i < pad ? U' ' : static_cast<vxlocfmt::wchar>(text[i - pad]);
    if (length) *length = cells;
    return result;
}

extern "C" vxlocfmt::status text_to_integer(void*, const vxlocfmt::wchar* text, std::int32_t length,
                                            std::int64_t* value) {
    if (!text || length <= 0 || length > 18) return 1;
    std::int64_t result = 0;
    for (std::int32_t i = 0; i < length; ++i) {
        if (text[i] < U'0' || text[i] > U'9') return 1;
        result = result * 10 + (text[i] - U'0');
    }
    if (value) *value = result;
    return 0;
}

}  // namespace vxhost
