/*
 * Transcoders, the kernel objects that convert text: locale text (encoding 62) to wide, UTF-8
 * (25) to wide, and wide to any session encoding that ICU knows. A conversion never writes part
 * of a character: when the capacity runs out it stops after the last whole character and answers
 * 0x803fe807; a character the encoding cannot hold answers status_unmappable.
 *
 *   auto* out = vxhost::Transcoder::to_session("windows-1252");   // null for an unknown name
 *   vxlocfmt::kernel::convert(out, U"Größe", 20, bytes, 16, &produced);
 */
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "kernel_object.h"

struct UConverter;

namespace vxhost {

inline constexpr std::uint32_t status_unmappable = 0x803fe808u;
inline constexpr std::uint32_t status_bad_source = 0x803fe809u;

class Transcoder : public KernelObject<8> {
public:
    enum class Kind { locale_to_wide, utf8_to_wide, wide_to_utf8, wide_to_latin1, wide_to_icu, wide_session };

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
    const std::string& encoding() const { return encoding_; }
    void release();
    static long live();  // transcoders made and not yet released

private:
    Transcoder(Kind kind, std::string encoding, UConverter* converter);
    ~Transcoder();
    std::uint32_t from_wide_icu(const char32_t* text, std::size_t count, unsigned char* dest,
                                std::int32_t capacity, std::int32_t* produced);
    Kind kind_;
    std::string encoding_;
    UConverter* converter_;
};

}  // namespace vxhost
