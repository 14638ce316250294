// Walking one pattern over one text. Every position is checked against the text's size.
#include "dateread/row_reader.h"

#include "dateread/digit_fields.h"
#include "dateread/template_facts.h"
#include "dateread/word_fields.h"

namespace vxlocfmt::dateread {
using detail::read_fixed;
using detail::read_number;

bool readdigs(std::u32string_view text, std::size_t& pos, digit_run& run) { return detail::read_digits(text, pos, run); }

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
            detail::read_fraction(text, t, s.fraction);
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
