// Locale ids from ICU; blocks are empty until the pinned data file is wired in.
#include "locale_data.h"

#include <unicode/uloc.h>

#include <algorithm>
#include <map>
#include <memory>
#include <mutex>

namespace vxhost {

const std::vector<std::string>& locale_names() {
    static const std::vector<std::string> names = [] {
        std::vector<std::string> all;
        const int32_t count = uloc_countAvailable();
        for (int32_t i = 0; i < count; ++i) all.emplace_back(uloc_getAvailable(i));
        all.emplace_back("en_US_POSIX");
        std::sort(all.begin(), all.end());
        all.erase(std::unique(all.begin(), all.end()), all.end());
        return all;
    }();
    return names;
}

std::string canonical_locale(std::string_view name) {
    std::string id(name);
    std::replace(id.begin(), id.end(), '-', '_');
    const auto& names = locale_names();
    return std::binary_search(names.begin(), names.end(), id) ? id : std::string();
}

const unsigned char* locale_block(std::string_view canonical_id) {
    static std::mutex mutex;
    static std::map<std::string, std::unique_ptr<unsigned char[]>, std::less<>> blocks;
    std::lock_guard lock(mutex);
    if (auto it = blocks.find(canonical_id); it != blocks.end()) return it->second.get();
    if (canonical_locale(canonical_id) != canonical_id) return nullptr;
    auto block = std::make_unique<unsigned char[]>(locale_block_size);
    const unsigned char* raw = block.get();
    blocks.emplace(std::string(canonical_id), std::move(block));
    return raw;
}

}  // namespace vxhost
