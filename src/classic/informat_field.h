/*
 * What the classic informats share: the text they read (the first min(width, input length)
 * characters), the width and decimals check of flag bit 0, the missing-value preset, and a
 * bounded working copy for the ones that rewrite their text before reading it.
 *
 *   std::u32string_view text = field_text(*call);
 *   if (status s = check_limits(*call, {1, 32, 31})) return s;
 */
#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "frame/abi.h"

namespace vxlocfmt::classic::detail {

struct Limits {
    std::int32_t min_width;
    std::int32_t max_width;
    std::int32_t max_decimals;
};

// The limits of the plain numeric informats (N, NEGPAREN, PERCENT, the comma and dollar ones).
inline constexpr Limits number_limits{1, 32, 31};

// Codes 2 to 5 when flag bit 0 asks for the check; 0 otherwise.
inline status check_limits(const FmtCall& call, Limits limits) {
    if (!(call.flags & call_flag_check_limits)) return 0;
    if (call.width < limits.min_width) return st::width_too_small;
    if (call.width > limits.max_width) return st::width_too_large;
    if (call.decimals < 0) return st::decimals_negative;
    if (call.decimals > limits.max_decimals) return st::decimals_too_large;
    return 0;
}

// The characters an informat reads: min(width, input length), never negative.
inline std::u32string_view field_text(const FmtCall& call) {
    const std::int32_t n = std::min(call.width, call.input_length);
    if (n <= 0 || !call.input) return {};
    return {static_cast<const wchar*>(call.input), static_cast<std::size_t>(n)};
}

inline void preset_missing(const FmtCall& call) {
    if (call.output) *static_cast<double*>(call.output) = std::bit_cast<double>(missing_bits);
}

inline bool is_missing_result(double v) { return v != v; }

constexpr std::u32string_view left_justified(std::u32string_view s) {
    while (!s.empty() && s.front() == U' ') s.remove_prefix(1);
    return s;
}
constexpr std::u32string_view trimmed(std::u32string_view s) {
    s = left_justified(s);
    while (!s.empty() && s.back() == U' ') s.remove_suffix(1);
    return s;
}

// A working copy of at most `copy_limit` characters, with room behind them for the exponent
// that scaling appends ("E-", up to five digits).
inline constexpr std::size_t copy_limit = 200;
inline constexpr std::size_t scale_suffix_room = 8;

class WorkText {
public:
    explicit WorkText(std::u32string_view text, std::size_t limit = copy_limit) {
        size_ = std::min(text.size(), limit);
        std::copy_n(text.begin(), size_, cells_);
    }
    std::u32string_view view() const { return {cells_, size_}; }
    wchar* begin() { return cells_; }
    wchar* end() { return cells_ + size_; }
    std::size_t size() const { return size_; }
    void assign(std::u32string_view text) {  // text no longer than the copy
        if (text.data() != cells_) std::copy(text.begin(), text.end(), cells_);  // a prefix of itself stays
        size_ = text.size();
    }
    void push_back(wchar c) {
        if (size_ < copy_limit + scale_suffix_room) cells_[size_++] = c;
    }
    void replace(wchar from, wchar to) { std::replace(begin(), end(), from, to); }
    void exchange(wchar a, wchar b) {
        for (wchar& c : *this) c = c == a ? b : c == b ? a : c;
    }

private:
    wchar cells_[copy_limit + scale_suffix_room];
    std::size_t size_;
};

}  // namespace vxlocfmt::classic::detail
