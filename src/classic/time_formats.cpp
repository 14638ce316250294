#include "classic/time_formats.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>

#include "calendar/clock_parts.h"
#include "calendar/missing_value.h"
#include "frame/field.h"
#include "frame/kernel.h"

namespace vxlocfmt::classic {
namespace {

constexpr std::uint32_t fixed_point_mode = 0x1000;
constexpr double max_hours = 2147483647.0;
constexpr int max_rounding_decimals = 30;

// Longest clock text: sign, 10 hour digits, ":mm:", and seconds "ss." with 39 decimals.
constexpr std::size_t clock_text_cells = 64;
static_assert(clock_text_cells >= 1 + 10 + 4 + 3 + clock_max_decimals);

constexpr std::array<double, 31> powers_of_ten = [] {
    std::array<double, 31> p{};
    double v = 1;
    for (double& x : p) {
        x = v;
        v *= 10;
    }
    return p;
}();

// A small wide text that drops what does not fit.
struct ClockText {
    std::array<wchar, clock_text_cells> cells{};
    std::size_t length = 0;
    void push(wchar c) {
        if (length < cells.size()) cells[length++] = c;
    }
    void append(std::u32string_view s) {
        for (wchar c : s) push(c);
    }
    std::u32string_view view() const { return {cells.data(), length}; }
};

void append_integer(ClockText& text, double whole) {
    wchar digits[24];  // a double below 2^31 has at most 10 digits
    int n = 0;
    auto v = static_cast<std::uint64_t>(whole);
    do {
        digits[n++] = static_cast<wchar>(U'0' + v % 10);
        v /= 10;
    } while (v != 0);
    while (n > 0) text.push(digits[--n]);
}

void append_two_digits(ClockText& text, int v) {
    text.push(static_cast<wchar>(U'0' + (v / 10) % 10));
    text.push(static_cast<wchar>(U'0' + v % 10));
}

// The seconds field from the kernel number formatter, right-justified, leading blank as "0".
bool append_seconds(ClockText& text, const FmtCall& call, double seconds, int decimals) {
    const std::int32_t width = decimals + (decimals >= 1 ? 1 : 0) + 2;
    if (!call.number_format) return false;
    wchar field[clock_text_cells];
    std::int32_t length = call.capacity;
    const status code = kernel::slot<kernel::number_format_fn>(call.number_format, kernel::locale_number_format_slot)(
        call.number_format, seconds, width, decimals, fixed_point_mode, field, width, &length);
    if (code != 0 && code != st::number_shortened) return false;
    if (field[0] == U' ') field[0] = U'0';
    text.append({field, static_cast<std::size_t>(width)});
    return true;
}

// Writes `text` right-aligned in the call's field; "*" when it does not fit.
status right_align(FmtCall& call, std::u32string_view text) {
    const OutputField field = OutputField::of(call);
    call.produced = call.width;
    if (text.size() > static_cast<std::size_t>(std::max(call.width, 0))) {
        field.fill(U'*');
        return st::ok;
    }
    field.fill(U' ');
    field.write(call.width - static_cast<std::int32_t>(text.size()), text);
    return st::ok;
}

status check_clock_limits(const FmtCall& call) {
    if (!(call.flags & call_flag_check_limits)) return st::ok;
    if (call.width < 2) return st::width_too_small;
    if (call.width > clock_max_width) return st::width_too_large;
    if (call.decimals < 0) return st::decimals_negative;
    if (call.decimals > clock_max_decimals) return st::decimals_too_large;
    return st::ok;
}

// Missing and out-of-range values are written by the range service; missing counts as success.
bool handled_by_range_check(FmtCall& call, status& result) {
    const int range = calendar::zdatrng(call, calendar::range_kind_datetime);
    if (range == calendar::range_ok) return false;
    result = range == calendar::range_missing ? st::ok : static_cast<status>(range);
    return true;
}

status format_clock(FmtCall& call, double value) {
    const std::int32_t w = call.width;
    const int d = std::max(call.decimals, 0);
    const bool negative = value < 0;
    double a = std::fabs(value);

    double extra_hours = 0;
    if (a >= 86400) {
        extra_hours = std::floor(a / 86400) * 24;
        a = calendar::fmod_by_whole(a, 86400);
    }
    // Half a unit of the last shown decimal, plus a hair.
    const double r = 5 / powers_of_ten[static_cast<std::size_t>(std::min(d, max_rounding_decimals - 1) + 1)] + 1e-8;
    double carried_hour = 0, carried_minute = 0;
    if (calendar::fmod_by_whole(a, 3600) + r >= 3600) {
        carried_hour = 1;
        a -= calendar::fmod_by_whole(a, 3600);
    } else if (calendar::fmod_by_whole(a, 60) + r >= 60) {
        carried_minute = 1;
        a -= calendar::fmod_by_whole(a, 60);
    }
    // a is in [0, 86400]: the clock functions' parts, at once.
    const calendar::datetime_parts clock = calendar::split_datetime(a);
    double hours = extra_hours + clock.hour + carried_hour;
    if (hours > max_hours) {
        OutputField::of(call).fill(U'*');
        call.produced = w;
        return st::ok;
    }
    double minutes = clock.minute + carried_minute;
    const double s = clock.second;
    double whole = std::floor(s);
    double f = s - whole;

    auto digits_of = [](double h) {
        int n = 1;
        for (double v = h; v >= 10; v = std::floor(v / 10)) ++n;
        return n;
    };
    const int sign = negative ? 1 : 0;
    const int k = std::max(0, std::min(d, w - sign - digits_of(hours) - 7));

    bool carry;
    if (k > 0) {
        const double scaled = f * powers_of_ten[static_cast<std::size_t>(std::min(k, max_rounding_decimals))];
        carry = f > 0.9 && powers_of_ten[static_cast<std::size_t>(std::min(k, max_rounding_decimals))] - scaled < 1 &&
                scaled - std::floor(scaled) > 0.4999999;
    } else {
        carry = f >= 0.5;
    }
    if (carry) {
        whole += 1;
        f = 0;
        if (whole >= 60) {
            whole -= 60;
            minutes += 1;
        }
        if (minutes >= 60) {
            minutes -= 60;
            hours += 1;
        }
    }

    ClockText text;
    if (negative) text.push(U'-');
    append_integer(text, hours);
    if (static_cast<std::size_t>(w) < text.length) {
        OutputField::of(call).fill(U'*');
        call.produced = w;
        return st::ok;
    }
    if (static_cast<std::size_t>(w) >= text.length + 3) {
        text.push(U':');
        append_two_digits(text, static_cast<int>(minutes));
        if (static_cast<std::size_t>(w) >= text.length + 3) {
            text.push(U':');
            if (!append_seconds(text, call, whole + f, k)) {
                OutputField::of(call).fill(U'*');
                call.produced = w;
                return st::ok;
            }
        }
    }
    return right_align(call, text.view());
}

}  // namespace
}  // namespace vxlocfmt::classic

using namespace vxlocfmt;

VX_EXPORT status vxfmtzfmtime(FmtCall* call, void*) {
    if (status code = classic::check_clock_limits(*call)) return code;
    status result;
    if (classic::handled_by_range_check(*call, result)) return result;
    return classic::format_clock(*call, *static_cast<const double*>(call->input));
}

VX_EXPORT status vxfmtzfmtimm(FmtCall* call, void*) {
    if (status code = classic::check_clock_limits(*call)) return code;
    status result;
    if (classic::handled_by_range_check(*call, result)) return result;
    double value = *static_cast<const double*>(call->input);
    // Rounded first, deliberately, so the hour and the suffix follow the rounded time.
    if (std::fabs(value) < 9007199254740992.0) {
        const double fraction = value - std::floor(value);
        if ((call->decimals == 0 && fraction >= 0.5 - 1e-12) || (call->decimals == 1 && fraction >= 0.95 - 1e-12))
            value = std::floor(value) + 1;
    }
    double t = calendar::fmod_by_whole(value, 86400);
    if (t < 0) t += 86400;
    const double h = std::floor(t / 3600);
    const bool pm = h >= 12;
    const std::int32_t w = call->width;
    const OutputField field = OutputField::of(*call);
    if (w < 5) {
        field.fill(U' ');
        field.write(w - 2, pm ? U"PM" : U"AM");
        call->produced = w;
        return st::ok;
    }
    if (h == 0) t += 43200;
    if (h > 12) t -= 43200;
    FmtCall inner = *call;
    inner.width = w - 3;
    inner.input = &t;
    inner.flags = 0;
    result = classic::format_clock(inner, t);
    field.write(w - 3, pm ? U" PM" : U" AM");
    call->produced = w;
    return result;
}

VX_EXPORT status vxfmtzfmtod(FmtCall* call, void*) {
    if (status code = classic::check_clock_limits(*call)) return code;
    status result;
    if (classic::handled_by_range_check(*call, result)) return result;
    double time = calendar::time_part(*static_cast<const double*>(call->input));
    FmtCall inner = *call;
    inner.input = &time;
    result = classic::format_clock(inner, time);
    call->produced = inner.produced;
    // A one-digit hour gets its leading zero.
    const OutputField field = OutputField::of(*call);
    std::int32_t colon = -1;
    for (std::int32_t i = 0; i < field.stored(); ++i)
        if (field.data()[i] == U':') {
            colon = i;
            break;
        }
    const std::int32_t at = (colon >= 0 ? colon : call->width) - 2;
    if (at >= 0 && at < field.stored() && field.data()[at] == U' ') field.put(at, U'0');
    return result;
}
