/*
 * A single-byte session encoding as a table: the byte of each code point, built once from what
 * ICU's converter writes for every character it can hold, so the table path and the ICU path
 * agree character for character (tests/byteoutput/fast_paths_test.cpp checks every code point).
 *
 *   auto table = vxhost::ByteTable::build(converter);   // empty for a multi-byte encoding
 *   int byte = table->byte_of(U'€');                     // 0x80 in windows-1252, -1 if unmappable
 */
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <vector>

struct UConverter;

namespace vxhost {

class ByteTable {
public:
    // The table of a stateless encoding that writes every character it holds as one byte; empty
    // for any other (or when a character turns out to need another number of bytes).
    static std::optional<ByteTable> build(UConverter* converter);

    // The byte of c, or -1 when the encoding cannot hold it.
    int byte_of(char32_t c) const {
        if (c > 0x10FFFF) return -1;
        return pages_[page_of_[c >> 8]][c & 0xFF];
    }
    // Every code point below this converts to the byte of the same value.
    char32_t identity_bound() const { return identity_bound_; }

private:
    using Page = std::array<std::int16_t, 256>;
    std::array<std::uint16_t, 0x1100> page_of_{};  // page 0: nothing mapped
    std::vector<Page> pages_;
    char32_t identity_bound_ = 0;
};

}  // namespace vxhost
