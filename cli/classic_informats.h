/*
 * One read with a classic informat (they have no registry rows) through the call record, printed
 * as the CLI prints it.
 *
 *   if (const vxhost::ClassicInformat* c = vxhost::find_classic_informat("HEX"))
 *       read_classic(*c, fn, session.call(), 16, 0, U"7FF8000000000000", out.raw());
 */
#pragma once

#include <string>
#include <string_view>

#include "embed/classic_routines.h"
#include "frame/abi.h"

namespace vxcli {

using vxhost::ClassicInformat;
using vxhost::Yields;

// Reads `text` with the informat on the session's call record and appends the result: the
// value's text, the bytes in lower-case hexadecimal or the characters in UTF-8; "." when the
// read fails. Returns the informat's status.
vxlocfmt::status read_classic(const ClassicInformat& informat, vxlocfmt::format_fn function, vxlocfmt::FmtCall& call,
                              int width, int decimals, std::u32string_view text, std::string& out);

}  // namespace vxcli
