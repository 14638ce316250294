/*
 * The template patterns compiled at compile time into short programs of field operations, so
 * that reading with a table row does not parse "%", the modifiers and the directive letter on
 * every try. Each operation carries the literals before it (they consume one character each,
 * uncompared; only whether one is a blank matters, for a text that ends on it), and its target
 * slot is settled at compile time (after "%G" the hour and minute are the zone's). A last
 * operation takes the literals after the last field. The programs read exactly as
 * `read_pattern` reads the pattern text; the tests compare the two on every row.
 *
 *   read_slots s;
 *   bool ok = read_compiled(65, U"2020-03-04T10:30:00", false, false, s);
 */
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "dateread/row_reader.h"
#include "dateread/template_facts.h"

namespace vxlocfmt::dateread {

// ---- Interface ----------------------------------------------------------------------------

enum class op_code : std::uint8_t {
    blanks,     // "%P": skip blanks
    two_digit,  // m d H M i I: two digits in an all-digit text, else every digit that follows
    year,       // y: as two_digit, or exactly four in the driver's retry
    four,       // Y: exactly four digits
    day_count,  // j: three digits in an all-digit text, else every digit
    one,        // q w: exactly one digit
    seconds,    // S: as two_digit, then ".digits" as a fraction
    word,       // b B a A r p z c C G: word_fields.h
    fail,       // an unknown directive, or "%" at the pattern's end: the row cannot read
    end,        // the pattern's end: the rest of the text must be blank
};

// Slots beyond `slot_count`: the zone's hour and minute (after "%G").
inline constexpr std::uint8_t zone_hour_target = slot_count;
inline constexpr std::uint8_t zone_minute_target = slot_count + 1;

struct field_op {
    op_code code = op_code::end;
    std::uint8_t target = 0;       // slot, zone_hour_target or zone_minute_target
    std::uint8_t literals = 0;     // literal characters before the field
    std::uint8_t blank_literals = 0;  // bit k: literal k is a blank (a text ending there is read)
    char32_t directive = 0;        // the word directive's letter
};

// Most fields of a table pattern (row 71 has 16) plus the end.
inline constexpr std::size_t max_ops = 20;

struct compiled_pattern {
    std::array<field_op, max_ops> ops{};
    std::uint8_t count = 0;
};

// Compiles one pattern; fields past max_ops or a literal run past 8 are refused at compile time.
constexpr compiled_pattern compile_pattern(std::u32string_view pattern);

// Reads a prepared text with table row `row`'s compiled program (compiled_reader.cpp makes it
// code); the same answer and slots as read_pattern on the row's pattern.
bool read_compiled(std::size_t row, std::u32string_view text, bool all_digit, bool four_digit_year, read_slots& slots);

// ---- Implementation -----------------------------------------------------------------------

constexpr compiled_pattern compile_pattern(std::u32string_view pattern) {
    compiled_pattern out;
    field_op op;
    bool in_zone = false;
    auto push = [&](op_code code, std::uint8_t target) {
        if (out.count == max_ops) throw "a pattern with more fields than max_ops";  // not a constant expression
        op.code = code;
        op.target = target;
        out.ops[out.count++] = op;
        op = field_op{};
    };
    for (std::size_t p = 0; p < pattern.size();) {
        if (pattern[p] != U'%') {
            if (op.literals == 8) throw "a literal run longer than 8";
            if (pattern[p] == U' ') op.blank_literals = static_cast<std::uint8_t>(op.blank_literals | (1u << op.literals));
            ++op.literals;
            ++p;
            continue;
        }
        ++p;
        const wchar d = directive_at(pattern, p);
        switch (d) {
        case U'P': push(op_code::blanks, 0); break;
        case U'y': push(op_code::year, slot::year); break;
        case U'Y': push(op_code::four, slot::year); break;
        case U'm': push(op_code::two_digit, slot::month); break;
        case U'd': push(op_code::two_digit, slot::day); break;
        case U'j': push(op_code::day_count, slot::day_of_year); break;
        case U'q': push(op_code::one, slot::quarter); break;
        case U'w': push(op_code::one, slot::weekday); break;
        case U'H':
        case U'i':
        case U'I': push(op_code::two_digit, in_zone ? zone_hour_target : std::uint8_t{slot::hour}); break;
        case U'M': push(op_code::two_digit, in_zone ? zone_minute_target : std::uint8_t{slot::minute}); break;
        case U'S': push(op_code::seconds, slot::second); break;
        default:
            if (is_letter_word_directive(d) || is_mark_word_directive(d)) {
                op.directive = d;
                push(op_code::word, 0);
                in_zone |= d == U'G';
                break;
            }
            push(op_code::fail, 0);  // nothing after it is ever read
            return out;
        }
    }
    push(op_code::end, 0);
    return out;
}

namespace detail {
constexpr std::array<compiled_pattern, template_count> compile_all() {
    std::array<compiled_pattern, template_count> all{};
    for (std::size_t r = 0; r < template_count; ++r) all[r] = compile_pattern(pattern_view(r));
    return all;
}
}  // namespace detail

// Every table row's program, in table order.
inline constexpr std::array<compiled_pattern, template_count> compiled_rows = detail::compile_all();

static_assert(compiled_rows[65].count == 8 && compiled_rows[65].ops[2].literals == 1 &&
              compiled_rows[65].ops[7].code == op_code::end);
static_assert(compiled_rows[22].ops[compiled_rows[22].count - 1].code == op_code::fail);  // "%%": unknown
static_assert(compiled_rows[84].ops[8].target == zone_hour_target && compiled_rows[84].ops[9].target == zone_minute_target);
static_assert(compiled_rows[127].ops[4].blank_literals == 1);  // "%m/%d/%y %i": the blank before %i

}  // namespace vxlocfmt::dateread
