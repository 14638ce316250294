#include "pool.h"

#include <atomic>
#include <cstdlib>
#include <mutex>

#include "frame/kernel.h"

namespace vxhost {
namespace {

std::mutex stats_mutex;
PoolStats stats;
std::atomic<std::int64_t> allocations_before_failure{-1};
std::atomic<bool> pool_creation_failing{false};

void* slot_alloc(void* pool, std::uint64_t size, std::uint32_t flags) {
    return self<Pool>(pool).allocate(size, flags);
}
vxlocfmt::status slot_free(void* pool, void* block) {
    return self<Pool>(pool).release(block) ? 0 : 0x803fc0ffu;
}
vxlocfmt::status slot_destroy(void* pool) {
    self<Pool>(pool).destroy();
    return 0;
}

bool injected_failure() {
    std::int64_t left = allocations_before_failure.load();
    while (left >= 0) {
        if (left == 0) return true;
        if (allocations_before_failure.compare_exchange_weak(left, left - 1)) return false;
    }
    return false;
}

}  // namespace

PoolStats pool_stats() {
    std::lock_guard lock(stats_mutex);
    return stats;
}
void fail_allocations_after(std::int64_t after) { allocations_before_failure = after; }
void fail_pool_creation(bool fail) { pool_creation_failing = fail; }
bool pool_creation_fails() { return pool_creation_failing; }

Pool::Pool(std::string name) : name_(std::move(name)) {
    words[vxlocfmt::kernel::pool_destroy_slot] = fn_word(&slot_destroy);
    words[vxlocfmt::kernel::pool_alloc_slot] = fn_word(&slot_alloc);
    words[vxlocfmt::kernel::pool_free_slot] = fn_word(&slot_free);
    std::lock_guard lock(stats_mutex);
    ++stats.live_pools;
}

Pool::~Pool() {
    std::lock_guard lock(stats_mutex);
    --stats.live_pools;
}

Pool* Pool::create(std::string name) {
    if (pool_creation_failing) return nullptr;
    return new Pool(std::move(name));
}

void* Pool::allocate(std::uint64_t size, std::uint32_t) {
    if (injected_failure()) return nullptr;
    // Blocks are zeroed: the kernel's pools hand out cleared memory.
    void* block = std::calloc(1, size ? size : 1);
    if (!block) return nullptr;
    {
        std::lock_guard own(mutex_);
        blocks_.emplace(block, size);
    }
    std::lock_guard lock(stats_mutex);
    ++stats.live_blocks;
    ++stats.allocations;
    stats.live_bytes += static_cast<std::int64_t>(size);
    return block;
}

bool Pool::release(void* block) {
    std::uint64_t size;
    {
        std::lock_guard own(mutex_);
        auto it = blocks_.find(block);
        if (it == blocks_.end()) return false;
        size = it->second;
        blocks_.erase(it);
    }
    std::free(block);
    std::lock_guard lock(stats_mutex);
    --stats.live_blocks;
    stats.live_bytes -= static_cast<std::int64_t>(size);
    return true;
}

void Pool::destroy() {
    std::unordered_map<void*, std::uint64_t> blocks;
    {
        std::lock_guard own(mutex_);
        blocks.swap(blocks_);
    }
    std::int64_t bytes = 0;
    for (auto& [block, size] : blocks) {
        std::free(block);
        bytes += static_cast<std::int64_t>(size);
    }
    {
        std::lock_guard lock(stats_mutex);
        stats.live_blocks -= static_cast<std::int64_t>(blocks.size());
        stats.live_bytes -= bytes;
    }
    delete this;
}

}  // namespace vxhost
