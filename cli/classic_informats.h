/*
 * The classic informats the CLI reads with by name (they have no registry rows): the table of
 * short names, exported functions and what each yields, and one read through the call record.
 *
 *   if (const ClassicInformat* c = find_classic_informat("HEX"))
 *       read_classic(*c, fn, session.call(), 16, 0, U"7FF8000000000000", out.raw());
 */
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "frame/abi.h"

namespace vxcli {

enum class Yields { number, bytes, characters };

struct ClassicInformat {
    const char* name;    // as `read` takes it (upper case)
    const char* symbol;  // the exported function
    Yields yields;
};

std::span<const ClassicInformat> classic_informats();
const ClassicInformat* find_classic_informat(std::string_view name);

// Reads `text` with the informat on the session's call record and appends the result: the
// value's text, the bytes in lower-case hexadecimal or the characters in UTF-8; "." when the
// read fails. Returns the informat's status.
vxlocfmt::status read_classic(const ClassicInformat& informat, vxlocfmt::format_fn function, vxlocfmt::FmtCall& call,
                              int width, int decimals, std::u32string_view text, std::string& out);

}  // namespace vxcli
