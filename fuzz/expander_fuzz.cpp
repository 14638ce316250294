// The pattern expander directly: any pattern (directives, flags, digits, "+", "?", stray "%"),
// any width (negative for right alignment), any decimals and any value parts, against a property
// table whose names and patterns are as long as a property can be. Nothing is written outside
// min(|width|, capacity) and the call is quick.
#include <algorithm>
#include <bit>
#include <cstring>
#include <memory>
#include <vector>

#include "harness.h"
#include "longest_table.h"
#include "locale/property_table.h"
#include "nldate/expander.h"

namespace {

using namespace vxlocfmt;
using vxfuzz::FuzzInput;

constexpr char32_t pattern_alphabet[] = U"%%%%#0+?123456789aAbBcCdDeEfFgGhHiIjkKlLmMnNoOpPqQrRsStTuUvVwWxXyYzZ%-/ .:";

// The worst-case table, with "%x" inside the patterns and a calendar code for "%+Y".
const PropertyCache& longest_table() {
    static const std::unique_ptr<PropertyCache> table = [] {
        auto t = vxfuzz::longest_table(U"%A%B%x");
        const char32_t code[] = U"JP";
        std::memcpy(t->properties[5].value, code, 2 * sizeof(char32_t));
        t->properties[5].length = 2;
        return t;
    }();
    return *table;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzInput in(data, size);
    const std::int32_t width = in.between(-300, 300);
    const std::int32_t capacity = in.pick(2) ? std::abs(width) : in.between(0, 320);
    const auto decimals = static_cast<std::uint32_t>(in.between(0, 40));
    auto part = [&](double missing_chance_low, double high) {
        const std::uint32_t pick = in.pick(8);
        if (pick == 0) return std::bit_cast<double>(missing_bits);
        if (pick == 1) return std::bit_cast<double>(in.take<std::uint64_t>());
        return missing_chance_low + (high - missing_chance_low) * (in.take<std::uint16_t>() / 65535.0);
    };
    const double day = part(-140000, 6600000);
    const double hour = part(-30, 150);
    const double minute = part(-5, 65);
    const double seconds = part(-5, 65);
    std::vector<char32_t> pattern(std::min<std::size_t>(in.left(), 400));
    for (auto& c : pattern) c = pattern_alphabet[in.take<std::uint8_t>() % (std::size(pattern_alphabet) - 1)];
    auto exact = vxfuzz::exact_copy(pattern.data(), pattern.size());

    vxfuzz::GuardedCells<char32_t> out(static_cast<std::size_t>(capacity));
    std::int32_t w = width;
    vxfuzz::CallTimer timer;
    nldate::expand(exact.get(), static_cast<std::int32_t>(pattern.size()), out.data(), capacity, &w, decimals,
                   longest_table(), nullptr, day, hour, minute, seconds);
    timer.expect_within_millisecond("expansion too slow");
    out.expect_untouched_beyond(static_cast<std::size_t>(std::min(std::abs(width), capacity)),
                                "expander wrote outside its field");
    std::int32_t measured = width;
    nldate::expand(exact.get(), static_cast<std::int32_t>(pattern.size()), nullptr, 0, &measured, decimals,
                   longest_table(), nullptr, day, hour, minute, seconds);
    return 0;
}
