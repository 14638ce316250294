// Walking one pattern over one text. Every position is checked against the text's size.
#include "dateread/row_reader.h"

#include <algorithm>

#include "dateread/template_facts.h"
#include "dateread/word_fields.h"

namespace vxlocfmt::dateread {
namespace {

constexpr bool is_digit(wchar c) { return c >= U'0' && c <= U'9'; }

// Slot values are kept well inside int64 so that the value arithmetic cannot overflow.
constexpr std::int64_t slot_ceiling = 1'000'000'000'000'000;  // 1e15

std::int64_t to_slot(std::uint64_t v) {
    return static_cast<std::int64_t>(std::min<std::uint64_t>(v, slot_ceiling));
}

// Exactly `count` digits at text[pos].
bool read_fixed(std::u32string_view text, std::size_t& pos, int count, std::int64_t& value) {
    if (text.size() - pos < static_cast<std::size_t>(count)) return false;
    std::int64_t v = 0;
    for (int k = 0; k < count; ++k) {
        const wchar c = text[pos + static_cast<std::size_t>(k)];
        if (!is_digit(c)) return false;
        v = v * 10 + (c - U'0');
    }
    pos += static_cast<std::size_t>(count);
    value = v;
    return true;
}

bool read_number(std::u32string_view text, std::size_t& pos, int fixed, std::int64_t& value) {
    if (fixed > 0) return read_fixed(text, pos, fixed, value);
    digit_run run;
    if (!readdigs(text, pos, run)) return false;
    value = to_slot(run.value);
    return true;
}

// 10^0 to 10^19, the divisors of a fraction of k digits.
constexpr double zpowten[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,
                              1e10, 1e11, 1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19};

}  // namespace

bool readdigs(std::u32string_view text, std::size_t& pos, digit_run& run) {
    run = {0, 0};
    while (pos < text.size() && is_digit(text[pos])) {
        if (run.count < 19) {
            run.value = run.value * 10 + static_cast<std::uint64_t>(text[pos] - U'0');
            ++run.count;
        }
        ++pos;
    }
    return run.count > 0;
}

bool read_pattern(std::u32string_view pattern, std::u32string_view text, bool all_digit, bool four_digit_year,
                  read_slots& s) {
    const int two = all_digit ? 2 : 0;  // 0: as many digits as follow
    bool in_zone = false;               // after "%G", "%H" and "%M" are the zone's
    std::size_t p = 0, t = 0;
    while (p < pattern.size()) {
        if (t >= text.size()) break;
        if (pattern[p] != U'%') {  // a literal consumes one character, deliberately not compared
            ++p;
            ++t;
            continue;
        }
        ++p;
        const wchar d = directive_at(pattern, p);
        std::int64_t v = 0;
        switch (d) {
        case U'P':
            while (t < text.size() && text[t] == U' ') ++t;
            break;
        case U'y':
            if (!read_number(text, t, four_digit_year ? 4 : two, v)) return false;
            s.field[year] = v;
            break;
        case U'Y':
            if (!read_fixed(text, t, 4, v)) return false;
            s.field[year] = v;
            break;
        case U'm':
            if (!read_number(text, t, two, v)) return false;
            s.field[month] = v;
            break;
        case U'd':
            if (!read_number(text, t, two, v)) return false;
            s.field[day] = v;
            break;
        case U'j':
            if (!read_number(text, t, all_digit ? 3 : 0, v)) return false;
            s.field[day_of_year] = v;
            break;
        case U'q':
            if (!read_fixed(text, t, 1, v)) return false;
            s.field[quarter] = v;
            break;
        case U'w':
            if (!read_fixed(text, t, 1, v)) return false;
            s.field[weekday] = v;
            break;
        case U'H':
        case U'i':
        case U'I':
            if (!read_number(text, t, two, v)) return false;
            (in_zone ? s.zone_hour : s.field[hour]) = v;
            break;
        case U'M':
            if (!read_number(text, t, two, v)) return false;
            (in_zone ? s.zone_minute : s.field[minute]) = v;
            break;
        case U'S': {
            if (!read_number(text, t, two, v)) return false;
            s.field[second] = v;
            if (text.size() - t >= 2 && text[t] == U'.' && is_digit(text[t + 1])) {
                ++t;
                digit_run run;
                readdigs(text, t, run);
                s.fraction = static_cast<double>(run.value) / zpowten[run.count];
            }
            break;
        }
        default:
            if (!read_word_field(d, text, t, s, in_zone)) return false;  // unknown directives fail too
            break;
        }
    }
    if (p >= pattern.size()) {
        for (; t < text.size(); ++t)
            if (text[t] != U' ') return false;
        return true;
    }
    return pattern[p] == U' ';  // the text ended first: the pattern must stand at its end or a blank
}

}  // namespace vxlocfmt::dateread
