#include "library_path.h"

#include <dlfcn.h>
#include <unistd.h>

#include <cstdlib>
#include <stdexcept>


namespace vxpy {
namespace {

constexpr const char* library_file = "libvxlocfmt.so";

// The folder of the shared object holding this function: the module's own folder.
std::string module_folder() {
    Dl_info info{};
    if (dladdr(reinterpret_cast<void*>(&module_folder), &info) == 0 || !info.dli_fname) return {};
    std::string path = info.dli_fname;
    const auto slash = path.find_last_of('/');
    return slash == std::string::npos ? std::string("./") : path.substr(0, slash + 1);
}

bool is_file(const std::string& path) { return access(path.c_str(), R_OK) == 0; }

const vxhost::Library& load() {
    const std::vector<std::string> candidates = library_candidates();
    std::string looked;
    for (const std::string& path : candidates) {
        if (candidates.size() > 1 && path.find('/') != std::string::npos && !is_file(path)) {
            looked += "\n  " + path + ": no such file";
            continue;
        }
        try {
            return *new vxhost::Library(path);  // never deleted: see shared_library()
        } catch (const std::runtime_error& failed) {
            looked += "\n  " + path + ": " + failed.what();
        }
    }
    throw std::runtime_error("vxlocfmt: cannot load " + std::string(library_file) + "; looked at:" + looked);
}

}  // namespace

std::vector<std::string> library_candidates() {
    if (const char* path = std::getenv("VXLOCFMT_LIBRARY"); path && *path) return {path};
    const std::string folder = module_folder();
    return {folder + library_file, folder + VXPY_LIBDIR_FROM_MODULE "/" + library_file, library_file};
}

const vxhost::Library& shared_library() {
    static const vxhost::Library& library = load();
    return library;
}

}  // namespace vxpy
