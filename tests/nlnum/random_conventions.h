/*
 * Random number conventions and values for the renderer's differential tests: every pattern,
 * selectors out of range, signs, separators and points of zero to two cells, blanks in them,
 * symbols up to 50 characters; values of every magnitude, ties, zeros.
 *
 *   std::mt19937_64 rng(1);  auto c = nlnum_test::random_conventions(rng);
 */
#pragma once

#include <bit>
#include <cmath>
#include <iterator>
#include <random>
#include <string_view>

#include "nlnum_fixture.h"

namespace nlnum_test {

// One of a few texts for a two-cell field, picked by `k`.
inline void pick_cells(wchar (&field)[2], std::uint64_t k) {
    static constexpr std::u32string_view texts[] = {U"", U"-", U",", U".", U" ", U"\u00a0", U"'", U"-\u200e", U"\u200f-", U" -"};
    set(field, texts[k % std::size(texts)]);
    if (k % 23 == 0) field[0] = 0, field[1] = U'x';  // a second cell alone
}

inline NumberConventions random_conventions(std::mt19937_64& rng) {
    NumberConventions c{};
    static constexpr std::u32string_view symbols[] = {U"", U"%", U"$", U"EUR", U"\u20ac", U" kr", U"kr ", U"  ",
                                                      U"12345678901234567890123456789012345678901234567890"};
    set(c.currency_symbol, symbols[rng() % std::size(symbols)]);
    pick_cells(c.decimal_point, rng() % 4 == 0 ? rng() : 3);
    pick_cells(c.thousands_sep, rng());
    pick_cells(c.positive_sign, rng() % 3 == 0 ? rng() : 0);
    pick_cells(c.negative_sign, rng() % 3 == 0 ? rng() : 1);
    c.grouping[0] = static_cast<std::int32_t>(rng() % 7) - 1;  // -1 to 5
    // Mostly in range, sometimes not.
    const auto selector = [&](int top) { return rng() % 16 == 0 ? static_cast<std::int32_t>(rng() % 9) - 2 : static_cast<std::int32_t>(rng() % (top + 1)); };
    c.p_cs_precedes = selector(1), c.p_sep_by_space = selector(1), c.p_sign_posn = selector(4);
    c.n_cs_precedes = selector(1), c.n_sep_by_space = selector(1), c.n_sign_posn = selector(4);
    return c;
}

inline double random_value(std::mt19937_64& rng) {
    switch (rng() % 8) {
    case 0: return std::ldexp(static_cast<double>(rng() % 4000 * 2 + 1), -3) * (rng() % 2 ? -1 : 1);  // ties
    case 1: return rng() % 2 ? 0.0 : -0.0;
    case 2: return std::bit_cast<double>(rng());                                                      // anything
    case 3: return static_cast<double>(static_cast<std::int64_t>(rng() % 2000001) - 1000000) / 1000;
    default: return std::ldexp(static_cast<double>(rng() >> 11), static_cast<int>(rng() % 100) - 80) * (rng() % 2 ? -1 : 1);
    }
}

}  // namespace nlnum_test
