// Preprocessing of a date text: squeeze, trim, digit test, the odd-length zero.
#include "dateread/text_preparation.h"

#include <algorithm>

namespace vxlocfmt::dateread {
namespace {

constexpr bool is_digit(wchar c) { return c >= U'0' && c <= U'9'; }

// One pass: drop the leading blanks, then every blank that follows a blank or a separator of the
// text as it stood before the pass (the marks are taken first, then deleted).
std::size_t squeeze_pass(wchar* s, std::size_t n) {
    std::size_t start = 0;
    while (start < n && s[start] == U' ') ++start;
    std::size_t out = 0;
    wchar before = 0;  // the character before s[i] in the pass's input
    for (std::size_t i = start; i < n; ++i) {
        const wchar c = s[i];
        const bool marked = c == U' ' && i > start && is_squeeze_trigger(before);
        before = c;
        if (!marked) s[out++] = c;
    }
    return out;
}

}  // namespace

bool needs_squeeze(std::u32string_view text) {
    if (text.empty()) return false;
    if (text.front() == U' ' || text.back() == U' ') return true;
    for (std::size_t i = 1; i < text.size(); ++i)
        if (text[i] == U' ' && is_squeeze_trigger(text[i - 1])) return true;
    return false;
}

bool is_all_digit(std::u32string_view text) {
    const std::size_t n = text.size();
    if (n == 0) return false;
    for (std::size_t i = 0; i < n; ++i) {
        const wchar c = text[i];
        if (is_digit(c)) continue;
        if (i == 8 && n >= 10 && c == U'T') continue;
        if (i == n - 1 && c == U'Z') continue;
        if ((n == 11 || n == 20) && i == n - 5 && (c == U'+' || c == U'-')) continue;
        // The point of a basic time's or datetime's fraction (hhmmss.f, yyyymmddThhmmss.f).
        if (c == U'.' && (i == 6 || (i == 15 && text[8] == U'T')) && i + 1 < n && is_digit(text[i + 1])) continue;
        return false;
    }
    return true;
}

void prepare_text(std::u32string_view text, std::size_t limit, bool odd_zero, prepared_text& out) {
    limit = std::min(limit, anydate_text_limit);
    const std::u32string_view used = text.substr(0, std::min(text.size(), limit));
    // The leading digits, then whether a blank follows: only a blank lets squeezing change the
    // text.
    std::size_t lead = 0;
    while (lead < used.size() && is_digit(used[lead])) ++lead;
    bool blank = false;
    for (std::size_t i = lead; i < used.size(); ++i) blank |= used[i] == U' ';
    if (lead == used.size() && !(odd_zero && lead < 8 && lead % 2 == 1)) {  // digits only, the common case
        out.data = used.data();
        out.length = used.size();
        out.all_digit = !used.empty();
        return;
    }
    if (!blank || !needs_squeeze(used)) {  // the passes would change nothing: no copy
        out.data = used.data();
        out.length = used.size();
        out.all_digit = is_all_digit(used);
        if (!(odd_zero && out.all_digit && out.length < 8 && out.length % 2 == 1)) return;
    }
    out.data = out.buffer;
    // Room for the leading zero: the copy starts at buffer[1].
    wchar* s = out.buffer + 1;
    std::size_t n = std::min(text.size(), limit);
    std::copy_n(text.data(), n, s);
    n = squeeze_pass(s, n);
    n = squeeze_pass(s, n);
    while (n > 0 && s[n - 1] == U' ') --n;  // trailing blanks do not count toward the length
    const bool digits = is_all_digit({s, n});
    if (odd_zero && digits && n < 8 && n % 2 == 1) {
        --s;
        *s = U'0';
        ++n;
    }
    if (s != out.buffer) std::copy_n(s, n, out.buffer);
    out.length = n;
    out.all_digit = digits;
}

}  // namespace vxlocfmt::dateread
