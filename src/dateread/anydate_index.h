/*
 * The ANYDATE rows a text can possibly be read by, as a set of row numbers in table order. The
 * rules only rule out rows that would fail anyway (length bounds, the colon rule for time rows,
 * the class of the first character, word fields that need letters or marks the text lacks), so
 * walking the set in order gives the same first match as walking every row.
 *
 *   row_set rows = candidate_rows(text);
 *   for (std::size_t r = rows.first(); r < anydate_row_count; r = rows.next(r)) ...
 */
#pragma once

#include <array>
#include <bit>
#include <cstdint>
#include <string_view>

#include "dateread/template_facts.h"
#include "dateread/word_fields.h"

namespace vxlocfmt::dateread {

// ---- Interface ----------------------------------------------------------------------------

// A set of ANYDATE rows (74 bits in two words).
struct row_set {
    std::uint64_t word[2] = {0, 0};

    constexpr void add(std::size_t r) { word[r / 64] |= std::uint64_t{1} << (r % 64); }
    constexpr bool has(std::size_t r) const { return (word[r / 64] >> (r % 64)) & 1; }
    constexpr row_set operator&(const row_set& o) const { return {{word[0] & o.word[0], word[1] & o.word[1]}}; }
    constexpr row_set operator~() const { return {{~word[0], ~word[1]}}; }
    // The first member at or after r, or anydate_row_count.
    constexpr std::size_t from(std::size_t r) const;
    constexpr std::size_t first() const { return from(0); }
    constexpr std::size_t next(std::size_t r) const { return from(r + 1); }
};

// Longest text any ANYDATE row admits: row 53's 42 plus the seconds allowance.
inline constexpr std::size_t longest_anydate_text = 52;

// The rows that may read `text` (prepared: no leading or trailing blanks).
row_set candidate_rows(std::u32string_view text);

// ---- Implementation -----------------------------------------------------------------------

constexpr std::size_t row_set::from(std::size_t r) const {
    while (r < 128) {
        const std::uint64_t rest = word[r / 64] >> (r % 64);
        if (rest) {
            const std::size_t found = r + static_cast<std::size_t>(std::countr_zero(rest));
            return found < anydate_row_count ? found : anydate_row_count;
        }
        r = (r / 64 + 1) * 64;
    }
    return anydate_row_count;
}

namespace detail {

template <class Keep>
constexpr row_set rows_where(Keep keep) {
    row_set s;
    for (std::size_t r = 0; r < anydate_row_count; ++r)
        if (keep(r)) s.add(r);
    return s;
}

constexpr std::array<row_set, longest_anydate_text + 2> rows_by_length() {
    std::array<row_set, longest_anydate_text + 2> by{};
    for (std::size_t n = 0; n < by.size(); ++n)
        by[n] = rows_where([n](std::size_t r) {
            return static_cast<std::int64_t>(n) >= vxfmt_templates[r].any_min && static_cast<std::int64_t>(n) <= any_max(r);
        });
    return by;
}

inline constexpr auto by_length = rows_by_length();  // the last entry, past every bound, is empty
inline constexpr row_set time_rows = rows_where([](std::size_t r) { return template_facts[r].kind == value_kind::time; });
inline constexpr row_set letter_rows = rows_where([](std::size_t r) { return template_facts[r].needs_letter; });
inline constexpr row_set mark_rows = rows_where([](std::size_t r) { return template_facts[r].needs_mark; });
inline constexpr row_set digit_first_rows = rows_where([](std::size_t r) { return template_facts[r].first == first_need::digit; });
inline constexpr row_set letter_first_rows = rows_where([](std::size_t r) { return template_facts[r].first == first_need::letter; });

static_assert(by_length[longest_anydate_text].has(53) && by_length[longest_anydate_text + 1].first() == anydate_row_count);

}  // namespace detail

inline row_set candidate_rows(std::u32string_view text) {
    using namespace detail;
    row_set rows = by_length[text.size() < longest_anydate_text + 1 ? text.size() : longest_anydate_text + 1];
    if (text.empty()) return rows;
    bool colon = false, letter = false, mark = false;
    for (const wchar c : text) {
        colon |= c == U':';
        letter |= is_letter(c);
        mark |= is_mark(c);
    }
    if (!colon) rows = rows & ~time_rows;
    if (!letter) rows = rows & ~letter_rows;
    if (!mark) rows = rows & ~mark_rows;
    const wchar c0 = text[0];
    if (!(c0 >= U'0' && c0 <= U'9')) rows = rows & ~digit_first_rows;
    if (!is_letter(c0)) rows = rows & ~letter_first_rows;
    return rows;
}

}  // namespace vxlocfmt::dateread
