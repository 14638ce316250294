/*
 * The kernel handle: the process-wide table the library reaches through Exported_VXHandle. It
 * answers options (the year cut-off), the clock, the default journal, the national-language
 * service word and the formatting slots.
 *
 *   vxhost::set_year_cutoff(1920);
 *   void* handle = vxhost::kernel_handle();   // handed to vxextent
 */
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace vxhost {

class Journal;

void* kernel_handle();
// The year cut-off answered for "VX_NAME_YEARCUTOFF"; nullopt makes the lookup fail (the
// library then keeps its own default).
void set_year_cutoff(std::optional<std::int64_t> year);
std::optional<std::int64_t> year_cutoff();
// The national-language service hung at word 27 (the ICU-backed one by default), or null for
// none: the library then answers character classes from its own tables.
void set_nls_service(void* service);
// The journal the handle offers as its default (word 35); null for none.
void set_default_journal(Journal* journal);
Journal* default_journal();

// Seconds from 1960-01-01T00:00:00 to the Unix epoch.
inline constexpr double unix_epoch_datetime = 315619200.0;

}  // namespace vxhost
