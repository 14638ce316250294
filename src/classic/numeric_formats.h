/*
 * The classic numeric renderers N, COMMA, DOLLAR, PERCENT, PERCENTN, BEST, BESTDT, T, E and D.
 * They have no registry rows: the locale number, percent and money formats use them as fallbacks
 * or first stages, and the CLI offers them by name. Each takes one call record (width, decimals,
 * the value, the wide output buffer and its capacity) and asks the call's kernel number formatter
 * for the digits.
 *
 *   call.width = 10; call.decimals = 2; call.input = &value;   // 1234.5
 *   vxfmtzfmdollar(&call, nullptr);                              // " $1,234.50"
 */
#pragma once

#include "frame/abi.h"

VX_EXPORT vxlocfmt::status vxfmtzfmn(vxlocfmt::FmtCall* call, void* extra);
VX_EXPORT vxlocfmt::status vxfmtzfmcomma(vxlocfmt::FmtCall* call, void* extra);
VX_EXPORT vxlocfmt::status vxfmtzfmdollar(vxlocfmt::FmtCall* call, void* extra);
VX_EXPORT vxlocfmt::status vxfmtzfmpercent(vxlocfmt::FmtCall* call, void* extra);
VX_EXPORT vxlocfmt::status vxfmtzfmpercentn(vxlocfmt::FmtCall* call, void* extra);
VX_EXPORT vxlocfmt::status vxfmtzfmbest(vxlocfmt::FmtCall* call, void* extra);
VX_EXPORT vxlocfmt::status vxfmtzfmbestdt(vxlocfmt::FmtCall* call, void* extra);
VX_EXPORT vxlocfmt::status vxfmtzfmt(vxlocfmt::FmtCall* call, void* extra);  // T: always returns 0
VX_EXPORT vxlocfmt::status vxfmtzfme(vxlocfmt::FmtCall* call, void* extra);
VX_EXPORT vxlocfmt::status vxfmtzfmd(vxlocfmt::FmtCall* call, void* extra);
