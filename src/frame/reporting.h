/*
 * Status and message reporting: journal and buffer forwarders that pack their variable
 * arguments into one va_list and call the object's slot, the kernel formatting entries, the two
 * clock queries and the integer-to-text converters.
 *
 *   vxlStatusToJnl(journal, 4, 0x803fc002u);
 *   vxzIMaxToBuff(255, 16, 1, buffer, 8, &length);   // "FF", length 2
 */
#pragma once

#include <cstdarg>
#include <cstdint>

#include "frame/abi.h"

VX_EXPORT vxlocfmt::status vxlStatusToJnl(void* journal, std::int32_t severity, vxlocfmt::status code, ...);
VX_EXPORT vxlocfmt::status vxlMessageToJnl(void* journal, std::int32_t severity, const vxlocfmt::wchar* message,
                                           const vxlocfmt::wchar* format, ...);
VX_EXPORT vxlocfmt::status vxlStatusToBuf(void* object, vxlocfmt::status code, vxlocfmt::wchar* buffer,
                                          std::int64_t capacity, ...);
VX_EXPORT vxlocfmt::status vxlMessageToBuf(void* object, const vxlocfmt::wchar* message, vxlocfmt::wchar* buffer,
                                           std::int64_t capacity, ...);

// Kernel formatting. Every entry has the shape (context, what, buffer, capacity, length out,
// arguments); `what` is a format text or a status as the kernel slot defines. The "2" variants
// take the address of a context pointer; the "V" variants a packed argument list.
VX_EXPORT vxlocfmt::status vxzCapture(void* context, const void* what, vxlocfmt::wchar* buffer,
                                      std::int64_t capacity, std::int64_t* length, ...);
VX_EXPORT vxlocfmt::status vxzCaptureV(void* context, const void* what, vxlocfmt::wchar* buffer,
                                       std::int64_t capacity, std::int64_t* length, va_list* args);
VX_EXPORT vxlocfmt::status vxzFormatBuff(void* context, const void* what, vxlocfmt::wchar* buffer,
                                         std::int64_t capacity, std::int64_t* length, ...);
VX_EXPORT vxlocfmt::status vxzFormatBuffV(void* context, const void* what, vxlocfmt::wchar* buffer,
                                          std::int64_t capacity, std::int64_t* length, va_list* args);
VX_EXPORT vxlocfmt::status vxzFormat2Buff(void** context, const void* what, vxlocfmt::wchar* buffer,
                                          std::int64_t capacity, std::int64_t* length, ...);
VX_EXPORT vxlocfmt::status vxzFormat2BuffV(void** context, const void* what, vxlocfmt::wchar* buffer,
                                           std::int64_t capacity, std::int64_t* length, va_list* args);
VX_EXPORT vxlocfmt::status vxzRender(void* context, const void* what, vxlocfmt::wchar* buffer,
                                     std::int64_t capacity, std::int64_t* length, ...);
VX_EXPORT vxlocfmt::status vxzRenderFmt(void* context, const void* what, vxlocfmt::wchar* buffer,
                                        std::int64_t capacity, std::int64_t* length, ...);
VX_EXPORT vxlocfmt::status vxzRenderFmtV(void* context, const void* what, vxlocfmt::wchar* buffer,
                                         std::int64_t capacity, std::int64_t* length, va_list* args);
VX_EXPORT vxlocfmt::status vxzRender2(void** context, const void* what, vxlocfmt::wchar* buffer,
                                      std::int64_t capacity, std::int64_t* length, ...);
VX_EXPORT vxlocfmt::status vxzRender2Fmt(void** context, const void* what, vxlocfmt::wchar* buffer,
                                         std::int64_t capacity, std::int64_t* length, ...);
VX_EXPORT vxlocfmt::status vxzRender2FmtV(void** context, const void* what, vxlocfmt::wchar* buffer,
                                          std::int64_t capacity, std::int64_t* length, va_list* args);
VX_EXPORT vxlocfmt::status vxzStatusBuff(void* context, vxlocfmt::status code, vxlocfmt::wchar* buffer,
                                         std::int64_t capacity, std::int64_t* length, ...);
VX_EXPORT vxlocfmt::status vxzStatusBuffV(void* context, vxlocfmt::status code, vxlocfmt::wchar* buffer,
                                          std::int64_t capacity, std::int64_t* length, va_list* args);
VX_EXPORT vxlocfmt::status vxzStatus2Buff(void** context, vxlocfmt::status code, vxlocfmt::wchar* buffer,
                                          std::int64_t capacity, std::int64_t* length, ...);
VX_EXPORT vxlocfmt::status vxzStatus2BuffV(void** context, vxlocfmt::status code, vxlocfmt::wchar* buffer,
                                           std::int64_t capacity, std::int64_t* length, va_list* args);

// Clock: local datetime now (universal time less the kernel's second value).
VX_EXPORT double vxzdttme();
// Clock: universal datetime now; the offset east of universal time in seconds when asked.
VX_EXPORT double vxzdtgmt(double* offset);
// The kernel's byte/decimal conversion table.
VX_EXPORT void* vxGetBDConv();

VX_EXPORT vxlocfmt::status vxzIMaxToBuff(std::uint64_t value, std::int32_t base, std::int32_t upper,
                                         vxlocfmt::wchar* dest, std::int64_t capacity, std::int64_t* length);
VX_EXPORT vxlocfmt::status vxzIFastToBuff(std::uint32_t value, std::int32_t base, std::int32_t upper,
                                          vxlocfmt::wchar* dest, std::int64_t capacity, std::int64_t* length);

namespace vxlocfmt::kernel {
// Signature of the kernel formatting slots 229 to 233: (table, context or journal, what, buffer,
// capacity, length out, arguments).
extern "C" using kernel_format_fn = status (*)(void* table, void* target, const void* what, wchar* buffer,
                                               std::int64_t capacity, std::int64_t* length, va_list* args);
}  // namespace vxlocfmt::kernel
