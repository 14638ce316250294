#include "extension_context.h"

#include <string>

#include "frame/kernel.h"
#include "journal.h"
#include "locale_object.h"
#include "pool.h"
#include "text_convert.h"
#include "transcoder.h"

namespace vxhost {
namespace {

using namespace vxlocfmt::kernel;

void* slot_create_pool(void*, void*, void*, const char* name) { return Pool::create(name ? name : ""); }

void* slot_create_journal(void* context, void*, void*, const vxlocfmt::wchar* name) {
    if (self<ExtensionContext>(context).fail_journal) return nullptr;
    return Journal::create(name ? to_utf8(std::u32string_view(name)) : std::string());
}

void* slot_factory(void* service, std::uint32_t from, std::uint32_t to, void*, void*) {
    auto& svc = self<ServiceObject>(service);
    if (from == encoding_locale_text && svc.fail_factory_primary) return nullptr;
    if (from == encoding_second && svc.fail_factory_second) return nullptr;
    return Transcoder::create(from, to);
}

void* slot_locale(void* service, const char* name, std::int32_t length) {
    if (self<ServiceObject>(service).fail_locale || !name || length < 0) return nullptr;
    return LocaleObject::create(std::string_view(name, static_cast<std::size_t>(length)));
}

}  // namespace

ServiceObject::ServiceObject() {
    words[svc_object_factory] = fn_word(&slot_factory);
    words[svc_locale_object] = fn_word(&slot_locale);
}

ExtensionContext::ExtensionContext() {
    words[ctx_create_journal] = fn_word(&slot_create_journal);
    words[ctx_create_pool] = fn_word(&slot_create_pool);
    words[ctx_word_service] = &service;
}

}  // namespace vxhost
