/*
 * Memory pools: real allocations, counted (live blocks and bytes) so tests can prove nothing
 * leaks, destroyed whole, with fault injection for the failure paths.
 *
 *   vxhost::Pool* pool = vxhost::Pool::create("session");
 *   void* block = vxlocfmt::kernel::pool_alloc(pool, 64, 0);
 */
#pragma once

#include <cstddef>
#include <cstdint>
#include <mutex>
#include <string>
#include <unordered_map>

#include "kernel_object.h"

namespace vxhost {

// Process-wide counters and fault injection over every pool.
struct PoolStats {
    std::int64_t live_pools = 0;
    std::int64_t live_blocks = 0;
    std::int64_t live_bytes = 0;
    std::int64_t allocations = 0;
};
PoolStats pool_stats();
// The next `after` allocations succeed, then every one fails until cleared; -1 clears.
void fail_allocations_after(std::int64_t after);
// Pool creation fails while set.
void fail_pool_creation(bool fail);
bool pool_creation_fails();

class Pool : public KernelObject<8> {
public:
    static Pool* create(std::string name);
    void* allocate(std::uint64_t size, std::uint32_t flags);
    bool release(void* block);
    void destroy();  // frees every block and the pool itself
    std::size_t live_blocks() const {
        std::lock_guard lock(mutex_);
        return blocks_.size();
    }

private:
    explicit Pool(std::string name);
    ~Pool();
    std::string name_;
    mutable std::mutex mutex_;  // one pool may serve several threads
    std::unordered_map<void*, std::uint64_t> blocks_;
};

}  // namespace vxhost
