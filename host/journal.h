/*
 * Journals: keep every message with its severity and status, in order. The CLI prints a
 * journal's messages on stderr.
 *
 *   vxhost::Journal* journal = vxhost::Journal::create("cli");
 *   vxlStatusToJnl(journal, 4, 0x803fc002u);   // journal->entries().back().status == 0x803fc002
 */
#pragma once

#include <cstdint>
#include <mutex>
#include <string>
#include <vector>

#include "kernel_object.h"

namespace vxhost {

struct JournalEntry {
    std::int32_t severity;
    std::uint32_t status;  // 0 for a message
    std::string text;      // UTF-8
};

// Plain text of a kernel status, as the host's message catalog words it.
std::string status_text(std::uint32_t status);

class Journal : public KernelObject<8> {
public:
    static Journal* create(std::string name);
    void add(JournalEntry entry);
    std::vector<JournalEntry> entries() const;
    std::int64_t flushes() const { return flushes_; }
    void flush() { ++flushes_; }
    void release();  // deletes the journal
    static std::int64_t live();  // journals created and not yet released

private:
    explicit Journal(std::string name);
    ~Journal();
    std::string name_;
    mutable std::mutex mutex_;
    std::vector<JournalEntry> entries_;
    std::int64_t flushes_ = 0;
};

}  // namespace vxhost
