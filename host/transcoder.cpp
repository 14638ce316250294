#include "transcoder.h"

#include <unicode/ucnv.h>
#include <unicode/ucnv_err.h>

#include <atomic>
#include <cstring>

#include "frame/kernel.h"
#include "text_convert.h"

namespace vxhost {
namespace {

using vxlocfmt::st::does_not_fit;

vxlocfmt::status slot_release(void* object) {
    self<Transcoder>(object).release();
    return 0;
}
vxlocfmt::status slot_convert(void* object, const void* source, std::int32_t length, void* dest,
                              std::int32_t capacity, std::int32_t* produced, std::int64_t) {
    return self<Transcoder>(object).convert(source, length, dest, capacity, produced);
}

bool is_scalar(char32_t c) { return c <= 0x10FFFF && (c < 0xD800 || c > 0xDFFF); }

// Bytes to wide, one code point per byte (locale text is ASCII; escapes are the library's).
std::uint32_t widen_bytes(const unsigned char* source, std::int32_t length, char32_t* dest,
                          std::int32_t capacity, std::int32_t* produced) {
    const std::int32_t room = capacity / 4;
    const std::int32_t count = std::min(length, room);
    for (std::int32_t i = 0; i < count; ++i) dest[i] = source[i];
    *produced = count * 4;
    return count < length ? does_not_fit : 0;
}

std::uint32_t utf8_to_wide(const unsigned char* source, std::int32_t length, char32_t* dest,
                           std::int32_t capacity, std::int32_t* produced) {
    const std::u32string wide = from_utf8({reinterpret_cast<const char*>(source), static_cast<std::size_t>(length)});
    const auto room = static_cast<std::size_t>(capacity / 4);
    const std::size_t count = std::min(wide.size(), room);
    std::memcpy(dest, wide.data(), count * 4);
    *produced = static_cast<std::int32_t>(count * 4);
    return count < wide.size() ? does_not_fit : 0;
}

std::uint32_t wide_to_utf8(const char32_t* text, std::size_t count, unsigned char* dest, std::int32_t capacity,
                           std::int32_t* produced) {
    std::int32_t used = 0;
    for (std::size_t i = 0; i < count; ++i) {
        const char32_t c = text[i];
        if (!is_scalar(c)) {
            *produced = used;
            return status_unmappable;
        }
        const std::int32_t size = c < 0x80 ? 1 : c < 0x800 ? 2 : c < 0x10000 ? 3 : 4;
        if (used + size > capacity) {
            *produced = used;
            return does_not_fit;
        }
        // Straight into the destination: this runs for every byte-mode call, twice.
        unsigned char* o = dest + used;
        switch (size) {
        case 1: o[0] = static_cast<unsigned char>(c); break;
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
        used += size;
    }
    *produced = used;
    return 0;
}

std::uint32_t wide_to_latin1(const char32_t* text, std::size_t count, unsigned char* dest, std::int32_t capacity,
                             std::int32_t* produced) {
    std::int32_t used = 0;
    for (std::size_t i = 0; i < count; ++i) {
        if (text[i] > 0xFF) {
            *produced = used;
            return status_unmappable;
        }
        if (used == capacity) {
            *produced = used;
            return does_not_fit;
        }
        dest[used++] = static_cast<unsigned char>(text[i]);
    }
    *produced = used;
    return 0;
}

// A wide session: one unit a character (its low byte, for whoever looks), every scalar held.
std::uint32_t wide_units(const char32_t* text, std::size_t count, unsigned char* dest, std::int32_t capacity,
                         std::int32_t* produced) {
    std::int32_t used = 0;
    for (std::size_t i = 0; i < count; ++i) {
        if (text[i] > 0x10FFFF) {
            *produced = used;
            return status_unmappable;
        }
        if (used == capacity) {
            *produced = used;
            return does_not_fit;
        }
        dest[used++] = static_cast<unsigned char>(text[i]);
    }
    *produced = used;
    return 0;
}

}  // namespace

namespace {
std::atomic<long> live_transcoders{0};
}  // namespace

long Transcoder::live() { return live_transcoders; }

Transcoder* Transcoder::wide_session() { return new Transcoder(Kind::wide_session, "wide", nullptr); }

Transcoder::Transcoder(Kind kind, std::string encoding, UConverter* converter)
    : kind_(kind), encoding_(std::move(encoding)), converter_(converter) {
    words[vxlocfmt::kernel::object_release_slot] = fn_word(&slot_release);
    words[vxlocfmt::kernel::object_convert_slot] = fn_word(&slot_convert);
    ++live_transcoders;
}

Transcoder::~Transcoder() {
    --live_transcoders;
    if (converter_) ucnv_close(converter_);
}

void Transcoder::release() { delete this; }

Transcoder* Transcoder::create(std::uint32_t from, std::uint32_t to) {
    using namespace vxlocfmt::kernel;
    if (to != encoding_wide) return nullptr;
    if (from == encoding_locale_text) return new Transcoder(Kind::locale_to_wide, "locale", nullptr);
    if (from == encoding_second) return new Transcoder(Kind::utf8_to_wide, "UTF-8", nullptr);
    return nullptr;
}

std::string Transcoder::canonical_name(std::string_view encoding) {
    UErrorCode error = U_ZERO_ERROR;
    const std::string name(encoding);
    const char* canonical = ucnv_getAlias(name.c_str(), 0, &error);
    if (U_FAILURE(error) || !canonical) return {};
    return canonical;
}

Transcoder* Transcoder::to_session(std::string_view encoding) {
    const std::string canonical = canonical_name(encoding);
    if (canonical.empty()) return nullptr;
    if (canonical == "UTF-8") return new Transcoder(Kind::wide_to_utf8, canonical, nullptr);
    if (canonical == "ISO-8859-1") return new Transcoder(Kind::wide_to_latin1, canonical, nullptr);
    UErrorCode error = U_ZERO_ERROR;
    UConverter* converter = ucnv_open(canonical.c_str(), &error);
    if (U_FAILURE(error)) return nullptr;
    ucnv_setFromUCallBack(converter, UCNV_FROM_U_CALLBACK_STOP, nullptr, nullptr, nullptr, &error);
    return new Transcoder(Kind::wide_to_icu, canonical, converter);
}

std::uint32_t Transcoder::convert(const void* source, std::int32_t length, void* dest, std::int32_t capacity,
                                  std::int32_t* produced) {
    std::int32_t ignored = 0;
    if (!produced) produced = &ignored;
    *produced = 0;
    if (length < 0 || capacity < 0 || (length > 0 && !source) || (capacity > 0 && !dest)) return status_bad_source;
    const auto* bytes = static_cast<const unsigned char*>(source);
    auto* out = static_cast<unsigned char*>(dest);
    const auto* wide = static_cast<const char32_t*>(source);
    const std::size_t wide_count = static_cast<std::size_t>(length) / 4;
    switch (kind_) {
    case Kind::locale_to_wide: return widen_bytes(bytes, length, static_cast<char32_t*>(dest), capacity, produced);
    case Kind::utf8_to_wide: return utf8_to_wide(bytes, length, static_cast<char32_t*>(dest), capacity, produced);
    case Kind::wide_to_utf8: return wide_to_utf8(wide, wide_count, out, capacity, produced);
    case Kind::wide_to_latin1: return wide_to_latin1(wide, wide_count, out, capacity, produced);
    case Kind::wide_to_icu: return from_wide_icu(wide, wide_count, out, capacity, produced);
    case Kind::wide_session: return wide_units(wide, wide_count, out, capacity, produced);
    }
    return status_bad_source;
}

// One character at a time, so a character is either written whole or not at all.
std::uint32_t Transcoder::from_wide_icu(const char32_t* text, std::size_t count, unsigned char* dest,
                                        std::int32_t capacity, std::int32_t* produced) {
    ucnv_resetFromUnicode(converter_);
    std::int32_t used = 0;
    char piece[32];  // longest: a shift sequence and a four-byte character
    for (std::size_t i = 0; i <= count; ++i) {
        const bool last = i == count;
        UChar units[2];
        int unit_count = 0;
        if (!last) {
            const char32_t c = text[i];
            if (!is_scalar(c)) {
                *produced = used;
                return status_unmappable;
            }
            if (c < 0x10000) {
                units[unit_count++] = static_cast<UChar>(c);
            } else {
                units[unit_count++] = static_cast<UChar>(0xD7C0 + (c >> 10));
                units[unit_count++] = static_cast<UChar>(0xDC00 | (c & 0x3FF));
            }
        }
        char* target = piece;
        const UChar* from = units;
        UErrorCode error = U_ZERO_ERROR;
        ucnv_fromUnicode(converter_, &target, piece + sizeof piece, &from, units + unit_count, nullptr, last, &error);
        if (U_FAILURE(error)) {
            *produced = used;
            return status_unmappable;
        }
        const auto size = static_cast<std::int32_t>(target - piece);
        if (used + size > capacity) {
            *produced = used;
            return does_not_fit;
        }
        std::memcpy(dest + used, piece, static_cast<std::size_t>(size));
        used += size;
    }
    *produced = used;
    return 0;
}

}  // namespace vxhost
