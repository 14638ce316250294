/*
 * The output field of a format: the call asks for `width` characters and offers `capacity`
 * cells; a format stores at most the smaller of the two and nothing outside it. Every write of a
 * format goes through this type, so the bound holds by construction.
 *
 *   auto field = OutputField::of(call);
 *   field.fill(U' '); field.put(field.width() - 1, U'.');
 */
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string_view>

#include "frame/abi.h"

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace vxlocfmt {

// Copies n cells: from 16 on in blocks of 16, the rest as one more block overlapping the one
// before; moves whose number depends on n alone, without memmove's dispatch on the length
// (which a text of varying length mispredicts). The ranges must not overlap. Inlined where the
// source is a large buffer (the compiler's bounds warnings cannot follow n on a short literal);
// out of line for everyone else.
[[gnu::always_inline]] inline void copy_cells_inline(wchar* to, const wchar* from, std::int64_t n) {
    constexpr std::int64_t block = 16;
    if (n < block) {
        for (std::int64_t i = 0; i < n; ++i) to[i] = from[i];
        return;
    }
    std::int64_t i = 0;
    for (; i + block <= n; i += block) std::memcpy(to + i, from + i, block * sizeof(wchar));
    // The rest as the last block, overlapping the one before: no call, no branch on the rest.
    if (i < n) std::memcpy(to + n - block, from + n - block, block * sizeof(wchar));
}
[[gnu::noinline]] inline void copy_cells(wchar* to, const wchar* from, std::int64_t n) {
    copy_cells_inline(to, from, n);
}

// copy_cells_inline that also narrows each cell into one byte of `bytes`, sixteen a step (the last
// step overlapping the one before), packed with the processor's saturating packs where it has
// them. True when every cell is below `bound` (a power of two, at most 0x100): the bytes are then
// the cells themselves. Otherwise nothing is written to `bytes` (a text beyond the bound goes to
// the transcoder, which writes them; bytes stored here first measurably slowed that path).
[[gnu::always_inline]] inline bool copy_narrowing_inline(wchar* to, unsigned char* bytes, const wchar* from,
                                                         std::int64_t n, wchar bound) {
#if defined(__SSE2__)
    if (n >= 16) {
        const auto load = [&](std::int64_t i) { return _mm_loadu_si128(reinterpret_cast<const __m128i*>(from + i)); };
        __m128i seen = _mm_setzero_si128();
        const auto copy = [&](std::int64_t i) {
            const __m128i a = load(i), b = load(i + 4), c = load(i + 8), d = load(i + 12);
            _mm_storeu_si128(reinterpret_cast<__m128i*>(to + i), a);
            _mm_storeu_si128(reinterpret_cast<__m128i*>(to + i + 4), b);
            _mm_storeu_si128(reinterpret_cast<__m128i*>(to + i + 8), c);
            _mm_storeu_si128(reinterpret_cast<__m128i*>(to + i + 12), d);
            seen = _mm_or_si128(seen, _mm_or_si128(_mm_or_si128(a, b), _mm_or_si128(c, d)));
        };
        const auto pack = [&](std::int64_t i) {
            // Exact for cells below 0x100, which is all that is packed.
            const __m128i packed = _mm_packus_epi16(_mm_packs_epi32(load(i), load(i + 4)),
                                                    _mm_packs_epi32(load(i + 8), load(i + 12)));
            _mm_storeu_si128(reinterpret_cast<__m128i*>(bytes + i), packed);
        };
        std::int64_t i = 0;
        for (; i + 16 <= n; i += 16) copy(i);
        if (i < n) copy(n - 16);
        const __m128i over = _mm_and_si128(seen, _mm_set1_epi32(static_cast<int>(~(bound - 1))));
        if (_mm_movemask_epi8(_mm_cmpeq_epi32(over, _mm_setzero_si128())) != 0xFFFF) return false;
        for (i = 0; i + 16 <= n; i += 16) pack(i);
        if (i < n) pack(n - 16);
        return true;
    }
#endif
    wchar seen = 0;
    for (std::int64_t i = 0; i < n; ++i) seen |= from[i];
    copy_cells_inline(to, from, n);
    if (seen >= bound) return false;
    for (std::int64_t i = 0; i < n; ++i) bytes[i] = static_cast<unsigned char>(from[i]);
    return true;
}

class OutputField {
public:
    OutputField(wchar* cells, std::int32_t width, std::int32_t capacity)
        : cells_(cells),
          width_(width),
          stored_(cells ? std::max<std::int32_t>(0, std::min(width, capacity)) : 0) {}

    // The wide output of a format call.
    static OutputField of(const FmtCall& call) {
        return {static_cast<wchar*>(call.output), call.width, call.capacity};
    }

    std::int32_t width() const { return width_; }
    // Cells that may really be written: min(width, capacity), never negative.
    std::int32_t stored() const { return stored_; }
    wchar* data() const { return cells_; }

    void fill(wchar c) const { std::fill_n(cells_, stored_, c); }
    // Fills [from, to) clipped to the stored cells.
    void fill(std::int64_t from, std::int64_t to, wchar c) const {
        from = std::max<std::int64_t>(from, 0);
        to = std::min<std::int64_t>(to, stored_);
        if (from < to) std::fill(cells_ + from, cells_ + to, c);
    }
    void put(std::int32_t at, wchar c) const {
        if (at >= 0 && at < stored_) cells_[at] = c;
    }
    // Writes `text` from `at`; what falls outside the stored cells is dropped. The bounds are
    // clipped once and the rest is one block copy (`text` must not lie in the field).
    void write(std::int64_t at, std::u32string_view text) const {
        const std::int64_t from = std::max<std::int64_t>(at, 0);
        const std::int64_t to = std::min<std::int64_t>(at + static_cast<std::int64_t>(text.size()), stored_);
        if (from < to) copy_cells(cells_ + from, text.data() + (from - at), to - from);
    }

    // The first min(n, stored()) cells of `text` (a buffer of at least n cells, not in the
    // field) at the start of the field, with inline moves.
    void write_front(const wchar* text, std::int64_t n) const {
        copy_cells_inline(cells_, text, std::min<std::int64_t>(n, stored_));
    }
    // write_front, the cells also narrowed into `bytes` (room for min(n, stored()) of them):
    // true when they were all below `bound`.
    bool write_front_narrowing(const wchar* text, std::int64_t n, unsigned char* bytes, wchar bound) const {
        return copy_narrowing_inline(cells_, bytes, text, std::min<std::int64_t>(n, stored_), bound);
    }

private:
    wchar* cells_;
    std::int32_t width_;
    std::int32_t stored_;
};

// A format that cannot show its value: "*" over the whole width, produced length = width.
inline void star_fill(FmtCall& call) {
    OutputField::of(call).fill(U'*');
    call.produced = call.width;
}

}  // namespace vxlocfmt
