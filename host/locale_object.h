/*
 * Locale objects: made by name through the kernel service; their operation 60 hands out the
 * locale's raw data block, operation 39 is the number formatter, operation 51 text to integer.
 *
 *   auto* locale = vxhost::LocaleObject::create("fr_FR");   // null when the name is unknown
 *   vxlocfmt::kernel::locale_data(locale, &block);
 */
#pragma once

#include <string>
#include <string_view>

#include "kernel_object.h"

namespace vxhost {

class LocaleObject : public KernelObject<64> {
public:
    static LocaleObject* create(std::string_view name);
    const std::string& id() const { return id_; }
    const unsigned char* block() const { return block_; }
    void release();
    static long live();

private:
    LocaleObject(std::string id, const unsigned char* block);
    ~LocaleObject();
    std::string id_;
    const unsigned char* block_;
};

}  // namespace vxhost
