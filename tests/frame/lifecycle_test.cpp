// Entry, versions and destroy of the loaded library, with each kernel service failing in turn:
// whatever happens, every pool, journal and kernel object made is released.
#include <gtest/gtest.h>

#include <dlfcn.h>

#include "extension_context.h"
#include "journal.h"
#include "kernel_handle.h"
#include "library.h"
#include "locale_object.h"
#include "pool.h"
#include "transcoder.h"

namespace {

using entry_fn = void* (*)(void*, void*);

struct Loaded {
    void* handle = dlopen(vxhost::default_library_path().c_str(), RTLD_NOW | RTLD_LOCAL);
    entry_fn entry = handle ? reinterpret_cast<entry_fn>(dlsym(handle, "vxlocfmt")) : nullptr;
    ~Loaded() {
        if (handle) dlclose(handle);
    }
};

struct Baseline {
    vxhost::PoolStats pools = vxhost::pool_stats();
    std::int64_t journals = vxhost::Journal::live();
    long locales = vxhost::LocaleObject::live();
    long transcoders = vxhost::Transcoder::live();
    void expect_back() const {
        const auto now = vxhost::pool_stats();
        EXPECT_EQ(now.live_pools, pools.live_pools);
        EXPECT_EQ(now.live_blocks, pools.live_blocks);
        EXPECT_EQ(now.live_bytes, pools.live_bytes);
        EXPECT_EQ(vxhost::Journal::live(), journals);
        EXPECT_EQ(vxhost::LocaleObject::live(), locales);
        EXPECT_EQ(vxhost::Transcoder::live(), transcoders);
    }
};

enum class Fault { none, pool, instance_block, journal, primary, second, locale };

TEST(Lifecycle, EveryFailurePathReleasesEverything) {
    Loaded lib;
    ASSERT_NE(lib.entry, nullptr) << dlerror();
    const struct {
        Fault fault;
        bool caller_journal;
        bool instance_expected;
        bool out_of_memory_reported;
    } cases[] = {
        {Fault::none, true, true, false},
        {Fault::none, false, true, false},
        {Fault::pool, true, false, true},            // memory failures are reported ...
        {Fault::pool, false, false, false},          // ... when there is a journal to report to
        {Fault::instance_block, true, false, true},
        {Fault::instance_block, false, false, false},
        {Fault::journal, true, true, false},         // a declined journal is not a failure
        {Fault::primary, true, false, false},        // kernel objects fail silently: deliberate
        {Fault::second, true, false, false},
        {Fault::locale, true, false, false},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(static_cast<int>(c.fault) * 10 + c.caller_journal);
        vxhost::Journal* journal = c.caller_journal ? vxhost::Journal::create("caller") : nullptr;
        const Baseline baseline;
        vxhost::ExtensionContext context;
        context.fail_journal = c.fault == Fault::journal;
        context.service.fail_factory_primary = c.fault == Fault::primary;
        context.service.fail_factory_second = c.fault == Fault::second;
        context.service.fail_locale = c.fault == Fault::locale;
        vxhost::fail_pool_creation(c.fault == Fault::pool);
        if (c.fault == Fault::instance_block) vxhost::fail_allocations_after(0);

        auto* instance = static_cast<vxlocfmt::Instance*>(lib.entry(&context, journal));
        vxhost::fail_pool_creation(false);
        vxhost::fail_allocations_after(-1);

        EXPECT_EQ(instance != nullptr, c.instance_expected);
        if (instance) {
            EXPECT_EQ(instance->registry, dlsym(lib.handle, "funcinfo"));
            EXPECT_EQ(instance->context, &context);
            EXPECT_EQ(instance->journal == nullptr, c.fault == Fault::journal);
            EXPECT_EQ(instance->currency_cache, nullptr);
            EXPECT_EQ(instance->journal_flush, 0u);
            instance->destroy(instance);
        }
        baseline.expect_back();
        if (journal) {
            const auto entries = journal->entries();
            if (c.out_of_memory_reported) {
                ASSERT_EQ(entries.size(), 1u);
                EXPECT_EQ(entries[0].severity, 4);
                EXPECT_EQ(entries[0].status, 0x803fc002u);
            } else {
                EXPECT_TRUE(entries.empty());
            }
            journal->release();
        }
    }
}

TEST(Lifecycle, VersionsIgnoreTheirInstance) {
    vxhost::Library library;
    for (void* instance : {static_cast<void*>(library.instance()), static_cast<void*>(nullptr)}) {
        std::uint64_t major = 0, minor = 0, level = 0;
        EXPECT_EQ(library.instance()->required_version(instance, &major, &minor, &level), 0u);
        EXPECT_EQ(major * 100 + minor * 10 + level, 611u);
        EXPECT_EQ(library.instance()->own_version(instance, &major, &minor, &level), 0u);
        EXPECT_EQ(major * 100 + minor * 10 + level, 600u);
    }
}

TEST(Lifecycle, KernelHandleExportsStoreTheHandle) {
    vxhost::Library library;
    auto** stored = static_cast<void**>(library.symbol("Exported_VXHandle"));
    ASSERT_NE(stored, nullptr);
    EXPECT_EQ(*stored, vxhost::kernel_handle());  // set by vxextent when loaded
    using extver_fn = vxlocfmt::status (*)(void*, std::uint64_t*, std::uint64_t*);
    auto extver = reinterpret_cast<extver_fn>(library.symbol("vxextver"));
    int other = 0;
    std::uint64_t major = 0, minor = 0;
    EXPECT_EQ(extver(&other, &major, &minor), 0u);
    EXPECT_EQ(major, 6u);
    EXPECT_EQ(minor, 1u);
    EXPECT_EQ(*stored, &other);  // the last one wins
    extver(vxhost::kernel_handle(), &major, &minor);
}

}  // namespace
