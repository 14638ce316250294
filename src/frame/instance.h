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
#include <cstring>

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
// (its second word) begins with the tag "vxlocfmt". Inline: every call of every format asks.
inline Instance* find_instance(const FmtCall& call);

// ---- Implementation -----------------------------------------------------------------------

inline Instance* find_instance(const FmtCall& call) {
    if (!call.session) return nullptr;
    std::uint64_t tag;
    std::memcpy(&tag, instance_tag, sizeof tag);
    for (void** entry = call.session + session_word_extensions; *entry; ++entry) {
        const void* name = static_cast<void**>(*entry)[1];
        if (!name) continue;
        std::uint64_t head;
        std::memcpy(&head, name, sizeof head);
        if (head == tag) return static_cast<Instance*>(*entry);
    }
    return nullptr;
}

}  // namespace vxlocfmt
