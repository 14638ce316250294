#include "library.h"

#include <dlfcn.h>
#include <unistd.h>

#include <algorithm>
#include <climits>
#include <cstddef>
#include <cstdlib>
#include <stdexcept>
#include <string>
#include <vector>

#include "kernel_handle.h"

namespace vxhost {

void adopt_instance(vxlocfmt::Instance* instance, const char* name) {
    instance->host_words[1] = const_cast<char*>(name);
}

namespace {

constexpr const char* library_file = "libvxlocfmt.so";

bool is_file(const std::string& path) { return access(path.c_str(), R_OK) == 0; }

// The folders the dynamic loader searches for a bare name from this program (run path,
// LD_LIBRARY_PATH, cache-less system folders), for the error message.
std::string loader_search_path() {
    void* self = dlopen(nullptr, RTLD_NOW);
    Dl_serinfo size{};
    std::string folders;
    if (self && dlinfo(self, RTLD_DI_SERINFOSIZE, &size) == 0 && size.dls_size > 0) {
        std::vector<std::max_align_t> storage(size.dls_size / sizeof(std::max_align_t) + 1);
        auto* info = reinterpret_cast<Dl_serinfo*>(storage.data());
        *info = size;
        if (dlinfo(self, RTLD_DI_SERINFO, info) == 0) {
            for (unsigned i = 0; i < info->dls_cnt; ++i) {
                if (!folders.empty()) folders += ':';
                folders += info->dls_serpath[i].dls_name;
            }
        }
    }
    if (self) dlclose(self);
    return folders;
}

}  // namespace

std::vector<std::string> library_candidates() {
    if (const char* path = std::getenv("VXLOCFMT_LIBRARY"); path && *path) return {path};
    std::vector<std::string> candidates;
    char exe[PATH_MAX];
    if (const ssize_t n = readlink("/proc/self/exe", exe, sizeof exe - 1); n > 0) {
        std::string dir(exe, static_cast<std::size_t>(n));
        dir.erase(dir.find_last_of('/') + 1);
        candidates.push_back(dir + library_file);
        std::string parent = dir.substr(0, dir.size() - 1);  // the program's folder, no final '/'
        parent.erase(parent.find_last_of('/') + 1);
        candidates.push_back(parent + "lib/" + library_file);
    }
    candidates.emplace_back(library_file);
    return candidates;
}

std::string default_library_path() {
    const std::vector<std::string> candidates = library_candidates();
    for (const std::string& path : candidates)
        if (is_file(path)) return path;
    return candidates.back();
}

Library::Library() {
    const std::vector<std::string> candidates = library_candidates();
    if (candidates.size() == 1) {  // $VXLOCFMT_LIBRARY, and nothing else
        start(candidates.front());
        return;
    }
    std::string looked;
    for (std::size_t i = 0; i + 1 < candidates.size(); ++i) {
        if (is_file(candidates[i])) {  // one that exists but fails to load is reported, not passed over
            start(candidates[i]);
            return;
        }
        looked += candidates[i] + ", ";
    }
    if (void* probe = dlopen(library_file, RTLD_NOW | RTLD_LOCAL)) {
        dlclose(probe);
        start(library_file);
        return;
    }
    throw std::runtime_error(std::string("cannot find ") + library_file + ": looked in " + looked +
                             "then the loader's search path (" + loader_search_path() +
                             "); set VXLOCFMT_LIBRARY to its path");
}

Library::Library(const std::string& path) { start(path); }

void Library::start(const std::string& path) {
    handle_ = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!handle_) throw std::runtime_error(std::string("cannot load ") + path + ": " + dlerror());
    using entry_fn = void* (*)(void*, void*);
    using extent_fn = vxlocfmt::status (*)(void*);
    auto entry = reinterpret_cast<entry_fn>(dlsym(handle_, "vxlocfmt"));
    auto extent = reinterpret_cast<extent_fn>(dlsym(handle_, "vxextent"));
    if (!entry || !extent) {
        dlclose(handle_);
        handle_ = nullptr;
        throw std::runtime_error(path + " is not a vxlocfmt extension (no vxlocfmt or vxextent)");
    }
    extent(kernel_handle());
    journal_ = Journal::create("host");
    instance_ = static_cast<vxlocfmt::Instance*>(entry(&context_, journal_));
    if (!instance_) {
        std::string why = "the extension declined to start";
        for (const auto& e : journal_->entries()) why += ": " + e.text;
        journal_->release();
        journal_ = nullptr;
        dlclose(handle_);
        handle_ = nullptr;
        throw std::runtime_error(why);
    }
    adopt_instance(instance_);
}

Library::~Library() {
    if (instance_) instance_->destroy(instance_);
    if (journal_) journal_->release();
    if (handle_) dlclose(handle_);
}

const vxlocfmt::FuncInfo* Library::find(std::u32string_view name) const {
    while (!name.empty() && name.back() == U' ') name.remove_suffix(1);
    if (name.empty() || name.size() > vxlocfmt::registry_name_length) return nullptr;
    for (const vxlocfmt::FuncInfo* row = registry(); row->function; ++row) {
        std::u32string_view row_name(row->name, vxlocfmt::registry_name_length);
        if (row_name.substr(0, name.size()) == name &&
            std::all_of(row_name.begin() + static_cast<long>(name.size()), row_name.end(),
                        [](char32_t c) { return c == U' '; }))
            return row;
    }
    return nullptr;
}

void* Library::symbol(const char* name) const { return dlsym(handle_, name); }

}  // namespace vxhost
