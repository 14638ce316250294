#include "text/kernel_nls.h"

#include <atomic>

#include "frame/kernel.h"

namespace vxlocfmt::text::kernel_nls {

void* service() {
    void* handle = Exported_VXHandle;
    return handle ? kernel::word(handle, kernel::handle_word_nls) : nullptr;
}

bool classify(void* svc, wchar c, std::uint32_t mask) {
    void** words = static_cast<void**>(svc);
    // Opened on first need and kept in the service; no lock, as everywhere in the library. The
    // word is read and set atomically: threads meeting the first use together may each open the
    // database, but only one handle is kept and none sees a torn word.
    std::atomic_ref<void*> database(words[word_database]);
    if (!database.load(std::memory_order_acquire)) {
        void* opener = words[word_database_opener];
        void* opened = kernel::slot<open_database_fn>(opener, open_database_slot)(opener, database_name,
                                                                                  database_name_length);
        void* none = nullptr;
        database.compare_exchange_strong(none, opened, std::memory_order_acq_rel);
    }
    return kernel::slot<classify_fn>(svc, classify_slot)(svc, c, mask) != 0;
}

wchar to_lower(void* svc, wchar c) {
    return kernel::slot<map_case_fn>(svc, to_lower_slot)(svc, c, 1);
}

wchar to_upper(void* svc, wchar c) {
    return kernel::slot<map_case_fn>(svc, to_upper_slot)(svc, c, 1);
}

}  // namespace vxlocfmt::text::kernel_nls
