/*
 * What the programs that time one of our rows beside its peers share: the library they load,
 * the folder where C library locales are compiled when the system lacks them, the thread's CPU
 * clock, and the counters they report.
 *
 *   double ours = 0, icu = 0;
 *   for (auto _ : state) { ... ours += t1 - t0; icu += t2 - t1; ... }
 *   vxbench::report_per_value(state, batch, ours, {{"icu", icu}});
 *
 * gives the counters ns_per_value (ours), icu_ns and vs_icu = ours / ICU (below 1: we are faster).
 */
#pragma once

#include <benchmark/benchmark.h>

#include <climits>
#include <ctime>
#include <initializer_list>
#include <string>
#include <unistd.h>

#include "library.h"

namespace vxbench {

// One loaded library for the whole program, as a host keeps it.
inline vxhost::Library& loaded_library() {
    static vxhost::Library loaded;
    return loaded;
}

// The folder the program lives in; "." when /proc cannot say.
inline std::string program_folder() {
    char exe[PATH_MAX];
    const ssize_t n = readlink("/proc/self/exe", exe, sizeof exe - 1);
    if (n <= 0) return ".";
    const std::string path(exe, static_cast<std::size_t>(n));
    return path.substr(0, path.find_last_of('/'));
}

// Where CLocale compiles the C library locales a peer needs.
inline std::string locale_cache() { return program_folder() + "/bench-locales"; }

// The calling thread's CPU time: figures that hold on a loaded machine.
inline double thread_cpu_ns() {
    timespec t{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &t);
    return static_cast<double>(t.tv_sec) * 1e9 + static_cast<double>(t.tv_nsec);
}

// A peer's summed nanoseconds; a peer that could not run (no C library locale) is left out.
struct PeerTime {
    const char* name;
    double ns;
    bool ran = true;
};

// Items processed and the per-value counters, from nanoseconds summed over every iteration of
// `batch` values.
inline void report_per_value(benchmark::State& state, std::size_t batch, double ours_ns,
                             std::initializer_list<PeerTime> peers) {
    const double n = static_cast<double>(state.iterations()) * static_cast<double>(batch);
    state.SetItemsProcessed(static_cast<std::int64_t>(n));
    state.counters["ns_per_value"] = ours_ns / n;
    for (const PeerTime& peer : peers) {
        if (!peer.ran) continue;
        state.counters[std::string(peer.name) + "_ns"] = peer.ns / n;
        state.counters["vs_" + std::string(peer.name)] = peer.ns > 0 ? ours_ns / peer.ns : 0;
    }
}

}  // namespace vxbench
