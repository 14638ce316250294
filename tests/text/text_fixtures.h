/*
 * Shared by the text tests: the Unicode 9.0.0 data expanded per code point, a kernel handle
 * with or without the host's national-language service, and a small counting pool.
 *
 *   ScopedKernelHandle with_service(vxhost::nls_service());
 *   EXPECT_EQ(unicode9().category[0x41], 1);
 */
#pragma once

#include <cstdint>
#include <unordered_map>
#include <vector>

#include "frame/kernel.h"
#include "unicode9_tables.h"

namespace vxlocfmt::text::testing {

inline constexpr std::uint32_t code_points = 0x110000;

struct Unicode9 {
    std::vector<std::uint8_t> category;  // per code point, numbered as ansi_ccl numbers it
    std::vector<char32_t> lower, upper;  // simple mappings, identity where none
};

inline const Unicode9& unicode9() {
    static const Unicode9 data = [] {
        Unicode9 d{std::vector<std::uint8_t>(code_points), std::vector<char32_t>(code_points),
                   std::vector<char32_t>(code_points)};
        const auto& runs = testdata::category_runs;
        for (std::size_t r = 0; r < std::size(runs); ++r) {
            const std::uint32_t end = r + 1 < std::size(runs) ? runs[r + 1].first : code_points;
            for (std::uint32_t c = runs[r].first; c < end; ++c) d.category[c] = runs[r].category;
        }
        for (std::uint32_t c = 0; c < code_points; ++c) d.lower[c] = d.upper[c] = c;
        for (const auto& m : testdata::simple_lower) d.lower[m.from] = m.to;
        for (const auto& m : testdata::simple_upper) d.upper[m.from] = m.to;
        return d;
    }();
    return data;
}

// Points Exported_VXHandle at a fresh handle table whose word 27 holds `service` (null: the
// kernel offers no national-language service); the previous handle comes back afterwards.
class ScopedKernelHandle {
public:
    explicit ScopedKernelHandle(void* service) : saved_(Exported_VXHandle) {
        table_[kernel::handle_word_nls] = service;
        Exported_VXHandle = table_;
    }
    ~ScopedKernelHandle() { Exported_VXHandle = saved_; }
    ScopedKernelHandle(const ScopedKernelHandle&) = delete;
    ScopedKernelHandle& operator=(const ScopedKernelHandle&) = delete;

private:
    void* table_[kernel::handle_words]{};
    void* saved_;
};

// A pool behind the kernel's pool slots that records each request and can refuse them.
class CountingPool {
    void* words_[8]{};  // first: the table the library indexes

public:
    CountingPool() {
        words_[kernel::pool_alloc_slot] = reinterpret_cast<void*>(&alloc);
        words_[kernel::pool_free_slot] = reinterpret_cast<void*>(&free_block);
    }
    ~CountingPool() {
        for (auto& [block, size] : live_) ::operator delete(block);
    }
    void* object() { return this; }
    bool refuse = false;
    std::vector<std::uint64_t> requested;  // sizes asked for, in order
    std::size_t live() const { return live_.size(); }
    std::size_t frees = 0;

private:
    std::unordered_map<void*, std::uint64_t> live_;

    static void* alloc(void* self, std::uint64_t size, std::uint32_t) {
        auto& p = *static_cast<CountingPool*>(self);
        p.requested.push_back(size);
        if (p.refuse) return nullptr;
        void* block = ::operator new(size);
        p.live_[block] = size;
        return block;
    }
    static status free_block(void* self, void* block) {
        auto& p = *static_cast<CountingPool*>(self);
        ++p.frees;
        if (p.live_.erase(block) == 0) return 1;
        ::operator delete(block);
        return 0;
    }
};

}  // namespace vxlocfmt::text::testing
