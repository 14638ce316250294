/*
 * Where a format under the byte wrapper may narrow its text as it writes it: the caller's byte
 * field, the bytes the fit test would convert into, and the identity bound. A writer that copies
 * its cells anyway tests them as it moves them and, when all are below the bound, packs them into
 * the bytes and says how many (in a UTF-8 session, a text beyond the bound is encoded there
 * instead); the fit test then has nothing left to convert (session_fit.h: narrowing_target,
 * fits_narrowed).
 *
 *   NarrowedBytes target;
 *   if (narrowing_target(call, width, &target)) ... expand(..., &target) ...
 *   if (!fits_narrowed(call, text, readable, target) && !fits_session_encoding(...)) ...
 */
#pragma once

#include <cstdint>

#include "frame/abi.h"

namespace vxlocfmt {

// Left unset until narrowing_target fills it (a wide call does not pay for it).
struct NarrowedBytes {
    unsigned char* bytes;  // the caller's field
    std::int32_t room;     // bytes a writer may store there
    wchar bound;           // every narrowed cell must be below it (a power of two)
    bool utf8;             // the session promises UTF-8 (the transcoder's encoding form)
    // Set by the writer: cells from the text's start now in `bytes` one byte each, all below the
    // bound, written in the same call; 0 when it narrowed nothing usable.
    std::int32_t cells;
    // Set by the writer when `cells` is 0 in a UTF-8 session: the text's `encoded_cells` cells (the
    // text alone, no blanks after it) now in `bytes` as `encoded_bytes` bytes of UTF-8, the whole
    // text within the room; 0 when it encoded nothing usable.
    std::int32_t encoded_cells;
    std::int32_t encoded_bytes;
};

}  // namespace vxlocfmt
