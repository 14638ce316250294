// The numeric classic informats: each rewrites its text into what the kernel's numeric reader
// reads (a plain decimal number) and lets the reader decide. Scaling by a power of ten (implied
// decimals, "%", the K suffix) is appended to the text as an exponent, so the result stays the
// double nearest to the number meant; only a text with an exponent of its own is scaled after
// reading.
#include <cmath>

#include "classic/decimal_reader.h"
#include "classic/informat_field.h"
#include "classic/kernel_reader.h"
#include "classic/value_informats.h"

namespace vxlocfmt::classic {
namespace {

using detail::WorkText;

using detail::number_limits;
constexpr detail::Limits suffix_limits{4, 35, 31};
// Copy limit of the euro reader.
constexpr std::size_t euro_copy_limit = 32;
// Implied decimals past this scale every readable number to 0 anyway; keeps the exponent small.
constexpr std::int32_t decimals_clamp = 400;

bool has_char(std::u32string_view s, wchar c) { return s.find(c) != std::u32string_view::npos; }
bool has_exponent(std::u32string_view s) { return has_char(s, U'E') || has_char(s, U'e'); }

// Presets the missing value, then checks the limits (codes 2 to 5).
status begin_number(FmtCall* call, detail::Limits limits) {
    if (!call || !call->output) return reader_refused;
    detail::preset_missing(*call);
    return detail::check_limits(*call, limits);
}

// Reads the prepared text times 10^scale, implied decimals included: with decimals d > 0 and
// no "." the number is read as if its point stood d digits from the right.
status read_scaled(WorkText& text, const FmtCall& call, void* extra, long scale) {
    // Nothing to scale (no implied decimals: none asked, or the text has its point): the reader
    // skips the blanks itself.
    if (scale == 0 && (call.decimals <= 0 || has_char(text.view(), U'.')))
        return kernel_read_number(text.begin(), static_cast<std::int32_t>(text.size()),
                                  static_cast<double*>(call.output), extra);
    std::size_t size = text.size();
    while (size > 0 && is_reader_blank(text.begin()[size - 1])) --size;
    text.assign(text.view().substr(0, size));
    const bool own_exponent = has_exponent(text.view());
    if (call.decimals > 0 && !has_char(text.view(), U'.')) scale -= std::min(call.decimals, decimals_clamp);
    if (scale != 0 && !own_exponent) {
        char digits[8];
        const auto end = std::to_chars(digits, digits + sizeof digits, scale).ptr;
        text.push_back(U'E');
        for (const char* c = digits; c < end; ++c) text.push_back(static_cast<wchar>(*c));
    }
    double value = 0;
    const status s = kernel_read_number(text.begin(), static_cast<std::int32_t>(text.size()), &value, extra);
    if (s != 0) return s;
    if (scale != 0 && own_exponent) value *= std::pow(10.0, static_cast<double>(scale));
    *static_cast<double*>(call.output) = value;
    return 0;
}

double& result(FmtCall* call) { return *static_cast<double*>(call->output); }

void negate_read(FmtCall* call, status s) {
    if (s == 0 && !detail::is_missing_result(result(call))) result(call) = -result(call);
}

// One informat of the replacement family: the rewrite, then the reader.
template <class Rewrite>
status rewrite_and_read(FmtCall* call, void* extra, Rewrite rewrite) {
    WorkText text(detail::field_text(*call));
    rewrite(text);
    return read_scaled(text, *call, extra, 0);
}
template <class Rewrite>
status replace_and_read(FmtCall* call, void* extra, Rewrite rewrite) {
    if (status s = begin_number(call, number_limits)) return s;
    return rewrite_and_read(call, extra, rewrite);
}

}  // namespace
}  // namespace vxlocfmt::classic

using namespace vxlocfmt;
using namespace vxlocfmt::classic;

VX_EXPORT status vxfmtzifmn(FmtCall* call, void* extra) {
    if (status s = begin_number(call, number_limits)) return s;
    if (call->decimals <= 0) {  // the text as it stands: no copy
        const std::u32string_view text = detail::field_text(*call);
        return kernel_read_number(text.data(), static_cast<std::int32_t>(text.size()),
                                  static_cast<double*>(call->output), extra);
    }
    return rewrite_and_read(call, extra, [](WorkText&) {});
}

VX_EXPORT status vxfmtzifmcmx(FmtCall* call, void* extra) {
    return replace_and_read(call, extra, [](WorkText& t) { t.exchange(U',', U'.'); });
}

VX_EXPORT status vxfmtzifmnmx(FmtCall* call, void* extra) {
    return replace_and_read(call, extra, [](WorkText& t) { t.replace(U',', U'.'); });
}

VX_EXPORT status vxfmtzifmdlr(FmtCall* call, void* extra) {
    return replace_and_read(call, extra, [](WorkText& t) { t.replace(U'$', U' '); });
}

VX_EXPORT status vxfmtzifmdlx(FmtCall* call, void* extra) {
    return replace_and_read(call, extra, [](WorkText& t) {
        t.replace(U'$', U' ');
        t.exchange(U',', U'.');
    });
}

VX_EXPORT status euroInformat(FmtCall* call, void* extra, wchar mode) {
    if (!call || !call->output) return reader_refused;
    detail::preset_missing(*call);
    WorkText text(detail::left_justified(detail::field_text(*call)), euro_copy_limit);
    text.assign(detail::left_justified(text.view()));
    if (text.size() == 0) return 0;  // an empty amount is a missing one, and no failure
    const bool negated = text.begin()[0] == U'(';
    if (negated) {
        text.replace(U'(', U' ');
        text.replace(U')', U' ');
        text.assign(detail::left_justified(text.view()));
    }
    // U+02AC, not the euro sign U+20AC: the character this routine has always taken for it.
    if (text.size() > 0 && (text.begin()[0] == U'E' || text.begin()[0] == U'\u02AC')) text.begin()[0] = U' ';

    const FmtCall saved = *call;
    call->input = text.begin();
    call->input_length = static_cast<std::int32_t>(text.size());
    call->width = std::max<std::int32_t>(call->input_length, 1);
    const status s = mode == U'X' ? vxfmtzifmdlx(call, extra) : vxfmtzifmdlr(call, extra);
    call->input = saved.input;
    call->input_length = saved.input_length;
    call->width = saved.width;
    if (negated) negate_read(call, s);
    return s;
}

VX_EXPORT status vxfmtzifmeur(FmtCall* call, void* extra) {
    if (status s = begin_number(call, number_limits)) return s;
    return euroInformat(call, extra, U' ');
}

VX_EXPORT status vxfmtzifmerx(FmtCall* call, void* extra) {
    if (status s = begin_number(call, number_limits)) return s;
    return euroInformat(call, extra, U'X');
}

VX_EXPORT status vxfmtzifmpct(FmtCall* call, void* extra) {
    if (status s = begin_number(call, number_limits)) return s;
    WorkText text(detail::field_text(*call));
    std::u32string_view rest = detail::trimmed(text.view());
    bool negated = false;
    bool percent = false;
    if (!rest.empty() && rest.front() == U'(') {
        // "(12.5%)" or "(12.5)%": the inside is read and negated; anything else after ")" is refused.
        const std::size_t close = rest.find(U')');
        if (close == std::u32string_view::npos) return reader_refused;
        const std::u32string_view after = detail::trimmed(rest.substr(close + 1));
        if (!after.empty() && after != U"%") return reader_refused;
        percent = !after.empty();
        rest = detail::trimmed(rest.substr(1, close - 1));
        negated = true;
    }
    if (!percent && !rest.empty() && rest.back() == U'%') {
        percent = true;
        rest = detail::trimmed(rest.substr(0, rest.size() - 1));
    }
    if (rest.empty()) return informat_invalid;
    text.assign(rest);
    const status s = read_scaled(text, *call, extra, percent ? -2 : 0);
    if (negated) negate_read(call, s);
    return s;
}

namespace {

// vxfmtzifmnpn and vxfmtzifmnpr after their first step: the noise characters " ", "%", "-",
// "$" and "," go; a "-" before the first digit makes the number negative, and one right after
// an exponent's "E" stays; a text in parentheses is negative.
status read_noisy(FmtCall* call, void* extra, WorkText& text) {
    std::size_t kept = 0;
    bool negated = false;
    bool digit_seen = false;
    wchar* cells = text.begin();
    for (std::size_t i = 0; i < text.size(); ++i) {
        const wchar c = cells[i];
        if (c == U'-' && kept > 0 && (cells[kept - 1] == U'E' || cells[kept - 1] == U'e')) {
            cells[kept++] = c;
            continue;
        }
        if (c == U'-' && !digit_seen) negated = true;
        if (c == U' ' || c == U'%' || c == U'-' || c == U'$' || c == U',') continue;
        digit_seen |= c >= U'0' && c <= U'9';
        cells[kept++] = c;
    }
    std::u32string_view rest(cells, kept);
    if (rest.size() >= 2 && rest.front() == U'(' && rest.back() == U')') {
        rest = rest.substr(1, rest.size() - 2);
        negated = true;
    }
    text.assign(rest);
    const status s = read_scaled(text, *call, extra, 0);
    if (negated) negate_read(call, s);
    return s;
}

}  // namespace

VX_EXPORT status vxfmtzifmnpn(FmtCall* call, void* extra) {
    if (status s = begin_number(call, number_limits)) return s;
    WorkText text(detail::field_text(*call));
    return read_noisy(call, extra, text);
}

VX_EXPORT status vxfmtzifmnpr(FmtCall* call, void* extra) {
    if (status s = begin_number(call, number_limits)) return s;
    WorkText text(detail::field_text(*call));
    text.exchange(U',', U'.');
    return read_noisy(call, extra, text);
}

VX_EXPORT status vxfmtzifmskg(FmtCall* call, void* extra) {
    if (status s = begin_number(call, suffix_limits)) return s;
    WorkText text(detail::field_text(*call));
    std::u32string_view rest = detail::trimmed(text.view());
    // Decimal multipliers, either case: K thousand, M million, G billion, T trillion.
    long scale = 0;
    if (!rest.empty()) {
        switch (rest.back()) {
            case U'K': case U'k': scale = 3; break;
            case U'M': case U'm': scale = 6; break;
            case U'G': case U'g': scale = 9; break;
            case U'T': case U't': scale = 12; break;
            default: break;
        }
        if (scale != 0) rest.remove_suffix(1);
    }
    text.assign(rest);
    return read_scaled(text, *call, extra, scale);
}
