/*
 * The kernel number formatter (locale operation 39) and text-to-integer (operation 51).
 *
 *   format_number(locale, 3.14159, 8, 2, mode_fixed, out, 256, &length);   // "    3.14"
 */
#pragma once

#include <cstdint>

#include "frame/abi.h"

namespace vxhost {

inline constexpr std::uint32_t mode_fixed = 0x1000;

extern "C" vxlocfmt::status format_number(void* locale, double value, std::int32_t width, std::int32_t decimals,
                                          std::uint32_t mode, vxlocfmt::wchar* out, std::int32_t capacity,
                                          std::int32_t* length);
// (locale, text, length, value out): 0 when the whole text is a decimal integer.
extern "C" vxlocfmt::status text_to_integer(void* locale, const vxlocfmt::wchar* text, std::int32_t length,
                                            std::int64_t* value);

}  // namespace vxhost
