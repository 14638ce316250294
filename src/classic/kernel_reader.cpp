#include "classic/kernel_reader.h"

#include "classic/decimal_reader.h"
#include "frame/kernel.h"

namespace vxlocfmt::classic {

void* kernel_numeric_reader() {
    void* handle = Exported_VXHandle;
    void* service = handle ? kernel::word(handle, kernel::handle_word_nls) : nullptr;
    return service ? kernel::word(service, nls_word_numeric_reader) : nullptr;
}

status kernel_read_number(const wchar* text, std::int32_t length, double* out, void* work_area) {
    if (void* reader = kernel_numeric_reader())
        return kernel::slot<numeric_read_fn>(reader, reader_read_slot)(reader, text, length, out, work_area);
    return read_decimal(text, length, out);
}

}  // namespace vxlocfmt::classic
