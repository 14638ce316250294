/*
 * The byte-output wrapper: runs a wide format into scratch cells, then converts the result with
 * the session transcoder into the caller's bytes, cut or right-justified to the width in bytes.
 *
 *   status s = vxfmtnlbyte(&call, nullptr, extra, 'l', vxfmtnldate);
 *   // call.output now holds call.produced bytes in the session encoding
 */
#pragma once

#include "frame/abi.h"

// out: the record that receives the bytes (its width, output and produced length); null means
// the call record itself. alignment: 'l' cuts a long result, 'r' right-justifies it.
VX_EXPORT vxlocfmt::status vxfmtnlbyte(vxlocfmt::FmtCall* call, vxlocfmt::FmtCall* out, void* extra,
                                       int alignment, vxlocfmt::format_fn format);

namespace vxlocfmt {

// The byte answer of the NL date, datetime, time, number, percent and money formats without the
// wrapper's frame: the format runs into stack cells and its text is converted into the caller's
// field; the answer stands when the conversion succeeds within min(width, field), which is the
// wrapper's answer then. False otherwise (the bytes do not fit, a character the encoding cannot
// hold, a width above the stack cells, a format that answered an error, no identity bound): the
// call is then the wrapper's, which runs the format again.
//
// `byte_mode_off`: run the format wide, for a format whose byte mode changes only which candidate
// text it picks (the date formats). Byte mode would have picked the same text when its bytes fit
// the width: the candidates before it were refused by their length in characters, never more
// than their length in bytes. Otherwise the format runs in byte mode as the caller set it (the
// number formats, whose byte-mode field is justified by bytes: run wide, a text with "€" would
// not fit and every call would run twice).
bool wide_answer_in_bytes(FmtCall* call, FmtCall* out, void* extra, format_fn format, bool byte_mode_off,
                          status* result);

// A format whose byte variant answers its common cases in bytes itself, without the wide round
// trip through the wrapper, specialises this next to its code (declared where byte_variants.cpp
// sees it). `answer` writes the bytes, sets `*result` and returns true only where the wrapper
// would answer exactly so; false leaves the call to the wrapper as if it had not been asked.
template <format_fn Format>
struct direct_bytes {
    static constexpr bool offered = false;
    static bool answer(FmtCall*, FmtCall*, status*) { return false; }
};

}  // namespace vxlocfmt
