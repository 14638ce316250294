#include "locale_object.h"

#include <atomic>

#include "frame/kernel.h"
#include "locale_data.h"
#include "number_formatter.h"

namespace vxhost {
namespace {

std::atomic<long> live_locales{0};

vxlocfmt::status slot_release(void* object) {
    self<LocaleObject>(object).release();
    return 0;
}
vxlocfmt::status slot_data(void* object, std::int64_t, const unsigned char** block) {
    *block = self<LocaleObject>(object).block();
    return 0;
}

}  // namespace

LocaleObject::LocaleObject(std::string id, const unsigned char* block) : id_(std::move(id)), block_(block) {
    words[vxlocfmt::kernel::object_release_slot] = fn_word(&slot_release);
    words[vxlocfmt::kernel::locale_number_format_slot] = fn_word(&format_number);
    words[vxlocfmt::kernel::locale_text_to_integer_slot] = fn_word(&text_to_integer);
    words[vxlocfmt::kernel::locale_data_block_slot] = fn_word(&slot_data);
    ++live_locales;
}
LocaleObject::~LocaleObject() { --live_locales; }

LocaleObject* LocaleObject::create(std::string_view name) {
    const std::string id = canonical_locale(name);
    if (id.empty()) return nullptr;
    const unsigned char* block = locale_block(id);
    return block ? new LocaleObject(id, block) : nullptr;
}

void LocaleObject::release() { delete this; }
long LocaleObject::live() { return live_locales; }

}  // namespace vxhost
