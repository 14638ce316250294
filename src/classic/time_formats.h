/*
 * Clock texts of a count of seconds: hours:minutes:seconds with hours not limited to 24
 * (`vxfmtzfmtime`), the 12-hour clock with AM/PM (`vxfmtzfmtimm`) and the time of day of a
 * datetime with a two-digit hour (`vxfmtzfmtod`). The seconds field comes from the call's
 * kernel number formatter (fixed-point mode).
 *
 *   call.width = 8; call.decimals = 0; call.input = &seconds;   // 3599.9999
 *   vxfmtzfmtime(&call, nullptr);                                 // " 1:00:00"
 */
#pragma once

#include "frame/abi.h"

VX_EXPORT vxlocfmt::status vxfmtzfmtime(vxlocfmt::FmtCall* call, void* extra);
VX_EXPORT vxlocfmt::status vxfmtzfmtimm(vxlocfmt::FmtCall* call, void* extra);
VX_EXPORT vxlocfmt::status vxfmtzfmtod(vxlocfmt::FmtCall* call, void* extra);

namespace vxlocfmt::classic {

// Limits the three clock formats check under flag bit 0.
inline constexpr std::int32_t clock_max_width = 40;
inline constexpr std::int32_t clock_max_decimals = 39;

}  // namespace vxlocfmt::classic
