// Reading a text of a row's fixed shape: every place checked in one unrolled pass (a digit where a
// field's digit belongs, a non-blank non-digit in a literal's place), the fields taken from the
// places the shape gives them, and for the ISO dates and datetimes the value built straight from
// the numbers. Rows with other fields fill the slots and build as the general read does.
#include <cstring>
#include <utility>

#include "calendar/missing_value.h"
#include "dateread/fixed_shape.h"
#include "dateread/text_preparation.h"
#include "dateread/value_builder.h"

namespace vxlocfmt::dateread {
namespace {

constexpr std::uint32_t digit_of(wchar c) { return static_cast<std::uint32_t>(c) - U'0'; }

// The places of a shape in the order they are checked: two digits in one 64-bit word where two
// digits' places stand together, else one place at a time.
enum class check : std::uint8_t { two_digits, digit, literal };
struct place_check {
    std::uint8_t position;
    check kind;
};
struct check_plan {
    std::array<place_check, max_shape_length> checks{};
    std::size_t count = 0;
};
constexpr check_plan plan_of(const fixed_shape& shape) {
    check_plan plan;
    for (std::size_t i = 0; i < shape.length;) {
        const bool digit = (shape.digits >> i) & 1;
        const bool next_digit = i + 1 < shape.length && ((shape.digits >> (i + 1)) & 1);
        const check kind = digit && next_digit ? check::two_digits : digit ? check::digit : check::literal;
        plan.checks[plan.count++] = {static_cast<std::uint8_t>(i), kind};
        i += kind == check::two_digits ? 2 : 1;
    }
    return plan;
}
template <std::size_t R>
inline constexpr check_plan row_plan = plan_of(row_shapes[R]);

// Nonzero unless the place (or the two places) hold what the shape puts there. Two characters
// in a word: each 32-bit lane minus "0" must be below 10, so neither it nor it plus 2^31 - 10
// may have the lane's top bit (a borrow or carry between the lanes comes only from a lane that
// already fails).
template <check Kind>
std::uint64_t misfit(const wchar* s) {
    if constexpr (Kind == check::two_digits) {
        std::uint64_t x;
        std::memcpy(&x, s, sizeof x);
        const std::uint64_t v = x - 0x0000003000000030u;
        return (v | (v + 0x7FFFFFF67FFFFFF6u)) & 0x8000000080000000u;
    } else if constexpr (Kind == check::digit) {
        return digit_of(s[0]) >= 10;
    } else {
        return (digit_of(s[0]) < 10) | (s[0] == U' ');
    }
}

// Every place of the shape, unrolled, the misfits or-ed together and tested once.
template <std::size_t R, std::size_t... K>
[[gnu::always_inline]] inline bool fits(const wchar* s, std::index_sequence<K...>) {
    return (misfit<row_plan<R>.checks[K].kind>(s + row_plan<R>.checks[K].position) | ...) == 0;
}

template <std::size_t Position, std::size_t Width>
std::int64_t number_at(const wchar* s) {
    if constexpr (Width == 1) return digit_of(s[Position]);
    else return number_at<Position, Width - 1>(s) * 10 + digit_of(s[Position + Width - 1]);
}

template <std::size_t R, std::size_t K>
std::int64_t field(const wchar* s) {
    constexpr shape_field f = row_shapes[R].fields[K];
    return number_at<f.position, f.width>(s);
}

// The fields' targets in order are exactly `targets`.
template <std::size_t R, std::size_t N>
constexpr bool targets_are(const std::uint8_t (&targets)[N]) {
    if (row_shapes[R].count != N) return false;
    for (std::size_t k = 0; k < N; ++k)
        if (row_shapes[R].fields[k].target != targets[k]) return false;
    return true;
}

template <std::size_t R>
bool read_shape(std::u32string_view text, double& result, std::int32_t& status_word) {
    constexpr fixed_shape shape = row_shapes[R];
    if constexpr (shape.length == 0) {
        return false;
    } else {
        const wchar* s = text.data();
        if (text.size() != shape.length || !fits<R>(s, std::make_index_sequence<row_plan<R>.count>{})) return false;
        if constexpr (shape.needs_digit_test)
            if (!is_all_digit(text)) return false;
        constexpr value_kind kind = template_facts[R].kind;
        constexpr bool plain = !template_facts[R].local_zone;
        constexpr std::uint8_t ymd[] = {slot::year, slot::month, slot::day};
        constexpr std::uint8_t ymdhms[] = {slot::year, slot::month, slot::day, slot::hour, slot::minute, slot::second};
        if constexpr (plain && kind == value_kind::date && targets_are<R>(ymd)) {
            status_word = status_date;
            result = day_number_of(field<R, 0>(s), field<R, 1>(s), field<R, 2>(s));
        } else if constexpr (plain && kind == value_kind::datetime && targets_are<R>(ymdhms)) {
            // date * 86400 + time: whole numbers below 2^53, so the fused multiply-add's exact sum.
            const double date = day_number_of(field<R, 0>(s), field<R, 1>(s), field<R, 2>(s));
            if (calendar::is_nan(date)) {
                status_word = 0;
                result = calendar::missing_value();
            } else {
                status_word = status_datetime;
                result = date * 86400 + static_cast<double>(field<R, 3>(s) * 3600 + field<R, 4>(s) * 60 + field<R, 5>(s));
            }
        } else {
            read_slots slots;
            [&]<std::size_t... K>(std::index_sequence<K...>) {
                ((slots.field[shape.fields[K].target] = field<R, K>(s)), ...);
            }(std::make_index_sequence<shape.count>{});
            status_word = 0;
            result = build_value(slots, kind, template_facts[R].local_zone, status_word);
        }
        return true;
    }
}

using shape_reader = bool (*)(std::u32string_view, double&, std::int32_t&);
constexpr auto shape_readers = []<std::size_t... R>(std::index_sequence<R...>) {
    return std::array<shape_reader, sizeof...(R)>{&read_shape<R>...};
}(std::make_index_sequence<template_count>{});

}  // namespace

bool read_fixed_shape(std::size_t row, std::u32string_view text, double& result, std::int32_t& status_word) {
    return shape_readers[row](text, result, status_word);
}

}  // namespace vxlocfmt::dateread
