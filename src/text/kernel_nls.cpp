#include "text/kernel_nls.h"

#include "frame/kernel.h"

namespace vxlocfmt::text::kernel_nls {

void* service() {
    void* handle = Exported_VXHandle;
    return handle ? kernel::word(handle, kernel::handle_word_nls) : nullptr;
}

bool classify(void* svc, wchar c, std::uint32_t mask) {
    void** words = static_cast<void**>(svc);
    // Opened on first need and kept in the service; no lock, as everywhere in the library.
    if (!words[word_database]) {
        void* opener = words[word_database_opener];
        words[word_database] = kernel::slot<open_database_fn>(opener, open_database_slot)(
            opener, database_name, database_name_length);
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
