#include "frame/reporting.h"

#include <algorithm>

#include "frame/kernel.h"

namespace vxlocfmt {
namespace {

constexpr std::uint32_t clock_flags = 0x10800000u;
constexpr std::int32_t clock_query = 16;
constexpr std::size_t conversion_table_offset = 656;
constexpr std::size_t context_word_object = 3;  // the context object's fourth word
constexpr std::size_t object_word_table = 5;    // that object's sixth word

// The kernel service table of a caller context, or of the kernel handle for a null context.
void* service_table(void* context) {
    if (!context) return Exported_VXHandle;
    void* object = kernel::word(context, context_word_object);
    return object ? kernel::word(object, object_word_table) : nullptr;
}

status forward(std::size_t slot_index, void* context, const void* what, wchar* buffer, std::int64_t capacity,
               std::int64_t* length, va_list* args) {
    void* table = service_table(context);
    if (!table) return st::no_journal;
    return kernel::slot<kernel::kernel_format_fn>(table, slot_index)(table, context, what, buffer, capacity,
                                                                     length, args);
}

void* deref(void** context) { return context ? *context : nullptr; }

// Digits of `value` in `base`, least significant first, into `digits`; returns their count.
template <class Unsigned>
int to_digits(Unsigned value, std::int32_t base, bool upper, wchar (&digits)[64]) {
    static constexpr char UpTable[] = "0123456789ABCDEF";
    static constexpr char LowTable[] = "0123456789abcdef";
    const char* table = upper ? UpTable : LowTable;
    const auto b = static_cast<Unsigned>(base < 2 ? 10 : std::min(base, 16));
    int count = 0;
    do {
        digits[count++] = static_cast<wchar>(table[value % b]);
        value /= b;
    } while (value != 0);
    return count;
}

template <class Unsigned>
status integer_to_buffer(Unsigned value, std::int32_t base, std::int32_t upper, wchar* dest,
                         std::int64_t capacity, std::int64_t* length) {
    wchar digits[64];  // longest: 64 binary digits of a 64-bit value
    const int count = to_digits(value, base, upper != 0, digits);
    if (length) *length = count;
    if (count > capacity) return st::too_small_for_digits;
    std::reverse_copy(digits, digits + count, dest);
    return st::ok;
}

}  // namespace
}  // namespace vxlocfmt

using namespace vxlocfmt;

VX_EXPORT status vxlStatusToJnl(void* journal, std::int32_t severity, status code, ...) {
    va_list args;
    va_start(args, code);
    const status result =
        kernel::slot<kernel::journal_status_fn>(journal, kernel::journal_status_slot)(journal, severity, code, &args);
    va_end(args);
    return result;
}

VX_EXPORT status vxlMessageToJnl(void* journal, std::int32_t severity, const wchar* message, const wchar* format, ...) {
    va_list args;
    va_start(args, format);
    const status result = kernel::slot<kernel::journal_message_fn>(journal, kernel::journal_message_slot)(
        journal, severity, message, format, &args);
    va_end(args);
    return result;
}

VX_EXPORT status vxlStatusToBuf(void* object, status code, wchar* buffer, std::int64_t capacity, ...) {
    va_list args;
    va_start(args, capacity);
    const status result = kernel::slot<kernel::to_buf_fn>(object, kernel::object_status_to_buf_slot)(
        object, code, buffer, capacity, &args);
    va_end(args);
    return result;
}

VX_EXPORT status vxlMessageToBuf(void* object, const wchar* message, wchar* buffer, std::int64_t capacity, ...) {
    va_list args;
    va_start(args, capacity);
    const status result = kernel::slot<kernel::to_buf_fn>(object, kernel::object_message_to_buf_slot)(
        object, reinterpret_cast<std::uintptr_t>(message), buffer, capacity, &args);
    va_end(args);
    return result;
}

// The variadic entries pack their arguments and call their "V" twin.
#define VX_PACKED(name, twin, context_type, what_type)                                                   \
    VX_EXPORT status name(context_type context, what_type what, wchar* buffer, std::int64_t capacity,  \
                          std::int64_t* length, ...) {                                                   \
        va_list args;                                                                                    \
        va_start(args, length);                                                                          \
        const status result = twin(context, what, buffer, capacity, length, &args);                      \
        va_end(args);                                                                                    \
        return result;                                                                                   \
    }

VX_EXPORT status vxzCaptureV(void* context, const void* what, wchar* buffer, std::int64_t capacity,
                             std::int64_t* length, va_list* args) {
    return forward(kernel::handle_capture, context, what, buffer, capacity, length, args);
}
VX_EXPORT status vxzFormatBuffV(void* context, const void* what, wchar* buffer, std::int64_t capacity,
                                std::int64_t* length, va_list* args) {
    return forward(kernel::handle_format_buff, context, what, buffer, capacity, length, args);
}
VX_EXPORT status vxzFormat2BuffV(void** context, const void* what, wchar* buffer, std::int64_t capacity,
                                 std::int64_t* length, va_list* args) {
    return vxzFormatBuffV(deref(context), what, buffer, capacity, length, args);
}
VX_EXPORT status vxzRenderFmtV(void* context, const void* what, wchar* buffer, std::int64_t capacity,
                               std::int64_t* length, va_list* args) {
    return forward(kernel::handle_render_fmt, context, what, buffer, capacity, length, args);
}
VX_EXPORT status vxzRender2FmtV(void** context, const void* what, wchar* buffer, std::int64_t capacity,
                                std::int64_t* length, va_list* args) {
    return vxzRenderFmtV(deref(context), what, buffer, capacity, length, args);
}
VX_EXPORT status vxzStatusBuffV(void* context, status code, wchar* buffer, std::int64_t capacity,
                                std::int64_t* length, va_list* args) {
    const void* what = reinterpret_cast<const void*>(static_cast<std::uintptr_t>(code));
    if (context) return forward(kernel::handle_status_buff, context, what, buffer, capacity, length, args);
    // No context: the kernel handle's default journal, if it has one.
    void* handle = Exported_VXHandle;
    if (!handle) return st::no_journal;
    void* holder = kernel::word(handle, kernel::handle_word_default_journal);
    void* journal = holder ? *static_cast<void**>(holder) : nullptr;
    if (!journal) return st::no_journal;
    return kernel::slot<kernel::kernel_format_fn>(handle, kernel::handle_status_buff)(
        handle, journal, what, buffer, capacity, length, args);
}
VX_EXPORT status vxzStatus2BuffV(void** context, status code, wchar* buffer, std::int64_t capacity,
                                 std::int64_t* length, va_list* args) {
    return vxzStatusBuffV(deref(context), code, buffer, capacity, length, args);
}

VX_PACKED(vxzCapture, vxzCaptureV, void*, const void*)
VX_PACKED(vxzFormatBuff, vxzFormatBuffV, void*, const void*)
VX_PACKED(vxzFormat2Buff, vxzFormat2BuffV, void**, const void*)
VX_PACKED(vxzRenderFmt, vxzRenderFmtV, void*, const void*)
VX_PACKED(vxzRender2Fmt, vxzRender2FmtV, void**, const void*)
VX_PACKED(vxzStatusBuff, vxzStatusBuffV, void*, status)
VX_PACKED(vxzStatus2Buff, vxzStatus2BuffV, void**, status)

VX_EXPORT status vxzRender(void* context, const void* what, wchar* buffer, std::int64_t capacity,
                           std::int64_t* length, ...) {
    va_list args;
    va_start(args, length);
    const status result = forward(kernel::handle_render, context, what, buffer, capacity, length, &args);
    va_end(args);
    return result;
}
VX_EXPORT status vxzRender2(void** context, const void* what, wchar* buffer, std::int64_t capacity,
                            std::int64_t* length, ...) {
    va_list args;
    va_start(args, length);
    const status result = forward(kernel::handle_render, deref(context), what, buffer, capacity, length, &args);
    va_end(args);
    return result;
}

namespace {
void read_clock(double (&area)[2]) {
    area[0] = area[1] = 0;
    if (void* handle = Exported_VXHandle)
        kernel::slot<kernel::clock_fn>(handle, kernel::handle_clock)(handle, clock_query, area, clock_flags);
}
}  // namespace

VX_EXPORT double vxzdttme() {
    double area[2];
    read_clock(area);
    return area[0] - area[1];
}

VX_EXPORT double vxzdtgmt(double* offset) {
    double area[2];
    read_clock(area);
    if (offset) *offset = -area[1];
    return area[0];
}

VX_EXPORT void* vxGetBDConv() {
    if (!Exported_VXHandle) return nullptr;
    auto* block = static_cast<unsigned char*>(kernel::word(Exported_VXHandle, kernel::handle_word_conversion));
    return block ? block + conversion_table_offset : nullptr;
}

VX_EXPORT status vxzIMaxToBuff(std::uint64_t value, std::int32_t base, std::int32_t upper, wchar* dest,
                               std::int64_t capacity, std::int64_t* length) {
    return integer_to_buffer(value, base, upper, dest, capacity, length);
}

VX_EXPORT status vxzIFastToBuff(std::uint32_t value, std::int32_t base, std::int32_t upper, wchar* dest,
                                std::int64_t capacity, std::int64_t* length) {
    return integer_to_buffer(value, base, upper, dest, capacity, length);
}
