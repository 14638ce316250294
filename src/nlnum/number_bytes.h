/*
 * Byte variants of the formats that render through zkfnum (NLNUM, NLNUMI, NLPCT, NLPCTI, NLMNY,
 * NLMNYI) that answer their everyday call in bytes themselves (frame/byte_output.h,
 * direct_bytes): in byte mode, in a UTF-8 session or one whose identity bound holds every cell
 * of the text, the renderer's first attempt written straight into the caller's field as the
 * wrapper would convert it, with no wide field between.
 *
 * Any other case (the call checked and refused, a missing value, a record without its property
 * table or conventions yet, a text the first attempt does not take or whose bytes do not fit, a
 * field narrower than the width) goes on to the wrapper's ways, as if not asked.
 *
 *   status s;  if (!direct_bytes<vxfmtnlmny>::answer(call, out, &s)) s = vxfmtnlbyte(...);
 */
#pragma once

#include <cstddef>

#include "frame/abi.h"
#include "frame/byte_output.h"
#include "frame/registry.h"
#include "locale/property_numbers.h"

VX_EXPORT vxlocfmt::status vxfmtnlnum(vxlocfmt::FmtCall* call, void* extra);
VX_EXPORT vxlocfmt::status vxfmtnlnumi(vxlocfmt::FmtCall* call, void* extra);
VX_EXPORT vxlocfmt::status vxfmtnlpct(vxlocfmt::FmtCall* call, void* extra);
VX_EXPORT vxlocfmt::status vxfmtnlpcti(vxlocfmt::FmtCall* call, void* extra);
VX_EXPORT vxlocfmt::status vxfmtnlmny(vxlocfmt::FmtCall* call, void* extra);
VX_EXPORT vxlocfmt::status vxfmtnlmnyi(vxlocfmt::FmtCall* call, void* extra);

namespace vxlocfmt {

namespace nlnum {

// What a zkfnum format passes to it: its limits, the key property of its conventions record,
// and whether the value is shown times 100.
struct RenderedRow {
    registry::Limits limits;
    std::size_t key;
    bool percent;
};

// The six rows; the formats themselves render by the same (nlnum_formats.cpp, money_formats.cpp).
inline constexpr RenderedRow nlnum_row{registry::limits_of(U"NLNUM"), locale::prop::locale_number_key, false};
inline constexpr RenderedRow nlnumi_row{registry::limits_of(U"NLNUMI"), locale::prop::fixed_number_key, false};
inline constexpr RenderedRow nlpct_row{registry::limits_of(U"NLPCT"), locale::prop::locale_percent_key, true};
inline constexpr RenderedRow nlpcti_row{registry::limits_of(U"NLPCTI"), locale::prop::fixed_percent_key, true};
inline constexpr RenderedRow nlmny_row{registry::limits_of(U"NLMNY"), locale::prop::local_currency_key, false};
inline constexpr RenderedRow nlmnyi_row{registry::limits_of(U"NLMNYI"), locale::prop::international_currency_key,
                                        false};

// The wrapper's answer where it is certain (above); false leaves the call as it was.
bool number_bytes(FmtCall& call, FmtCall& out, const RenderedRow& row, status* result);

template <const RenderedRow& Row>
struct rendered_bytes {
    static constexpr bool offered = true;
    static bool answer(FmtCall* call, FmtCall* out, status* result) { return number_bytes(*call, *out, Row, result); }
};

}  // namespace nlnum

template <>
struct direct_bytes<vxfmtnlnum> : nlnum::rendered_bytes<nlnum::nlnum_row> {};
template <>
struct direct_bytes<vxfmtnlnumi> : nlnum::rendered_bytes<nlnum::nlnumi_row> {};
template <>
struct direct_bytes<vxfmtnlpct> : nlnum::rendered_bytes<nlnum::nlpct_row> {};
template <>
struct direct_bytes<vxfmtnlpcti> : nlnum::rendered_bytes<nlnum::nlpcti_row> {};
template <>
struct direct_bytes<vxfmtnlmny> : nlnum::rendered_bytes<nlnum::nlmny_row> {};
template <>
struct direct_bytes<vxfmtnlmnyi> : nlnum::rendered_bytes<nlnum::nlmnyi_row> {};

}  // namespace vxlocfmt
