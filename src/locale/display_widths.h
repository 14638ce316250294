/*
 * Display widths in session bytes, precomputed so that formats can skip a candidate pattern
 * without rendering it: the widest name of each name set, the wider of AM and PM, and an
 * estimate for each pattern 28 to 57 (its literal bytes plus a fixed width per directive).
 *
 *   set_name_widths(cache, call.session_transcoder);
 *   set_am_pm_width(cache, call.session_transcoder);
 *   set_pattern_widths(cache, call.session_transcoder);   // after the other two
 */
#pragma once

#include <cstdint>
#include <string_view>

#include "locale/property_table.h"

namespace vxlocfmt::locale {

void set_name_widths(PropertyCache& cache, void* session_transcoder);
void set_am_pm_width(PropertyCache& cache, void* session_transcoder);
void set_pattern_widths(PropertyCache& cache, void* session_transcoder);

// The width of one pattern as set_pattern_widths computes it (names and AM/PM widths already set).
std::uint32_t pattern_width(const PropertyCache& cache, std::u32string_view pattern, void* session_transcoder);

}  // namespace vxlocfmt::locale
