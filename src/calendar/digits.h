/*
 * Two small decimal writers into wide buffers: ZLTOS right-aligns a signed 64-bit number in a
 * fixed width; i2s writes a fixed number of low digits with a fill for leading zeros (the week
 * and date writers use width 2 and fill "0").
 *
 *   wchar b[4]; calendar::ZLTOS(-42, b, 4);       // " -42", answers 0
 *   wchar w[2]; calendar::i2s(7, w, 2, U'0');      // "07", answers 2
 */
#pragma once

#include <cstdint>

#include "frame/abi.h"

namespace vxlocfmt::calendar {

// Most digits of a 32-bit magnitude: i2s with fill 0 writes up to this many.
inline constexpr std::int32_t max_int32_digits = 10;

// Writes |n| right-aligned in buffer[0, width). When the digits fill the width and the number
// is negative or has digits left over, answers 1 and the buffer holds the rightmost digits that
// fitted. Otherwise a "-" precedes the digits of a negative number, blanks fill the left, and
// the answer is 0. Nothing is written outside [0, width).
int ZLTOS(std::int64_t n, wchar* buffer, std::int32_t width);

// With fill != 0: writes exactly `width` low digits of |n|, zero-padded, and unless fill is "0"
// turns leading zeros into `fill`, always keeping the last digit; answers width (0 when width
// is not positive). With fill == 0: writes all digits of |n| (buffer must hold
// max_int32_digits) and answers their count. A negative n is written without its sign.
std::int32_t i2s(std::int32_t n, wchar* buffer, std::int32_t width, wchar fill);

}  // namespace vxlocfmt::calendar
