/*
 * The library as the fuzz targets drive it: linked in (so coverage reaches it), started through
 * its entry point with the host's context, named in its instance as a host would, and one warm
 * session per locale (and, when asked, per locale and session encoding).
 *
 *   static vxfuzz::World world({"en_US", "de_DE"}, {"UTF-8"});
 *   vxlocfmt::FmtCall& call = world.wide[0]->call();
 */
#pragma once

#include <memory>
#include <span>
#include <vector>

#include "extension_context.h"
#include "frame/instance.h"
#include "frame/kernel.h"
#include "frame/registry.h"
#include "harness.h"
#include "kernel_handle.h"
#include "library.h"
#include "session.h"

namespace vxfuzz {

struct World {
    vxhost::ExtensionContext context;
    vxlocfmt::Instance* instance = nullptr;
    std::vector<std::unique_ptr<vxhost::Session>> wide;   // one per locale
    std::vector<std::unique_ptr<vxhost::Session>> bytes;  // one per locale, encodings in turn
    std::vector<const vxlocfmt::FuncInfo*> formats;
    std::vector<const vxlocfmt::FuncInfo*> informats;

    World(std::span<const char* const> locales, std::span<const char* const> encodings) {
        Exported_VXHandle = vxhost::kernel_handle();
        instance = static_cast<vxlocfmt::Instance*>(vxlocfmt_entry(&context, nullptr));
        if (!instance) fail("no instance");
        vxhost::adopt_instance(instance);
        std::size_t i = 0;
        for (const char* locale : locales) {
            vxhost::SessionOptions options;
            options.locale = locale;
            wide.push_back(std::make_unique<vxhost::Session>(instance, options));
            if (encodings.empty()) continue;
            options.encoding = encodings[i++ % encodings.size()];
            bytes.push_back(std::make_unique<vxhost::Session>(instance, options));
        }
        for (const vxlocfmt::FuncInfo* row = vxlocfmt::registry::table(); row->function; ++row)
            (row->kind == vxlocfmt::row_kind_format ? formats : informats).push_back(row);
    }
};

}  // namespace vxfuzz
