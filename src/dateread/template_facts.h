/*
 * What each template row's pattern implies, computed once at compile time from
 * `vxfmt_templates`: the kind as an enum, the name's length, whether the pattern reads seconds
 * (room for a fraction) or a two-digit year (the driver's four-digit retry), and what the text
 * must hold for the row to have any chance (the index's rules).
 *
 *   constexpr const row_facts& f = template_facts[65];   // f.has_seconds, f.first == digit
 */
#pragma once

#include <array>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <type_traits>

#include "dateread/template_table.h"

namespace vxlocfmt::dateread {

// ---- Interface ----------------------------------------------------------------------------

enum class value_kind : std::uint8_t { date, time, datetime };

// What the first field after the leading blanks needs of the text's first non-blank character.
enum class first_need : std::uint8_t { anything, digit, letter };

struct row_facts {
    value_kind kind;
    std::uint8_t name_length;
    std::uint8_t pattern_length;
    bool has_seconds;       // "%S": max lengths are raised by 10
    bool has_two_digit_year;  // "%y": the driver retries it as "%Y"
    bool has_separator;     // "%c" (the 8-digit skip of the six-letter names looks for it)
    bool needs_letter;      // a word field that takes letters only (months, weekdays, ...)
    bool needs_mark;        // a word field that takes non-letters only ("%c", "%C", "%G")
    bool needs_name;        // a month or weekday name: a run of three letters at least
    bool local_zone;        // B8601LZ, E8601LZ: the value is brought to local time
    first_need first;
    // What the text's last character must be: the pattern's last field consumes it, since a
    // pattern without a literal blank must consume the whole (trimmed) text.
    first_need last;
    // Fewest digits the fields take ("%Y" four, any other numeric field one) and fewest marks
    // ("%c", "%C", "%G" one each): a text with fewer cannot be read.
    std::uint8_t min_digits;
    std::uint8_t min_marks;
    // What consumes the first character of a run of the text (digits, letters, marks; see
    // anydate_index.h): literals (any one character), numeric fields (one run of digits; "%S"
    // with its fraction two, and the point), letter words, mark words.
    std::uint8_t literals;
    std::uint8_t numeric_fields;
    std::uint8_t seconds_fields;
    std::uint8_t letter_words;
    std::uint8_t mark_words;
};

inline constexpr std::size_t max_name_length = 16;

// The consecutive rows of one name: [first, end).
struct name_group {
    std::u32string_view name;
    std::uint16_t first, end;
    bool odd_zero;  // YYMMDD, DDMMYY, MMDDYY: the leading "0" and the 8-digit skip
};
inline constexpr std::size_t name_group_count = 36;

constexpr std::size_t text_length(const wchar* s);
constexpr bool same_name(const wchar* a, std::u32string_view b);
// The %-letter after the modifiers "0", "1", "x", "u", "." at pattern[i] (just after the "%"),
// and the index past it; 0 when the pattern ends first.
constexpr wchar directive_at(std::u32string_view pattern, std::size_t& i);

constexpr bool is_letter_word_directive(wchar d);  // b B a A r p z
constexpr bool is_mark_word_directive(wchar d);    // c C G
constexpr bool is_numeric_directive(wchar d);      // m d y Y j q w H M S i I

// Bounds of a row's text length, by name and as an ANYDATE row, the "%S" allowance included.
constexpr std::int64_t named_max(std::size_t row);
constexpr std::int64_t any_max(std::size_t row);

// ---- Implementation -----------------------------------------------------------------------

constexpr std::size_t text_length(const wchar* s) {
    std::size_t n = 0;
    while (s && s[n]) ++n;
    return n;
}

constexpr bool same_name(const wchar* a, std::u32string_view b) {
    return std::u32string_view(a, text_length(a)) == b;
}

constexpr bool is_modifier(wchar c) { return c == U'0' || c == U'1' || c == U'x' || c == U'u' || c == U'.'; }

constexpr wchar directive_at(std::u32string_view pattern, std::size_t& i) {
    while (i < pattern.size() && is_modifier(pattern[i])) ++i;
    return i < pattern.size() ? pattern[i++] : 0;
}

constexpr bool is_letter_word_directive(wchar d) { return std::u32string_view(U"bBaArpz").find(d) != std::u32string_view::npos; }
constexpr bool is_mark_word_directive(wchar d) { return d == U'c' || d == U'C' || d == U'G'; }
constexpr bool is_numeric_directive(wchar d) { return std::u32string_view(U"mdyYjqwHMSiI").find(d) != std::u32string_view::npos; }

namespace detail {

constexpr row_facts facts_of(const template_row& row) {
    row_facts f{};
    const std::u32string_view kind(row.kind, text_length(row.kind));
    f.kind = kind == U"TME" ? value_kind::time : kind == U"DTM" ? value_kind::datetime : value_kind::date;
    f.name_length = static_cast<std::uint8_t>(text_length(row.name));
    f.pattern_length = static_cast<std::uint8_t>(text_length(row.pattern));
    f.local_zone = same_name(row.name, U"B8601LZ") || same_name(row.name, U"E8601LZ");
    const std::u32string_view pattern(row.pattern, text_length(row.pattern));
    bool first_seen = false;
    bool blank_literal = false;
    f.last = first_need::anything;
    for (std::size_t i = 0; i < pattern.size();) {
        if (pattern[i] != U'%') {
            blank_literal |= pattern[i] == U' ';
            ++f.literals;
            f.last = first_need::anything;
            ++i;
            if (!first_seen) { first_seen = true; f.first = first_need::anything; }
            continue;
        }
        ++i;
        const wchar d = directive_at(pattern, i);
        if (d == U'P') continue;
        f.has_seconds |= d == U'S';
        f.has_two_digit_year |= d == U'y';
        f.has_separator |= d == U'c';
        f.needs_letter |= is_letter_word_directive(d);
        f.needs_mark |= is_mark_word_directive(d);
        f.needs_name |= d == U'b' || d == U'B' || d == U'a' || d == U'A';
        f.min_digits = static_cast<std::uint8_t>(f.min_digits + (d == U'Y' ? 4 : is_numeric_directive(d) ? 1 : 0));
        f.min_marks = static_cast<std::uint8_t>(f.min_marks + (is_mark_word_directive(d) ? 1 : 0));
        f.numeric_fields = static_cast<std::uint8_t>(f.numeric_fields + (is_numeric_directive(d) ? 1 : 0));
        f.seconds_fields = static_cast<std::uint8_t>(f.seconds_fields + (d == U'S' ? 1 : 0));
        f.letter_words = static_cast<std::uint8_t>(f.letter_words + (is_letter_word_directive(d) ? 1 : 0));
        f.mark_words = static_cast<std::uint8_t>(f.mark_words + (is_mark_word_directive(d) ? 1 : 0));
        f.last = is_numeric_directive(d) ? first_need::digit
                 : is_letter_word_directive(d) ? first_need::letter
                                                : first_need::anything;
        if (!first_seen) {
            first_seen = true;
            f.first = is_numeric_directive(d) ? first_need::digit
                      : is_letter_word_directive(d) ? first_need::letter
                                                     : first_need::anything;
        }
    }
    if (blank_literal) f.last = first_need::anything;  // the text may end early at the blank
    return f;
}

constexpr std::array<row_facts, template_count> all_facts() {
    std::array<row_facts, template_count> facts{};
    for (std::size_t r = 0; r < template_count; ++r) facts[r] = facts_of(vxfmt_templates[r]);
    return facts;
}

constexpr std::array<name_group, name_group_count> all_groups() {
    std::array<name_group, name_group_count> groups{};
    std::size_t g = 0;
    for (std::size_t r = 0; r < template_count; ++r) {
        const std::u32string_view name(vxfmt_templates[r].name, text_length(vxfmt_templates[r].name));
        if (r > 0 && groups[g - 1].name == name) {
            groups[g - 1].end = static_cast<std::uint16_t>(r + 1);
            continue;
        }
        if (g == name_group_count) throw "more names than name_group_count";  // not a constant expression
        const bool odd_zero = name == U"YYMMDD" || name == U"DDMMYY" || name == U"MMDDYY";
        groups[g++] = {name, static_cast<std::uint16_t>(r), static_cast<std::uint16_t>(r + 1), odd_zero};
    }
    if (g != name_group_count) throw "fewer names than name_group_count";
    return groups;
}

}  // namespace detail

inline constexpr std::array<row_facts, template_count> template_facts = detail::all_facts();
// Every name once, with its rows; DUMMY last.
inline constexpr std::array<name_group, name_group_count> name_groups = detail::all_groups();

namespace detail {

// The name's length, first and last two characters in one word; every name of the table has
// its own (checked below), so a name is found by one probe of a small perfect hash.
constexpr std::uint32_t name_key(std::u32string_view name) {
    const std::size_t n = name.size();
    if (n < 2) return n == 1 ? 0x100u | (name[0] & 0xFFu) : 0;
    return static_cast<std::uint32_t>(n) ^ ((name[0] & 0xFFu) << 8) ^ ((name[n - 2] & 0xFFu) << 16) ^
           ((name[n - 1] & 0xFFu) << 24);
}
inline constexpr std::size_t name_slot_bits = 8;
constexpr std::size_t name_slot(std::uint32_t key, std::uint32_t multiplier) {
    return (key * multiplier) >> (32 - name_slot_bits);
}
// Group number + 1 by slot, 0 for none; the multiplier is the first odd one without collisions.
struct name_hash {
    std::uint32_t multiplier = 0;
    std::array<std::uint8_t, std::size_t{1} << name_slot_bits> group_of_slot{};
};
constexpr name_hash make_name_hash() {
    for (std::uint32_t m = 0x9E3779B1u;; m += 2) {
        name_hash h{m, {}};
        bool clash = false;
        for (std::size_t g = 0; g < name_group_count && !clash; ++g) {
            std::uint8_t& slot = h.group_of_slot[name_slot(name_key(name_groups[g].name), m)];
            clash = slot != 0;
            slot = static_cast<std::uint8_t>(g + 1);
        }
        if (!clash) return h;
    }
}
inline constexpr name_hash name_lookup = make_name_hash();

}  // namespace detail

namespace detail {
// Equal texts of one length, compared two characters a word (the names are short).
constexpr bool same_chars(const wchar* a, const wchar* b, std::size_t n) {
    std::size_t i = 0;
    if (!std::is_constant_evaluated()) {
        for (; i + 2 <= n; i += 2) {
            std::uint64_t x, y;
            std::memcpy(&x, a + i, sizeof x);
            std::memcpy(&y, b + i, sizeof y);
            if (x != y) return false;
        }
    }
    for (; i < n; ++i)
        if (a[i] != b[i]) return false;
    return true;
}
}  // namespace detail

constexpr const name_group* find_name_group(std::u32string_view name) {
    const std::uint8_t g = detail::name_lookup.group_of_slot[detail::name_slot(detail::name_key(name), detail::name_lookup.multiplier)];
    if (g == 0) return nullptr;
    const name_group& found = name_groups[g - 1];
    return found.name.size() == name.size() && detail::same_chars(found.name.data(), name.data(), name.size()) ? &found : nullptr;
}
static_assert([] {
    for (const name_group& g : name_groups)
        if (find_name_group(g.name) != &g) return false;
    return !find_name_group(U"") && !find_name_group(U"B8601D") && !find_name_group(U"b8601DA");
}());

constexpr std::u32string_view pattern_view(std::size_t row) {
    return {vxfmt_templates[row].pattern, template_facts[row].pattern_length};
}

constexpr std::int64_t named_max(std::size_t row) {
    return vxfmt_templates[row].max_length + (template_facts[row].has_seconds ? 10 : 0);
}
constexpr std::int64_t any_max(std::size_t row) {
    return vxfmt_templates[row].any_max + (template_facts[row].has_seconds ? 10 : 0);
}

static_assert(find_name_group(U"YYMMDD")->first == 139 && find_name_group(U"YYMMDD")->end == 144);
static_assert(template_facts[0].first == first_need::digit && template_facts[34].first == first_need::letter);
static_assert(template_facts[65].min_digits == 6 && template_facts[74].min_digits == 6 && template_facts[34].min_marks == 6);
static_assert(template_facts[23].last == first_need::letter && template_facts[66].last == first_need::anything);
static_assert(template_facts[127].last == first_need::anything && template_facts[31].last == first_need::digit);
static_assert(template_facts[65].literals == 5 && template_facts[65].numeric_fields == 6 &&
              template_facts[41].letter_words == 1 && template_facts[41].mark_words == 2 && template_facts[41].literals == 1);
static_assert(template_facts[65].has_seconds && template_facts[65].has_two_digit_year);
static_assert(template_facts[85].local_zone && !template_facts[93].local_zone);
static_assert(same_name(vxfmt_templates[anydate_row_count - 1].name, U"ANYDATE") &&
              !same_name(vxfmt_templates[anydate_row_count].name, U"ANYDATE"));
static_assert(same_name(vxfmt_templates[dummy_row].name, U"DUMMY"));

}  // namespace vxlocfmt::dateread
