#include "kernel_handle.h"

#include <atomic>
#include <chrono>
#include <cstring>
#include <cwchar>

#include "frame/kernel.h"
#include "frame/reporting.h"
#include "journal.h"
#include "kernel_object.h"
#include "nls_service.h"
#include "number_formatter.h"
#include "text_convert.h"
#include "time_zone.h"

namespace vxhost {
namespace {

using vxlocfmt::status;
using vxlocfmt::wchar;

constexpr std::int64_t no_cutoff = INT64_MIN;
std::atomic<std::int64_t> cutoff{no_cutoff};

constexpr std::u32string_view option_year_cutoff = U"VX_NAME_YEARCUTOFF";

// Cheap on purpose: every two-digit year of every date conversion asks it.
status slot_option(void*, const wchar* name, std::int32_t length, void* result, std::int32_t size) {
    if (!name || length != static_cast<std::int32_t>(option_year_cutoff.size()) ||
        std::u32string_view(name, static_cast<std::size_t>(length)) != option_year_cutoff)
        return 1;
    const std::int64_t year = cutoff.load(std::memory_order_relaxed);
    if (year == no_cutoff || !result || size < 8) return 1;
    std::memcpy(result, &year, sizeof year);
    return 0;
}

// area[0]: universal datetime now; area[1]: seconds west of universal time (local = [0] - [1]).
status slot_clock(void*, std::int32_t, double* area, std::uint32_t) {
    using namespace std::chrono;
    const double now = duration<double>(system_clock::now().time_since_epoch()).count() + unix_epoch_datetime;
    area[0] = now;
    area[1] = -zone_offset_seconds(now);
    return 0;
}

std::int64_t put_text(std::string_view text, wchar* buffer, std::int64_t capacity) {
    const std::u32string wide = from_utf8(text);
    const auto count = std::min<std::int64_t>(capacity, static_cast<std::int64_t>(wide.size()));
    if (buffer && count > 0) std::memcpy(buffer, wide.data(), static_cast<std::size_t>(count) * sizeof(wchar));
    return static_cast<std::int64_t>(wide.size());
}

// Formatting slots: the host renders a status as its catalog text, and a format text as it stands.
status slot_status_text(void*, void*, const void* what, wchar* buffer, std::int64_t capacity, std::int64_t* length,
                        va_list*) {
    const auto code = static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(what));
    const std::int64_t n = put_text(status_text(code), buffer, capacity);
    if (length) *length = std::min(n, capacity);
    return n > capacity ? vxlocfmt::st::does_not_fit : 0;
}
status slot_copy_text(void*, void*, const void* what, wchar* buffer, std::int64_t capacity, std::int64_t* length,
                      va_list*) {
    const auto* text = static_cast<const wchar*>(what);
    std::int64_t n = 0;
    while (text && text[n]) ++n;
    const std::int64_t count = std::min(n, capacity);
    if (buffer && count > 0) std::memcpy(buffer, text, static_cast<std::size_t>(count) * sizeof(wchar));
    if (length) *length = count;
    return n > capacity ? vxlocfmt::st::does_not_fit : 0;
}

// The global number-format service: the number formatter without a locale of its own.
struct NumberFormatService : KernelObject<vxlocfmt::kernel::locale_number_format_slot + 1> {
    NumberFormatService() { words[vxlocfmt::kernel::locale_number_format_slot] = fn_word(&format_number); }
};

struct Handle : KernelObject<vxlocfmt::kernel::handle_words> {
    NumberFormatService number_format;
    std::atomic<Journal*> default_journal{nullptr};
    void* journal_holder = nullptr;  // word 35 points here
    unsigned char conversion[1024]{};
    Handle() {
        using namespace vxlocfmt::kernel;
        words[handle_option_lookup] = fn_word(&slot_option);
        words[handle_clock] = fn_word(&slot_clock);
        words[handle_word_nls] = nls_service();  // a host with national-language support
        words[handle_word_default_journal] = &journal_holder;
        words[handle_word_zone] = zone_object();
        words[handle_word_number_format] = &number_format;
        words[handle_word_conversion] = conversion;
        words[handle_capture] = fn_word(&slot_copy_text);
        words[handle_format_buff] = fn_word(&slot_copy_text);
        words[handle_render] = fn_word(&slot_copy_text);
        words[handle_render_fmt] = fn_word(&slot_copy_text);
        words[handle_status_buff] = fn_word(&slot_status_text);
    }
};

Handle& handle() {
    static Handle instance;
    return instance;
}

}  // namespace

void* kernel_handle() { return &handle(); }

void set_year_cutoff(std::optional<std::int64_t> year) { cutoff = year ? *year : no_cutoff; }
std::optional<std::int64_t> year_cutoff() {
    const std::int64_t year = cutoff;
    return year == no_cutoff ? std::nullopt : std::optional(year);
}

void set_nls_service(void* service) { handle().words[vxlocfmt::kernel::handle_word_nls] = service; }

void set_default_journal(Journal* journal) { handle().journal_holder = journal; }
Journal* default_journal() { return static_cast<Journal*>(handle().journal_holder); }

}  // namespace vxhost
