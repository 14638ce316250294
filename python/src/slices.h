/*
 * A column cut into slices run side by side: the first on the calling thread, the others on
 * threads started for the call, each of which takes its own warm formatter or reader (its own
 * call record). Threads are worth starting only for long columns: a new thread's first call
 * opens a session and builds the locale's property table (about 0.1 ms).
 *
 *   vxpy::in_slices(count, threads, [&](std::size_t begin, std::size_t end, std::size_t slice) { ... });
 */
#pragma once

#include <algorithm>
#include <cstddef>
#include <exception>
#include <thread>
#include <vector>

namespace vxpy {

// Fewer values than this per slice do not repay a thread's start.
constexpr std::size_t min_slice = 65536;

// The threads a call may use: as asked, 0 meaning one per core.
inline unsigned thread_count(unsigned asked) {
    return asked != 0 ? asked : std::max(std::thread::hardware_concurrency(), 1u);
}

// Calls work(begin, end, slice) on slices 0, 1, ... (at most thread_count(threads)) covering
// [0, count) in order; rethrows the first slice's exception.
template <typename Work>
void in_slices(std::size_t count, unsigned threads, Work&& work) {
    const std::size_t slices = std::clamp<std::size_t>(count / min_slice, 1, thread_count(threads));
    if (slices == 1) {
        work(std::size_t{0}, count, std::size_t{0});
        return;
    }
    std::vector<std::exception_ptr> failures(slices);
    std::vector<std::thread> started;
    auto run = [&](std::size_t slice) {
        try {
            work(count * slice / slices, count * (slice + 1) / slices, slice);
        } catch (...) {
            failures[slice] = std::current_exception();
        }
    };
    for (std::size_t slice = 1; slice < slices; ++slice) started.emplace_back(run, slice);
    run(0);
    for (std::thread& thread : started) thread.join();
    for (const std::exception_ptr& failure : failures)
        if (failure) std::rethrow_exception(failure);
}

}  // namespace vxpy
