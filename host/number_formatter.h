/*
 * The kernel number formatter (locale operation 39) and text-to-integer (operation 51).
 *
 *   format_number(locale, 3.14159, 8, 2, mode_fixed, out, 256, &length);   // "    3.14"
 *   format_number(locale, 1234.5, 10, 2, mode_grouped, out, 256, &length); // "  1,234.50"
 *
 * The text is right-aligned in the width; min(width, capacity) cells are written and *length
 * says how many. Statuses: 0; number_shortened when the text lost decimals, went to "E"
 * notation or became stars; grouping_dropped (grouped mode) when only the separators were left
 * out; no_room when the width or capacity is below 1 or the mode is unknown (nothing written).
 * The rules are written down in docs/numbers.md.
 */
#pragma once

#include <cstdint>

#include "frame/abi.h"

namespace vxhost {

inline constexpr std::uint32_t mode_best_fit = 0x800;
inline constexpr std::uint32_t mode_fixed = 0x1000;
inline constexpr std::uint32_t mode_exponential = 0x2000;
inline constexpr std::uint32_t mode_grouping_bit = 0x20000;
inline constexpr std::uint32_t mode_grouped = mode_fixed | mode_grouping_bit;

inline constexpr vxlocfmt::status grouping_dropped = 0x803fe85bu;
inline constexpr vxlocfmt::status no_room = 0x803fe80eu;

extern "C" vxlocfmt::status format_number(void* locale, double value, std::int32_t width, std::int32_t decimals,
                                          std::uint32_t mode, vxlocfmt::wchar* out, std::int32_t capacity,
                                          std::int32_t* length);
// (locale, text, length, value out): 0 when the whole text is a decimal integer.
extern "C" vxlocfmt::status text_to_integer(void* locale, const vxlocfmt::wchar* text, std::int32_t length,
                                            std::int64_t* value);

}  // namespace vxhost
