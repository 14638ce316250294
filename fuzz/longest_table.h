/*
 * A property table at its worst case: every value 160 characters (names of letters), and the
 * date and time patterns (28 and 53, what "%x" and "%X" expand to) one directive text repeated,
 * so an expansion grows as far as it can.
 *
 *   auto table = vxfuzz::longest_table(U"%A%B");   // "%x" becomes 80 names of 160 characters
 */
#pragma once

#include <cstring>
#include <memory>
#include <string_view>

#include "locale/property_table.h"

namespace vxfuzz {

inline std::unique_ptr<vxlocfmt::PropertyCache> longest_table(std::u32string_view pattern_unit) {
    using namespace vxlocfmt;
    auto t = std::make_unique<PropertyCache>();
    std::memset(t.get(), 0, sizeof(PropertyCache));
    for (std::uint32_t n = 0; n < property_count; ++n) {
        Property& p = t->properties[n];
        p.number = n;
        p.length = property_value_cells;
        p.width = property_value_cells;
        for (std::size_t i = 0; i < property_value_cells; ++i)
            p.value[i] = n == 28 || n == 53 ? pattern_unit[i % pattern_unit.size()]
                                            : static_cast<wchar>(U'a' + (n + i) % 26);
    }
    return t;
}

}  // namespace vxfuzz
