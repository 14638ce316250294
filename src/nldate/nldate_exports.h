/*
 * The exported C names of the NLDATE formats, as the registry calls them: each writes a day
 * number (the double at call->input) into the call's field by the conventions of its locale.
 *
 *   FmtCall call = ...;  call.width = 20;  call.input = &day;
 *   status s = vxfmtnldate(&call, nullptr);   // "March 5, 2024", produced length 13
 */
#pragma once

#include "frame/abi.h"

VX_EXPORT vxlocfmt::status vxfmtnldate(vxlocfmt::FmtCall* call, void* extra);
VX_EXPORT vxlocfmt::status vxfmtnldatel(vxlocfmt::FmtCall* call, void* extra);
VX_EXPORT vxlocfmt::status vxfmtnldatem(vxlocfmt::FmtCall* call, void* extra);
VX_EXPORT vxlocfmt::status vxfmtnldatemd(vxlocfmt::FmtCall* call, void* extra);
VX_EXPORT vxlocfmt::status vxfmtnldatemdl(vxlocfmt::FmtCall* call, void* extra);
VX_EXPORT vxlocfmt::status vxfmtnldatemdm(vxlocfmt::FmtCall* call, void* extra);
VX_EXPORT vxlocfmt::status vxfmtnldatemds(vxlocfmt::FmtCall* call, void* extra);
VX_EXPORT vxlocfmt::status vxfmtnldatemn(vxlocfmt::FmtCall* call, void* extra);
VX_EXPORT vxlocfmt::status vxfmtnldates(vxlocfmt::FmtCall* call, void* extra);
VX_EXPORT vxlocfmt::status vxfmtnldatew(vxlocfmt::FmtCall* call, void* extra);
VX_EXPORT vxlocfmt::status vxfmtnldatewn(vxlocfmt::FmtCall* call, void* extra);
VX_EXPORT vxlocfmt::status vxfmtnldateym(vxlocfmt::FmtCall* call, void* extra);
VX_EXPORT vxlocfmt::status vxfmtnldateyml(vxlocfmt::FmtCall* call, void* extra);
VX_EXPORT vxlocfmt::status vxfmtnldateymm(vxlocfmt::FmtCall* call, void* extra);
VX_EXPORT vxlocfmt::status vxfmtnldateyms(vxlocfmt::FmtCall* call, void* extra);
VX_EXPORT vxlocfmt::status vxfmtnldateyq(vxlocfmt::FmtCall* call, void* extra);
VX_EXPORT vxlocfmt::status vxfmtnldateyql(vxlocfmt::FmtCall* call, void* extra);
VX_EXPORT vxlocfmt::status vxfmtnldateyqm(vxlocfmt::FmtCall* call, void* extra);
VX_EXPORT vxlocfmt::status vxfmtnldateyqs(vxlocfmt::FmtCall* call, void* extra);
VX_EXPORT vxlocfmt::status vxfmtnldateyr(vxlocfmt::FmtCall* call, void* extra);
VX_EXPORT vxlocfmt::status vxfmtnldateyw(vxlocfmt::FmtCall* call, void* extra);
