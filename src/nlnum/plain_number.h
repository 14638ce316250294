/*
 * The one-pass reader of the shape nearly every locale number has: digits with the record's
 * grouping and decimal point, and at most a leading "-", the record's negative sign in front or
 * behind, or parentheses where the record writes them for a negative amount. It hands the
 * kernel's numeric reader exactly the text the rewrite and the classic NEGPAREN informat would
 * hand it ("1.234.567,25" in de_DE: "1234567.25"), presets the missing value, checks the limits
 * and negates as they do, so status and result are the same bit for bit; every other text (or a
 * record with two-character separators or signs) is left to that full route.
 *
 *   std::int32_t result;
 *   if (read_plain_number(t.view(), call, record, extra, result)) return result;
 */
#pragma once

#include <cstdint>
#include <string_view>

#include "frame/abi.h"
#include "locale/property_table.h"

namespace vxlocfmt::nlnum {

// True when the text (trimmed, at most 32 characters) had the shape and was read: `result` then
// holds what the full route answers (0 or the classic informat's status). False: nothing was
// written, the full route reads the text.
bool read_plain_number(std::u32string_view text, FmtCall& call, const NumberConventions& record, void* extra,
                       std::int32_t& result);

}  // namespace vxlocfmt::nlnum
