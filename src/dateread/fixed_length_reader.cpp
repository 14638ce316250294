// getdate_fixlen: a locale pattern read in the input direction. Pattern and text are walked
// together, each with one cursor: a literal, a run of blanks or a directive (number, name,
// marker, zone) at a time, decoded where it stands (a pattern with "%x" or "%X" is first
// substituted into a buffer of its own). Only names can be read more than one way ("Mar" and
// "March", "Dez." and "Dez"); there the walk tries the longest reading first and comes back for
// the shorter ones, within a small budget, so a reading stays linear in the text.
#include "dateread/fixed_length_reader.h"

#include <algorithm>
#include <array>

#include "calendar/day_number.h"
#include "calendar/year_cutoff.h"
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

enum class what : std::uint8_t { literal, blanks, number, clock, name, marker, zone, zone_letters, nothing, refused };
enum class field : std::uint8_t { ignored, day, month, year, hour, hour_k, twelve_hour, minute, second };
enum class group : std::uint8_t { month, weekday, quarter };

// What a kind of element reads: a literal, a run of blanks, or one directive letter.
struct reader_kind {
    what kind;
    field target;
    group names;
    std::uint8_t natural;  // digits the expander writes with padding
    std::uint8_t own;      // the most digits the value can have
    bool blank_padded;     // "%e", "%o": a leading blank may stand for a 0
    bool padded_name;      // "%c", "%f": blanks after the name
};

constexpr reader_kind number(field target, std::uint8_t natural, std::uint8_t own, bool blank_padded = false) {
    return {what::number, target, group::month, natural, own, blank_padded, false};
}
constexpr reader_kind name(group g, bool padded = false) { return {what::name, field::ignored, g, 0, 0, false, padded}; }
constexpr reader_kind of_kind(what k) { return {k, field::ignored, group::month, 0, 0, false, false}; }

// A directive's letter, folded to upper case as the expander folds it ("%m" is "N").
constexpr reader_kind directive(wchar letter, bool lower) {
    constexpr std::uint8_t hour_digits = 9;  // a duration's hours are not wrapped at 24
    switch (letter) {
    case U'A': return name(group::weekday);
    case U'F': return name(group::weekday, true);
    case U'B': return name(group::month);
    case U'C': return name(group::month, true);
    case U'Q': return name(group::quarter);
    case U'D': return number(field::day, 2, 2);
    case U'E': return number(field::day, 2, 2, lower);
    case U'N': return lower ? number(field::ignored, 2, hour_digits) : number(field::month, 2, 2);
    case U'O': return number(field::month, 2, 2, lower);
    case U'J': return number(field::ignored, 3, 3);
    case U'G': return lower ? number(field::ignored, 2, 2) : number(field::ignored, 4, 5);
    case U'Y': return lower ? number(field::year, 2, 2) : number(field::year, 4, 5);
    case U'H': return number(field::hour, 2, hour_digits);
    case U'K': return number(field::hour_k, 2, hour_digits);
    case U'I':
    case U'L': return number(field::twelve_hour, 2, 2);
    case U'M': return lower ? number(field::month, 2, 2) : number(field::minute, 2, 2);  // "%m" is the month
    case U'S': return number(field::second, 2, 2);
    case U'T': return of_kind(lower ? what::nothing : what::clock);
    case U'P': return of_kind(what::marker);
    case U'U':
    case U'W': return lower ? number(field::ignored, 1, 1) : number(field::ignored, 2, 2);
    case U'V': return lower ? of_kind(what::nothing) : number(field::ignored, 2, 2);
    case U'Z': return of_kind(lower ? what::zone : what::zone_letters);
    default: return of_kind(what::refused);  // "%R", "%r", and "%x", "%X" left after the substitution
    }
}

// The directive letters by case (0 upper, 1 lower reading) and letter: looked up, not built, on
// every element.
constexpr auto directives = [] {
    std::array<std::array<reader_kind, 26>, 2> t{};
    for (std::size_t lower = 0; lower < 2; ++lower)
        for (std::size_t k = 0; k < 26; ++k) t[lower][k] = directive(static_cast<wchar>(U'A' + k), lower != 0);
    return t;
}();
constexpr reader_kind literal_kind = of_kind(what::literal);
constexpr reader_kind blanks_kind = of_kind(what::blanks);
constexpr reader_kind refused_kind = of_kind(what::refused);

// One element of a pattern as the walk meets it.
struct element {
    const reader_kind* kind;
    std::size_t next;    // where the pattern goes on
    wchar c;             // the literal
    bool calendar_year;  // "%+Y", and the years after any "+"
};

// The element at pattern[i] (i below the size). The directive grammar is the expander's: "%",
// then "#" or "0", a digit 1 to 9 (ignored), "+" (calendar years from here on), "?" (lower-case
// reading), the letter. `calendar_years` is the pattern's flag, set by any "+".
[[gnu::always_inline]] inline element element_at(std::u32string_view p, std::size_t i, bool& calendar_years) {
    const wchar c = p[i];
    if (c != U'%') {
        if (!is_blank(c)) return {&literal_kind, i + 1, c, false};
        std::size_t next = i + 1;  // a run of pattern blanks reads one run of text blanks
        while (next < p.size() && is_blank(p[next])) ++next;
        return {&blanks_kind, next, c, false};
    }
    std::size_t k = i + 1;
    if (k == p.size()) return {&refused_kind, k, 0, false};
    wchar letter = p[k];
    wchar folded = letter | 0x20;
    bool lower;
    if (folded >= U'a' && folded <= U'z') {  // the usual directive: a letter and no flags
        lower = letter == folded;
    } else {
        if (letter == U'#' || letter == U'0') ++k;
        if (k < p.size() && p[k] >= U'1' && p[k] <= U'9') ++k;
        if (k < p.size() && p[k] == U'+') {
            calendar_years = true;
            ++k;
        }
        bool forced_lower = false;
        if (k < p.size() && p[k] == U'?') {
            forced_lower = true;
            ++k;
        }
        if (k == p.size()) return {&refused_kind, k, 0, false};
        letter = p[k];
        if (letter == U'%') return {&literal_kind, k + 1, U'%', false};
        folded = letter | 0x20;
        if (folded < U'a' || folded > U'z') return {&refused_kind, k + 1, 0, false};
        lower = forced_lower || letter == folded;
    }
    return {&directives[lower ? 1 : 0][folded - U'a'], k + 1, 0, calendar_years};
}

// Pass 1 of the expander: "%x" and "%X" become the locale's date and time patterns, once. Most
// patterns have neither and are read in place; the walk stops where it meets one (up to there
// pass 1 changes nothing) and the reading starts again on the substituted pattern.
constexpr std::size_t pass_one_cells = 2048;  // 160 characters, each "%x" at most 160 more: 12880; longer is refused
bool pass_one(std::u32string_view p, const PropertyCache& properties, wchar (&out)[pass_one_cells], std::size_t& n) {
    n = 0;
    const auto put = [&](std::u32string_view s) {
        if (s.size() > pass_one_cells - n) return false;
        std::copy(s.begin(), s.end(), out + n);
        n += s.size();
        return true;
    };
    for (std::size_t i = 0; i < p.size(); ++i) {
        if (p[i] != U'%' || i + 1 == p.size()) {
            if (!put(p.substr(i, 1))) return false;
        } else if (p[i + 1] == U'x' || p[i + 1] == U'X') {
            if (!put(property_text(properties, p[++i] == U'x' ? prop::date_pattern : prop::time_pattern))) return false;
        } else {
            if (!put(p.substr(i++, 2))) return false;
        }
    }
    return true;
}

// What the walk has read so far. Absent numbers are -1.
struct reading {
    std::int64_t day = -1, month = -1, year = -1, hour = -1, minute = -1;
    double second = -1;
    wchar marker = 0;  // 'A' or 'P'
};

constexpr std::size_t max_candidates = 8;
// Readings a name may send the walk back for, over the whole pattern. Real patterns need one or
// two ("Mar"/"March"); the bound keeps a text of many names linear: at most this many walks of
// the rest of the pattern, each over at most 48 names of at most 160 characters.
constexpr std::int32_t backtrack_budget = 16;
struct candidate {
    std::uint32_t length;
    std::int32_t index;  // within the group
};

struct walker {
    const PropertyCache& properties;
    std::u32string_view text;
    std::u32string_view pattern;
    std::int32_t budget;  // readings a name may still send the walk back for
    bool truncated;       // the text ended before the pattern's time fields
    bool substituted;     // the pattern has been through pass 1
    bool needs_pass_one;  // the walk met "%x" or "%X" in a pattern that has not

    // A refused element at pattern[i] that pass 1 would have replaced: the walk stops and says so.
    bool stop_for_pass_one(std::size_t i) {
        if (!substituted && i + 1 < pattern.size() && (pattern[i + 1] == U'x' || pattern[i + 1] == U'X'))
            needs_pass_one = true;
        return false;
    }

    // True when the text matched; `r` then holds what was read.
    bool walk(std::size_t i, std::size_t pos, reading& r, bool calendar_years);
    bool accept_truncated(std::size_t i, bool calendar_years);
    bool number_follows(std::size_t i, bool calendar_years) const;
    bool read_number(const reader_kind& x, bool calendar_year, std::uint8_t max_digits, std::size_t& pos,
                     reading& r) const;
    bool read_clock(std::size_t& pos, reading& r) const;
    std::size_t name_candidates(const reader_kind& x, std::size_t pos, std::array<candidate, max_candidates>& out) const;
    bool read_marker(std::size_t& pos, reading& r) const;
    bool read_zone(std::size_t& pos) const;
    bool is_decimal_point(wchar c) const {
        const std::u32string_view point = property_text(properties, prop::decimal_point);
        return point.size() == 1 && point[0] == c;
    }
    bool matches_at(std::size_t pos, std::u32string_view s) const {
        return s.size() <= text.size() - pos && IETL(text.data() + pos, s.data(), s.size());
    }
};

// Numbers written side by side ("%Y%m%d") take their padded widths; any other reads all its digits.
bool walker::number_follows(std::size_t i, bool calendar_years) const {
    if (i >= pattern.size() || pattern[i] != U'%') return false;
    const what k = element_at(pattern, i, calendar_years).kind->kind;
    return k == what::number || k == what::clock;
}

// The text ended at pattern[i]: read as far as it went when what is left is the time of day (and
// its literals, marker and zone), not part of the date. `truncated` tells whether time fields
// were left out.
bool walker::accept_truncated(std::size_t i, bool calendar_years) {
    truncated = false;
    while (i < pattern.size()) {
        const element e = element_at(pattern, i, calendar_years);
        const reader_kind& x = *e.kind;
        switch (x.kind) {
        case what::refused: return stop_for_pass_one(i);
        case what::name: return false;
        case what::number:
            if (x.target == field::day || x.target == field::month || x.target == field::year ||
                x.target == field::ignored)
                return false;
            truncated = true;
            break;
        case what::clock: truncated = true; break;
        default: break;
        }
        i = e.next;
    }
    return true;
}

// In line: every number of every pattern comes here.
[[gnu::always_inline]] inline bool walker::read_number(const reader_kind& x, bool calendar_year,
                                                       std::uint8_t max_digits, std::size_t& pos, reading& r) const {
    std::size_t at = pos;
    if (x.blank_padded && at + 1 < text.size() && is_blank(text[at]) && is_digit(text[at + 1])) ++at;
    std::int64_t value = 0;
    const std::size_t first = at;
    while (at < text.size() && at - first < max_digits && is_digit(text[at])) value = value * 10 + (text[at++] - U'0');
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
        if (calendar_year) {
            const std::u32string_view code = property_text(properties, prop::calendar_code);
            if (code == U"TH") value -= 543;
            else if (code == U"TW") value += 1911;
            else if (code == U"JP") return false;  // the era is not in the text
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
        if (at + 1 < text.size() && is_digit(text[at + 1]) && (text[at] == U'.' || is_decimal_point(text[at]))) {
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

// "%T": hours (all their digits), ":", minutes, ":", seconds.
bool walker::read_clock(std::size_t& pos, reading& r) const {
    constexpr reader_kind hour = number(field::hour, 2, 9), minute = number(field::minute, 2, 2),
                          second = number(field::second, 2, 2);
    std::size_t at = pos;
    if (!read_number(hour, false, hour.own, at, r) || at == text.size() || text[at++] != U':') return false;
    if (!read_number(minute, false, 2, at, r) || at == text.size() || text[at++] != U':') return false;
    if (!read_number(second, false, 2, at, r)) return false;
    pos = at;
    return true;
}

// The names of the element's group, in all four forms, that the text at pos begins with, longest
// first. An abbreviation's final period may be left out, and an abbreviation without one may be
// followed by one.
std::size_t walker::name_candidates(const reader_kind& x, std::size_t pos,
                                    std::array<candidate, max_candidates>& out) const {
    const std::size_t* sets = x.names == group::month     ? locale::MonNames
                              : x.names == group::weekday ? locale::DayNames
                                                          : locale::QtrNames;
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
    // The expander writes "**" for a weekday it cannot name (the first nine days of 1582, whose
    // weekday is deliberately out of range); the weekday is not needed for the date.
    if (x.names != group::month && text.size() - pos >= 2 && text[pos] == U'*' && text[pos + 1] == U'*') keep(2, -1);
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

bool walker::walk(std::size_t i, std::size_t pos, reading& r, bool calendar_years) {
    while (i < pattern.size()) {
        // Literals, the most common element, without the directive decoding.
        if (const wchar c = pattern[i]; c != U'%' && !is_blank(c) && pos < text.size()) {
            if (!same_letter(text[pos], c)) return false;
            ++pos;
            ++i;
            continue;
        }
        const element e = element_at(pattern, i, calendar_years);
        const reader_kind& x = *e.kind;
        if (x.kind == what::refused) return stop_for_pass_one(i);
        if (x.kind == what::nothing) {
            i = e.next;
            continue;
        }
        if (pos == text.size()) return accept_truncated(i, calendar_years);
        if (x.kind == what::number) {  // the most common directive, ahead of the switch
            const std::uint8_t digits = number_follows(e.next, calendar_years) ? x.natural : x.own;
            if (!read_number(x, e.calendar_year, digits, pos, r)) return false;
            i = e.next;
            continue;
        }
        switch (x.kind) {
        case what::literal:
            if (!same_letter(text[pos], e.c)) return false;
            ++pos;
            break;
        case what::blanks:
            if (!is_blank(text[pos])) return false;
            while (pos < text.size() && is_blank(text[pos])) ++pos;
            break;
        case what::clock:
            if (!read_clock(pos, r)) return false;
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
                if (walk(e.next, at, tried, calendar_years)) {
                    r = tried;
                    return true;
                }
            }
            settle(found[n - 1], r, pos);
            break;
        }
        case what::number:
        case what::nothing:
        case what::refused: break;
        }
        i = e.next;
    }
    truncated = false;
    return pos == text.size();
}

// Month, day, year to day number as zmdy gives it, without its round trip through a Julian date:
// a year of 0 to 99 by the cut-off, else 1582 to 20000; missing when the day is not in the month.
double day_number_of(std::int64_t month, std::int64_t day, std::int64_t year) {
    if (year >= 0 && year <= 99) year = calendar::place_two_digit_year(year);
    if (year < calendar::first_year || year > calendar::last_year) return calendar::missing_value();
    // Days before each month of a common year; a leap year adds one from March on.
    constexpr std::int32_t before[12] = {0, 31, 59, 90, 120, 151, 181, 212, 243, 273, 304, 334};
    const auto m = static_cast<std::int32_t>(month);  // [1, 12]
    if (day > 28 && day > calendar::month_length(year, m)) return calendar::missing_value();
    const std::int64_t leap = m > 2 && calendar::is_leap_year(year) ? 1 : 0;
    return static_cast<double>(calendar::day_from_ordinal(year, before[m - 1] + leap + day));
}

}  // namespace

std::int32_t IETL(const wchar* a, const wchar* b, std::size_t n) {
    n = std::min(n, property_value_cells);
    for (std::size_t k = 0; k < n; ++k)
        if (!same_letter(a[k], b[k])) return 0;
    return 1;
}

namespace {

std::int32_t read_substituted(const PropertyCache& properties, std::u32string_view text,
                              std::u32string_view pattern, double& date, double& time);

std::int32_t read_pattern(const PropertyCache& properties, std::u32string_view text, std::u32string_view pattern,
                          bool substituted, double& date, double& time) {
    // A right-aligned field's leading blanks are not part of the date (unless the pattern asks
    // for blanks there).
    if (!pattern.empty() && !is_blank(pattern[0]))
        while (!text.empty() && is_blank(text.front())) text.remove_prefix(1);
    if (pattern.empty() || text.empty()) return fixlen_no_match;
    walker w{properties, text, pattern, backtrack_budget, false, substituted, false};
    reading r;
    if (!w.walk(0, 0, r, false))
        return w.needs_pass_one ? read_substituted(properties, text, pattern, date, time) : fixlen_no_match;

    const bool complete_date = r.day >= 0 && r.month >= 0 && r.year >= 0;
    if (complete_date) {
        date = day_number_of(r.month, r.day, r.year);
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

// A pattern with "%x" or "%X": read after the substitution, in a buffer of its own.
[[gnu::noinline]] std::int32_t read_substituted(const PropertyCache& properties, std::u32string_view text,
                                                std::u32string_view pattern, double& date, double& time) {
    wchar substituted[pass_one_cells];
    std::size_t n;
    if (!pass_one(pattern, properties, substituted, n)) return fixlen_no_match;
    return read_pattern(properties, text, {substituted, n}, true, date, time);
}

}  // namespace

std::int32_t getdate_fixlen(const PropertyCache& properties, std::u32string_view text, std::u32string_view pattern,
                            double& date, double& time) {
    date = time = calendar::missing_value();
    return read_pattern(properties, text, pattern, false, date, time);
}

}  // namespace vxlocfmt::dateread
