#include "huge_pages.h"

#include <cstdint>

#if defined(__linux__)
#include <sys/mman.h>
#include <unistd.h>
#endif

namespace vxpy {

void advise_huge_pages([[maybe_unused]] void* data, [[maybe_unused]] std::size_t bytes) {
#if defined(__linux__) && defined(MADV_HUGEPAGE)
    if (bytes < huge_page_advice_min_bytes) return;
    const auto page = static_cast<std::uintptr_t>(sysconf(_SC_PAGESIZE));
    const auto begin = (reinterpret_cast<std::uintptr_t>(data) + page - 1) / page * page;
    const auto end = (reinterpret_cast<std::uintptr_t>(data) + bytes) / page * page;
    // A refusal (an old kernel, no huge pages) leaves ordinary pages: nothing to report.
    if (end > begin) madvise(reinterpret_cast<void*>(begin), end - begin, MADV_HUGEPAGE);
#endif
}

}  // namespace vxpy
