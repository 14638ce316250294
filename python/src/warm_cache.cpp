#include "warm_cache.h"

#include <memory>
#include <unordered_map>

#include "library_path.h"
#include "embed/locale_names.h"

namespace vxpy {
namespace {

// A program that keeps naming new SPECs should not grow a thread's cache without bound; past
// this many, the thread's cache starts again (a few milliseconds to warm what is still in use).
constexpr std::size_t max_warm_per_thread = 64;

template <typename T>
T& warm(const Request& request, char what) {
    thread_local std::unordered_map<std::string, std::unique_ptr<T>> cache;
    std::string key;
    key.reserve(request.spec.size() + request.locale.size() + request.encoding.size() + 3);
    key.append(1, what).append(request.spec).append(1, '\n').append(request.locale).append(1, '\n').append(request.encoding);
    if (const auto found = cache.find(key); found != cache.end()) return *found->second;
    vxhost::SessionOptions options;
    options.locale = resolve_locale(request.locale);
    options.encoding = request.encoding;
    auto made = std::make_unique<T>(shared_library(), request.spec, options);
    if (cache.size() >= max_warm_per_thread) cache.clear();
    return *cache.emplace(std::move(key), std::move(made)).first->second;
}

}  // namespace

std::string resolve_locale(const std::string& name) {
    return name.empty() ? vxhost::environment_locale() : vxhost::resolve_locale(name);
}

vxhost::Formatter& warm_formatter(const Request& request) { return warm<vxhost::Formatter>(request, 'f'); }

vxhost::Reader& warm_reader(const Request& request) { return warm<vxhost::Reader>(request, 'r'); }

}  // namespace vxpy
