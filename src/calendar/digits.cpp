#include "calendar/digits.h"

namespace vxlocfmt::calendar {

namespace {
// |n| without overflow at the most negative value.
constexpr std::uint64_t magnitude(std::int64_t n) {
    return n < 0 ? 0 - static_cast<std::uint64_t>(n) : static_cast<std::uint64_t>(n);
}
constexpr wchar digit(std::uint64_t d) { return static_cast<wchar>(U'0' + d); }
}  // namespace

int ZLTOS(std::int64_t n, wchar* buffer, std::int32_t width) {
    std::uint64_t rest = magnitude(n);
    std::int32_t at = width;  // next cell to write is at - 1
    do {
        if (at <= 0) return 1;  // width full with digits left over
        buffer[--at] = digit(rest % 10);
        rest /= 10;
    } while (rest != 0);
    if (n < 0) {
        if (at <= 0) return 1;  // no room for the sign
        buffer[--at] = U'-';
    }
    while (at > 0) buffer[--at] = U' ';
    return 0;
}

std::int32_t i2s(std::int32_t n, wchar* buffer, std::int32_t width, wchar fill) {
    std::uint64_t rest = magnitude(n);
    if (fill == 0) {
        std::int32_t count = 1;
        for (std::uint64_t r = rest / 10; r != 0; r /= 10) ++count;  // [1, 10]
        width = count;
    }
    if (width <= 0) return 0;
    for (std::int32_t at = width - 1; at >= 0; --at) {
        buffer[at] = digit(rest % 10);
        rest /= 10;
    }
    if (fill != 0 && fill != U'0') {
        for (std::int32_t at = 0; at < width - 1 && buffer[at] == U'0'; ++at) buffer[at] = fill;
    }
    return width;
}

}  // namespace vxlocfmt::calendar
