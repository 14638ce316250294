/*
 * The byte variants of the name formats (NLSTRMON, NLSTRQTR, NLSTRWK) answer their common case
 * in bytes themselves: the name converted straight into the caller's field and the blanks after
 * it written as bytes, with no wide field, no copy of the call record and no second look at the
 * text. Any other case (a missing or out-of-range value, a name that does not fit, a field that
 * the bytes would overflow, a record without its property table yet) goes to the byte wrapper.
 *
 *   status s;  if (!direct_bytes<vxfmtnlstrmon>::answer(call, out, &s)) s = vxfmtnlbyte(...);
 */
#pragma once

#include "frame/abi.h"
#include "frame/byte_output.h"

VX_EXPORT vxlocfmt::status vxfmtnlstrmon(vxlocfmt::FmtCall* call, void* extra);
VX_EXPORT vxlocfmt::status vxfmtnlstrqtr(vxlocfmt::FmtCall* call, void* extra);
VX_EXPORT vxlocfmt::status vxfmtnlstrwk(vxlocfmt::FmtCall* call, void* extra);

namespace vxlocfmt {

namespace nldate {
bool month_name_bytes(FmtCall* call, FmtCall* out, status* result);
bool quarter_name_bytes(FmtCall* call, FmtCall* out, status* result);
bool weekday_name_bytes(FmtCall* call, FmtCall* out, status* result);
}  // namespace nldate

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

}  // namespace vxlocfmt
