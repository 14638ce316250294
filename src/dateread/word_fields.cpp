// Word directives: which characters a word takes and what each directive makes of it.
#include "dateread/word_fields.h"

#include <array>

namespace vxlocfmt::dateread {
namespace {

constexpr bool is_digit(wchar c) { return c >= U'0' && c <= U'9'; }
constexpr bool ends_any_word(wchar c) { return c == U' ' || is_digit(c) || c == U',' || c == U'.'; }
constexpr wchar upper(wchar c) { return c >= U'a' && c <= U'z' ? c - 32 : c; }

// The longest word worth keeping: "IIII", three name letters and the like.
constexpr std::size_t kept_letters = 4;

struct word {
    std::size_t length;           // characters consumed
    wchar head[kept_letters];     // the first ones, upper case
};

word letter_word(std::u32string_view text, std::size_t pos) {
    word w{0, {}};
    while (pos + w.length < text.size()) {
        const wchar c = text[pos + w.length];
        if (ends_any_word(c) || !is_letter(c)) break;
        if (w.length < kept_letters) w.head[w.length] = upper(c);
        ++w.length;
    }
    return w;
}

// Non-letters up to a digit, "," or "."; blanks are marks here (a blank is a separator).
word mark_word(std::u32string_view text, std::size_t pos) {
    word w{0, {}};
    while (pos + w.length < text.size()) {
        const wchar c = text[pos + w.length];
        if (!is_mark(c)) break;
        if (w.length < kept_letters) w.head[w.length] = c;
        ++w.length;
    }
    return w;
}

// 1-based place of the word's first three letters in a list of three-letter names, or 0.
int find_name(const word& w, std::u32string_view names) {
    if (w.length < 3) return 0;
    for (std::size_t i = 0; i + 3 <= names.size(); i += 4)
        if (names[i] == w.head[0] && names[i + 1] == w.head[1] && names[i + 2] == w.head[2])
            return static_cast<int>(i / 4) + 1;
    return 0;
}

constexpr std::u32string_view month_names = U"JAN FEB MAR APR MAY JUN JUL AUG SEP OCT NOV DEC ";
constexpr std::u32string_view weekday_names = U"SUN MON TUE WED THU FRI SAT ";

bool is_separator(wchar c) { return c == U'/' || c == U'-' || c == U':' || c == U' '; }

int roman_quarter(const word& w) {
    if (w.length > kept_letters) return 0;
    const std::u32string_view s(w.head, w.length);
    if (s == U"I") return 1;
    if (s == U"II") return 2;
    if (s == U"III") return 3;
    if (s == U"IV" || s == U"IIII") return 4;  // "IIII" accepted besides "IV", deliberately
    return 0;
}

}  // namespace

bool read_word_field(wchar d, std::u32string_view text, std::size_t& pos, read_slots& s, bool& in_zone) {
    switch (d) {
    case U'b':
    case U'B': {
        const word w = letter_word(text, pos);
        const int m = find_name(w, month_names);
        if (m == 0) return false;
        s.field[month] = m;
        pos += w.length;
        return true;
    }
    case U'a':
    case U'A': {
        const word w = letter_word(text, pos);
        const int wd = find_name(w, weekday_names);
        if (wd == 0) return false;
        s.field[weekday] = wd;
        pos += w.length;
        return true;
    }
    case U'r': {
        const word w = letter_word(text, pos);
        const int q = roman_quarter(w);
        if (q == 0) return false;
        s.field[quarter] = q;
        pos += w.length;
        return true;
    }
    case U'p': {
        const word w = letter_word(text, pos);
        if (w.length == 0) return false;
        s.am_pm = w.head[0];
        pos += w.length;
        return true;
    }
    case U'z': {
        const word w = letter_word(text, pos);
        if (w.length == 0) return false;
        pos += w.length;
        return true;
    }
    case U'c':
    case U'C': {
        const word w = mark_word(text, pos);
        if (w.length == 0) return false;
        for (std::size_t i = 0; i < w.length; ++i)
            if (!is_separator(text[pos + i])) return false;
        pos += w.length;
        return true;
    }
    case U'G': {
        const word w = mark_word(text, pos);
        if (w.length != 1 || (w.head[0] != U'+' && w.head[0] != U'-')) return false;
        s.zone_sign = w.head[0] == U'+' ? 1 : -1;
        in_zone = true;
        pos += 1;
        return true;
    }
    default:
        return false;
    }
}

}  // namespace vxlocfmt::dateread
