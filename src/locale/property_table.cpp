#include "locale/property_table.h"

#include <cstring>

#include "frame/kernel.h"

namespace vxlocfmt::locale {

status fill_nlfmt_properties(FmtCall& call, const Instance&) {
    void* pool = kernel::session_pool(call);
    if (!call.property_cache) {
        void* block = pool ? kernel::pool_alloc(pool, sizeof(PropertyCache), kernel::alloc_long_lived) : nullptr;
        if (!block) return st::no_memory;
        std::memset(block, 0, sizeof(PropertyCache));
        call.property_cache = static_cast<PropertyCache*>(block);
    }
    for (std::uint32_t n = 0; n < property_count; ++n) call.property_cache->properties[n].number = n;
    return st::ok;
}

}  // namespace vxlocfmt::locale
