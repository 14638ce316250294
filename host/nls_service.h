/*
 * The host's national-language service: character classes and case mapping answered from ICU,
 * behind the slots of src/text/kernel_nls.h. Hung at word 27 of the kernel handle, it makes the
 * library's predicates and case mappers ask the host instead of the library's own tables.
 *
 *   table[vxlocfmt::kernel::handle_word_nls] = vxhost::nls_service();
 *   vxnlsisalpha(U'ж');   // asked through the service's classify slot
 */
#pragma once

#include <cstdint>

namespace vxhost {

// The process-wide service object (a table of 192 words, then the service's state).
void* nls_service();
// Times the class database "vxnlsudb" has been opened through the service's opener.
std::int64_t nls_database_opens();

}  // namespace vxhost
