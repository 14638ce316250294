/*
 * The locale number renderer `zkfnum`: a double in the style of one `NumberConventions` record
 * (group separators, decimal point, sign and symbol placed by a `CurrencyFormatPatterns` entry),
 * right-aligned in the call's field. The digits come from the kernel's plain fixed-point
 * formatter; when the styled text is too wide it retries without grouping, then with fewer
 * decimals, then with a narrower request, and at last fills the field with "*".
 *
 *   const PropertyCache& table = *call.property_cache;
 *   if (zkfnum(supported_flag(table, prop::locale_number_key), call,
 *              *conventions_of(table, prop::locale_number_key), instance) == zkfnum_unsupported) use_classic();
 */
#pragma once

#include <cstddef>
#include <cstdint>

#include "frame/abi.h"
#include "locale/property_table.h"

namespace vxlocfmt::nlnum {

// ---- Interface ----------------------------------------------------------------------------

// zkfnum's answers: the record is not supported (nothing written), or the field is written
// (the styled number, the missing-value text, or "*" when nothing fits).
inline constexpr std::int32_t zkfnum_unsupported = -1;
inline constexpr std::int32_t zkfnum_done = 0;
// Wider requests get this many "*" and the call's width is set to it.
inline constexpr std::int32_t zkfnum_max_width = 32;

// supported: the key property's length (0: the locale has no such record). Reads the call's
// width, decimals, value, output, capacity, byte mode and session transcoder; writes the output
// and the produced length (and the width when it is above 32). The decimals survive every path.
// The digits come from the instance's fixed locale object ("en_US"), or from the call's own
// locale object when the instance has none.
std::int32_t zkfnum(std::uint32_t supported, FmtCall& call, const NumberConventions& conventions,
                    const Instance& instance);

namespace detail {
// zkfnum without its everyday attempt (styled_field.h): every attempt through the retry loop.
// The two write the same; a test holds them to it.
std::int32_t zkfnum_retrying(std::uint32_t supported, FmtCall& call, const NumberConventions& conventions,
                             const Instance& instance);
}  // namespace detail

// The supported flag of a record: the low 32 bits of its key property's length.
inline std::uint32_t supported_flag(const PropertyCache& table, std::size_t key);
// The record hung on a key property (170, 171, 183 to 186), or null on any other property.
inline const NumberConventions* conventions_of(const PropertyCache& table, std::size_t key);

// ---- Implementation -----------------------------------------------------------------------

inline std::uint32_t supported_flag(const PropertyCache& table, std::size_t key) {
    return static_cast<std::uint32_t>(table.properties[key].length & 0xFFFFFFFFu);
}

inline const NumberConventions* conventions_of(const PropertyCache& table, std::size_t key) {
    return table.properties[key].conventions;
}

}  // namespace vxlocfmt::nlnum
