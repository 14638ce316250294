#include "journal.h"

#include <atomic>
#include <cstdio>

#include "frame/kernel.h"
#include "text_convert.h"

namespace vxhost {
namespace {

std::atomic<std::int64_t> live_journals{0};

vxlocfmt::status slot_release(void* journal) {
    self<Journal>(journal).release();
    return 0;
}
vxlocfmt::status slot_flush(void* journal) {
    self<Journal>(journal).flush();
    return 0;
}
vxlocfmt::status slot_status(void* journal, std::int32_t severity, vxlocfmt::status code, va_list*) {
    self<Journal>(journal).add({severity, code, status_text(code)});
    return 0;
}
vxlocfmt::status slot_message(void* journal, std::int32_t severity, const vxlocfmt::wchar* message,
                              const vxlocfmt::wchar*, va_list*) {
    self<Journal>(journal).add({severity, 0, message ? to_utf8(std::u32string_view(message)) : std::string()});
    return 0;
}

}  // namespace

std::string status_text(std::uint32_t status) {
    switch (status) {
    case 0x803fc002u: return "memory exhausted";
    case 0x803fc003u: return "text is not valid base64";
    case 0x803fc009u: return "no journal";
    case 0x803fc0c9u: return "destination too small for the digits";
    case 0x803fe807u: return "converted text does not fit the field";
    case 0x803fe816u: return "number shortened to fit";
    case 0x803fe85bu: return "number written without its thousands separators";
    case 0x803fe80eu: return "no room for the number";
    default: {
        char text[32];
        std::snprintf(text, sizeof text, "status 0x%08x", status);
        return text;
    }
    }
}

Journal::Journal(std::string name) : name_(std::move(name)) {
    words[vxlocfmt::kernel::journal_release_slot] = fn_word(&slot_release);
    words[vxlocfmt::kernel::journal_flush_slot] = fn_word(&slot_flush);
    words[vxlocfmt::kernel::journal_message_slot] = fn_word(&slot_message);
    words[vxlocfmt::kernel::journal_status_slot] = fn_word(&slot_status);
    ++live_journals;
}
Journal::~Journal() { --live_journals; }

Journal* Journal::create(std::string name) { return new Journal(std::move(name)); }
void Journal::add(JournalEntry entry) {
    std::lock_guard lock(mutex_);
    entries_.push_back(std::move(entry));
}
std::vector<JournalEntry> Journal::entries() const {
    std::lock_guard lock(mutex_);
    return entries_;
}
void Journal::release() { delete this; }
std::int64_t Journal::live() { return live_journals; }

}  // namespace vxhost
