/*
 * The extension's entry point and instance lifetime: `vxlocfmt` builds the instance from the
 * host's context, `vxfmtwfnlsDestroy` releases it with its pool. The instance of a call is found
 * by its tag among the session's extensions.
 *
 *   auto* instance = static_cast<Instance*>(vxlocfmt_entry(context, journal));
 *   instance->destroy(instance);
 */
#pragma once

#include <cstdint>

#include "frame/abi.h"

// The entry point, exported as "vxlocfmt". C++ names it vxlocfmt_entry because the namespace
// vxlocfmt takes the plain name.
VX_EXPORT void* vxlocfmt_entry(void* context, void* journal) __asm__("vxlocfmt");
VX_EXPORT vxlocfmt::status vxextver(void* handle, std::uint64_t* major, std::uint64_t* minor);
VX_EXPORT vxlocfmt::status vxextent(void* handle);

namespace vxlocfmt {

status required_version(void* instance, std::uint64_t* major, std::uint64_t* minor, std::uint64_t* level);
status own_version(void* instance, std::uint64_t* major, std::uint64_t* minor, std::uint64_t* level);
status destroy_instance(void* instance);

// The library's instance among the session's extensions, or null: the first entry whose name
// (its second word) begins with the tag "vxlocfmt".
Instance* find_instance(const FmtCall& call);

}  // namespace vxlocfmt
