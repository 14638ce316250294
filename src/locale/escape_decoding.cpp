#include "locale/escape_decoding.h"

#include <algorithm>

#include "frame/kernel.h"
#include "frame/reporting.h"

namespace vxlocfmt::locale {
namespace {

constexpr std::size_t escape_bytes = 7;          // "<U" + 4 hex digits + ">"
constexpr std::int32_t scratch_bytes = 640;      // 160 wide characters: one raw byte each
constexpr std::int32_t one_character_bytes = 8;  // longest single character in a session encoding
constexpr std::int64_t reference_digits = 5;     // a 16-bit code in decimal
constexpr std::uint64_t room_limit = 160;

unsigned hex_value(unsigned char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    return 0;  // any other byte counts as 0, by design
}

// Appends to a property value; never past its 160 cells, whatever a room test allowed.
struct ValueWriter {
    Property& p;
    void put(wchar c) {
        if (p.length < property_value_cells) p.value[p.length++] = c;
    }
};

// A decoded code that is not the currency sign: kept if the session encoding holds it.
void store_code(ValueWriter& out, std::uint16_t code, void* session) {
    const wchar c = code;
    unsigned char bytes[one_character_bytes];
    std::int32_t produced = one_character_bytes;
    if (!session || kernel::convert(session, &c, sizeof c, bytes, one_character_bytes, &produced) == st::ok) {
        out.put(c);
        return;
    }
    if (code == 0x00A0) {
        out.put(U' ');
        return;
    }
    wchar digits[reference_digits];
    std::int64_t count = 0;
    const status converted = vxzIMaxToBuff(code, 10, 0, digits, reference_digits, &count);
    // Deliberately measured with the byte count the failed conversion reported, not the digits.
    if (converted == st::ok && static_cast<std::uint64_t>(produced) + out.p.length + 3 < room_limit) {
        out.put(U'&');
        out.put(U'#');
        for (std::int64_t i = 0; i < count; ++i) out.put(digits[i]);
        out.put(U';');
        return;
    }
    out.put(U'*');
}

}  // namespace

void decode_property(const unsigned char* raw, std::size_t length, Property& out, void* primary_transcoder,
                     void* session_transcoder) {
    length = std::min(length, property_value_cells);
    wchar wide[scratch_bytes / sizeof(wchar)];
    std::int32_t produced = 0;
    kernel::convert(primary_transcoder, raw, static_cast<std::int32_t>(length), wide, scratch_bytes, &produced);
    const std::size_t wide_count = std::min(static_cast<std::size_t>(std::max(produced, 0)) / sizeof(wchar), length);

    out.length = 0;
    ValueWriter writer{out};
    // Raw bytes and wide characters are walked side by side: the locale text is one byte each.
    for (std::size_t i = 0; i < wide_count;) {
        const bool escape = raw[i] == '<' && length - i >= escape_bytes && (raw[i + 1] == 'U' || raw[i + 1] == 'u');
        if (!escape) {
            writer.put(wide[i++]);
            continue;
        }
        const auto code = static_cast<std::uint16_t>(hex_value(raw[i + 2]) << 12 | hex_value(raw[i + 3]) << 8 |
                                                     hex_value(raw[i + 4]) << 4 | hex_value(raw[i + 5]));
        i += escape_bytes;  // the seventh byte is skipped unchecked, by design
        if (code == 0x00A4) writer.put(currency_placeholder);
        else store_code(writer, code, session_transcoder);
    }
    out.value[out.length] = 0;
}

}  // namespace vxlocfmt::locale
