#include "nlnum/plain_number.h"

#include "classic/informat_field.h"
#include "classic/kernel_reader.h"
#include "nlnum/rewrite_text.h"

namespace vxlocfmt::nlnum {
namespace {

constexpr bool is_digit(wchar c) { return c >= U'0' && c <= U'9'; }

// The record's characters, when the rewrite cannot mistake one for another: one-character
// grouping (or none), point and negative sign; grouping and point neither digits, signs nor
// parentheses; signs that the separator rewrite leaves as they are; and a positive sign that is
// not "-" (the rewrite would take a leading "-" off as the positive sign).
struct PlainRecord {
    wchar group;     // 0: none
    wchar point;
    wchar negative;  // 0: none, or the record puts negative amounts in parentheses
    bool parentheses;
    bool point_dropped;  // "," as the point and no grouping: nothing rewrites it, NEGPAREN deletes it
};

bool is_sign_like(wchar c) { return c == U'-' || c == U'(' || c == U')'; }

bool plain_record(const NumberConventions& c, PlainRecord& r) {
    if (c.thousands_sep[0] != 0 && c.thousands_sep[1] != 0) return false;
    if (c.decimal_point[0] == 0 || c.decimal_point[1] != 0 || c.negative_sign[1] != 0) return false;
    const wchar g = c.thousands_sep[0], p = c.decimal_point[0], ns = c.negative_sign[0], ps = c.positive_sign[0];
    if (g == p || is_digit(g) || is_digit(p) || is_sign_like(g) || is_sign_like(p)) return false;
    const auto rewritten = [&](wchar s) { return s == U',' || s == g || s == p || is_digit(s); };
    if ((ns != 0 && rewritten(ns)) || (ps != 0 && (rewritten(ps) || ps == U'-'))) return false;
    r.group = g;
    r.point = p;
    r.parentheses = c.n_sign_posn == 0;
    r.negative = r.parentheses ? 0 : ns;
    r.point_dropped = p == U',' && g == 0;
    return true;
}

}  // namespace

bool read_plain_number(std::u32string_view text, FmtCall& call, const NumberConventions& record, void* extra,
                       std::int32_t& result) {
    const std::size_t n = text.size();
    if (n == 0 || n > informat_read_limit || !call.output) return false;
    PlainRecord r;
    if (!plain_record(record, r)) return false;

    // The sign forms the rewrite turns into a leading "-", and the length of its text.
    std::size_t first = 0, last = n, rewritten_length = n;
    bool negative = true;
    const wchar front = text.front(), back = text.back();
    if (r.parentheses && front == U'(' && back == U')') {
        first = 1;
        last = n - 1;
        rewritten_length = n - 1;
    } else if (front == U'-' || (r.negative != 0 && front == r.negative)) {
        first = 1;
    } else if (r.negative != 0 && back == r.negative) {
        last = n - 1;  // moved to the front: the length stays
    } else {
        negative = false;
    }
    if (first >= last || !is_digit(text[first]) || !is_digit(text[last - 1])) return false;

    // What NEGPAREN hands the reader: the digits and the point, grouping and sign gone.
    wchar digits[informat_read_limit];  // worst case: a text of 32 digits
    std::int32_t size = 0;
    bool has_point = false;
    for (std::size_t i = first; i < last; ++i) {
        const wchar c = text[i];
        if (is_digit(c)) {
            digits[size++] = c;
        } else if (c == r.point) {
            if (!r.point_dropped) {
                digits[size++] = U'.';
                has_point = true;
            }
        } else if (c != r.group || r.group == 0) {
            return false;
        }
    }

    // NEGPAREN on the rewritten text: the missing value first, then its limits on that text
    // (decimals 0 when it holds no point: the locale informats never imply decimals).
    double* out = static_cast<double*>(call.output);
    classic::detail::preset_missing(call);
    const std::int32_t width = call.width, decimals = call.decimals;
    call.width = static_cast<std::int32_t>(rewritten_length);
    if (!has_point) call.decimals = 0;
    const status limits = classic::detail::check_limits(call, classic::detail::number_limits);
    call.width = width;
    call.decimals = decimals;
    if (limits != 0) {
        result = static_cast<std::int32_t>(limits);
        return true;
    }
    const status code = classic::kernel_read_number(digits, size, out, extra);
    if (negative && code == 0 && !classic::detail::is_missing_result(*out)) *out = -*out;
    result = static_cast<std::int32_t>(code);
    return true;
}

}  // namespace vxlocfmt::nlnum
