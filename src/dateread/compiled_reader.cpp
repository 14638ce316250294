// Running a compiled pattern over a prepared text: read_pattern's walk without the pattern text.
#include "dateread/compiled_pattern.h"
#include "dateread/digit_fields.h"
#include "dateread/word_fields.h"

namespace vxlocfmt::dateread {
namespace {

// What "%c" and "%C" accept in their run of marks, as read_word_field does.
constexpr bool is_separator(wchar c) { return c == U'/' || c == U'-' || c == U':' || c == U' '; }

std::int64_t& target_of(read_slots& s, std::uint8_t target) {
    return target == zone_hour_target ? s.zone_hour : target == zone_minute_target ? s.zone_minute : s.field[target];
}

}  // namespace

bool read_compiled(const compiled_pattern& program, std::u32string_view text, bool all_digit, bool four_digit_year,
                   read_slots& s) {
    using namespace detail;
    const int two = all_digit ? 2 : 0;  // 0: as many digits as follow
    const std::size_t n = text.size();
    std::size_t t = 0;
    for (std::size_t k = 0;; ++k) {
        const field_op& op = program.ops[k];
        // Literals consume one character each, uncompared; a text that ends on one is read when
        // that literal is a blank.
        for (unsigned i = 0; i < op.literals; ++i, ++t)
            if (t >= n) return (op.blank_literals >> i) & 1;
        if (op.code == op_code::end) {
            for (; t < n; ++t)
                if (text[t] != U' ') return false;
            return true;
        }
        if (t >= n) return false;  // the text ended before a field
        std::int64_t v = 0;
        switch (op.code) {
        case op_code::blanks:
            while (t < n && text[t] == U' ') ++t;
            continue;
        case op_code::two_digit:
            if (!read_number(text, t, two, v)) return false;
            break;
        case op_code::year:
            if (!read_number(text, t, four_digit_year ? 4 : two, v)) return false;
            break;
        case op_code::four:
            if (!read_fixed(text, t, 4, v)) return false;
            break;
        case op_code::day_count:
            if (!read_number(text, t, all_digit ? 3 : 0, v)) return false;
            break;
        case op_code::one:
            if (!read_fixed(text, t, 1, v)) return false;
            break;
        case op_code::seconds:
            if (!read_number(text, t, two, v)) return false;
            read_fraction(text, t, s.fraction);
            break;
        case op_code::word: {
            if (op.directive == U'c' || op.directive == U'C') {  // the common separator, inline
                const std::size_t start = t;
                for (; t < n && is_mark(text[t]); ++t)
                    if (!is_separator(text[t])) return false;
                if (t == start) return false;
                continue;
            }
            bool in_zone = false;  // the targets after "%G" were settled when compiling
            if (!read_word_field(op.directive, text, t, s, in_zone)) return false;
            continue;
        }
        case op_code::fail:
        case op_code::end:
            return false;
        }
        target_of(s, op.target) = v;
    }
}

}  // namespace vxlocfmt::dateread
