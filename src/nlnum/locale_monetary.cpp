#include "nlnum/locale_monetary.h"

#include <atomic>
#include <cstring>

#include "frame/kernel.h"
#include "locale/property_table.h"

namespace vxlocfmt::nlnum {
namespace {

// The locale object's text-to-integer operation: 0 when the whole text is a decimal integer.
using text_to_integer_fn = status (*)(void* locale, const wchar* text, std::int32_t length, std::int64_t* value);

// The instance keeps a copy of the property records that the conventions point into; it is
// written once, when the conventions are built, so the strings never change under them.
Property* property_copy(Instance& instance) {
    static_assert(sizeof instance.reserved == sizeof(PropertyCache::properties));
    return reinterpret_cast<Property*>(instance.reserved);
}

std::int8_t to_number(const FmtCall& call, const Property& p) {
    if (p.length == 0 || !call.number_format) return 0;
    std::int64_t value = 0;
    const auto convert = kernel::slot<text_to_integer_fn>(call.number_format, kernel::locale_text_to_integer_slot);
    const auto length = static_cast<std::int32_t>(p.length < property_value_cells ? p.length : property_value_cells);
    if (convert(call.number_format, p.value, length, &value) != st::ok) return 0;
    return static_cast<std::int8_t>(value);
}

}  // namespace

const LocaleMonetary* locale_monetary(const FmtCall& call, Instance& instance) {
    std::atomic_ref<void*> published(instance.currency_cache);
    if (void* built = published.load(std::memory_order_acquire)) return static_cast<const LocaleMonetary*>(built);

    auto* mon = static_cast<LocaleMonetary*>(kernel::pool_alloc(instance.pool, sizeof(LocaleMonetary), kernel::alloc_long_lived));
    if (!mon) return nullptr;
    Property* copy = property_copy(instance);
    std::memcpy(copy, call.property_cache->properties, sizeof(PropertyCache::properties));
    for (std::size_t n = 0; n < property_count; ++n) {
        copy[n].conventions = nullptr;  // they point into the call's table, which may die first
        copy[n].value[property_value_cells] = 0;
    }

    using namespace locale::prop;
    // The locale's symbol stands in both symbol fields: the formats write the currency's own.
    mon->int_curr_symbol = copy[currency_local].value;
    mon->currency_symbol = copy[currency_local].value;
    mon->mon_decimal_point = copy[mon_decimal_point].value;
    mon->mon_thousands_sep = copy[mon_thousands_sep].value;
    mon->mon_grouping = copy[mon_grouping].value;
    mon->positive_sign = copy[mon_positive_sign].value;
    mon->negative_sign = copy[mon_negative_sign].value;
    mon->int_frac_digits = to_number(call, copy[int_frac_digits]);
    mon->frac_digits = to_number(call, copy[frac_digits]);
    mon->p_cs_precedes = to_number(call, copy[mon_p_cs_precedes]);
    mon->p_sep_by_space = to_number(call, copy[mon_p_sep_by_space]);
    mon->n_cs_precedes = to_number(call, copy[mon_n_cs_precedes]);
    mon->n_sep_by_space = to_number(call, copy[mon_n_sep_by_space]);
    mon->p_sign_posn = to_number(call, copy[mon_p_sign_posn]);
    mon->n_sign_posn = to_number(call, copy[mon_n_sign_posn]);
    published.store(mon, std::memory_order_release);
    return mon;
}

}  // namespace vxlocfmt::nlnum
