/*
 * The classic value informats: text to a number, to bytes or to characters, without a locale.
 * They have no registry rows; the host (and the locale informats, as their fallback) call them
 * by symbol with a call record. Numeric ones preset the missing value and answer 0, a limit
 * code 2 to 5 (flag bit 0 only), 1 (refused text: the kernel reader's status, or bad
 * hexadecimal) or 999 (bad bit string, UUID or empty percentage). Byte and character ones write
 * at most the output capacity and set the produced length. docs/reading.md has every rule.
 *
 *   call.width = 9; call.input = U"$1,234.50"; call.input_length = 9; call.output = &value;
 *   vxfmtzifmdlr(&call, nullptr);   // 0, value == 1234.5
 */
#pragma once

#include <cstdint>

#include "frame/abi.h"

// Numbers, through the kernel's numeric reader.
VX_EXPORT vxlocfmt::status vxfmtzifmn(vxlocfmt::FmtCall* call, void* extra);
VX_EXPORT vxlocfmt::status vxfmtzifmcmx(vxlocfmt::FmtCall* call, void* extra);
VX_EXPORT vxlocfmt::status vxfmtzifmnmx(vxlocfmt::FmtCall* call, void* extra);
VX_EXPORT vxlocfmt::status vxfmtzifmdlr(vxlocfmt::FmtCall* call, void* extra);
VX_EXPORT vxlocfmt::status vxfmtzifmdlx(vxlocfmt::FmtCall* call, void* extra);
VX_EXPORT vxlocfmt::status vxfmtzifmeur(vxlocfmt::FmtCall* call, void* extra);
VX_EXPORT vxlocfmt::status vxfmtzifmerx(vxlocfmt::FmtCall* call, void* extra);
VX_EXPORT vxlocfmt::status vxfmtzifmpct(vxlocfmt::FmtCall* call, void* extra);
VX_EXPORT vxlocfmt::status vxfmtzifmnpn(vxlocfmt::FmtCall* call, void* extra);
VX_EXPORT vxlocfmt::status vxfmtzifmnpr(vxlocfmt::FmtCall* call, void* extra);
VX_EXPORT vxlocfmt::status vxfmtzifmskg(vxlocfmt::FmtCall* call, void* extra);
// The euro reader both euro informats share; mode U'X' reads "," as the decimal point.
VX_EXPORT vxlocfmt::status euroInformat(vxlocfmt::FmtCall* call, void* extra, vxlocfmt::wchar mode);

// Bit patterns and bytes.
VX_EXPORT vxlocfmt::status vxfmtzifmhex(vxlocfmt::FmtCall* call, void* extra);
VX_EXPORT vxlocfmt::status vxfmtzifmbin(vxlocfmt::FmtCall* call, void* extra);
VX_EXPORT vxlocfmt::status vxfmtzifmuuid(vxlocfmt::FmtCall* call, void* extra);
VX_EXPORT vxlocfmt::status vxfmtzifmhxc(vxlocfmt::FmtCall* call, void* extra);
VX_EXPORT vxlocfmt::status vxfmtzifmbnc(vxlocfmt::FmtCall* call, void* extra);
VX_EXPORT vxlocfmt::status vxfmtzifmb64(vxlocfmt::FmtCall* call, void* extra);
// Reverses `length` bytes in place (most significant first to machine order).
VX_EXPORT void REVERSE(unsigned char* bytes, std::int64_t length);

// Characters.
VX_EXPORT vxlocfmt::status vxfmtzifmc(vxlocfmt::FmtCall* call, void* extra);
VX_EXPORT vxlocfmt::status vxfmtzifmupc(vxlocfmt::FmtCall* call, void* extra);
VX_EXPORT vxlocfmt::status vxfmtzifmquo(vxlocfmt::FmtCall* call, void* extra);
VX_EXPORT vxlocfmt::status vxfmtzifmocc(vxlocfmt::FmtCall* call, void* extra);

namespace vxlocfmt::classic {

// Invalid bit string, UUID or binary text, or a percentage with nothing left.
inline constexpr status informat_invalid = 999;
// vxfmtzifmhex's answer for a character that is no hexadecimal digit (not 999: kept so).
inline constexpr status hex_invalid = 1;

}  // namespace vxlocfmt::classic
