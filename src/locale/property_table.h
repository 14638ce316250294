/*
 * The locale property table: 189 numbered wide-character properties of the call's locale (patterns,
 * month/weekday/quarter names, AM/PM, currency and number conventions) and six number-convention
 * records, built on the first NL call of a call record and hung on it.
 *
 *   if (!call.property_cache) fill_nlfmt_properties(call, instance);
 *   std::u32string_view am = locale::property(call, locale::prop::am);
 */
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "frame/abi.h"
#include "locale/property_numbers.h"

namespace vxlocfmt {

// One numeric format family's conventions.
struct NumberConventions {
    wchar currency_symbol[51];  // zero-terminated; "%" for the percent conventions
    wchar decimal_point[2];
    wchar thousands_sep[2];
    std::int32_t grouping[16];  // group sizes, ended by 0
    wchar positive_sign[2];
    wchar negative_sign[2];
    std::int32_t frac_digits;   // the two currency conventions only
    std::int32_t p_cs_precedes;
    std::int32_t p_sep_by_space;
    std::int32_t p_sign_posn;
    std::int32_t n_cs_precedes;
    std::int32_t n_sep_by_space;
    std::int32_t n_sign_posn;
};
static_assert(sizeof(NumberConventions) == 328);

inline constexpr std::size_t property_value_cells = 160;
inline constexpr std::size_t property_count = 189;
inline constexpr std::size_t number_convention_count = 6;

#pragma pack(push, 4)
// One property. The value has room for 160 characters and the 0 after them.
struct Property {
    std::uint32_t number;
    std::uint32_t unset;
    std::uint64_t length;
    wchar value[property_value_cells + 1];
    NumberConventions* conventions;  // properties 170, 171, 183 to 186 only
    std::uint32_t width;             // names, AM/PM and patterns: display width in session bytes
};
#pragma pack(pop)
static_assert(sizeof(Property) == 672);
static_assert(offsetof(Property, value) == 16);
static_assert(offsetof(Property, conventions) == 660);

struct PropertyCache {
    Property properties[property_count];
    NumberConventions conventions[number_convention_count];
};
static_assert(sizeof(PropertyCache) == 128976);

}  // namespace vxlocfmt

namespace vxlocfmt::locale {

// Builds the call's property table from the locale object's data block (operation 60), with the
// instance's primary transcoder and the record's session transcoder. Allocates the table from the
// session pool when the record has none. 0, no_memory, or the kernel's status for the locale data
// (the table then stays allocated and partly empty).
status fill_nlfmt_properties(FmtCall& call, const Instance& instance);

// Text of property n, never longer than the record's room.
inline std::u32string_view property_text(const PropertyCache& properties, std::size_t number) {
    const Property& p = properties.properties[number];
    return {p.value, static_cast<std::size_t>(p.length < property_value_cells ? p.length : property_value_cells)};
}

inline std::u32string_view property(const FmtCall& call, std::size_t number) {
    return property_text(*call.property_cache, number);
}

}  // namespace vxlocfmt::locale
