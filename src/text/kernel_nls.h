/*
 * The kernel's national-language service as the text functions use it: found at word 27 of the
 * kernel handle's table (null: no service, the library answers from its own tables). The slot
 * numbers below are the contract the host's service is built to (host/nls_service.cpp).
 *
 *   if (void* svc = text::kernel_nls::service())
 *       bool digit = text::kernel_nls::classify(svc, U'٣', text::class_mask::digit);
 */
#pragma once

#include <cstddef>
#include <cstdint>

#include "frame/abi.h"

namespace vxlocfmt::text::kernel_nls {

// Ordinals of the service's operations turned into indexes (the 137th slot is index 136).
inline constexpr std::size_t classify_slot = 136;       // (service, character, class mask) -> 1/0
inline constexpr std::size_t to_upper_slot = 31;        // (service, character, 1) -> character
inline constexpr std::size_t to_lower_slot = 32;        // (service, character, 1) -> character
inline constexpr std::size_t word_database_opener = 5;  // object whose open slot opens a database
inline constexpr std::size_t open_database_slot = 9;    // (opener, name, name length) -> handle
inline constexpr std::size_t word_database = 179;       // the open class database, or null
inline constexpr std::size_t service_words = 180;       // the least a service table holds

inline constexpr char database_name[] = "vxnlsudb";
inline constexpr std::int32_t database_name_length = 8;

extern "C" {
using classify_fn = std::int32_t (*)(void* service, wchar c, std::uint32_t mask);
using map_case_fn = wchar (*)(void* service, wchar c, std::int32_t one);
using open_database_fn = void* (*)(void* opener, const char* name, std::int32_t length);
}

// The service hung on the kernel handle, or null (no handle, or no service on it).
void* service();

// Asks the class database; opens it first when the service holds none yet.
bool classify(void* service, wchar c, std::uint32_t mask);

wchar to_lower(void* service, wchar c);
wchar to_upper(void* service, wchar c);

}  // namespace vxlocfmt::text::kernel_nls
