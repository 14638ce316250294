#include "text/wide_strings.h"
#include "text/text_exports.h"

#include <algorithm>
#include <array>
#include <cstring>

#include "text/case_mapping.h"

namespace vxlocfmt::text {

std::int64_t find_char(std::u32string_view s, wchar c) {
    const std::size_t at = s.find(c);
    return at == std::u32string_view::npos ? -1 : static_cast<std::int64_t>(at);
}

std::int64_t find_not_char(std::u32string_view s, wchar c) {
    if (s.empty()) return 0;  // deliberate: not -1, unlike find_char
    const std::size_t at = s.find_first_not_of(c);
    return at == std::u32string_view::npos ? -1 : static_cast<std::int64_t>(at);
}

std::int64_t find(std::u32string_view s, std::u32string_view pattern) {
    if (pattern.empty()) return 0;
    const std::size_t at = s.find(pattern);
    return at == std::u32string_view::npos ? -1 : static_cast<std::int64_t>(at);
}

std::int64_t verify(std::u32string_view s, std::u32string_view set) {
    if (s.empty()) return -1;
    if (set.empty()) return 0;
    const std::size_t at = s.find_first_not_of(set);
    return at == std::u32string_view::npos ? -1 : static_cast<std::int64_t>(at);
}

void translate(std::span<wchar> s, const wchar* to, std::u32string_view from) {
    for (wchar& c : s) {
        const std::size_t k = from.find(c);
        if (k != std::u32string_view::npos) c = to[k];
    }
}

std::size_t strip_trailing_blanks(std::u32string_view s) {
    const std::size_t last = s.find_last_not_of(blank);
    return last == std::u32string_view::npos ? 0 : last + 1;
}

bool is_unicode_space(wchar c) {
    return c == 0x20 || c == 0xA0 || c == 0x1680 || (c >= 0x2000 && c <= 0x200A) || c == 0x2028 ||
           c == 0x2029 || c == 0x202F || c == 0x205F || c == 0x3000;
}

std::size_t strip_trailing_spaces(std::u32string_view s) {
    std::size_t n = s.size();
    while (n > 0 && is_unicode_space(s[n - 1])) --n;
    return n;
}

std::size_t copy_padded(std::u32string_view src, std::span<wchar> dst) {
    const std::size_t m = std::min(src.size(), dst.size());
    std::copy_n(src.data(), m, dst.data());
    std::fill(dst.begin() + static_cast<std::ptrdiff_t>(m), dst.end(), blank);
    return m;
}

std::size_t copy_terminated(std::u32string_view src, wchar* dst, std::size_t n) {
    const std::size_t m = std::min(src.size(), n);
    std::copy_n(src.data(), m, dst);
    dst[m] = 0;
    return m;
}

Justified justify(std::span<wchar> s, wchar alignment) {
    const std::u32string_view v(s.data(), s.size());
    const std::size_t first = v.find_first_not_of(blank);
    if (first == std::u32string_view::npos) return {0, 0};
    const std::size_t last = v.find_last_not_of(blank);
    const auto length = static_cast<std::int64_t>(s.size());
    const auto lead = static_cast<std::int64_t>(first);
    const auto content = static_cast<std::int64_t>(last - first + 1);
    std::int64_t shift = 0;
    switch (alignment) {
        case U'L':
        case U'l': shift = -lead; break;
        case U'R':
        case U'r': shift = length - 1 - static_cast<std::int64_t>(last); break;
        case U'C':
        case U'c':
            // Truncated to 32 bits as the field arithmetic always was; only texts past 2^31
            // characters notice.
            shift = static_cast<std::int32_t>((length - lead) - (length + content + 1) / 2);
            break;
        default: break;
    }
    std::int64_t start = lead + shift;
    if (start < 0 || start + content > length) start = lead;  // only after a 32-bit wrap
    if (start != lead) {
        wchar* d = s.data();
        std::memmove(d + start, d + lead, static_cast<std::size_t>(content) * sizeof(wchar));
        if (start > lead)
            std::fill(d + lead, d + std::min(start, lead + content), blank);
        else
            std::fill(d + std::max(start + content, lead), d + lead + content, blank);
    }
    return {content, start};
}

bool equal(std::u32string_view a, std::u32string_view b) { return a == b; }

bool equal_ignoring_case(std::u32string_view a, std::u32string_view b) {
    if (a.size() != b.size()) return false;
    // Short texts are lowered as wholes in local buffers: no allocation on the common path.
    constexpr std::size_t local_chars = 256;  // per side; longer texts go character by character
    if (a.size() < local_chars) {
        std::array<wchar, local_chars> la, lb;
        std::copy(a.begin(), a.end(), la.begin());
        std::copy(b.begin(), b.end(), lb.begin());
        to_lower(std::span<wchar>(la.data(), a.size()));
        to_lower(std::span<wchar>(lb.data(), b.size()));
        return std::equal(la.begin(), la.begin() + static_cast<std::ptrdiff_t>(a.size()),
                          lb.begin());
    }
    for (std::size_t i = 0; i < a.size(); ++i) {
        if (a[i] != b[i] && to_lower(a[i]) != to_lower(b[i])) return false;
    }
    return true;
}

namespace {
bool all_blank(std::u32string_view s) {
    return s.find_first_not_of(blank) == std::u32string_view::npos;
}
wchar lower_bmp(wchar c) { return c < 0x10000 ? to_lower(c) : c; }
}  // namespace

int compare_padded_ignoring_case(std::u32string_view a, std::u32string_view b) {
    const std::size_t common = std::min(a.size(), b.size());
    int tie = 0;
    for (std::size_t i = 0; i < common; ++i) {
        if (a[i] == b[i]) continue;
        if (tie == 0) {
            tie = static_cast<std::int32_t>(a[i]) < static_cast<std::int32_t>(b[i]) ? -1 : 1;
        }
        const wchar la = lower_bmp(a[i]), lb = lower_bmp(b[i]);
        if (la != lb) return la < lb ? -2 : 2;
    }
    if (a.size() < b.size()) return all_blank(b.substr(common)) ? tie : -2;
    if (b.size() < a.size()) return all_blank(a.substr(common)) ? tie : 2;
    return tie;
}

}  // namespace vxlocfmt::text

using vxlocfmt::status;
using vxlocfmt::wchar;

// ---- exported names: null texts and lengths below 1 are empty texts --------------------------

namespace text = vxlocfmt::text;

namespace {
std::u32string_view view(const wchar* s, std::int64_t n) {
    return (s && n > 0) ? std::u32string_view(s, static_cast<std::size_t>(n))
                        : std::u32string_view();
}
std::span<wchar> span(wchar* s, std::int64_t n) {
    return (s && n > 0) ? std::span<wchar>(s, static_cast<std::size_t>(n)) : std::span<wchar>();
}
}  // namespace

VX_EXPORT std::int64_t vxzspos(const wchar* s, std::int64_t length, wchar c) {
    return text::find_char(view(s, length), c);
}

VX_EXPORT std::int64_t vxzsnot(const wchar* s, std::int64_t length, wchar c) {
    return text::find_not_char(view(s, length), c);
}

VX_EXPORT std::int64_t vxzsndx(const wchar* s, std::int64_t length, const wchar* pattern,
                               std::int64_t pattern_length) {
    if (pattern_length == 0 || (!pattern && pattern_length < 1)) return 0;
    if (!pattern || pattern_length < 0)
        return -1;  // a non-null pattern of negative length matches nothing
    return text::find(view(s, length), view(pattern, pattern_length));
}

VX_EXPORT std::int64_t vxzsver(const wchar* s, std::int64_t length, const wchar* set,
                               std::int64_t set_length) {
    const auto set_n = static_cast<std::int32_t>(set_length);  // deliberately read as 32 bits
    return text::verify(view(s, length), view(set, set_n));
}

VX_EXPORT status vxzsrns(wchar* s, std::int64_t length, const wchar* to, const wchar* from,
                         std::int64_t count) {
    if (to && from) text::translate(span(s, length), to, view(from, count));
    return vxlocfmt::st::ok;
}

VX_EXPORT std::int64_t vxzstrp(const wchar* s, std::int64_t length) {
    return static_cast<std::int64_t>(text::strip_trailing_blanks(view(s, length)));
}

// Mode 2 strips every Unicode space character; any other mode strips U+0020 only.
VX_EXPORT std::int64_t vxzsStripBlanks(const wchar* s, std::int64_t length, std::int32_t mode) {
    const auto v = view(s, length);
    return static_cast<std::int64_t>(mode == 2 ? text::strip_trailing_spaces(v)
                                               : text::strip_trailing_blanks(v));
}

// A destination length of -1 - n means n characters then a 0; a null destination gets nothing.
VX_EXPORT std::int64_t vxzsmov(const wchar* src, std::int64_t src_length, wchar* dst,
                               std::int64_t dst_length) {
    if (!dst) return 0;
    const bool terminated = dst_length < 0;
    const auto n = static_cast<std::size_t>(terminated ? -1 - dst_length : dst_length);
    const auto source = view(src, src_length);  // a null source copies nothing: 0 and blanks or a 0
    return static_cast<std::int64_t>(terminated
                                         ? text::copy_terminated(source, dst, n)
                                         : text::copy_padded(source, std::span<wchar>(dst, n)));
}

VX_EXPORT status vxzsjls(wchar* s, std::int64_t length, wchar alignment, std::int64_t* length_out,
                         std::int64_t* offset_out) {
    const text::Justified j = text::justify(span(s, length), alignment);
    if (length_out) *length_out = j.length;
    if (offset_out) *offset_out = j.offset;
    return vxlocfmt::st::ok;
}

VX_EXPORT std::int32_t vxzsCompare(const wchar* a, std::int64_t a_length, const wchar* b,
                                   std::int64_t b_length) {
    return text::equal(view(a, a_length), view(b, b_length));
}

VX_EXPORT std::int32_t vxzsCompareNorm(const wchar* a, std::int64_t a_length, const wchar* b,
                                       std::int64_t b_length) {
    return text::equal_ignoring_case(view(a, a_length), view(b, b_length));
}

VX_EXPORT std::int32_t vxzseqn(const wchar* a, std::int64_t a_length, const wchar* b,
                               std::int64_t b_length) {
    return text::equal_ignoring_case(view(a, a_length), view(b, b_length));
}

VX_EXPORT std::int32_t vxzsncmp(const wchar* a, std::int64_t a_length, const wchar* b,
                                std::int64_t b_length) {
    return text::compare_padded_ignoring_case(view(a, a_length), view(b, b_length));
}
