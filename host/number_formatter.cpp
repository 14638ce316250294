// The kernel number formatter: fixed point (with or without thousands separators), best fit and
// exponential, all rounding half away from zero on the exact value of the double.
#include "number_formatter.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "calendar/missing_value.h"
#include "decimal_digits.h"
#include "wide_fixed_point.h"

namespace vxhost {
namespace {

using vxlocfmt::status;
using vxlocfmt::wchar;
namespace st = vxlocfmt::st;

// Best fit shows at most this many significant digits after the integer part: the rest of a
// double's digits are the binary approximation (0.1 + 0.2 shows as "0.3").
constexpr int best_fit_digits = 15;

// Text built left to right in a fixed buffer; never longer than fixed_text_bytes.
// Text built left to right in a fixed buffer; never longer than fixed_text_bytes + 120. `cells`
// starts one byte in when fixed_text left the sign's place unused.
struct Text {
    char buffer[fixed_text_bytes + 121];  // room for a sign and the separators of 309 digits
    char* cells = buffer;
    int length = 0;
    void reset() {
        cells = buffer;
        length = 0;
    }
    void push(char c) { cells[length++] = c; }
};

// Rounded to zero, a value shows no sign.
bool all_zero(const char* text, int n) {
    for (int i = 0; i < n; ++i)
        if (text[i] != '0' && text[i] != '.') return false;
    return true;
}

// [-]digits[.decimals], optionally with "," every three integer digits.
void fixed_text(double value, int decimals, bool grouped, Text& text) {
    if (!grouped) {
        // The digits go straight to their place after a cell kept for the sign.
        const int n = fixed_digits(std::fabs(value), decimals, text.buffer + 1);
        const bool sign = std::signbit(value) && !all_zero(text.buffer + 1, n);
        text.buffer[0] = '-';
        text.cells = sign ? text.buffer : text.buffer + 1;
        text.length = n + (sign ? 1 : 0);
        return;
    }
    char digits[fixed_text_bytes];
    const int n = fixed_digits(std::fabs(value), decimals, digits);
    text.reset();
    // Local cursor: stores through a char pointer would make the compiler reload text's fields.
    char* to = text.cells;
    if (std::signbit(value) && !all_zero(digits, n)) *to++ = '-';
    const int integer_digits = decimals > 0 ? n - decimals - 1 : n;
    // The first group holds what is left over from threes; a separator before every later one.
    int i = integer_digits % 3 == 0 ? 3 : integer_digits % 3;
    for (int k = 0; k < i && k < integer_digits; ++k) *to++ = digits[k];
    for (; i < integer_digits; i += 3) {
        *to++ = ',';
        *to++ = digits[i];
        *to++ = digits[i + 1];
        *to++ = digits[i + 2];
    }
    for (int k = integer_digits; k < n; ++k) *to++ = digits[k];
    text.length = static_cast<int>(to - text.cells);
}

int integer_digits_of(const Text& text) {
    int n = 0;
    for (int i = 0; i < text.length && text.cells[i] != '.'; ++i)
        if (text.cells[i] >= '0' && text.cells[i] <= '9') ++n;
    return n;
}

// "E+05", "E-123": sign and at least two digits.
int exponent_length(int exponent) { return std::abs(exponent) >= 100 ? 5 : 4; }

void push_exponent(Text& text, int exponent) {
    text.push('E');
    text.push(exponent < 0 ? '-' : '+');
    const int a = std::abs(exponent);
    if (a >= 100) text.push(static_cast<char>('0' + a / 100));
    text.push(static_cast<char>('0' + a / 10 % 10));
    text.push(static_cast<char>('0' + a % 10));
}

// [-]d[.ddd]E±xx of an exact decimal x (count > 0) rounded to at most `fraction` + 1
// significant digits, fewer when the width asks; trailing zeros of the mantissa are kept unless
// `trim`. Returns the fraction digits kept, or -1 when even "dE±xx" does not fit `width`.
int exponential_text(bool negative, const ExactDecimal& x, int fraction, bool trim, int width, Text& text) {
    const int sign = negative ? 1 : 0;
    fraction = std::min(fraction, width - sign - 2 - exponent_length(x.point - 1));
    for (;; --fraction) {
        fraction = std::max(fraction, 0);
        ExactDecimal r;
        r.count = std::min(x.count, fraction + 2);
        r.point = x.point;
        std::copy_n(x.digits, r.count, r.digits);
        round_digits(r, fraction + 1);
        const int exponent = r.point - 1;
        const int shown = trim ? std::min(fraction, r.count - 1) : fraction;
        const int length = sign + 1 + (shown > 0 ? shown + 1 : 0) + exponent_length(exponent);
        if (length > width) {
            if (fraction == 0) return -1;
            continue;
        }
        text.reset();
        if (negative) text.push('-');
        text.push(r.digits[0]);
        if (shown > 0) text.push('.');
        for (int i = 1; i <= shown; ++i) text.push(i < r.count ? r.digits[i] : '0');
        push_exponent(text, exponent);
        return fraction;
    }
}

// Fixed point at `decimals`, fewer decimals when too wide, "E" notation when the integer digits
// alone do not fit.
status fixed_or_exponential(double value, int width, int decimals, bool grouped, Text& text) {
    fixed_text(value, decimals, grouped, text);
    if (text.length <= width) return st::ok;
    if (grouped) {
        // Fewer decimals with separators, then the separators left out at the full decimals.
        for (int d = decimals - 1; d >= 0; --d) {
            fixed_text(value, d, true, text);
            if (text.length <= width) return st::number_shortened;
        }
        const status plain = fixed_or_exponential(value, width, decimals, false, text);
        return plain == st::ok ? grouping_dropped : plain;
    }
    const int sign = text.cells[0] == '-' ? 1 : 0;  // a value that rounds to zero has none
    if (integer_digits_of(text) + sign <= width) {
        // The width keeps the integer part: drop decimals (the point goes with the last one).
        const int d = std::max(0, width - sign - integer_digits_of(text) - 1);
        fixed_text(value, std::min(d, decimals - 1), false, text);
        if (text.length > width) fixed_text(value, std::max(0, d - 1), false, text);
        if (text.length <= width) return st::number_shortened;
    }
    ExactDecimal x;
    exact_decimal(std::fabs(value), x);
    if (exponential_text(value < 0, x, width, false, width, text) < 0) text.length = width + 1;
    return st::number_shortened;
}

// Best fit: fixed point with as many significant digits as the width allows (at most
// best_fit_digits beyond the integer part), trailing zeros dropped; "E" notation when the
// integer digits do not fit, or when a small value would show fewer significant digits in
// fixed point than in "E" notation.
status best_fit(double value, int width, Text& text) {
    text.reset();
    if (value == 0) {
        text.push('0');
        return st::ok;
    }
    const bool negative = value < 0;
    const int cells = width - (negative ? 1 : 0);
    if (cells < 1) {
        text.length = width + 1;
        return st::number_shortened;
    }
    ExactDecimal x;
    exact_decimal(std::fabs(value), x);
    if (x.point <= cells) {
        const int integer_cells = std::max(x.point, 1);
        const int room = cells - integer_cells - 1;
        const int cap = x.point > 0 ? std::max(best_fit_digits - x.point, 0) : best_fit_digits - x.point;
        const int decimals = std::max(0, std::min(room, cap));
        // Significant digits fixed point shows of a value below 1, against "E" notation.
        const int fixed_shows = decimals + x.point;
        const int exponent_shows = cells - 1 - exponent_length(x.point - 1);
        const bool exact = x.count - x.point <= decimals;
        if (x.point > 0 || exact || fixed_shows >= std::min({exponent_shows, x.count, best_fit_digits})) {
            ExactDecimal r = x;
            round_digits(r, x.point + decimals);
            if (r.count > 0 && r.point <= cells) {
                if (negative) text.push('-');
                if (r.point <= 0) text.push('0');
                for (int i = 0; i < r.point; ++i) text.push(i < r.count ? r.digits[i] : '0');
                if (r.count > r.point) {
                    text.push('.');
                    for (int i = std::min(r.point, 0); i < 0; ++i) text.push('0');
                    for (int i = std::max(r.point, 0); i < r.count; ++i) text.push(r.digits[i]);
                }
                return st::ok;
            }
        }
    }
    const int fraction = std::min(cells - 2 - exponent_length(x.point - 1), best_fit_digits - 1);
    if (exponential_text(negative, x, fraction, true, width, text) < 0) text.length = width + 1;
    return st::ok;
}

// Every request but the everyday one (format_number's).
[[gnu::noinline]] status format_any(double value, std::int32_t width, std::int32_t decimals, std::uint32_t mode,
                                    wchar* out, std::int32_t capacity, std::int32_t* length) {
    if (length) *length = 0;
    const bool grouped = (mode & mode_grouping_bit) != 0;
    const std::uint32_t style = mode & ~mode_grouping_bit;
    if (style != mode_fixed && style != mode_best_fit && style != mode_exponential) return no_room;
    if (!out || width <= 0 || capacity <= 0) return no_room;
    const std::int32_t cells = std::min(width, capacity);
    auto stars = [&] {
        std::fill_n(out, cells, U'*');
        if (length) *length = cells;
        return st::number_shortened;
    };
    if (std::isnan(value)) {
        // A missing value: its character in the last cell.
        std::fill_n(out, cells, U' ');
        if (width <= capacity)
            out[width - 1] = vxlocfmt::calendar::missing_characters[static_cast<std::size_t>(
                vxlocfmt::calendar::missing_code(value))];
        if (length) *length = cells;
        return st::ok;
    }
    if (!std::isfinite(value)) return stars();
    // Past 340 decimals every double is exact; more would only append zeros that cannot fit.
    const int d = std::clamp(decimals, 0, std::min(max_fixed_decimals, width));
    Text text;
    status result = st::ok;
    if (style == mode_best_fit) {
        result = best_fit(value, width, text);
    } else if (style == mode_exponential) {
        ExactDecimal x;
        exact_decimal(std::fabs(value), x);
        const int kept = exponential_text(value < 0, x, d, false, width, text);
        if (kept < 0) text.length = width + 1;
        else if (kept < d) result = st::number_shortened;
    } else {
        result = fixed_or_exponential(value, width, d, grouped, text);
    }
    if (text.length > width) return stars();
    const std::int32_t pad = width - text.length;
    std::fill_n(out, std::min(pad, cells), U' ');
    for (std::int32_t i = pad; i < cells; ++i) out[i] = static_cast<wchar>(text.cells[i - pad]);
    if (length) *length = cells;
    return result;
}

}  // namespace

extern "C" status format_number(void*, double value, std::int32_t width, std::int32_t decimals, std::uint32_t mode,
                                wchar* out, std::int32_t capacity, std::int32_t* length) {
    // The everyday request first: plain fixed point that fits, written straight into the field
    // (the same text as format_any's). Decimals above the width count as the width, as there.
    if (mode == mode_fixed && out && width > 0 && width <= capacity &&
        fixed_in_wide_field(value, std::clamp(decimals, 0, width), width, out)) {
        if (length) *length = width;
        return st::ok;
    }
    return format_any(value, width, decimals, mode, out, capacity, length);
}

extern "C" status text_to_integer(void*, const wchar* text, std::int32_t length, std::int64_t* value) {
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
