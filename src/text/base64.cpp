#include "text/base64.h"
#include "text/text_exports.h"

#include <array>
#include <bit>
#include <cstring>
#include <limits>

#include "frame/kernel.h"

namespace vxlocfmt::text {
namespace {

constexpr const wchar* alphabet = base64_alphabet.data();

// base64Index: a character's low 8 bits to its 6-bit value; "=" and all else to 255.
constexpr std::array<std::uint8_t, 256> base64_index = [] {
    std::array<std::uint8_t, 256> index{};
    index.fill(base64_invalid);
    for (std::size_t v = 0; v < base64_alphabet.size(); ++v) {
        index[base64_alphabet[v]] = static_cast<std::uint8_t>(v);
    }
    return index;
}();

// base64Index with each value already shifted to its place in a group's 24 bits, one table per
// place; an invalid character sets a bit above them.
constexpr std::uint32_t placed_invalid = 0x80000000u;
constexpr std::array<std::array<std::uint32_t, 256>, 4> placed_index = [] {
    std::array<std::array<std::uint32_t, 256>, 4> t{};
    for (std::size_t place = 0; place < 4; ++place) {
        for (std::size_t b = 0; b < 256; ++b) {
            t[place][b] = base64_index[b] == base64_invalid
                              ? placed_invalid
                              : std::uint32_t{base64_index[b]} << (18 - 6 * place);
        }
    }
    return t;
}();

constexpr std::size_t group_bytes = 3;
constexpr std::size_t group_chars = 4;
constexpr std::size_t step_groups = 16;  // one step of the encoder: 48 bytes, 64 characters

inline std::uint8_t byte_of(std::uint8_t b) { return b; }
inline std::uint8_t byte_of(std::uint32_t cell) { return static_cast<std::uint8_t>(cell); }
// Every character is read by its low 8 bits only, deliberately: U+0151 counts as "Q".
inline std::uint8_t index_of(wchar c) { return base64_index[c & 0xFF]; }

template <class Unit>
inline void encode_group(const Unit* in, wchar* out) {
    const std::uint32_t v = std::uint32_t{byte_of(in[0])} << 16 |
                            std::uint32_t{byte_of(in[1])} << 8 | byte_of(in[2]);  // [0, 2^24)
    out[0] = alphabet[v >> 18];
    out[1] = alphabet[(v >> 12) & 63];
    out[2] = alphabet[(v >> 6) & 63];
    out[3] = alphabet[v & 63];
}

// Two characters for each 12-bit value, the first in the low half (x86-64 is little-endian): one
// load and one 8-byte store per half group. 32 KiB.
static_assert(std::endian::native == std::endian::little);
constexpr std::size_t pair_count = 4096;
constexpr std::array<std::uint64_t, pair_count> alphabet_pairs = [] {
    std::array<std::uint64_t, pair_count> pairs{};
    for (std::size_t v = 0; v < pair_count; ++v) {
        pairs[v] = std::uint64_t{alphabet[v >> 6]} | std::uint64_t{alphabet[v & 63]} << 32;
    }
    return pairs;
}();

template <class Unit>
inline void encode_group_by_pairs(const Unit* in, wchar* out) {
    const std::uint32_t v = std::uint32_t{byte_of(in[0])} << 16 |
                            std::uint32_t{byte_of(in[1])} << 8 | byte_of(in[2]);  // [0, 2^24)
    const std::uint64_t hi = alphabet_pairs[v >> 12], lo = alphabet_pairs[v & 0xFFF];
    std::memcpy(out, &hi, sizeof hi);
    std::memcpy(out + 2, &lo, sizeof lo);
}

template <class Unit>
std::size_t encode(std::span<const Unit> in, wchar* out) {
    const Unit* p = in.data();
    std::size_t left = in.size();
    wchar* o = out;
    for (; left >= step_groups * group_bytes; left -= step_groups * group_bytes) {
        for (std::size_t g = 0; g < step_groups; ++g, p += group_bytes, o += group_chars) {
            encode_group_by_pairs(p, o);
        }
    }
    for (; left >= group_bytes; left -= group_bytes, p += group_bytes, o += group_chars) {
        encode_group(p, o);
    }
    if (left > 0) {
        const Unit last[group_bytes] = {p[0], left == 2 ? p[1] : Unit{0}, Unit{0}};
        encode_group(last, o);
        o[3] = U'=';
        if (left == 1) o[2] = U'=';
        o += group_chars;
    }
    return static_cast<std::size_t>(o - out);
}

template <class Unit>
Base64Decoded decode(std::u32string_view in, Unit* out) {
    const wchar* s = in.data();
    const std::size_t n = in.size();
    std::size_t i = 0;
    Unit* o = out;
    for (; n - i >= group_chars; i += group_chars, o += group_bytes) {
        const std::uint32_t v = placed_index[0][s[i] & 0xFF] | placed_index[1][s[i + 1] & 0xFF] |
                                placed_index[2][s[i + 2] & 0xFF] | placed_index[3][s[i + 3] & 0xFF];
        if (v & placed_invalid) break;
        o[0] = static_cast<Unit>(v >> 16);
        o[1] = static_cast<Unit>((v >> 8) & 0xFF);
        o[2] = static_cast<Unit>(v & 0xFF);
    }
    const auto produced = [&] { return static_cast<std::size_t>(o - out); };
    if (i == n) return {produced(), true};
    // A group with an invalid character, or one to three characters left over.
    if (n - i != group_chars) return {produced(), false};
    const std::uint32_t s0 = index_of(s[i]), s1 = index_of(s[i + 1]), s2 = index_of(s[i + 2]);
    if (s0 == base64_invalid || s1 == base64_invalid) return {produced(), false};
    const bool is_pad2 = (s[i + 2] & 0xFF) == '=';
    const bool is_pad3 = (s[i + 3] & 0xFF) == '=';
    if (is_pad2) {
        // The fourth character is not examined: "QQ=x" decodes as one byte, deliberately.
        *o++ = static_cast<Unit>((s0 << 2 | s1 >> 4) & 0xFF);
    } else if (s2 != base64_invalid && is_pad3) {
        *o++ = static_cast<Unit>((s0 << 2 | s1 >> 4) & 0xFF);
        *o++ = static_cast<Unit>(((s1 << 4) & 0xF0) | s2 >> 2);
    } else {
        return {produced(), false};
    }
    return {produced(), true};
}

}  // namespace

std::size_t base64_encode(std::span<const std::uint8_t> in, wchar* out) { return encode(in, out); }
std::size_t base64_encode(std::span<const std::uint32_t> cells, wchar* out) {
    return encode(cells, out);
}
Base64Decoded base64_decode(std::u32string_view in, std::uint8_t* out) { return decode(in, out); }
Base64Decoded base64_decode(std::u32string_view in, std::uint32_t* cells) {
    return decode(in, cells);
}

namespace {

// The output buffer of a call: the caller's, or one from the pool with room for a terminator.
template <class Unit>
struct OutputBuffer {
    Unit* data = nullptr;
    bool allocated = false;
};

template <class Unit>
bool take_buffer(void* pool, Unit* given, std::size_t units_with_terminator,
                 OutputBuffer<Unit>& b) {
    if (given) {
        b = {given, false};
        return true;
    }
    if (!pool || units_with_terminator > std::numeric_limits<std::uint64_t>::max() / sizeof(Unit)) {
        return false;
    }
    void* block =
        kernel::pool_alloc(pool, units_with_terminator * sizeof(Unit), kernel::alloc_scratch);
    b = {static_cast<Unit*>(block), true};
    return block != nullptr;
}

// Negative counts and null inputs are empty inputs.
inline std::size_t count_of(const void* p, std::int64_t n) {
    return (p && n > 0) ? static_cast<std::size_t>(n) : 0;
}

template <class In, class Length>
status encode_call(void* pool, const In* in, std::int64_t count, wchar** out, Length* out_length) {
    if (!out) return st::no_memory;
    const std::size_t n = count_of(in, count);
    const std::size_t chars = base64_encoded_size(n);
    OutputBuffer<wchar> b;
    if (!take_buffer(pool, *out, chars + 1, b)) return st::no_memory;
    encode(std::span<const In>(in, n), b.data);
    if (b.allocated) b.data[chars] = 0;
    *out = b.data;
    if (out_length) *out_length = static_cast<Length>(chars);
    return st::ok;
}

template <class Unit, class Length>
status decode_call(void* pool, const wchar* in, std::int32_t count, Unit** out,
                   Length* out_length) {
    if (!out) return st::no_memory;
    const std::u32string_view text(in, count_of(in, count));
    // 3 * floor(n / 4) + 5 units when allocating: room for the data and the terminator.
    OutputBuffer<Unit> b;
    if (!take_buffer(pool, *out, base64_decoded_capacity(text.size()) + 5, b)) return st::no_memory;
    const Base64Decoded r = decode(text, b.data);
    if (!r.valid) {
        if (b.allocated) {
            kernel::pool_free(pool, b.data);
            *out = nullptr;
        } else {
            *out = b.data;
        }
        if (out_length) *out_length = 0;
        return st::bad_base64;
    }
    if (b.allocated) b.data[r.produced] = 0;
    *out = b.data;
    if (out_length) *out_length = static_cast<Length>(r.produced);
    return st::ok;
}

}  // namespace
}  // namespace vxlocfmt::text

using vxlocfmt::status;
using vxlocfmt::wchar;

VX_EXPORT status base64Encode(void* pool, const std::uint32_t* cells, std::int32_t count,
                              wchar** out, std::int32_t* out_length) {
    return vxlocfmt::text::encode_call(pool, cells, count, out, out_length);
}

VX_EXPORT status base64EncodeBlob(void* pool, const std::uint8_t* bytes, std::int64_t count,
                                  wchar** out, std::int64_t* out_length) {
    return vxlocfmt::text::encode_call(pool, bytes, count, out, out_length);
}

VX_EXPORT status base64Decode(void* pool, const wchar* text, std::int32_t count,
                              std::uint32_t** out, std::int32_t* out_length) {
    return vxlocfmt::text::decode_call(pool, text, count, out, out_length);
}

VX_EXPORT status base64DecodeBlob(void* pool, const wchar* text, std::int32_t count,
                                  std::uint8_t** out, std::int64_t* out_length) {
    return vxlocfmt::text::decode_call(pool, text, count, out, out_length);
}
