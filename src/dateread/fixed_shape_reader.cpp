// Reading a text of a row's fixed shape: every place checked in one unrolled pass (a digit where a
// field's digit belongs, a non-blank non-digit in a literal's place), the fields taken from the
// places the shape gives them, and for the ISO dates and datetimes the value built straight from
// the numbers. Rows with other fields fill the slots and build as the general read does.
#include <utility>

#include "calendar/missing_value.h"
#include "dateread/fixed_shape.h"
#include "dateread/text_preparation.h"
#include "dateread/value_builder.h"

namespace vxlocfmt::dateread {
namespace {

constexpr std::uint32_t digit_of(wchar c) { return static_cast<std::uint32_t>(c) - U'0'; }

// Every place of the shape, unrolled; bitwise and, so that the places are tested without a branch each.
template <std::size_t R, std::size_t... I>
bool fits(const wchar* s, std::index_sequence<I...>) {
    constexpr std::uint64_t digits = row_shapes[R].digits;
    return (((digits >> I) & 1 ? digit_of(s[I]) < 10 : digit_of(s[I]) >= 10 && s[I] != U' ') & ...);
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
        if (text.size() != shape.length || !fits<R>(s, std::make_index_sequence<shape.length>{})) return false;
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
