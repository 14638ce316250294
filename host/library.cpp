#include "library.h"

#include <dlfcn.h>
#include <unistd.h>

#include <algorithm>
#include <climits>
#include <cstdlib>
#include <stdexcept>

#include "kernel_handle.h"

namespace vxhost {

void adopt_instance(vxlocfmt::Instance* instance, const char* name) {
    instance->host_words[1] = const_cast<char*>(name);
}

std::string default_library_path() {
    if (const char* path = std::getenv("VXLOCFMT_LIBRARY"); path && *path) return path;
    char exe[PATH_MAX];
    const ssize_t n = readlink("/proc/self/exe", exe, sizeof exe - 1);
    if (n <= 0) return "libvxlocfmt.so";
    std::string dir(exe, static_cast<std::size_t>(n));
    dir.erase(dir.find_last_of('/') + 1);
    // Beside the program (the build tree), else in ../lib (an installed tree).
    const std::string beside = dir + "libvxlocfmt.so";
    if (access(beside.c_str(), R_OK) == 0) return beside;
    const std::string installed = dir + "../lib/libvxlocfmt.so";
    return access(installed.c_str(), R_OK) == 0 ? installed : beside;
}

Library::Library(const std::string& path) {
    handle_ = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!handle_) throw std::runtime_error(std::string("cannot load ") + path + ": " + dlerror());
    using entry_fn = void* (*)(void*, void*);
    using extent_fn = vxlocfmt::status (*)(void*);
    auto entry = reinterpret_cast<entry_fn>(dlsym(handle_, "vxlocfmt"));
    auto extent = reinterpret_cast<extent_fn>(dlsym(handle_, "vxextent"));
    if (!entry || !extent) {
        dlclose(handle_);
        throw std::runtime_error(path + " is not a vxlocfmt extension (no vxlocfmt or vxextent)");
    }
    extent(kernel_handle());
    journal_ = Journal::create("host");
    instance_ = static_cast<vxlocfmt::Instance*>(entry(&context_, journal_));
    if (!instance_) {
        std::string why = "the extension declined to start";
        for (const auto& e : journal_->entries()) why += ": " + e.text;
        journal_->release();
        dlclose(handle_);
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
