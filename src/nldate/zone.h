/*
 * The kernel's time-zone object the datetime formats hand to the expander for "%z": word 36 of
 * the kernel handle (null, or no handle: offset 0).
 *
 *   zkfdttm(out, capacity, &width, nullptr, 46 | pattern_with_zone, 0, properties, zone_object(), t);
 */
#pragma once

#include "frame/kernel.h"

namespace vxlocfmt::nldate {

inline void* zone_object() {
    void* handle = Exported_VXHandle;
    return handle ? kernel::word(handle, kernel::handle_word_zone) : nullptr;
}

}  // namespace vxlocfmt::nldate
