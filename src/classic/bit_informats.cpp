// The bit-pattern and byte informats: hexadecimal and binary digits to a number or to its bit
// pattern, hexadecimal and binary digits to bytes, Base64 to bytes, a UUID to 16 bytes. They
// build their results themselves; nothing here goes through the kernel's reader.
#include <algorithm>
#include <array>
#include <bit>
#include <cstring>

#include "classic/decimal_reader.h"
#include "classic/informat_field.h"
#include "classic/value_informats.h"
#include "text/base64.h"

namespace vxlocfmt::classic {
namespace {

constexpr detail::Limits hex_limits{1, 16, 0};
constexpr detail::Limits binary_limits{1, 64, 31};
constexpr detail::Limits uuid_limits{1, 200, 0};

constexpr int hex_digits = 16;     // of a 64-bit pattern
constexpr int binary_digits = 64;  // of a 64-bit pattern
// Up to 56 binary digits are an integer; 57 and more are the double's own bits (kept so).
constexpr int binary_integer_digits = 56;
constexpr std::size_t uuid_length = 36;  // 32 digits and 4 "-"
constexpr std::size_t uuid_bytes = 16;
constexpr std::size_t uuid_dashes[] = {8, 13, 18, 23};
// Base64 is decoded in slices of this many characters (a multiple of 4) so that at most the
// output capacity is written without a buffer the size of the text.
constexpr std::size_t base64_slice = 256;

// Hexadecimal digit values of ASCII, -1 for the rest. A table, not comparisons: random digits
// would send the branches of a digit-or-letter test the wrong way half the time.
constexpr auto hex_table = [] {
    std::array<std::int8_t, 128> t{};
    t.fill(-1);
    for (int c = '0'; c <= '9'; ++c) t[static_cast<std::size_t>(c)] = static_cast<std::int8_t>(c - '0');
    for (int c = 'A'; c <= 'F'; ++c) t[static_cast<std::size_t>(c)] = static_cast<std::int8_t>(c - 'A' + 10);
    for (int c = 'a'; c <= 'f'; ++c) t[static_cast<std::size_t>(c)] = static_cast<std::int8_t>(c - 'a' + 10);
    return t;
}();

// 0 to 15, or -1. Lower case counts as upper.
constexpr int hex_value(wchar c) { return c < hex_table.size() ? hex_table[c] : -1; }

// The 8 bytes of a pattern, most significant first, turned into the double they spell.
double from_pattern_bytes(std::uint64_t bits) {
    unsigned char bytes[8];
    for (int i = 0; i < 8; ++i) bytes[i] = static_cast<unsigned char>(bits >> (56 - 8 * i));
    if constexpr (std::endian::native == std::endian::little) REVERSE(bytes, sizeof bytes);
    double value;
    std::memcpy(&value, bytes, sizeof value);
    return value;
}

// The digits of a bit-pattern field with its blanks dropped, at most `room` of them.
struct Digits {
    wchar cells[binary_digits];
    int count = 0;
    bool overflow = false;
};
Digits non_blank(std::u32string_view text, int room) {
    Digits d;
    for (wchar c : text) {
        if (c == U' ') continue;
        if (d.count == room) {
            d.overflow = true;
            break;
        }
        d.cells[d.count++] = c;
    }
    return d;
}

std::size_t byte_capacity(const FmtCall& call) {
    return call.output && call.capacity > 0 ? static_cast<std::size_t>(call.capacity) : 0;
}

}  // namespace
}  // namespace vxlocfmt::classic

using namespace vxlocfmt;
using namespace vxlocfmt::classic;

VX_EXPORT void REVERSE(unsigned char* bytes, std::int64_t length) {
    if (bytes && length > 1) std::reverse(bytes, bytes + length);
}

VX_EXPORT status vxfmtzifmhex(FmtCall* call, void*) {
    if (!call || !call->output) return hex_invalid;
    detail::preset_missing(*call);
    if (status s = detail::check_limits(*call, hex_limits)) return s;
    std::uint64_t bits = 0;
    int count = 0;
    int invalid = 0;  // any digit's -1, or'ed in: one test at the end
    for (wchar c : detail::field_text(*call)) {
        if (c == U' ') continue;
        const int v = hex_value(c);
        invalid |= v;
        bits = bits << 4 | static_cast<std::uint64_t>(v & 15);
        ++count;
    }
    // An empty field is a missing value; more than 16 digits cannot be a pattern.
    if (invalid < 0 || count == 0 || count > hex_digits) return hex_invalid;
    *static_cast<double*>(call->output) = count == hex_digits ? from_pattern_bytes(bits) : static_cast<double>(bits);
    return 0;
}

VX_EXPORT status vxfmtzifmbin(FmtCall* call, void*) {
    if (!call || !call->output) return informat_invalid;
    detail::preset_missing(*call);
    if (status s = detail::check_limits(*call, binary_limits)) return s;
    const Digits d = non_blank(detail::field_text(*call), binary_digits);
    if (d.count == 0) return reader_refused;  // empty: missing, as every informat answers
    if (d.overflow) return informat_invalid;
    std::uint64_t bits = 0;
    for (int i = 0; i < d.count; ++i) {
        if (d.cells[i] != U'0' && d.cells[i] != U'1') return informat_invalid;
        bits = bits << 1 | (d.cells[i] == U'1');
    }
    *static_cast<double*>(call->output) =
        d.count <= binary_integer_digits ? static_cast<double>(bits) : from_pattern_bytes(bits);
    return 0;
}

VX_EXPORT status vxfmtzifmhxc(FmtCall* call, void*) {
    if (!call) return informat_invalid;
    call->produced = 0;
    const std::u32string_view text = detail::field_text(*call);
    std::size_t digits = 0;
    for (wchar c : text) {
        if (c == U' ') continue;
        if (hex_value(c) < 0) return informat_invalid;
        ++digits;
    }
    if (digits % 2 != 0) return informat_invalid;  // half a byte is no byte
    auto* out = static_cast<unsigned char*>(call->output);
    const std::size_t room = std::min(digits / 2, byte_capacity(*call));
    std::size_t written = 0;
    int high = -1;
    for (wchar c : text) {
        if (written == room) break;
        if (c == U' ') continue;
        if (high < 0) {
            high = hex_value(c);
        } else {
            out[written++] = static_cast<unsigned char>(high << 4 | hex_value(c));
            high = -1;
        }
    }
    call->produced = static_cast<std::int32_t>(written);
    return 0;
}

VX_EXPORT status vxfmtzifmbnc(FmtCall* call, void*) {
    if (!call) return informat_invalid;
    call->produced = 0;
    const std::u32string_view text = detail::field_text(*call);
    std::size_t digits = 0;
    for (wchar c : text) {
        if (c == U' ') continue;
        if (c != U'0' && c != U'1') return informat_invalid;
        ++digits;
    }
    // Every eighth digit starts a byte; a short last group is shifted in as it stands (101 is 5).
    auto* out = static_cast<unsigned char*>(call->output);
    const std::size_t room = std::min((digits + 7) / 8, byte_capacity(*call));
    std::size_t written = 0;
    unsigned byte = 0;
    int in_byte = 0;
    for (wchar c : text) {
        if (written == room) break;
        if (c == U' ') continue;
        byte = byte << 1 | (c == U'1');
        if (++in_byte == 8) {
            out[written++] = static_cast<unsigned char>(byte);
            byte = 0;
            in_byte = 0;
        }
    }
    if (in_byte > 0 && written < room) out[written++] = static_cast<unsigned char>(byte);
    call->produced = static_cast<std::int32_t>(written);
    return 0;
}

VX_EXPORT status vxfmtzifmb64(FmtCall* call, void*) {
    if (!call) return st::bad_base64;
    call->produced = 0;
    // The field's padding blanks on both sides are no part of the text.
    const std::u32string_view text = detail::trimmed(detail::field_text(*call));
    if (text.size() % 4 != 0) return st::bad_base64;
    auto* out = static_cast<unsigned char*>(call->output);
    const std::size_t room = byte_capacity(*call);
    std::size_t written = 0;
    unsigned char slice[text::base64_decoded_capacity(base64_slice)];
    for (std::size_t at = 0; at < text.size(); at += base64_slice) {
        const std::u32string_view part = text.substr(at, base64_slice);
        const text::Base64Decoded d = text::base64_decode(part, slice);
        // Padding ends the text: a slice that is short of bytes must be the last.
        const bool last = at + part.size() == text.size();
        if (!d.valid || (!last && d.produced != text::base64_decoded_capacity(part.size()))) {
            call->produced = 0;
            return st::bad_base64;
        }
        const std::size_t n = std::min(d.produced, room - written);
        if (n) std::memcpy(out + written, slice, n);
        written += n;
    }
    call->produced = static_cast<std::int32_t>(written);
    return 0;
}

VX_EXPORT status vxfmtzifmuuid(FmtCall* call, void*) {
    if (!call) return informat_invalid;
    call->produced = 0;
    if (status s = detail::check_limits(*call, uuid_limits)) return s;
    std::u32string_view text = detail::trimmed(detail::field_text(*call));
    if (text.size() < uuid_length) return informat_invalid;
    // Braces come in pairs: "{...}" or none.
    if (text.front() == U'{' && text.back() == U'}') text = text.substr(1, text.size() - 2);
    if (text.size() != uuid_length) return informat_invalid;
    unsigned char bytes[uuid_bytes];
    std::size_t n = 0;
    int high = -1;
    for (std::size_t i = 0; i < uuid_length; ++i) {
        const bool dash_place = std::find(std::begin(uuid_dashes), std::end(uuid_dashes), i) != std::end(uuid_dashes);
        if (dash_place) {
            if (text[i] != U'-') return informat_invalid;
            continue;
        }
        const int v = hex_value(text[i]);
        if (v < 0) return informat_invalid;
        if (high < 0) {
            high = v;
        } else {
            bytes[n++] = static_cast<unsigned char>(high << 4 | v);
            high = -1;
        }
    }
    const std::size_t count = std::min({static_cast<std::size_t>(std::max(call->width, 0)), byte_capacity(*call), uuid_bytes});
    if (count) std::memcpy(call->output, bytes, count);
    call->produced = static_cast<std::int32_t>(count);
    return 0;
}
