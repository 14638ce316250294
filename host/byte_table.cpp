#include "byte_table.h"

#include <unicode/ucnv.h>
#include <unicode/uset.h>
#include <unicode/utf16.h>

#include <memory>

namespace vxhost {
namespace {

// What the converter writes for c alone: its byte, -1 when it cannot hold c, -2 for anything but
// one byte.
int convert_one(UConverter* converter, char32_t c) {
    UChar units[2];
    std::int32_t count = 0;
    U16_APPEND_UNSAFE(units, count, c);
    char bytes[8];
    UErrorCode error = U_ZERO_ERROR;
    ucnv_resetFromUnicode(converter);
    const std::int32_t size = ucnv_fromUChars(converter, bytes, sizeof bytes, units, count, &error);
    if (error == U_INVALID_CHAR_FOUND || error == U_ILLEGAL_CHAR_FOUND) return -1;
    if (U_FAILURE(error) || size != 1) return -2;
    return static_cast<unsigned char>(bytes[0]);
}

bool is_single_byte_type(UConverter* converter) {
    switch (ucnv_getType(converter)) {
    case UCNV_SBCS:
    case UCNV_LATIN_1:
    case UCNV_US_ASCII: return ucnv_getMaxCharSize(converter) == 1;
    default: return false;
    }
}

}  // namespace

std::optional<ByteTable> ByteTable::build(UConverter* converter) {
    if (!is_single_byte_type(converter)) return std::nullopt;
    UErrorCode error = U_ZERO_ERROR;
    const std::unique_ptr<USet, decltype(&uset_close)> set(uset_openEmpty(), &uset_close);
    // Fallbacks too: a converter may use some of them (private use) with fallbacks off; what it
    // writes for each is asked below, so the set only has to hold everything it can write.
    ucnv_getUnicodeSet(converter, set.get(), UCNV_ROUNDTRIP_AND_FALLBACK_SET, &error);
    if (U_FAILURE(error)) return std::nullopt;

    ByteTable table;
    Page unmapped;
    unmapped.fill(-1);
    table.pages_.push_back(unmapped);
    const std::int32_t ranges = uset_getItemCount(set.get());
    for (std::int32_t r = 0; r < ranges; ++r) {
        UChar32 first = 0, last = 0;
        error = U_ZERO_ERROR;
        if (uset_getItem(set.get(), r, &first, &last, nullptr, 0, &error) != 0) continue;  // a string
        for (UChar32 c = first; c <= last; ++c) {
            const int byte = convert_one(converter, static_cast<char32_t>(c));
            if (byte == -2) return std::nullopt;
            if (byte < 0) continue;
            std::uint16_t& page = table.page_of_[static_cast<std::size_t>(c) >> 8];
            if (page == 0) {
                page = static_cast<std::uint16_t>(table.pages_.size());
                table.pages_.push_back(unmapped);
            }
            table.pages_[page][static_cast<std::size_t>(c) & 0xFF] = static_cast<std::int16_t>(byte);
        }
    }
    ucnv_resetFromUnicode(converter);
    while (table.identity_bound_ < 0x100 &&
           table.byte_of(table.identity_bound_) == static_cast<int>(table.identity_bound_))
        ++table.identity_bound_;
    return table;
}

}  // namespace vxhost
