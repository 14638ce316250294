/*
 * Base64 (RFC 4648 alphabet, "=" padding, no line breaks) between bytes and wide-character text.
 * The byte side is plain bytes or one byte per 32-bit cell; the text side is always wide.
 *
 *   std::vector<wchar> text(text::base64_encoded_size(bytes.size()));
 *   auto [produced, valid] = text::base64_decode(std::u32string_view(text.data(), text.size()),
 * out);
 */
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "frame/abi.h"

namespace vxlocfmt::text {

inline constexpr std::u32string_view base64_alphabet =
    U"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
inline constexpr std::uint8_t base64_invalid = 255;

// Characters written for n bytes: 4 per started group of 3.
constexpr std::size_t base64_encoded_size(std::size_t bytes) { return 4 * ((bytes + 2) / 3); }
// Most bytes that n characters can decode to.
constexpr std::size_t base64_decoded_capacity(std::size_t chars) { return 3 * (chars / 4); }

// Writes exactly base64_encoded_size(in.size()) characters; cells give their low 8 bits.
std::size_t base64_encode(std::span<const std::uint8_t> in, wchar* out);
std::size_t base64_encode(std::span<const std::uint32_t> cells, wchar* out);

struct Base64Decoded {
    std::size_t produced;  // bytes (cells) written; when not valid, those of the whole groups
                           // before the fault
    bool valid;
};
// Reads every character by its low 8 bits only; `out` needs base64_decoded_capacity(in.size()).
Base64Decoded base64_decode(std::u32string_view in, std::uint8_t* out);
Base64Decoded base64_decode(std::u32string_view in, std::uint32_t* cells);

}  // namespace vxlocfmt::text
