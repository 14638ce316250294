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
vxlocfmt::status slot_measure(void* object, const void* source, std::int32_t length, std::int32_t limit,
                              std::int32_t* needed, std::int64_t) {
    return self<Transcoder>(object).measure(source, length, limit, needed);
}

// UTF-8 sessions, the most common, go straight to their encoder: the checks of convert and
// measure, then no dispatch on the kind.
vxlocfmt::status slot_convert_utf8(void*, const void* source, std::int32_t length, void* dest,
                                   std::int32_t capacity, std::int32_t* produced, std::int64_t) {
    std::int32_t ignored = 0;
    if (!produced) produced = &ignored;
    *produced = 0;
    if (length < 0 || capacity < 0 || (length > 0 && !source) || (capacity > 0 && !dest)) return status_bad_source;
    return encode_utf8<true>(static_cast<const char32_t*>(source), static_cast<std::size_t>(length) / 4,
                             static_cast<unsigned char*>(dest), capacity, produced);
}
vxlocfmt::status slot_measure_utf8(void*, const void* source, std::int32_t length, std::int32_t limit,
                                   std::int32_t* needed, std::int64_t) {
    std::int32_t ignored = 0;
    if (!needed) needed = &ignored;
    *needed = 0;
    if (length < 0 || limit < 0 || (length > 0 && !source)) return status_bad_source;
    return encode_utf8<false>(static_cast<const char32_t*>(source), static_cast<std::size_t>(length) / 4, nullptr,
                              limit, needed);
}

// ICU's stop callback lets a default-ignorable character the encoding cannot hold (a soft hyphen
// in KOI8-R, a variation selector) vanish; a session stops at it like at any other.
void stop_at_every_unmappable(const void*, UConverterFromUnicodeArgs*, const UChar*, std::int32_t, UChar32,
                              UConverterCallbackReason, UErrorCode*) {}

// The bytes of a wide session: one unit a character, every code point up to U+10FFFF.
constexpr char32_t wide_session_bound = 0x110000;
// The identity bound of a session whose encoding has no table: the code points below 0x100
// that ICU writes alone as their own byte, in a stateless encoding (a stateful one may shift).
char32_t icu_identity_bound(UConverter* converter) {
    switch (ucnv_getType(converter)) {
    case UCNV_SBCS:
    case UCNV_DBCS:
    case UCNV_MBCS:
    case UCNV_LATIN_1:
    case UCNV_US_ASCII:
    case UCNV_UTF8: break;
    default: return 0;
    }
    char32_t bound = 0;
    for (; bound < 0x100; ++bound) {
        const UChar unit = static_cast<UChar>(bound);
        char bytes[8];
        UErrorCode error = U_ZERO_ERROR;
        ucnv_resetFromUnicode(converter);
        const std::int32_t size = ucnv_fromUChars(converter, bytes, sizeof bytes, &unit, 1, &error);
        if (U_FAILURE(error) || size != 1 || static_cast<unsigned char>(bytes[0]) != bound) break;
    }
    ucnv_resetFromUnicode(converter);
    return bound;
}

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

}  // namespace

namespace {
std::atomic<long> live_transcoders{0};
}  // namespace

long Transcoder::live() { return live_transcoders; }

Transcoder* Transcoder::wide_session() { return new Transcoder(Kind::wide_session, "wide", nullptr, 0x100); }

Transcoder::Transcoder(Kind kind, std::string encoding, UConverter* converter, char32_t identity_bound)
    : kind_(kind), encoding_(std::move(encoding)), converter_(converter) {
    using namespace vxlocfmt::kernel;
    words[object_release_slot] = fn_word(&slot_release);
    words[object_convert_slot] = fn_word(&slot_convert);
    if (kind != Kind::locale_to_wide && kind != Kind::utf8_to_wide) {
        words[transcoder_measure_slot] = fn_word(&slot_measure);
        words[transcoder_word_identity] = reinterpret_cast<void*>(static_cast<std::uintptr_t>(identity_bound));
    }
    if (kind == Kind::wide_to_utf8) {
        words[object_convert_slot] = fn_word(&slot_convert_utf8);
        words[transcoder_measure_slot] = fn_word(&slot_measure_utf8);
        // Its convert and measure are UTF-8 as the library would write it: the library may
        // encode in their place.
        words[transcoder_word_form] = reinterpret_cast<void*>(transcoder_form_utf8);
    }
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
    if (from == encoding_locale_text) return new Transcoder(Kind::locale_to_wide, "locale", nullptr, 0);
    if (from == encoding_second) return new Transcoder(Kind::utf8_to_wide, "UTF-8", nullptr, 0);
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
    UErrorCode error = U_ZERO_ERROR;
    UConverter* converter = ucnv_open(canonical.c_str(), &error);
    if (U_FAILURE(error)) return nullptr;
    ucnv_setFromUCallBack(converter, stop_at_every_unmappable, nullptr, nullptr, nullptr, &error);
    // Every session keeps its ICU converter: the general path is the fast paths' reference.
    if (canonical == "UTF-8") return new Transcoder(Kind::wide_to_utf8, canonical, converter, 0x80);
    if (canonical == "ISO-8859-1") return new Transcoder(Kind::wide_to_latin1, canonical, converter, 0x100);
    if (std::optional<ByteTable> table = ByteTable::build(converter)) {
        auto* transcoder = new Transcoder(Kind::wide_to_table, canonical, converter, table->identity_bound());
        transcoder->table_ = std::move(table);
        return transcoder;
    }
    return new Transcoder(Kind::wide_to_icu, canonical, converter, icu_identity_bound(converter));
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
    default: return from_wide<true>(wide, wide_count, out, capacity, produced);
    }
}

std::uint32_t Transcoder::measure(const void* source, std::int32_t length, std::int32_t limit,
                                  std::int32_t* needed) {
    std::int32_t ignored = 0;
    if (!needed) needed = &ignored;
    *needed = 0;
    if (length < 0 || limit < 0 || (length > 0 && !source)) return status_bad_source;
    if (kind_ == Kind::locale_to_wide || kind_ == Kind::utf8_to_wide) return status_bad_source;
    return from_wide<false>(static_cast<const char32_t*>(source), static_cast<std::size_t>(length) / 4, nullptr,
                            limit, needed);
}

std::uint32_t Transcoder::convert_by_icu(const char32_t* text, std::size_t count, unsigned char* dest,
                                         std::int32_t capacity, std::int32_t* produced) {
    if (!converter_) return status_bad_source;
    return from_wide_icu<true>(text, count, dest, capacity, produced);
}

template <bool Write>
std::uint32_t Transcoder::from_wide(const char32_t* text, std::size_t count, unsigned char* dest,
                                    std::int32_t capacity, std::int32_t* produced) {
    switch (kind_) {
    case Kind::wide_to_utf8: return encode_utf8<Write>(text, count, dest, capacity, produced);
    case Kind::wide_to_latin1: return encode_below<Write>(0x100, text, count, dest, capacity, produced);
    case Kind::wide_to_table: return encode_by_table<Write>(*table_, text, count, dest, capacity, produced);
    case Kind::wide_to_icu: return from_wide_icu<Write>(text, count, dest, capacity, produced);
    case Kind::wide_session: return encode_below<Write>(wide_session_bound, text, count, dest, capacity, produced);
    default: return status_bad_source;
    }
}

// One character at a time, so a character is either written whole or not at all.
template <bool Write>
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
        if constexpr (Write) std::memcpy(dest + used, piece, static_cast<std::size_t>(size));
        used += size;
    }
    *produced = used;
    return 0;
}

}  // namespace vxhost
