/*
 * The ANYDATE rows a text can possibly be read by, as a set of row numbers in table order. The
 * rules only rule out rows that would fail anyway (length bounds, the colon rule for time rows,
 * the class of the first and of the last character, word fields that need letters or marks the text lacks, month
 * and weekday names without a run of three letters, fewer digits or marks than the fields take,
 * more runs of digits, letters and marks than the fields and literals can start; the
 * four-digit-year retry without a run of five digits, or four in an all-digit text), so
 * walking the set in order gives the same first match as walking every row.
 *
 *   const text_traits traits = traits_of(text);
 *   row_set rows = candidate_rows(text, traits);
 *   for (std::size_t r = rows.first(); r < anydate_row_count; r = rows.next(r))
 *       if (runs_fit(r, traits)) ...
 */
#pragma once

#include <array>
#include <bit>
#include <cstdint>
#include <string_view>

#include "dateread/template_facts.h"
#include "dateread/text_preparation.h"
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

// What the index looks at in a text, from one pass over it.
// Counts of the driver's text (at most 200 characters) in 16 bits: the struct is filled by a few
// stores, not a block clear.
struct text_traits {
    bool colon = false, letter = false, mark = false;
    bool squeeze = false;  // preparing would change the text (text_preparation.h's needs_squeeze)
    std::uint16_t longest_letter_run = 0;  // is_letter characters in a row
    std::uint16_t longest_digit_run = 0;
    std::uint16_t digits = 0, marks = 0;
    // Maximal runs of digits, of letters and of marks (is_mark: blanks included), and the
    // commas and points, each of which stands alone; a run of blanks at the very start is not
    // counted (it is "%P"'s).
    std::uint16_t digit_runs = 0, letter_runs = 0, mark_runs = 0, commas = 0, points = 0;
};
static_assert(anydate_text_limit < 0xFFFF);
text_traits traits_of(std::u32string_view text);

// The rows that may read `text` (prepared: no leading or trailing blanks), by every rule but
// runs_fit, which the walk checks row by row (rows past the first match are never checked).
row_set candidate_rows(std::u32string_view text, const text_traits& traits);

// Whether row r has enough consumers for the first characters of the text's runs. Reading must
// consume the whole text (an ANYDATE pattern has no literal blank to end early on), and each
// run's first character is consumed by a consumer that can start at most: a literal one run of
// any class or a comma or point; a numeric field one run of digits ("%S" two, and the point of
// its fraction); a letter word one run of letters; a mark word one run of marks.
constexpr bool runs_fit(std::size_t r, const text_traits& traits);

// Whether the driver's four-digit retry of a row can read otherwise than its first try: "%Y"
// takes exactly four digits where "%y" took two (all-digit text) or the whole run of digits, so
// with no longer run the retry reads what the first try read, or fails sooner.
constexpr bool retry_may_differ(const text_traits& traits, bool all_digit) {
    return traits.longest_digit_run >= (all_digit ? 4 : 5);
}

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
inline constexpr row_set digit_last_rows = rows_where([](std::size_t r) { return template_facts[r].last == first_need::digit; });
inline constexpr row_set letter_last_rows = rows_where([](std::size_t r) { return template_facts[r].last == first_need::letter; });
// Rows that need at most k digits, at most k marks; the last entry serves every larger count.
inline constexpr std::size_t count_steps = 24;
constexpr std::array<row_set, count_steps> rows_needing_at_most(bool marks) {
    std::array<row_set, count_steps> by{};
    for (std::size_t k = 0; k < count_steps; ++k)
        by[k] = rows_where([k, marks](std::size_t r) {
            return (marks ? template_facts[r].min_marks : template_facts[r].min_digits) <= (k + 1 == count_steps ? 255 : k);
        });
    return by;
}
inline constexpr auto digits_at_most = rows_needing_at_most(false);
inline constexpr auto marks_at_most = rows_needing_at_most(true);
// Rows whose consumers of one class (its fields and all the literals) can start k runs of that
// class: each alone is a weaker form of runs_fit, a set per count.
enum class run_kind : std::uint8_t { digit, letter, mark, single };
constexpr std::size_t run_consumers(std::size_t r, run_kind k) {
    const row_facts& f = template_facts[r];
    const std::size_t own = k == run_kind::digit    ? std::size_t{f.numeric_fields} + f.seconds_fields
                            : k == run_kind::letter ? f.letter_words
                            : k == run_kind::mark   ? f.mark_words
                                                    : f.seconds_fields;  // commas none, points the fractions
    return own + f.literals;
}
constexpr std::array<row_set, count_steps> rows_starting_runs(run_kind k) {
    std::array<row_set, count_steps> by{};
    for (std::size_t n = 0; n < count_steps; ++n)
        by[n] = rows_where([n, k](std::size_t r) { return run_consumers(r, k) >= n; });  // the last: n or more
    return by;
}
inline constexpr auto digit_runs_at_most = rows_starting_runs(run_kind::digit);
inline constexpr auto letter_runs_at_most = rows_starting_runs(run_kind::letter);
inline constexpr auto mark_runs_at_most = rows_starting_runs(run_kind::mark);
inline constexpr auto singles_at_most = rows_starting_runs(run_kind::single);  // commas and points
inline constexpr row_set name_rows = rows_where([](std::size_t r) { return template_facts[r].needs_name; });

static_assert(by_length[longest_anydate_text].has(53) && by_length[longest_anydate_text + 1].first() == anydate_row_count);
// What runs_fit and the last-character rule stand on: an ANYDATE pattern has no literal blank
// (its reading consumes the whole trimmed text) and "%P" only at its start.
static_assert([] {
    for (std::size_t r = 0; r < anydate_row_count; ++r) {
        const std::u32string_view p = pattern_view(r);
        if (p.find(U' ') != std::u32string_view::npos || !p.starts_with(U"%P") || p.find(U"%P", 1) != std::u32string_view::npos)
            return false;
    }
    return true;
}());

}  // namespace detail

constexpr bool runs_fit(std::size_t r, const text_traits& t) {
    const row_facts& f = template_facts[r];
    const auto beyond = [](std::size_t runs, std::size_t consumers) { return runs > consumers ? runs - consumers : 0; };
    const std::size_t left = beyond(t.digit_runs, std::size_t{f.numeric_fields} + f.seconds_fields) +
                             beyond(t.letter_runs, f.letter_words) + beyond(t.mark_runs, f.mark_words) + t.commas +
                             beyond(t.points, f.seconds_fields);
    return left <= f.literals;
}

namespace detail {

// A character's class for the traits, and flags beside it, by table for ASCII.
enum char_class : std::uint8_t { digit_class, letter_class, mark_class, comma_class, point_class };
inline constexpr std::uint8_t class_bits = 7, colon_flag = 8, blank_flag = 16, trigger_flag = 32;
constexpr std::uint8_t char_flags(wchar c) {
    const char_class k = c >= U'0' && c <= U'9' ? digit_class
                         : is_letter(c)        ? letter_class
                         : c == U','           ? comma_class
                         : c == U'.'           ? point_class
                                               : mark_class;
    return static_cast<std::uint8_t>(k | (c == U':' ? colon_flag : 0) | (c == U' ' ? blank_flag : 0) |
                                     (is_squeeze_trigger(c) ? trigger_flag : 0));
}
constexpr std::array<std::uint8_t, 128> ascii_flags = [] {
    std::array<std::uint8_t, 128> a{};
    for (wchar c = 0; c < 128; ++c) a[c] = char_flags(c);
    return a;
}();

}  // namespace detail

inline text_traits traits_of(std::u32string_view text) {
    using namespace detail;
    std::size_t counts[5] = {0, 0, 0, 0, 0};  // characters by class
    std::size_t runs[5] = {0, 0, 0, 0, 0};    // runs by class; commas and points each their own
    std::size_t longest_digits = 0, longest_letters = 0;
    std::uint8_t seen = 0, before = 0;        // flags of every character, of the one before
    bool squeeze = false;
    unsigned last = class_bits;               // no class yet
    std::size_t run_start = 0;
    const auto close_run = [&](std::size_t end) {  // the run of class `last` ends before `end`
        const std::size_t length = end - run_start;
        if (last == digit_class && length > longest_digits) longest_digits = length;
        if (last == letter_class && length > longest_letters) longest_letters = length;
    };
    text = text.substr(0, anydate_text_limit);  // the driver's copy at most; the counts fit 16 bits
    for (std::size_t i = 0; i < text.size(); ++i) {
        const wchar c = text[i];
        const std::uint8_t f = c < 128 ? ascii_flags[c] : char_flags(c);
        const unsigned k = f & class_bits;
        ++counts[k];
        seen |= f;
        squeeze |= (f & blank_flag) && (before & trigger_flag);
        before = f;
        if (k != last || k >= comma_class) {
            close_run(i);
            ++runs[k];
            run_start = i;
            last = k;
        }
    }
    close_run(text.size());
    const auto u16 = [](std::size_t v) { return static_cast<std::uint16_t>(v); };
    text_traits t;
    t.colon = seen & colon_flag;
    t.letter = counts[letter_class] > 0;
    t.mark = counts[mark_class] > 0;
    t.squeeze = squeeze || (!text.empty() && (text.front() == U' ' || text.back() == U' '));
    t.longest_digit_run = u16(longest_digits);
    t.longest_letter_run = u16(longest_letters);
    t.digits = u16(counts[digit_class]);
    t.marks = u16(counts[mark_class]);
    t.digit_runs = u16(runs[digit_class]);
    t.letter_runs = u16(runs[letter_class]);
    t.mark_runs = u16(runs[mark_class] - (!text.empty() && text[0] == U' ' ? 1 : 0));  // "%P" takes a leading blank run
    t.commas = u16(runs[comma_class]);
    t.points = u16(runs[point_class]);
    return t;
}

inline row_set candidate_rows(std::u32string_view text, const text_traits& traits) {
    using namespace detail;
    row_set rows = by_length[text.size() < longest_anydate_text + 1 ? text.size() : longest_anydate_text + 1];
    if (text.empty()) return rows;
    if (!traits.colon) rows = rows & ~time_rows;
    if (!traits.letter) rows = rows & ~letter_rows;
    if (!traits.mark) rows = rows & ~mark_rows;
    if (traits.longest_letter_run < 3) rows = rows & ~name_rows;
    rows = rows & digits_at_most[traits.digits < count_steps ? traits.digits : count_steps - 1];
    rows = rows & marks_at_most[traits.marks < count_steps ? traits.marks : count_steps - 1];
    const wchar c0 = text[0];
    if (!(c0 >= U'0' && c0 <= U'9')) rows = rows & ~digit_first_rows;
    if (!is_letter(c0)) rows = rows & ~letter_first_rows;
    const wchar cn = text.back();
    if (!(cn >= U'0' && cn <= U'9')) rows = rows & ~digit_last_rows;
    if (!is_letter(cn)) rows = rows & ~letter_last_rows;
    const auto step = [](std::size_t n) { return n < count_steps ? n : count_steps - 1; };
    rows = rows & digit_runs_at_most[step(traits.digit_runs)] & letter_runs_at_most[step(traits.letter_runs)] &
           mark_runs_at_most[step(traits.mark_runs)] & singles_at_most[step(traits.commas + traits.points)];
    return rows;  // the caller checks runs_fit on the rows it reaches
}

}  // namespace vxlocfmt::dateread
