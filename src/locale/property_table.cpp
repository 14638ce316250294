// fill_nlfmt_properties: the property table of a call record, built once and hung on the record.
#include "locale/property_table.h"

#include <cstring>

#include "frame/kernel.h"
#include "locale/display_widths.h"
#include "locale/escape_decoding.h"
#include "locale/number_conventions.h"

namespace vxlocfmt::locale {
namespace {

// The 189 counted strings of the kernel's locale data block.
constexpr std::size_t block_strings_offset = 18624;
constexpr std::size_t block_string_stride = 162;  // a 16-bit byte count, then up to 160 bytes

}  // namespace

status fill_nlfmt_properties(FmtCall& call, const Instance& instance) {
    if (!call.property_cache) {
        void* pool = kernel::session_pool(call);
        void* block = pool ? kernel::pool_alloc(pool, sizeof(PropertyCache), kernel::alloc_long_lived) : nullptr;
        if (!block) return st::no_memory;
        call.property_cache = static_cast<PropertyCache*>(block);  // at once, before anything is filled
    }
    PropertyCache& cache = *call.property_cache;
    std::memset(&cache, 0, sizeof cache);
    for (std::uint32_t n = 0; n < property_count; ++n) cache.properties[n].number = n;

    const unsigned char* data = nullptr;
    if (!call.number_format) return st::no_locale;
    if (status fetched = kernel::locale_data(call.number_format, &data)) return fetched;
    if (!data) return st::no_memory;  // a kernel that answers 0 with no block: nothing to build from

    for (std::size_t n = 0; n < property_count; ++n) {
        const unsigned char* raw = data + block_strings_offset + n * block_string_stride;
        std::uint16_t length;
        std::memcpy(&length, raw, sizeof length);
        decode_property(raw + sizeof length, length, cache.properties[n], instance.primary_transcoder,
                        call.session_transcoder);
    }
    build_number_conventions(cache);
    set_name_widths(cache, call.session_transcoder);
    set_am_pm_width(cache, call.session_transcoder);
    set_pattern_widths(cache, call.session_transcoder);
    return st::ok;
}

}  // namespace vxlocfmt::locale
