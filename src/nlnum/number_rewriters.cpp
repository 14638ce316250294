#include "nlnum/number_rewriters.h"

#include <algorithm>
#include <iterator>

#include "classic/value_informats.h"
#include "nlnum/plain_number.h"
#include "nlnum/rewrite_text.h"

namespace vxlocfmt::nlnum {
namespace {

// Characters of a two-cell field ("," or U+200E and "-"): its length is the count of non-zero cells.
std::u32string_view field(const wchar (&cells)[2]) {
    return {cells, static_cast<std::size_t>(cells[0] == 0 ? 0 : cells[1] == 0 ? 1 : 2)};
}

bool is_digit(wchar c) { return c >= U'0' && c <= U'9'; }

// "," grouping and "." point by the record's separators. False: refused (a text in apostrophes
// where the separator is one character, "'1'000'").
bool normalise_separators(RewriteText& t, const NumberConventions& c) {
    const std::u32string_view sep = field(c.thousands_sep);
    const std::u32string_view point = field(c.decimal_point);
    const bool comma_point = point == U",";
    if (t.size() > 1 && !sep.empty() && sep.front() != U',') {
        if (sep.size() == 1) {
            if (t.front() == U'\'' && t.back() == U'\'') return false;
            const wchar s = sep.front();
            t.map([&](wchar ch) { return ch == U',' ? (comma_point ? U'.' : ch) : ch == s ? U',' : ch; });
        } else {
            // Commas first (to points), then the pairs (whose first character is no comma).
            if (comma_point) t.map([](wchar ch) { return ch == U',' ? U'.' : ch; });
            t.replace_all(sep, U',');
        }
    }
    if (!point.empty() && point != U"," && point != U".") t.replace_all(point, U'.');
    return true;
}

// The negative forms of the record, in order; a negative text gets a leading "-".
void read_signs(RewriteText& t, const NumberConventions& c) {
    const auto parenthesised = [&] { return t.size() >= 2 && t.front() == U'(' && t.back() == U')'; };
    // A negative text's sign or "(" at the front becomes the "-"; one at the end goes, and the
    // "-" is put in front.
    if (c.n_sign_posn == 0) {
        if (parenthesised()) {
            t.drop_back();
            t.set(0, U'-');
            return;
        }
    } else if (const std::u32string_view sign = field(c.negative_sign); !sign.empty() && !t.empty()) {
        // A sign of two characters is taken off whole where the text has it whole: in a session
        // encoding without the sign its cells are the start of a character reference ("&#").
        if (t.view().starts_with(sign)) {
            if (sign.size() == 2) t.drop_front();
            t.set(0, U'-');
            return;
        }
        if (t.front() == sign.front()) {
            t.set(0, U'-');
            return;
        }
        const bool whole = t.view().ends_with(sign);
        if (whole || t.back() == sign.front()) {
            for (std::size_t i = 0; i < (whole ? sign.size() : 1); ++i) t.drop_back();
            t.push_front(U'-');
            return;
        }
    }
    if (c.p_sign_posn == 0) {
        if (parenthesised()) {
            t.drop_back();
            t.drop_front();
        }
    } else if (const wchar sign = c.positive_sign[0]; sign != 0 && !t.empty()) {
        if (t.front() == sign) t.drop_front();
        else if (t.back() == sign) t.drop_back();
    }
}

// The common shape in one pass; anything else through the rewrite and the classic informat.
std::int32_t finish(RewriteText& t, FmtCall& call, const NumberConventions& c, void* extra) {
    if (std::int32_t result; read_plain_number(t.view(), call, c, extra, result)) return result;
    return read_rewritten(t, call, c, extra);
}

bool holds(const wchar* symbol, wchar c) {
    for (; *symbol; ++symbol)
        if (*symbol == c) return true;
    return false;
}

// The characters of both records' symbols (at most 50 each), with a 64-bit filter by the low
// six bits so that digits and separators are turned away without a search.
class SymbolCharacters {
public:
    SymbolCharacters(const wchar* a, const wchar* b) {
        add(a);
        add(b);
    }
    bool contains(wchar c) const {
        if (!(filter_ >> (c & 63) & 1)) return false;
        return std::find(chars_, chars_ + size_, c) != chars_ + size_;
    }

private:
    void add(const wchar* s) {
        for (; *s && size_ < std::size(chars_); ++s) {
            chars_[size_++] = *s;
            filter_ |= std::uint64_t{1} << (*s & 63);
        }
    }
    wchar chars_[2 * std::size(NumberConventions{}.currency_symbol)];
    std::size_t size_ = 0;
    std::uint64_t filter_ = 0;
};

}  // namespace

std::int32_t read_rewritten(RewriteText& t, FmtCall& call, const NumberConventions& c, void* extra) {
    if (!normalise_separators(t, c)) return rewrite_refused;
    read_signs(t, c);
    return static_cast<std::int32_t>(read_classic(call, t, vxfmtzifmnpn, extra));
}

std::size_t number_point(std::u32string_view text, wchar point) {
    std::size_t i = text.size();
    while (i > 0 && !is_digit(text[i - 1])) --i;  // what follows the number: a symbol, a sign
    const auto skip_digits = [&] {
        while (i > 0 && is_digit(text[i - 1])) --i;
    };
    skip_digits();
    // An exponent: the point belongs to the mantissa before it.
    std::size_t e = i;
    if (e > 0 && (text[e - 1] == U'+' || text[e - 1] == U'-')) --e;
    if (e > 1 && (text[e - 1] == U'E' || text[e - 1] == U'e') && is_digit(text[e - 2])) {
        i = e - 1;
        skip_digits();
    }
    return i > 0 && text[i - 1] == point ? i - 1 : std::u32string_view::npos;
}

std::int32_t zkifnum(std::u32string_view text, FmtCall& call, const NumberConventions& own, void* extra) {
    // The common shape straight from the caller's text, without the working copy.
    if (std::int32_t result; read_plain_number(trim_field_blanks(text.substr(0, informat_read_limit)), call, own, extra, result))
        return result;
    RewriteText t(text);
    t.trim();
    return read_rewritten(t, call, own, extra);
}

std::int32_t zkifpct(std::u32string_view text, FmtCall& call, const NumberConventions& own, void* extra) {
    RewriteText t(text);
    t.trim();
    if (!normalise_separators(t, own)) return rewrite_refused;
    const wchar negative = own.negative_sign[0], negative2 = own.negative_sign[1], positive = own.positive_sign[0],
                positive2 = own.positive_sign[1];
    const bool is_negative = t.erase_if([&](wchar c) {
        return c == U'(' || c == U')' || (c != 0 && (c == negative || c == negative2));
    }) > 0;
    t.erase_if([&](wchar c) { return c != 0 && (c == positive || c == positive2); });
    t.trim();
    if (is_negative) t.push_front(U'-');
    return static_cast<std::int32_t>(read_classic(call, t, vxfmtzifmpct, extra));
}

std::int32_t zkifmny(std::u32string_view text, FmtCall& call, const NumberConventions& own,
                     const NumberConventions& other, void* extra) {
    text = text.substr(0, informat_read_limit);
    const wchar point = own.decimal_point[0];
    // A symbol holding the decimal point ("B/.", "kr."): only the number's own point is kept.
    std::size_t kept_point = std::u32string_view::npos;
    if (point != 0 && text.find(point) != std::u32string_view::npos &&
        (holds(own.currency_symbol, point) || holds(other.currency_symbol, point)))
        kept_point = number_point(text, point);
    // One pass: every character of either symbol goes, except the number's point and an
    // exponent's "E" (between a digit and a digit or sign), which "EUR" would take with it.
    const SymbolCharacters symbols(own.currency_symbol, other.currency_symbol);
    RewriteText t;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const wchar c = text[i];
        if (!symbols.contains(c) || i == kept_point) {
            t.push_back(c);
        } else if (c == U'E' && i > 0 && i + 1 < text.size() && is_digit(text[i - 1]) &&
                   (is_digit(text[i + 1]) || text[i + 1] == U'+' || text[i + 1] == U'-')) {
            t.push_back(c);
        }
    }
    t.trim();  // the blank that stood between the symbol and the number
    return finish(t, call, other, extra);
}

}  // namespace vxlocfmt::nlnum
