/*
 * The number formatter's everyday request, inline: plain fixed point of a double whose text fits
 * the field, written as wide characters straight into it, right to left, blanks before it. The
 * text is fixed_digits' (decimal_digits.h), with a sign unless it is all zeros.
 *
 *   char32_t out[10];
 *   if (fixed_in_wide_field(-1234.5, 2, 10, out)) ...   // out: "  -1234.50"
 */
#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <cstring>

#include "decimal_digits.h"

namespace vxhost {

// ---- Interface ----------------------------------------------------------------------------

// Writes the text over out[0, width) and answers true; answers false, with nothing written,
// unless decimals is 0 to 19, |value| x 10^decimals rounds below 2^64 and the text fits.
[[gnu::always_inline]] inline bool fixed_in_wide_field(double value, int decimals, int width, char32_t* out);

// ---- Implementation -----------------------------------------------------------------------

namespace detail {

// Two digits as two wide characters, the first at the lower address: one 8-byte store.
inline constexpr auto wide_digit_pairs = [] {
    std::array<std::uint64_t, 100> pairs{};
    for (std::uint64_t i = 0; i < 100; ++i) pairs[i] = ('0' + i / 10) | (('0' + i % 10) << 32);
    return pairs;
}();
static_assert(std::endian::native == std::endian::little);

// q with a point before its last `decimals` digits and at least one digit before the point,
// right to left from `p`, two digits per division. With `room` (a cell before the text that is
// written again afterwards) a last single digit goes as a pair too, its "0" in that cell: the
// count of digits then steers no branch.
template <class Unsigned>
inline void write_wide_fixed(Unsigned q, int decimals, char32_t* p, bool room) {
    int fraction = decimals;
    if (fraction == 2) {
        // The usual two decimals without the loop.
        p -= 2;
        std::memcpy(p, &wide_digit_pairs[q % 100], 8);
        q /= 100;
        fraction = 0;
    }
    for (; fraction >= 2; fraction -= 2) {
        p -= 2;
        std::memcpy(p, &wide_digit_pairs[q % 100], 8);
        q /= 100;
    }
    if (fraction == 1) {
        *--p = static_cast<char32_t>('0' + q % 10);
        q /= 10;
    }
    if (decimals > 0) *--p = U'.';
    for (; q >= 100; q /= 100) {
        p -= 2;
        std::memcpy(p, &wide_digit_pairs[q % 100], 8);
    }
    if (room || q >= 10) std::memcpy(p - 2, &wide_digit_pairs[q], 8);
    else p[-1] = static_cast<char32_t>('0' + q);
}

}  // namespace detail

[[gnu::always_inline]] inline bool fixed_in_wide_field(double value, int decimals, int width, char32_t* out) {
    using u128 = unsigned __int128;
    if (decimals < 0 || decimals > 19) return false;
    const auto bits = std::bit_cast<std::uint64_t>(value);
    const auto biased = static_cast<int>((bits >> 52) & 0x7FF);
    std::uint64_t q;
    if (biased >= 1075) {
        // Whole numbers from 2^53 on, infinities and NaNs: the general scaling.
        if (!scaled_by_power_of_ten(value < 0 ? -value : value, decimals, q)) return false;
    } else {
        // |value| = m x 2^-s with s >= 1, and m x 10^decimals < 2^53 x 2^64 = 2^117: from s = 118
        // on that is below half of 2^s and rounds to 0 (as zero does, m = 0). Adding the half
        // before the shift rounds a tie up, away from zero.
        const std::uint64_t m = (bits & ((1ull << 52) - 1)) | (biased != 0 ? 1ull << 52 : 0);
        const int s = biased != 0 ? 1075 - biased : 1074;
        if (s >= 118) {
            q = 0;
        } else {
            const u128 rounded = (static_cast<u128>(m) * powers_of_ten[decimals] + (static_cast<u128>(1) << (s - 1))) >> s;
            if (rounded >> 64) return false;
            q = static_cast<std::uint64_t>(rounded);
        }
    }
    // The sign without a branch: half the values of a column are negative, and a mispredicted
    // branch costs more than the few instructions here.
    const int sign = static_cast<int>(bits >> 63) & static_cast<int>(q != 0);
    const int digits = std::max(count_digits(q), decimals + 1) + (decimals > 0 ? 1 : 0);
    if (digits + sign > width) return false;
    // Blanks: a field of up to 32 cells is blanked whole first, in blocks from both ends that
    // depend on the width alone (the digits then go over them); a wider one only before the text.
    constexpr char32_t blanks[8] = {U' ', U' ', U' ', U' ', U' ', U' ', U' ', U' '};
    if (width <= 32) {
        // Eight cells at 0 and 8 and at width - 16 and width - 8 cover 16 to 32 cells.
        const auto put = [&](int at, int cells) {
            std::memcpy(out + at, blanks, static_cast<std::size_t>(cells) * sizeof(char32_t));
        };
        if (width >= 16) put(0, 8), put(8, 8), put(width - 16, 8), put(width - 8, 8);
        else if (width >= 8) put(0, 8), put(width - 8, 8);
        else if (width >= 4) put(0, 4), put(width - 4, 4);
        else
            for (int i = 0; i < width; ++i) out[i] = U' ';
    }
    // The cell before the digits is written again below whenever there is one.
    const bool room = digits < width;
    if (q <= 0xFFFFFFFFu) detail::write_wide_fixed(static_cast<std::uint32_t>(q), decimals, out + width, room);
    else detail::write_wide_fixed(q, decimals, out + width, room);
    if (width > 32)
        for (int i = 0, pad = width - digits - sign; i < pad; ++i) out[i] = U' ';
    // The cell before the digits: the sign, or the last blank again.
    if (digits < width) out[width - digits - 1] = U' ' + static_cast<char32_t>(sign) * (U'-' - U' ');
    return true;
}

}  // namespace vxhost
