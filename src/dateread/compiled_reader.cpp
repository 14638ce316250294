// The compiled programs turned into code: one reader function per table row, its fields
// unrolled by templates over the constexpr program, so that a read neither parses the pattern
// nor dispatches on an operation per field. Each reads exactly as read_pattern walks the row's
// pattern text (the tests compare the two on every row).
#include <utility>

#include "dateread/compiled_pattern.h"
#include "dateread/digit_fields.h"
#include "dateread/word_fields.h"

namespace vxlocfmt::dateread {
namespace {

using namespace detail;

// What "%c" and "%C" accept in their run of marks, as read_word_field does.
constexpr bool is_separator(wchar c) { return c == U'/' || c == U'-' || c == U':' || c == U' '; }

template <std::uint8_t Target>
std::int64_t& target_of(read_slots& s) {
    if constexpr (Target == zone_hour_target) return s.zone_hour;
    else if constexpr (Target == zone_minute_target) return s.zone_minute;
    else return s.field[Target];
}

// Operation K of row R and every one after it, from text position t.
template <std::size_t R, std::size_t K>
bool read_from(std::u32string_view text, std::size_t t, bool all_digit, bool four_digit_year, read_slots& s) {
    constexpr field_op op = compiled_rows[R].ops[K];
    const std::size_t n = text.size();
    // Literals consume one character each, uncompared; a text that ends on one is read when
    // that literal is a blank.
    for (unsigned i = 0; i < op.literals; ++i, ++t)
        if (t >= n) return (op.blank_literals >> i) & 1;
    if constexpr (op.code == op_code::end) {
        for (; t < n; ++t)
            if (text[t] != U' ') return false;
        return true;
    } else if constexpr (op.code == op_code::fail) {
        return false;
    } else {
        if (t >= n) return false;  // the text ended before a field
        std::int64_t v = 0;
        if constexpr (op.code == op_code::blanks) {
            while (t < n && text[t] == U' ') ++t;
        } else if constexpr (op.code == op_code::word) {
            if constexpr (op.directive == U'c' || op.directive == U'C') {
                const std::size_t start = t;
                for (; t < n && is_mark(text[t]); ++t)
                    if (!is_separator(text[t])) return false;
                if (t == start) return false;
            } else {
                bool in_zone = false;  // the targets after "%G" were settled when compiling
                if (!read_word_field(op.directive, text, t, s, in_zone)) return false;
            }
        } else {
            if constexpr (op.code == op_code::two_digit) {
                if (!read_number(text, t, all_digit ? 2 : 0, v)) return false;
            } else if constexpr (op.code == op_code::year) {
                if (!read_number(text, t, four_digit_year ? 4 : all_digit ? 2 : 0, v)) return false;
            } else if constexpr (op.code == op_code::four) {
                if (!read_fixed(text, t, 4, v)) return false;
            } else if constexpr (op.code == op_code::day_count) {
                if (!read_number(text, t, all_digit ? 3 : 0, v)) return false;
            } else if constexpr (op.code == op_code::one) {
                if (!read_fixed(text, t, 1, v)) return false;
            } else if constexpr (op.code == op_code::seconds) {
                if (!read_number(text, t, all_digit ? 2 : 0, v)) return false;
                read_fraction(text, t, s.fraction);
            }
            target_of<op.target>(s) = v;
        }
        return read_from<R, K + 1>(text, t, all_digit, four_digit_year, s);
    }
}

template <std::size_t R>
bool read_row(std::u32string_view text, bool all_digit, bool four_digit_year, read_slots& s) {
    return read_from<R, 0>(text, 0, all_digit, four_digit_year, s);
}

using row_reader = bool (*)(std::u32string_view, bool, bool, read_slots&);
constexpr auto row_readers = []<std::size_t... R>(std::index_sequence<R...>) {
    return std::array<row_reader, sizeof...(R)>{&read_row<R>...};
}(std::make_index_sequence<template_count>{});

}  // namespace

bool read_compiled(std::size_t row, std::u32string_view text, bool all_digit, bool four_digit_year, read_slots& slots) {
    return row_readers[row](text, all_digit, four_digit_year, slots);
}

}  // namespace vxlocfmt::dateread
