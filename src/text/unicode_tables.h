/*
 * The library's own character data, generated from the Unicode 9.0.0 character database by
 * tools/unicode/generate.mjs into unicode_tables.cpp: ten class range tables, the class table of
 * the 128 ASCII code points, and two sets of case-mapping tables (lower, upper).
 *
 *   bool digit = text::in_ranges(text::digitranges, U'٣');            // true
 *   std::uint32_t bits = text::ansi_ccl['A'][text::ccl_class_bits];   // upper | hex digit
 */
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "frame/abi.h"

namespace vxlocfmt::text {

// One inclusive range of code points; a table is ascending and without overlaps.
struct CodeRange {
    std::uint32_t low;
    std::uint32_t high;
};

// Sizes are fixed: the generator fails if the Unicode data gives other counts.
extern const CodeRange digitranges[54];    // Nd
extern const CodeRange lowerranges[633];   // Ll
extern const CodeRange upperranges[627];   // Lu
extern const CodeRange alpharanges[571];   // L
extern const CodeRange spaceranges[11];    // the blanks, listed by hand (equal to White_Space)
extern const CodeRange printranges[641];   // graph plus Zs
extern const CodeRange xdigitranges[58];   // Nd plus A-F, a-f and their full-width forms
extern const CodeRange punctranges[168];   // P
extern const CodeRange graphranges[641];   // everything outside C and Z
extern const CodeRange controlranges[20];  // Cc and Cf

// Class bits of ansi_ccl (and of the host's classifier). A kernel class mask answers 1 for a
// character whose bits share any bit with it.
namespace class_bit {
inline constexpr std::uint32_t upper = 0x1;          // Lu
inline constexpr std::uint32_t lower = 0x2;          // Ll
inline constexpr std::uint32_t other_letter = 0x4;   // Lt, Lm, Lo
inline constexpr std::uint32_t other_graphic = 0x8;  // M, Nl, No, S
inline constexpr std::uint32_t digit = 0x40;         // Nd
inline constexpr std::uint32_t xdigit = 0x80;        // Nd, A-F, a-f, full-width A-F, a-f
inline constexpr std::uint32_t blank = 0x200;        // Zs
inline constexpr std::uint32_t control = 0x1000;     // Cc, Cf
inline constexpr std::uint32_t punct = 0x80000;      // P
}  // namespace class_bit

// Kernel class masks, passed with each question to the national-language service.
namespace class_mask {
inline constexpr std::uint32_t upper = 0x1;
inline constexpr std::uint32_t lower = 0x2;
inline constexpr std::uint32_t digit = 0x40;
inline constexpr std::uint32_t xdigit = 0x80;
inline constexpr std::uint32_t alpha = 0x60007;
inline constexpr std::uint32_t alnum = 0x60047;
inline constexpr std::uint32_t print = 0x3FFE0FFF;
inline constexpr std::uint32_t punct = 0x3F80000;
inline constexpr std::uint32_t graph = 0xFFFE81FF;
inline constexpr std::uint32_t cntrl = 0x3C00;
}  // namespace class_mask

// General-category numbers of ansi_ccl's third word (the host's classifier numbers alike).
namespace category {
inline constexpr std::uint32_t unassigned = 0, upper_letter = 1, lower_letter = 2,
                               decimal_number = 9, space_separator = 12, control = 15;
}  // namespace category

// The words of an ansi_ccl entry.
inline constexpr std::size_t ccl_code_point = 0;
inline constexpr std::size_t ccl_class_bits = 1;
inline constexpr std::size_t ccl_category = 2;
inline constexpr std::size_t ccl_upper = 4;  // 0 when the code point has no upper-case mapping
inline constexpr std::size_t ccl_lower = 5;  // 0 when it has no lower-case mapping
extern const std::uint32_t ansi_ccl[128][8];

// Case mapping below U+10000. block_index[c / 128] < 0: nothing in the block changes case;
// otherwise deltas[block_index[c / 128] + c % 128] is added to c, except that the delta
// case_exception sends c to the exception list (pairs ended by a pair whose first value is 0).
struct CasePair {
    std::uint32_t from;
    std::uint32_t to;
};
inline constexpr std::int8_t case_exception = -128;
inline constexpr std::size_t case_blocks = 0x10000 / 128;
extern const std::int16_t lower_block_index[case_blocks];
extern const std::int8_t lower_deltas[];
extern const CasePair lower_exceptions[];
extern const std::int16_t upper_block_index[case_blocks];
extern const std::int8_t upper_deltas[];
extern const CasePair upper_exceptions[];

// Binary search of a range table: the middle pair (rounded down), then the half that can hold c.
constexpr bool in_ranges(std::span<const CodeRange> table, wchar c) {
    std::size_t lo = 0, hi = table.size();  // the pairs [lo, hi) are still candidates
    while (lo < hi) {
        const std::size_t mid = lo + (hi - lo) / 2;
        if (c < table[mid].low)
            hi = mid;
        else if (c > table[mid].high)
            lo = mid + 1;
        else
            return true;
    }
    return false;
}

}  // namespace vxlocfmt::text
