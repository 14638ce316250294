// Shared by the text tests: the host's kernel handle, with or without its national-language
// service.
//
//   use_service(vxhost::nls_service());   // use_service(nullptr): the library's own tables
#pragma once

#include "frame/kernel.h"
#include "kernel_handle.h"

namespace vxlocfmt::text::testing {

// Points Exported_VXHandle at the host's handle, with `service` at word 27 (null: none).
inline void use_service(void* service) {
    Exported_VXHandle = vxhost::kernel_handle();
    vxhost::set_nls_service(service);
}

}  // namespace vxlocfmt::text::testing
