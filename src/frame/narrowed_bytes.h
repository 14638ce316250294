/*
 * Where a format under the byte wrapper may narrow its text as it writes it: the caller's byte
 * field, the bytes the fit test would convert into, and the identity bound. A writer that copies
 * its cells anyway tests them as it moves them and, when all are below the bound, packs them into
 * the bytes and says how many; the fit test then has nothing left to convert (session_fit.h:
 * narrowing_target, fits_narrowed).
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
    // Set by the writer: cells from the text's start now in `bytes` one byte each, all below the
    // bound, written in the same call; 0 when it narrowed nothing usable.
    std::int32_t cells;
};

}  // namespace vxlocfmt
