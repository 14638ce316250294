/*
 * The session transcoder's fast encoders: wide text to UTF-8, to ISO-8859-1, to a single-byte
 * encoding by table, and to the wide session's one unit a character. Each either writes (Write)
 * or only counts the bytes it would write (a measure), with the answer of a conversion: it stops
 * after the last whole character that fits (0x803fe807) or before one the encoding cannot hold
 * (0x803fe808), never writing part of a character.
 *
 *   std::int32_t produced = 0;
 *   auto code = vxhost::encode_utf8<true>(U"Jänner", 6, bytes, 16, &produced);   // 0, 7 bytes
 */
#pragma once

#include <cstddef>
#include <cstdint>

#include "byte_table.h"
#include "frame/abi.h"

namespace vxhost {

inline constexpr std::uint32_t status_unmappable = 0x803fe808u;
inline constexpr std::uint32_t status_bad_source = 0x803fe809u;

inline constexpr bool is_scalar(char32_t c) { return c <= 0x10FFFF && (c < 0xD800 || c > 0xDFFF); }

template <bool Write>
std::uint32_t encode_utf8(const char32_t* text, std::size_t count, unsigned char* dest, std::int32_t capacity,
                          std::int32_t* produced) {
    std::int32_t used = 0;
    if constexpr (!Write) {
        // A measure: the length of each character without a branch on it (mixed scripts would
        // mispredict), the two tests that stop it are rarely taken.
        for (std::size_t i = 0; i < count; ++i) {
            const char32_t c = text[i];
            const std::int32_t size = 1 + (c >= 0x80) + (c >= 0x800) + (c >= 0x10000);
            if (!is_scalar(c)) {
                *produced = used;
                return status_unmappable;
            }
            if (used + size > capacity) {
                *produced = used;
                return vxlocfmt::st::does_not_fit;
            }
            used += size;
        }
        *produced = used;
        return 0;
    }
    std::size_t i = 0;
    while (i < count) {
        const char32_t c = text[i];
        if (c < 0x80) {
            // Most session text is ASCII: four characters at once while four are ASCII, so a
            // run of ASCII after a multi-byte character is back on the block path at once.
            if (i + 4 <= count && used + 4 <= capacity && (c | text[i + 1] | text[i + 2] | text[i + 3]) < 0x80) {
                dest[used] = static_cast<unsigned char>(c);
                dest[used + 1] = static_cast<unsigned char>(text[i + 1]);
                dest[used + 2] = static_cast<unsigned char>(text[i + 2]);
                dest[used + 3] = static_cast<unsigned char>(text[i + 3]);
                used += 4;
                i += 4;
                continue;
            }
            if (used == capacity) {
                *produced = used;
                return vxlocfmt::st::does_not_fit;
            }
            dest[used++] = static_cast<unsigned char>(c);
            ++i;
            continue;
        }
        if (!is_scalar(c)) {
            *produced = used;
            return status_unmappable;
        }
        const std::int32_t size = 2 + (c >= 0x800) + (c >= 0x10000);
        if (used + size > capacity) {
            *produced = used;
            return vxlocfmt::st::does_not_fit;
        }
        {
            unsigned char* o = dest + used;
            switch (size) {
            case 2:
                o[0] = static_cast<unsigned char>(0xC0 | (c >> 6));
                o[1] = static_cast<unsigned char>(0x80 | (c & 0x3F));
                break;
            case 3:
                o[0] = static_cast<unsigned char>(0xE0 | (c >> 12));
                o[1] = static_cast<unsigned char>(0x80 | ((c >> 6) & 0x3F));
                o[2] = static_cast<unsigned char>(0x80 | (c & 0x3F));
                break;
            default:
                o[0] = static_cast<unsigned char>(0xF0 | (c >> 18));
                o[1] = static_cast<unsigned char>(0x80 | ((c >> 12) & 0x3F));
                o[2] = static_cast<unsigned char>(0x80 | ((c >> 6) & 0x3F));
                o[3] = static_cast<unsigned char>(0x80 | (c & 0x3F));
                break;
            }
        }
        used += size;
        ++i;
    }
    *produced = used;
    return 0;
}

// One byte a character, for every character below `bound` (ISO-8859-1: 0x100; the wide session:
// every scalar up to U+10FFFF, writing its low byte).
template <bool Write>
std::uint32_t encode_below(char32_t bound, const char32_t* text, std::size_t count, unsigned char* dest,
                           std::int32_t capacity, std::int32_t* produced) {
    std::int32_t used = 0;
    for (std::size_t i = 0; i < count; ++i) {
        if (text[i] >= bound) {
            *produced = used;
            return status_unmappable;
        }
        if (used == capacity) {
            *produced = used;
            return vxlocfmt::st::does_not_fit;
        }
        if constexpr (Write) dest[used] = static_cast<unsigned char>(text[i]);
        ++used;
    }
    *produced = used;
    return 0;
}

template <bool Write>
std::uint32_t encode_by_table(const ByteTable& table, const char32_t* text, std::size_t count, unsigned char* dest,
                              std::int32_t capacity, std::int32_t* produced) {
    std::int32_t used = 0;
    for (std::size_t i = 0; i < count; ++i) {
        const int byte = table.byte_of(text[i]);
        if (byte < 0) {
            *produced = used;
            return status_unmappable;
        }
        if (used == capacity) {
            *produced = used;
            return vxlocfmt::st::does_not_fit;
        }
        if constexpr (Write) dest[used] = static_cast<unsigned char>(byte);
        ++used;
    }
    *produced = used;
    return 0;
}

}  // namespace vxhost
