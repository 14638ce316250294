/*
 * Fixed shapes: a table row whose fields are all numeric (and at most a leading "%P") reads a
 * text with digits exactly where the fields' natural widths put them and a non-blank non-digit
 * in every literal's place the same way whatever the digit test says: a field of fixed width
 * takes its digits, and a field that reads every digit that follows stops at the literal after
 * it or at the text's end. Such a text needs no preparing either (no blank, so nothing is
 * squeezed or trimmed). A named read checks the text against the first row its length chooses
 * and, when it fits, reads the digits in place and builds the value from them directly; any
 * other text goes the general way. The tests hold both to the same answers.
 *
 *   row_shapes[97]   // E8601DT "%P%Y-%m-%dT%H:%M:%S": length 19, digits at 0-3 5-6 8-9 11-12 14-15 17-18
 */
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "dateread/compiled_pattern.h"

namespace vxlocfmt::dateread {

// ---- Interface ----------------------------------------------------------------------------

struct shape_field {
    std::uint8_t position = 0;
    std::uint8_t width = 0;   // 1 to 4 digits
    std::uint8_t target = 0;  // the slot
};

inline constexpr std::size_t max_shape_fields = 8;
inline constexpr std::size_t max_shape_length = 64;  // a digit mask in one word

struct fixed_shape {
    std::uint8_t length = 0;  // 0: the row has no fixed shape
    std::uint8_t count = 0;
    std::array<shape_field, max_shape_fields> fields{};
    std::uint64_t digits = 0;  // bit i: a digit belongs at position i; the others are literals
    // Two fields that read every digit that follows stand next to each other (as in "%m%d"): the
    // widths hold only for a text the digit test calls all-digit, so a text with literals in it
    // must pass that test too.
    bool needs_digit_test = false;
};

constexpr fixed_shape shape_of(const compiled_pattern& program);

// Every table row's fixed shape (length 0 for the rows without one), in table order: `row_shapes`
// below.

// Reads `text` with table row `row` when the text has the row's fixed shape, writing the value
// and the status word as the row's general read and build_value would; false (nothing written)
// for a text of any other shape.
bool read_fixed_shape(std::size_t row, std::u32string_view text, double& result, std::int32_t& status_word);

// ---- Implementation -----------------------------------------------------------------------

constexpr fixed_shape shape_of(const compiled_pattern& program) {
    fixed_shape out;
    std::size_t position = 0;
    bool variable_before = false;  // the field just read takes every digit that follows
    for (std::size_t k = 0; k < program.count; ++k) {
        const field_op& op = program.ops[k];
        if (k == 0 && op.code == op_code::blanks && op.literals == 0) continue;  // a leading "%P" skips nothing before a digit
        position += op.literals;
        if (op.code == op_code::end) break;
        std::uint8_t width = 0;
        bool variable = true;
        switch (op.code) {
        case op_code::two_digit:
        case op_code::year: width = 2; break;
        case op_code::day_count: width = 3; break;
        case op_code::four: width = 4, variable = false; break;
        case op_code::one: width = 1, variable = false; break;
        case op_code::seconds:
            // A point after the seconds would start a fraction: only a last field, the text's end after it.
            if (program.ops[k + 1].code != op_code::end || program.ops[k + 1].literals != 0) return {};
            width = 2;
            break;
        default: return {};
        }
        if (out.count == max_shape_fields || position + width > max_shape_length) return {};
        if (op.literals == 0 && variable_before) out.needs_digit_test = true;
        variable_before = variable;
        out.fields[out.count++] = {static_cast<std::uint8_t>(position), width, op.target};
        for (std::size_t i = 0; i < width; ++i) out.digits |= std::uint64_t{1} << (position + i);
        position += width;
    }
    if (out.count == 0 || position > max_shape_length) return {};
    out.length = static_cast<std::uint8_t>(position);
    // With no literal at all, a text with digits in every place passes the digit test anyway.
    if (out.digits == (out.length == 64 ? ~std::uint64_t{0} : (std::uint64_t{1} << out.length) - 1)) out.needs_digit_test = false;
    return out;
}

// Every table row's fixed shape (length 0 for the rows without one), in table order.
inline constexpr std::array<fixed_shape, template_count> row_shapes = [] {
    std::array<fixed_shape, template_count> all{};
    for (std::size_t r = 0; r < template_count; ++r) all[r] = shape_of(compiled_rows[r]);
    return all;
}();

static_assert(row_shapes[74].length == 8 && row_shapes[74].count == 3 && row_shapes[74].digits == 0xff &&
              !row_shapes[74].needs_digit_test);  // B8601DA "%P%Y%m%d"
static_assert(row_shapes[97].length == 19 && row_shapes[97].count == 6 && row_shapes[97].digits == 0b1101101101101101111 &&
              !row_shapes[97].needs_digit_test);  // E8601DT
static_assert(row_shapes[66].length == 0 && row_shapes[70].length == 0);  // "%S" before a literal; a zone

}  // namespace vxlocfmt::dateread
