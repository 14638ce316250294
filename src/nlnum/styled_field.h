/*
 * The renderer's everyday attempt in one pass: the kernel's text when it answered status 0, which
 * means plain fixed point at the decimals asked ("-1234567.89": a sign when below zero, digits,
 * a point before exactly the asked decimals), styled and right-aligned in the field. A text too
 * wide for the field, or one not laid out so, is declined with the field untouched and left to
 * the general attempt of number_styling.h, which writes the same text wherever both apply.
 *
 *   if (style_into_field(U"-1234567.89", 2, -1234567.891, conventions, field, 16)) ...
 *   // field: "   -1,234,567.89" (en_US numbers)
 */
#pragma once

#include <cstdint>
#include <string_view>

#include "frame/abi.h"
#include "locale/property_table.h"

namespace vxlocfmt::nlnum {

// Writes the styled `plain` (the kernel's status-0 text, no blanks around it) right-aligned over
// the first `width` cells (1 to 32) of `field`, blanks before it, and answers true; answers
// false with nothing written when its point does not stand before the last `decimals`
// characters, it has no integer digit, or its styled text is wider than `width`. As a first
// attempt: grouping wanted. `value` picks the pattern and the parenthesis blank, as in
// style_number.
bool style_into_field(std::u32string_view plain, std::int32_t decimals, double value,
                      const NumberConventions& conventions, wchar* field, std::int32_t width);

}  // namespace vxlocfmt::nlnum
