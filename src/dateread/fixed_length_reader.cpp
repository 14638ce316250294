// getdate_fixlen: a locale pattern read in the input direction. The pattern is first turned into
// a short list of elements (literal, blank run, number, name, marker, zone), then the text is
// walked against it with one cursor. Only names can be read more than one way ("Mar" and
// "March", "Dez." and "Dez"); there the walk tries the longest reading first and comes back for
// the shorter ones, within a small budget so a reading stays linear in the text.
#include "dateread/fixed_length_reader.h"

#include <algorithm>
#include <array>

#include "calendar/date_conversions.h"
#include "calendar/missing_value.h"
#include "locale/property_numbers.h"
#include "text/case_mapping.h"

namespace vxlocfmt::dateread {
namespace {

namespace prop = locale::prop;
using locale::property_text;

// U+0020, U+00A0 and U+202F: users type the first where the locale data has the others.
constexpr bool is_blank(wchar c) { return c == U' ' || c == 0xA0 || c == 0x202F; }
constexpr bool is_digit(wchar c) { return c >= U'0' && c <= U'9'; }

// ASCII in line, everything else through the kernel's upper-case service.
inline wchar fold(wchar c) {
    if (c < 0x80) return c >= U'a' && c <= U'z' ? c - 0x20 : c;
    return text::to_upper(c);
}
inline bool same_letter(wchar a, wchar b) { return a == b || fold(a) == fold(b); }

enum class what : std::uint8_t { literal, blanks, number, name, marker, zone, zone_letters };
enum class field : std::uint8_t { ignored, day, month, year, hour, hour_k, twelve_hour, minute, second };
enum class group : std::uint8_t { month, weekday, quarter };

// Trivial, so a pattern's element array costs nothing until it is filled.
struct element {
    what kind;
    field target;
    group names;
    std::uint8_t natural;     // digits the expander writes with padding
    std::uint8_t own;         // the most digits the value can have
    std::uint8_t max_digits;  // natural when another number follows directly, else own
    bool blank_padded;        // "%e", "%o": a leading blank may stand for a 0
    bool padded_name;         // "%c", "%f": blanks after the name
    bool calendar_year;       // "%+Y" and the years after it
    wchar c;                  // the literal
};

// A property of 160 characters makes at most 160 elements ("%T" five for two characters), each
// "%x" in it a property's worth more; a pattern needing more than this is refused.
constexpr std::size_t max_elements = 512;

struct compiled_pattern {
    std::array<element, max_elements> e;  // the first `count` are filled
    std::size_t count = 0;
    bool refused = false;

    void add(const element& x) {
        if (count == max_elements) {
            refused = true;
            return;
        }
        // A run of pattern blanks reads one run of text blanks.
        if (x.kind == what::blanks && count && e[count - 1].kind == what::blanks) return;
        e[count++] = x;
    }
};

element number(field target, std::uint8_t natural, std::uint8_t own, bool blank_padded = false) {
    return {what::number, target, group::month, natural, own, own, blank_padded, false, false, 0};
}
element literal(wchar c) {
    return {is_blank(c) ? what::blanks : what::literal, field::ignored, group::month, 0, 0, 0, false, false, false, c};
}
element name(group g, bool padded = false) {
    return {what::name, field::ignored, g, 0, 0, 0, false, padded, false, 0};
}
element of_kind(what k) { return {k, field::ignored, group::month, 0, 0, 0, false, false, false, 0}; }

// One directive, its letter folded to upper case as the expander folds it ("%m" is "N"). False
// for the letters the expander refuses.
bool add_directive(compiled_pattern& out, wchar letter, bool lower, bool calendar_years) {
    constexpr std::uint8_t hour_digits = 9;  // a duration's hours are not wrapped at 24
    switch (letter) {
    case U'A': out.add(name(group::weekday)); return true;
    case U'F': out.add(name(group::weekday, true)); return true;
    case U'B': out.add(name(group::month)); return true;
    case U'C': out.add(name(group::month, true)); return true;
    case U'Q': out.add(name(group::quarter)); return true;
    case U'D': out.add(number(field::day, 2, 2)); return true;
    case U'E': out.add(number(field::day, 2, 2, lower)); return true;
    case U'N': out.add(lower ? number(field::ignored, 2, hour_digits) : number(field::month, 2, 2)); return true;
    case U'O': out.add(number(field::month, 2, 2, lower)); return true;
    case U'J': out.add(number(field::ignored, 3, 3)); return true;
    case U'G': out.add(lower ? number(field::ignored, 2, 2) : number(field::ignored, 4, 5)); return true;
    case U'Y': {
        element y = lower ? number(field::year, 2, 2) : number(field::year, 4, 5);
        y.calendar_year = calendar_years;
        out.add(y);
        return true;
    }
    case U'H': out.add(number(field::hour, 2, hour_digits)); return true;
    case U'K': out.add(number(field::hour_k, 2, hour_digits)); return true;
    case U'I':
    case U'L': out.add(number(field::twelve_hour, 2, 2)); return true;
    case U'M': out.add(number(field::minute, 2, 2)); return true;
    case U'S': out.add(number(field::second, 2, 2)); return true;
    case U'T':
        if (lower) return true;  // "%t": nothing
        out.add(number(field::hour, 2, hour_digits));
        out.add(literal(U':'));
        out.add(number(field::minute, 2, 2));
        out.add(literal(U':'));
        out.add(number(field::second, 2, 2));
        return true;
    case U'P': out.add(of_kind(what::marker)); return true;
    case U'U':
    case U'W': out.add(lower ? number(field::ignored, 1, 1) : number(field::ignored, 2, 2)); return true;
    case U'V':
        if (!lower) out.add(number(field::ignored, 2, 2));  // "%v": nothing
        return true;
    case U'Z': out.add(of_kind(lower ? what::zone : what::zone_letters)); return true;
    default: return false;  // "%R", "%r", "%x" and "%X" with flags
    }
}

bool is_ascii_letter(wchar c) { return (c >= U'a' && c <= U'z') || (c >= U'A' && c <= U'Z'); }

// The directive grammar of the expander: "%", then "#" or "0", a digit 1 to 9 (ignored), "+"
// (calendar years from here on), "?" (lower-case reading), the letter. "%x" and "%X" without
// flags are the locale's date and time patterns, replaced once (`nested` marks their text).
void compile(std::u32string_view pattern, const PropertyCache& properties, bool nested, bool& calendar_years,
             compiled_pattern& out) {
    for (std::size_t i = 0; i < pattern.size() && !out.refused; ++i) {
        const wchar c = pattern[i];
        if (c != U'%') {
            out.add(literal(c));
            continue;
        }
        if (++i == pattern.size()) {  // a "%" in the last position
            out.refused = true;
            return;
        }
        if ((pattern[i] == U'x' || pattern[i] == U'X') && !nested) {
            compile(property_text(properties, pattern[i] == U'x' ? prop::date_pattern : prop::time_pattern), properties,
                    true, calendar_years, out);
            continue;
        }
        if (pattern[i] == U'#' || pattern[i] == U'0') ++i;
        if (i < pattern.size() && pattern[i] >= U'1' && pattern[i] <= U'9') ++i;
        if (i < pattern.size() && pattern[i] == U'+') {
            calendar_years = true;
            ++i;
        }
        bool forced_lower = false;
        if (i < pattern.size() && pattern[i] == U'?') {
            forced_lower = true;
            ++i;
        }
        if (i == pattern.size()) {
            out.refused = true;
            return;
        }
        wchar letter = pattern[i];
        if (letter == U'%') {
            out.add(literal(U'%'));
            continue;
        }
        if (!is_ascii_letter(letter) || (letter | 0x20) == U'x' || (letter | 0x20) == U'r') {
            out.refused = true;
            return;
        }
        bool lower = forced_lower || letter >= U'a';
        letter &= ~wchar{0x20};
        if (lower && letter == U'M') {
            letter = U'N';
            lower = false;
        }
        if (!add_directive(out, letter, lower, calendar_years)) out.refused = true;
    }
}

// Numbers written side by side ("%Y%m%d") take their padded widths; any other number reads all
// its digits.
void settle_widths(compiled_pattern& p) {
    for (std::size_t k = 0; k < p.count; ++k) {
        element& x = p.e[k];
        const bool number_follows = k + 1 < p.count && p.e[k + 1].kind == what::number;
        x.max_digits = number_follows ? x.natural : x.own;
    }
}

// What the walk has read so far. Absent numbers are -1.
struct reading {
    std::int64_t day = -1, month = -1, year = -1, hour = -1, minute = -1;
    double second = -1;
    wchar marker = 0;  // 'A' or 'P'
};

constexpr std::size_t max_candidates = 8;
struct candidate {
    std::uint32_t length;
    std::int32_t index;  // within the group
};

struct walker {
    const PropertyCache& properties;
    std::u32string_view text;
    const compiled_pattern& pattern;
    wchar decimal_point;
    std::u32string_view calendar_code;
    std::int32_t budget;       // readings a name may still send the walk back for
    reading result;
    bool truncated;            // the text ended before the pattern's time fields

    bool walk(std::size_t e, std::size_t pos, reading r);
    bool accept_truncated(std::size_t e) const;
    bool read_number(const element& x, std::size_t& pos, reading& r) const;
    std::size_t name_candidates(const element& x, std::size_t pos, std::array<candidate, max_candidates>& out) const;
    bool read_marker(std::size_t& pos, reading& r) const;
    bool read_zone(std::size_t& pos) const;
    bool matches_at(std::size_t pos, std::u32string_view s) const {
        return s.size() <= text.size() - pos && IETL(text.data() + pos, s.data(), s.size());
    }
};

// The text ended at element e: read as far as it went when what is left is the time of day (and
// its literals, marker and zone), not part of the date.
bool walker::accept_truncated(std::size_t e) const {
    for (std::size_t k = e; k < pattern.count; ++k) {
        const element& x = pattern.e[k];
        if (x.kind == what::name) return false;
        if (x.kind == what::number && (x.target == field::day || x.target == field::month ||
                                       x.target == field::year || x.target == field::ignored))
            return false;
    }
    return true;
}

bool walker::read_number(const element& x, std::size_t& pos, reading& r) const {
    std::size_t at = pos;
    if (x.blank_padded && at + 1 < text.size() && is_blank(text[at]) && is_digit(text[at + 1])) ++at;
    std::int64_t value = 0;
    const std::size_t first = at;
    while (at < text.size() && at - first < x.max_digits && is_digit(text[at])) value = value * 10 + (text[at++] - U'0');
    if (at == first) return false;
    switch (x.target) {
    case field::ignored: break;
    case field::day:
        if (value < 1 || value > 31) return false;
        r.day = value;
        break;
    case field::month:
        if (value < 1 || value > 12) return false;
        r.month = value;
        break;
    case field::year:
        if (x.calendar_year && calendar_code.size() == 2) {
            if (calendar_code == U"TH") value -= 543;
            else if (calendar_code == U"TW") value += 1911;
            else if (calendar_code == U"JP") return false;  // the era is not in the text
        }
        r.year = value;
        break;
    case field::hour: r.hour = value; break;
    case field::hour_k: r.hour = value == 24 ? 0 : value; break;
    case field::twelve_hour:
        if (value > 12) return false;
        r.hour = value;
        break;
    case field::minute:
        if (value > 59) return false;
        r.minute = value;
        break;
    case field::second: {
        if (value > 59) return false;
        double seconds = static_cast<double>(value);
        // A fraction after the locale's decimal point (or "."), when a digit follows it.
        if (at + 1 < text.size() && (text[at] == decimal_point || text[at] == U'.') && is_digit(text[at + 1])) {
            double scale = 0.1;
            for (++at; at < text.size() && is_digit(text[at]); ++at, scale /= 10) seconds += (text[at] - U'0') * scale;
        }
        r.second = seconds;
        break;
    }
    }
    pos = at;
    return true;
}

// The names of the element's group, in all four forms, that the text at pos begins with, longest
// first. An abbreviation's final period may be left out, and an abbreviation without one may be
// followed by one.
std::size_t walker::name_candidates(const element& x, std::size_t pos,
                                    std::array<candidate, max_candidates>& out) const {
    const std::size_t* sets = x.names == group::month ? locale::MonNames
                              : x.names == group::weekday ? locale::DayNames : locale::QtrNames;
    const std::size_t count = locale::vnames[static_cast<std::size_t>(x.names)];
    const wchar head = fold(text[pos]);
    std::size_t n = 0;
    const auto keep = [&](std::size_t length, std::int32_t index) {
        for (std::size_t k = 0; k < n; ++k)
            if (out[k].length == length && out[k].index == index) return;
        if (n < max_candidates) out[n++] = {static_cast<std::uint32_t>(length), index};
    };
    for (std::size_t form = 0; form < 4; ++form) {
        const bool abbreviated = form == 0 || form == 2;
        for (std::size_t i = 0; i < count; ++i) {
            const std::u32string_view s = property_text(properties, sets[form] + i);
            if (s.empty() || (s[0] != text[pos] && fold(s[0]) != head)) continue;
            const auto index = static_cast<std::int32_t>(i);
            if (matches_at(pos, s)) {
                keep(s.size(), index);
                if (abbreviated && s.back() != U'.' && pos + s.size() < text.size() && text[pos + s.size()] == U'.')
                    keep(s.size() + 1, index);
            }
            if (s.size() > 1 && s.back() == U'.' && matches_at(pos, s.substr(0, s.size() - 1)))
                keep(s.size() - 1, index);
        }
    }
    // Longest first (insertion: at most eight).
    for (std::size_t k = 1; k < n; ++k)
        for (std::size_t j = k; j > 0 && out[j - 1].length < out[j].length; --j) std::swap(out[j - 1], out[j]);
    return n;
}

bool walker::read_marker(std::size_t& pos, reading& r) const {
    std::u32string_view am = property_text(properties, prop::am), pm = property_text(properties, prop::pm);
    if (am.empty()) am = U"AM";
    if (pm.empty()) pm = U"PM";
    // The longer first, should one begin with the other; then the plain "AM" and "PM" users type.
    const bool pm_first = pm.size() > am.size();
    const std::u32string_view tries[4] = {pm_first ? pm : am, pm_first ? am : pm, U"AM", U"PM"};
    const wchar marks[4] = {pm_first ? U'P' : U'A', pm_first ? U'A' : U'P', U'A', U'P'};
    for (std::size_t k = 0; k < 4; ++k)
        if (matches_at(pos, tries[k])) {
            pos += tries[k].size();
            r.marker = marks[k];
            return true;
        }
    return false;
}

// "+hhmm", "-hhmm" or "+hh:mm": read, not applied (the value is the local time the text shows).
bool walker::read_zone(std::size_t& pos) const {
    std::size_t at = pos;
    if (at >= text.size() || (text[at] != U'+' && text[at] != U'-' && text[at] != 0x2212)) return false;
    ++at;
    for (int k = 0; k < 4; ++k) {
        if (k == 2 && at < text.size() && text[at] == U':') ++at;
        if (at >= text.size() || !is_digit(text[at])) return false;
        ++at;
    }
    pos = at;
    return true;
}

bool walker::walk(std::size_t e, std::size_t pos, reading r) {
    for (; e < pattern.count; ++e) {
        if (pos == text.size()) {
            if (!accept_truncated(e)) return false;
            result = r;
            // The text left out time fields: the caller answers "partial" whatever was read.
            truncated = false;
            for (std::size_t k = e; k < pattern.count; ++k) truncated |= pattern.e[k].kind == what::number;
            return true;
        }
        const element& x = pattern.e[e];
        switch (x.kind) {
        case what::literal:
            if (!same_letter(text[pos], x.c)) return false;
            ++pos;
            break;
        case what::blanks:
            if (!is_blank(text[pos])) return false;
            while (pos < text.size() && is_blank(text[pos])) ++pos;
            break;
        case what::number:
            if (!read_number(x, pos, r)) return false;
            break;
        case what::marker:
            if (!read_marker(pos, r)) return false;
            break;
        case what::zone:
            if (!read_zone(pos)) return false;
            break;
        case what::zone_letters:
            if (!matches_at(pos, U"XST")) return false;
            pos += 3;
            break;
        case what::name: {
            std::array<candidate, max_candidates> found;
            const std::size_t n = name_candidates(x, pos, found);
            if (n == 0) return false;
            const auto settle = [&](const candidate& c, reading& into, std::size_t& at) {
                if (x.names == group::month) into.month = c.index + 1;
                at = pos + c.length;
                if (x.padded_name)
                    while (at < text.size() && is_blank(text[at])) ++at;
            };
            // Every reading but the last is tried on its own; the last goes on in this loop.
            for (std::size_t k = 0; k + 1 < n; ++k) {
                if (--budget < 0) return false;
                reading tried = r;
                std::size_t at;
                settle(found[k], tried, at);
                if (walk(e + 1, at, tried)) return true;
            }
            settle(found[n - 1], r, pos);
            break;
        }
        }
    }
    if (pos != text.size()) return false;
    result = r;
    truncated = false;
    return true;
}

}  // namespace

std::int32_t IETL(const wchar* a, const wchar* b, std::size_t n) {
    n = std::min(n, property_value_cells);
    for (std::size_t k = 0; k < n; ++k)
        if (!same_letter(a[k], b[k])) return 0;
    return 1;
}

std::int32_t getdate_fixlen(const PropertyCache& properties, std::u32string_view text, std::u32string_view pattern,
                            double& date, double& time) {
    date = time = calendar::missing_value();
    compiled_pattern compiled;
    bool calendar_years = false;
    compile(pattern, properties, false, calendar_years, compiled);
    if (compiled.refused || compiled.count == 0) return fixlen_no_match;
    settle_widths(compiled);

    const std::u32string_view point = property_text(properties, prop::decimal_point);
    walker w{properties, text, compiled, point.size() == 1 ? point[0] : U'.',
             property_text(properties, prop::calendar_code), 64, reading{}, false};
    if (text.empty() || !w.walk(0, 0, reading{})) return fixlen_no_match;

    reading& r = w.result;
    const bool complete_date = r.day >= 0 && r.month >= 0 && r.year >= 0;
    if (complete_date) {
        date = calendar::zmdy(static_cast<double>(r.month), static_cast<double>(r.day), static_cast<double>(r.year));
        if (calendar::is_nan(date)) return fixlen_no_match;
    }
    std::int64_t hour = r.hour;
    // An AM mark makes 12 midnight; a PM mark moves the hours below 12 to the afternoon.
    if (r.marker == U'A' && hour == 12) hour = 0;
    else if (r.marker == U'P' && hour >= 0 && hour < 12) hour += 12;
    const int present = (hour >= 0) + (r.minute >= 0) + (r.second >= 0);
    time = static_cast<double>(std::max<std::int64_t>(hour, 0) * 3600 + std::max<std::int64_t>(r.minute, 0) * 60) +
           std::max(r.second, 0.0);
    if (!complete_date && r.day >= 0) time += static_cast<double>(r.day) * 86400;
    if (w.truncated) return fixlen_partial_time;
    return present == 0 || present == 3 ? fixlen_read : fixlen_partial_time;
}

}  // namespace vxlocfmt::dateread
