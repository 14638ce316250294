/*
 * Transcoders, the kernel objects that convert text: locale text (encoding 62) to wide, UTF-8
 * (25) to wide, and wide to any session encoding that ICU knows. A conversion never writes part
 * of a character: when the capacity runs out it stops after the last whole character and answers
 * 0x803fe807; a character the encoding cannot hold answers status_unmappable. Session
 * transcoders also measure (the answer of a conversion without its bytes) and publish their
 * identity bound (src/frame/kernel.h); UTF-8, ISO-8859-1 and the single-byte encodings (by
 * table) have fast paths, every other encoding goes through ICU a character at a time.
 *
 *   auto* out = vxhost::Transcoder::to_session("windows-1252");   // null for an unknown name
 *   vxlocfmt::kernel::convert(out, U"Größe", 20, bytes, 16, &produced);
 */
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "byte_table.h"
#include "kernel_object.h"
#include "session_encoders.h"

struct UConverter;

namespace vxhost {

class Transcoder : public KernelObject<8> {
public:
    enum class Kind { locale_to_wide, utf8_to_wide, wide_to_utf8, wide_to_latin1, wide_to_table, wide_to_icu, wide_session };

    // The kernel factory: (from, to) encoding ids; null for a pair the host does not convert.
    static Transcoder* create(std::uint32_t from, std::uint32_t to);
    // Wide text to a session encoding by any name ICU knows; null when the name is unknown.
    static Transcoder* to_session(std::string_view encoding);
    // The session transcoder of a wide session: it holds every character and counts one unit
    // for each, so display widths are counted in characters.
    static Transcoder* wide_session();
    // The canonical name of an encoding, or empty when ICU does not know it.
    static std::string canonical_name(std::string_view encoding);

    std::uint32_t convert(const void* source, std::int32_t length, void* dest, std::int32_t capacity,
                          std::int32_t* produced);
    // What convert would answer with `limit` as its capacity; `needed` receives the bytes it
    // would produce. Wide to session encodings only.
    std::uint32_t measure(const void* source, std::int32_t length, std::int32_t limit, std::int32_t* needed);
    // The general path, whatever fast path the encoding has (the tests' reference).
    std::uint32_t convert_by_icu(const char32_t* text, std::size_t count, unsigned char* dest, std::int32_t capacity,
                                 std::int32_t* produced);
    Kind kind() const { return kind_; }
    const std::string& encoding() const { return encoding_; }
    void release();
    static long live();  // transcoders made and not yet released

private:
    Transcoder(Kind kind, std::string encoding, UConverter* converter, char32_t identity_bound);
    ~Transcoder();
    template <bool Write>
    std::uint32_t from_wide(const char32_t* text, std::size_t count, unsigned char* dest, std::int32_t capacity,
                            std::int32_t* produced);
    template <bool Write>
    std::uint32_t from_wide_icu(const char32_t* text, std::size_t count, unsigned char* dest,
                                std::int32_t capacity, std::int32_t* produced);
    Kind kind_;
    std::string encoding_;
    UConverter* converter_;
    std::optional<ByteTable> table_;
};

}  // namespace vxhost
