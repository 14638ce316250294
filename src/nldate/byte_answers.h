/*
 * Byte variants that answer their common case in bytes themselves, without the wrapper's copy of
 * the call record and round trip through a wide field (frame/byte_output.h, direct_bytes):
 *
 * - the name formats (NLSTRMON, NLSTRQTR, NLSTRWK): the name converted straight into the
 *   caller's field and the blanks after it written as bytes;
 * - the week formats (WEEKU, WEEKV, WEEKW): the week text, ASCII, written as bytes as it is made
 *   (in a session without an identity bound of 0x80, rendered in the stack and converted as the
 *   wrapper converts it).
 *
 * Any other case (a missing or out-of-range value, a name that does not fit, a field the bytes
 * would overflow other than in the blanks, a record without its property table yet, a width
 * above the wrapper's stack cells) goes to the byte wrapper.
 *
 *   status s;  if (!direct_bytes<vxfmtnlstrmon>::answer(call, out, &s)) s = vxfmtnlbyte(...);
 */
#pragma once

#include <cstdint>

#include "frame/abi.h"
#include "frame/byte_output.h"

VX_EXPORT vxlocfmt::status vxfmtnlstrmon(vxlocfmt::FmtCall* call, void* extra);
VX_EXPORT vxlocfmt::status vxfmtnlstrqtr(vxlocfmt::FmtCall* call, void* extra);
VX_EXPORT vxlocfmt::status vxfmtnlstrwk(vxlocfmt::FmtCall* call, void* extra);
VX_EXPORT vxlocfmt::status vxfmtweeku(vxlocfmt::FmtCall* call, void* extra);
VX_EXPORT vxlocfmt::status vxfmtweekv(vxlocfmt::FmtCall* call, void* extra);
VX_EXPORT vxlocfmt::status vxfmtweekw(vxlocfmt::FmtCall* call, void* extra);

namespace vxlocfmt {

namespace nldate {
bool month_name_bytes(FmtCall* call, FmtCall* out, status* result);
bool quarter_name_bytes(FmtCall* call, FmtCall* out, status* result);
bool weekday_name_bytes(FmtCall* call, FmtCall* out, status* result);
bool week_bytes(FmtCall* call, FmtCall* out, wchar rule, status* result);
}  // namespace nldate

// The wide stack cells the direct answers render into, as many as the wrapper's own: a wider
// call or output record is the wrapper's.
inline constexpr std::int32_t direct_bytes_cells = 256;

template <>
struct direct_bytes<vxfmtnlstrmon> {
    static constexpr bool offered = true;
    static bool answer(FmtCall* call, FmtCall* out, status* result) {
        return nldate::month_name_bytes(call, out, result);
    }
};
template <>
struct direct_bytes<vxfmtnlstrqtr> {
    static constexpr bool offered = true;
    static bool answer(FmtCall* call, FmtCall* out, status* result) {
        return nldate::quarter_name_bytes(call, out, result);
    }
};
template <>
struct direct_bytes<vxfmtnlstrwk> {
    static constexpr bool offered = true;
    static bool answer(FmtCall* call, FmtCall* out, status* result) {
        return nldate::weekday_name_bytes(call, out, result);
    }
};

template <>
struct direct_bytes<vxfmtweeku> {
    static constexpr bool offered = true;
    static bool answer(FmtCall* call, FmtCall* out, status* result) {
        return nldate::week_bytes(call, out, U'U', result);
    }
};
template <>
struct direct_bytes<vxfmtweekv> {
    static constexpr bool offered = true;
    static bool answer(FmtCall* call, FmtCall* out, status* result) {
        return nldate::week_bytes(call, out, U'V', result);
    }
};
template <>
struct direct_bytes<vxfmtweekw> {
    static constexpr bool offered = true;
    static bool answer(FmtCall* call, FmtCall* out, status* result) {
        return nldate::week_bytes(call, out, U'W', result);
    }
};

}  // namespace vxlocfmt
