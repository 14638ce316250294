#include "decimal_digits.h"

#include <algorithm>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstring>

namespace vxhost {
namespace {

using u128 = unsigned __int128;

constexpr char digit_pairs[201] =
    "00010203040506070809101112131415161718192021222324252627282930313233343536373839"
    "40414243444546474849505152535455565758596061626364656667686970717273747576777879"
    "8081828384858687888990919293949596979899";

// Writes q with at least `decimals` + 1 digits and a point before the last `decimals`, right to
// left straight into `out`, two digits per division. Straight in: a wide copy of bytes just
// stored two at a time would wait on the stores. 32-bit divisions when q allows.
template <class Unsigned>
void write_digits(Unsigned q, int decimals, char* out, char* p) {
    int fraction = decimals;
    for (; fraction >= 2; fraction -= 2) {
        p -= 2;
        std::memcpy(p, digit_pairs + 2 * (q % 100), 2);
        q /= 100;
    }
    if (fraction == 1) {
        *--p = static_cast<char>('0' + q % 10);
        q /= 10;
    }
    if (decimals > 0) *--p = '.';
    while (p - out >= 2) {
        p -= 2;
        std::memcpy(p, digit_pairs + 2 * (q % 100), 2);
        q /= 100;
    }
    if (p > out) *--p = static_cast<char>('0' + q);
}

int write_scaled(std::uint64_t q, int decimals, char* out) {
    const int digits = std::max(count_digits(q), decimals + 1);
    const int total = digits + (decimals > 0 ? 1 : 0);
    if (q <= 0xFFFFFFFFu) write_digits(static_cast<std::uint32_t>(q), decimals, out, out + total);
    else write_digits(q, decimals, out, out + total);
    return total;
}

// The binary value m x 2^e with m odd (a > 0).
struct Binary {
    std::uint64_t m;
    int e;
};
Binary binary_of(double a) {
    const auto bits = std::bit_cast<std::uint64_t>(a);
    const auto biased = static_cast<int>((bits >> 52) & 0x7FF);
    std::uint64_t m = bits & ((1ull << 52) - 1);
    int e = biased == 0 ? -1074 : biased - 1075;
    if (biased != 0) m |= 1ull << 52;
    const int zeros = std::countr_zero(m);
    return {m >> zeros, e + zeros};
}

// a = m x 2^e exactly: q = round(a x 10^d) half away from zero, when it fits 64 bits.
bool scaled_fast(Binary b, int decimals, std::uint64_t& q) {
    if (decimals > 19) return false;
    if (b.e >= 0) {
        if (b.e > 63 - static_cast<int>(std::bit_width(b.m))) return false;
        const u128 v = static_cast<u128>(b.m << b.e) * powers_of_ten[decimals];
        if (v >> 64) return false;
        q = static_cast<std::uint64_t>(v);
        return true;
    }
    const int s = -b.e;
    if (s > 120) return false;
    const u128 scaled = static_cast<u128>(b.m) * powers_of_ten[decimals];  // below 2^117
    const u128 whole = scaled >> s;
    if (whole >> 64) return false;
    const u128 rest = scaled - (whole << s);
    q = static_cast<std::uint64_t>(whole) + (rest >= (static_cast<u128>(1) << (s - 1)) ? 1 : 0);
    return q != 0 || whole == 0;  // a carry out of 2^64 - 1 would wrap
}

}  // namespace

bool scaled_by_power_of_ten(double a, int decimals, std::uint64_t& q) {
    if (a == 0) {
        q = 0;
        return true;
    }
    return std::isfinite(a) && scaled_fast(binary_of(a), decimals, q);
}

void exact_decimal(double a, ExactDecimal& out) {
    if (a == 0) {
        out.digits[0] = '0';
        out.count = 1;
        out.point = 1;
        return;
    }
    const Binary b = binary_of(a);
    char text[exact_text_bytes + 16];
    const int decimals = b.e < 0 ? -b.e : 0;
    const auto result = std::to_chars(text, text + sizeof text, a, std::chars_format::fixed, decimals);
    const char* p = text;
    const char* end = result.ptr;
    int point = 0;
    bool before_point = true;
    bool leading = true;
    out.count = 0;
    for (; p != end; ++p) {
        if (*p == '.') {
            before_point = false;
            continue;
        }
        if (leading && *p == '0') {
            if (!before_point) --point;
            continue;
        }
        leading = false;
        if (before_point) ++point;
        out.digits[out.count++] = *p;
    }
    while (out.count > 0 && out.digits[out.count - 1] == '0') --out.count;
    out.point = point;
}

void round_digits(ExactDecimal& x, int keep) {
    if (keep >= x.count) return;
    if (keep < 0) {
        x.count = 0;
        return;
    }
    const bool up = x.digits[keep] >= '5';
    x.count = keep;
    if (up) {
        int i = keep - 1;
        while (i >= 0 && x.digits[i] == '9') --i;
        if (i < 0) {
            x.digits[0] = '1';
            x.count = 1;
            ++x.point;
            return;
        }
        ++x.digits[i];
        x.count = i + 1;
    }
    while (x.count > 0 && x.digits[x.count - 1] == '0') --x.count;
}

int fixed_digits(double a, int decimals, char* out) {
    if (a == 0) return write_scaled(0, decimals, out);
    std::uint64_t q;
    if (scaled_fast(binary_of(a), decimals, q)) return write_scaled(q, decimals, out);
    ExactDecimal x;
    exact_decimal(a, x);
    round_digits(x, x.point + decimals);
    int length = 0;
    // Integer part: digits before the point, zeros past the significant ones, or "0".
    if (x.count == 0 || x.point <= 0) out[length++] = '0';
    for (int i = 0; i < x.point && x.count > 0; ++i) out[length++] = i < x.count ? x.digits[i] : '0';
    if (decimals > 0) {
        out[length++] = '.';
        for (int k = 0; k < decimals; ++k) {
            const int i = x.point + k;  // index of the digit k places after the point
            out[length++] = x.count > 0 && i >= 0 && i < x.count ? x.digits[i] : '0';
        }
    }
    return length;
}

}  // namespace vxhost
