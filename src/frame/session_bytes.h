/*
 * Wide text into the session encoding, with the answer the session transcoder would give. A text
 * made only of characters below the transcoder's identity bound is narrowed here, one byte a
 * character; in a session whose transcoder promises UTF-8 (its encoding form) the rest is encoded
 * here too; anything else is the transcoder's.
 *
 *   std::int32_t produced = 0;
 *   status s = session_bytes::convert(call.session_transcoder, text, count, bytes, width, &produced);
 */
#pragma once

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstring>

#include "frame/abi.h"
#include "frame/kernel.h"

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace vxlocfmt::session_bytes {

static_assert(std::endian::native == std::endian::little, "four narrowed bytes are stored as one word");

// The identity bound rounded down to a power of two, so one OR over the text tests it (and no
// more than 0x100: a byte holds no more); 0 when the transcoder promises nothing.
inline wchar identity_mask_bound(void* transcoder) {
    return static_cast<wchar>(std::bit_floor(std::min<std::uintptr_t>(kernel::identity_bound(transcoder), 0x100)));
}

// Four characters a step: the text is short (a field), the loop overhead is what costs.
inline bool all_below(const wchar* text, std::int32_t count, wchar bound) {
    wchar seen = 0;
    std::int32_t i = 0;
    for (; i + 4 <= count; i += 4) seen |= text[i] | text[i + 1] | text[i + 2] | text[i + 3];
    for (; i < count; ++i) seen |= text[i];
    return seen < bound;
}

// Narrows `count` cells into `count` bytes, four a step with the last step overlapping the one
// before; true when every cell is below the bound (the bytes are then theirs), false at the
// first step that meets one that is not. For a count
// fixed by the caller (a field's width) the steps do not depend on the text.
inline bool narrow_cells(const wchar* text, std::int32_t count, unsigned char* dest, wchar bound) {
    const auto four = [&](std::int32_t i) {
        const wchar a = text[i], b = text[i + 1], c = text[i + 2], d = text[i + 3];
        const std::uint32_t bytes = a | b << 8 | c << 16 | d << 24;
        std::memcpy(dest + i, &bytes, 4);
        return a | b | c | d;
    };
    wchar seen = 0;
    if (count >= 4) {
        // A step that meets a character at or above the bound ends it: the text is the
        // transcoder's (in the text's own script that step is the same on every call).
        std::int32_t i = 0;
        for (; i + 4 <= count; i += 4)
            if ((seen = four(i)) >= bound) return false;
        if (i < count) seen = four(count - 4);
    } else {
        for (std::int32_t i = 0; i < count; ++i) {
            seen |= text[i];
            dest[i] = static_cast<unsigned char>(text[i]);
        }
    }
    return seen < bound;
}

// `count` cells narrowed into `count` bytes, eight a step with the last step overlapping the one
// before, the bound tested once at the end: true when every cell is below it (the bytes are then
// theirs); otherwise the bytes written are not the text's. The steps depend on the count alone,
// so a caller that narrows a whole field (the text and the blanks after it) takes the same
// branches on every call.
inline bool narrow_whole(const wchar* text, std::int32_t count, unsigned char* dest, wchar bound) {
#if defined(__SSE2__)
    if (count >= 8) {
        __m128i seen = _mm_setzero_si128();
        const auto eight = [&](std::int32_t i) {
            const __m128i a = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text + i));
            const __m128i b = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text + i + 4));
            seen = _mm_or_si128(seen, _mm_or_si128(a, b));
            // Exact for cells below 0x100, all that a text that passes holds.
            const __m128i packed = _mm_packs_epi32(a, b);
            _mm_storel_epi64(reinterpret_cast<__m128i*>(dest + i), _mm_packus_epi16(packed, packed));
        };
        std::int32_t i = 0;
        for (; i + 8 <= count; i += 8) eight(i);
        if (i < count) eight(count - 8);
        const __m128i high = _mm_and_si128(seen, _mm_set1_epi32(static_cast<int>(~(bound - 1))));
        return _mm_movemask_epi8(_mm_cmpeq_epi32(high, _mm_setzero_si128())) == 0xFFFF;
    }
#endif
    wchar seen = 0;
    for (std::int32_t i = 0; i < count; ++i) {
        seen |= text[i];
        dest[i] = static_cast<unsigned char>(text[i]);
    }
    return seen < bound;
}

// n blanks (0x20 bytes) from `at`, in stores of 8 (or 4, 2, 1) bytes, the last one ending at
// at + n, so that none reaches before `at` or past its end: for the few bytes after a name or
// before a number a string store's start-up (what memset and a byte loop compile to) costs more
// than the stores.
[[gnu::always_inline]] inline void blank_bytes(unsigned char* at, std::int32_t n) {
    constexpr std::uint64_t blanks = 0x2020202020202020;
    const auto store = [&](std::int32_t i, std::size_t size) { std::memcpy(at + i, &blanks, size); };
    if (n >= 8) {
        for (std::int32_t i = 0; i + 8 < n; i += 8) store(i, 8);
        store(n - 8, 8);
    } else if (n >= 4) {
        store(0, 4);
        store(n - 4, 4);
    } else if (n >= 2) {
        store(0, 2);
        store(n - 2, 2);
    } else if (n == 1) {
        store(0, 1);
    }
}

// A field of `width` bytes (8 or more): the first `length` cells of `text` narrowed, blanks
// after them. The steps (eight bytes, the last one overlapping the one before) depend on the width
// alone, and each chooses between the text and a blank per lane, so that names of any length take
// the same branches. `text` is read over [0, width) whatever its length (the cells past it are
// the caller's scratch). True when the text is below the bound (the bytes are then the field's);
// otherwise what was written is not.
inline bool narrow_padded(const wchar* text, std::int32_t length, std::int32_t width, unsigned char* dest,
                          wchar bound) {
#if defined(__SSE2__)
    const __m128i lanes = _mm_setr_epi16(0, 1, 2, 3, 4, 5, 6, 7);
    const __m128i blanks = _mm_set1_epi16(' ');
    __m128i seen = _mm_setzero_si128();
    const auto eight = [&](std::int32_t i) {
        const __m128i a = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text + i));
        const __m128i b = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text + i + 4));
        // Lanes before the text's end keep their cell, the others become blanks; a cell from
        // 0x8000 on saturates to 0x7FFF, at or above any bound a byte allows.
        const __m128i inside = _mm_cmpgt_epi16(_mm_set1_epi16(static_cast<short>(std::min(length - i, 8))), lanes);
        const __m128i cells = _mm_packs_epi32(a, b);
        seen = _mm_or_si128(seen, _mm_and_si128(cells, inside));
        const __m128i chosen = _mm_or_si128(_mm_and_si128(inside, cells), _mm_andnot_si128(inside, blanks));
        _mm_storel_epi64(reinterpret_cast<__m128i*>(dest + i), _mm_packus_epi16(chosen, chosen));
    };
    std::int32_t i = 0;
    for (; i + 8 <= width; i += 8) eight(i);
    if (i < width) eight(width - 8);
    // Every kept lane below the bound: no lane has a bit at or above it (bound <= 0x100).
    const __m128i high = _mm_and_si128(seen, _mm_set1_epi16(static_cast<short>(~(bound - 1))));
    return _mm_movemask_epi8(_mm_cmpeq_epi16(high, _mm_setzero_si128())) == 0xFFFF;
#else
    wchar seen = 0;
    for (std::int32_t i = 0; i < width; ++i) {
        const wchar c = i < length ? text[i] : U' ';
        seen |= c;
        dest[i] = static_cast<unsigned char>(c);
    }
    return seen < bound;
#endif
}

// As the transcoder's convert, for a text below the identity bound: `count` characters
// narrowed into at most `room` bytes, cut after the last that fits (0x803fe807). False when the
// text has a character at or above the bound; `done` then receives how many characters from the
// start are narrowed, all below the bound (0 when the text cannot be narrowed at all).
inline bool narrow(wchar bound, const wchar* text, std::int32_t count, unsigned char* dest, std::int32_t room,
                   std::int32_t* produced, status* answer, std::int32_t* done = nullptr) {
    std::int32_t ignored = 0;
    if (!done) done = &ignored;
    *done = 0;
    if (!bound || count < 0 || room < 0 || (!dest && room != 0)) return false;
    const std::int32_t stored = std::min(count, room);
    // Narrowed four characters a step while the bound is tested; the first step that finds a
    // character at or above it gives up.
    std::int32_t i = 0;
#if defined(__SSE2__)
    // The four cells in one register, tested with one mask and packed with the processor's
    // saturating packs (exact below 0x100, all that a step that passes holds).
    const __m128i high = _mm_set1_epi32(static_cast<int>(~(bound - 1)));
    for (; i + 4 <= stored; i += 4) {
        const __m128i cells = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text + i));
        if (_mm_movemask_epi8(_mm_cmpeq_epi32(_mm_and_si128(cells, high), _mm_setzero_si128())) != 0xFFFF) {
            *done = i;
            return false;
        }
        const auto four = static_cast<std::uint32_t>(_mm_cvtsi128_si32(
            _mm_packus_epi16(_mm_packs_epi32(cells, cells), cells)));
        std::memcpy(dest + i, &four, 4);
    }
#else
    for (; i + 4 <= stored; i += 4) {
        const wchar a = text[i], b = text[i + 1], c = text[i + 2], d = text[i + 3];
        if ((a | b | c | d) >= bound) {
            *done = i;
            return false;
        }
        const std::uint32_t four = a | b << 8 | c << 16 | d << 24;
        std::memcpy(dest + i, &four, 4);
    }
#endif
    *done = i;
    wchar seen = 0;
    for (; i < stored; ++i) {
        seen |= text[i];
        dest[i] = static_cast<unsigned char>(text[i]);
    }
    if (seen >= bound) return false;
    *done = stored;
    if (!all_below(text + stored, count - stored, bound)) return false;
    *produced = stored;
    *answer = stored == count ? st::ok : st::does_not_fit;
    return true;
}

// What a transcoder that promises UTF-8 writes and answers: each character's UTF-8 bytes, in
// order, into at most `room` bytes; a character that does not fit stops the text after the last
// whole one (0x803fe807), a code point that is no Unicode scalar value (a surrogate, above
// U+10FFFF) stops it where it stands (0x803fe808). Without `Write`, the measure: the same answer
// and length, nothing written.
template <bool Write>
inline status utf8(const wchar* text, std::int32_t count, unsigned char* dest, std::int32_t room,
                   std::int32_t* produced) {
    std::int32_t used = 0;
    status answer = st::ok;
    for (std::int32_t i = 0; i < count; ++i) {
        const wchar c = text[i];
        if (c < 0x80) {
            if (used >= room) {
                answer = st::does_not_fit;
                break;
            }
            if constexpr (Write) dest[used] = static_cast<unsigned char>(c);
            ++used;
            continue;
        }
        if (c > 0x10FFFF || c - 0xD800u < 0x800u) {
            answer = st::unmappable;
            break;
        }
        const std::int32_t size = 2 + (c >= 0x800) + (c >= 0x10000);
        if (size > room - used) {
            answer = st::does_not_fit;
            break;
        }
        if constexpr (Write) {
            unsigned char* d = dest + used;
            const auto tail = [](wchar bits) { return static_cast<unsigned char>(0x80 | (bits & 0x3F)); };
            if (size == 2) {
                d[0] = static_cast<unsigned char>(0xC0 | c >> 6);
                d[1] = tail(c);
            } else if (size == 3) {
                d[0] = static_cast<unsigned char>(0xE0 | c >> 12);
                d[1] = tail(c >> 6);
                d[2] = tail(c);
            } else {
                d[0] = static_cast<unsigned char>(0xF0 | c >> 18);
                d[1] = tail(c >> 12);
                d[2] = tail(c >> 6);
                d[3] = tail(c);
            }
        }
        used += size;
    }
    *produced = used;
    return answer;
}

// True when the library may answer for the transcoder's UTF-8 conversion of these arguments (the
// transcoder answers malformed ones itself).
inline bool utf8_here(void* transcoder, std::int32_t count, const unsigned char* dest, std::int32_t room) {
    return kernel::encoding_form(transcoder) == kernel::transcoder_form_utf8 && count >= 0 && room >= 0 &&
           (dest || room == 0);
}

// As the transcoder's convert: `count` wide characters into at most `room` bytes. The characters
// before the first at or above the identity bound are narrowed here and only the rest goes on,
// written after them: below the bound an encoding keeps no state between characters, so a text
// converts to the bytes of its parts one after the other (the bound's promise). The rest is
// encoded here in a UTF-8 session, else by the transcoder.
inline status convert(void* transcoder, const wchar* text, std::int32_t count, unsigned char* dest,
                      std::int32_t room, std::int32_t* produced) {
    status answer = st::ok;
    std::int32_t done = 0;
    if (narrow(identity_mask_bound(transcoder), text, count, dest, room, produced, &answer, &done)) return answer;
    const status rest =
        utf8_here(transcoder, count, dest, room)
            ? utf8<true>(text + done, count - done, dest + done, room - done, produced)
            : kernel::convert(transcoder, text + done, (count - done) * static_cast<std::int32_t>(sizeof(wchar)),
                              dest + done, room - done, produced);
    *produced += done;
    return rest;
}

// As the transcoder's measure (its answer for a conversion into `limit` bytes, `*needed` the bytes
// it would write), done here in a UTF-8 session. False when the transcoder must be asked.
inline bool measure_here(void* transcoder, const wchar* text, std::int32_t count, std::int32_t limit,
                         std::int32_t* needed, status* answer) {
    if (kernel::encoding_form(transcoder) != kernel::transcoder_form_utf8 || count < 0 || limit < 0) return false;
    *answer = utf8<false>(text, count, nullptr, limit, needed);
    return true;
}

}  // namespace vxlocfmt::session_bytes
