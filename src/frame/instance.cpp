#include "frame/instance.h"

#include <cstring>

#include "frame/kernel.h"
#include "frame/registry.h"
#include "frame/reporting.h"

extern "C" {
__attribute__((visibility("default"))) void* Exported_VXHandle = nullptr;
}

namespace vxlocfmt {
namespace {

constexpr std::int32_t severity_error = 4;
constexpr std::uint64_t journal_options_flag = 0x40000000u;
// Option records the context's factories read; zero but for what is set below.
struct PoolOptions {
    std::uint64_t words[16];
};
struct JournalOptions {
    std::uint64_t words[16];
};

void report_no_memory(void* journal) {
    if (journal) vxlStatusToJnl(journal, severity_error, st::no_memory);
}

}  // namespace

status required_version(void*, std::uint64_t* major, std::uint64_t* minor, std::uint64_t* level) {
    *major = 6;
    *minor = 1;
    *level = 1;
    return st::ok;
}

status own_version(void*, std::uint64_t* major, std::uint64_t* minor, std::uint64_t* level) {
    *major = 6;
    *minor = 0;
    *level = 0;
    return st::ok;
}

status destroy_instance(void* raw) {
    auto* instance = static_cast<Instance*>(raw);
    if (instance->journal) {
        if (instance->journal_flush)
            kernel::slot<kernel::flush_fn>(instance->journal, kernel::journal_flush_slot)(instance->journal);
        kernel::slot<kernel::release_fn>(instance->journal, kernel::journal_release_slot)(instance->journal);
    }
    if (instance->primary_transcoder) kernel::release(instance->primary_transcoder);
    if (instance->second_object) kernel::release(instance->second_object);
    if (instance->fixed_locale) kernel::release(instance->fixed_locale);
    void* pool = instance->pool;
    if (instance->currency_cache) kernel::pool_free(pool, instance->currency_cache);
    kernel::pool_destroy(pool);  // frees the instance too: nothing touches it after this
    return st::ok;
}

}  // namespace vxlocfmt

using namespace vxlocfmt;

VX_EXPORT void* vxlocfmt_entry(void* context, void* journal) {
    PoolOptions pool_options{};
    void* pool = kernel::slot<kernel::create_pool_fn>(context, kernel::ctx_create_pool)(
        context, &pool_options, journal, "vxfmtwfnls pool");
    if (!pool) {
        report_no_memory(journal);
        return nullptr;
    }
    auto* instance = static_cast<Instance*>(kernel::pool_alloc(pool, sizeof(Instance), kernel::alloc_long_lived));
    if (!instance) {
        report_no_memory(journal);
        kernel::pool_destroy(pool);
        return nullptr;
    }
    // Every field the library relies on is set here; the reserved area is left as the pool gave it.
    std::memset(instance, 0, offsetof(Instance, reserved));
    instance->pool = pool;
    instance->context = context;
    instance->required_version = required_version;
    instance->own_version = own_version;
    instance->destroy = destroy_instance;
    instance->registry = registry::table();
    instance->journal_flush = 0;

    JournalOptions journal_options{};
    journal_options.words[0] = journal_options_flag;
    instance->journal = kernel::slot<kernel::create_journal_fn>(context, kernel::ctx_create_journal)(
        context, &journal_options, nullptr, U"vxfmtwfnls Jnl");
    instance->currency_cache = nullptr;
    instance->primary_transcoder = nullptr;
    instance->second_object = nullptr;
    instance->fixed_locale = nullptr;

    void* service = kernel::word(context, kernel::ctx_word_service);
    auto factory = kernel::slot<kernel::object_factory_fn>(service, kernel::svc_object_factory);
    instance->primary_transcoder =
        factory(service, kernel::encoding_locale_text, kernel::encoding_wide, nullptr, nullptr);
    if (instance->primary_transcoder) {
        instance->second_object = factory(service, kernel::encoding_second, kernel::encoding_wide, nullptr, nullptr);
        if (instance->second_object) {
            instance->fixed_locale =
                kernel::slot<kernel::locale_object_fn>(service, kernel::svc_locale_object)(service, "en_US", 5);
            if (instance->fixed_locale) return instance;
        }
    }
    // A kernel object could not be made: unwind without a report (only memory failures report).
    destroy_instance(instance);
    return nullptr;
}

VX_EXPORT status vxextver(void* handle, std::uint64_t* major, std::uint64_t* minor) {
    *major = 6;
    *minor = 1;
    Exported_VXHandle = handle;
    return st::ok;
}

VX_EXPORT status vxextent(void* handle) {
    Exported_VXHandle = handle;
    return st::ok;
}
