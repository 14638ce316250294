/*
 * The extension context the host hands to the library's entry point: pool and journal factories
 * and the kernel service object (object factory, locale objects). Fault switches let tests make
 * each factory fail.
 *
 *   vxhost::ExtensionContext context;
 *   void* instance = entry(&context, journal);
 */
#pragma once

#include "kernel_object.h"

namespace vxhost {

struct ServiceObject : KernelObject<40> {
    ServiceObject();
    bool fail_factory_primary = false;  // (62, 27)
    bool fail_factory_second = false;   // (25, 27)
    bool fail_locale = false;
};

struct ExtensionContext : KernelObject<32> {
    ExtensionContext();
    ServiceObject service;
    bool fail_journal = false;
};

}  // namespace vxhost
