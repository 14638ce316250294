/*
 * The byte-mode test of the NL formats: a wide text fits the field only if its conversion to the
 * session encoding fits the width in bytes. Any answer of the transcoder but success (too small,
 * a character the encoding cannot hold, no transcoder) counts as not fitting.
 *
 *   if (call.byte_mode && !fits_session_encoding(call, text, call.width)) try_next_candidate();
 */
#pragma once

#include <algorithm>
#include <cstdint>
#include <string_view>

#include "frame/abi.h"
#include "frame/kernel.h"

namespace vxlocfmt {

// Session bytes a test may need: 2048 characters (the longest working text) at 4 bytes each.
inline constexpr std::int32_t session_fit_bytes = 4 * 2048;

inline bool fits_session_encoding(const FmtCall& call, std::u32string_view text, std::int32_t byte_width) {
    if (!call.session_transcoder) return false;
    unsigned char bytes[session_fit_bytes];
    const auto length = static_cast<std::int32_t>(std::min<std::size_t>(text.size(), session_fit_bytes / 4));
    std::int32_t produced = 0;
    return kernel::convert(call.session_transcoder, text.data(), length * static_cast<std::int32_t>(sizeof(wchar)),
                           bytes, std::clamp(byte_width, 0, session_fit_bytes), &produced) == st::ok;
}

}  // namespace vxlocfmt
