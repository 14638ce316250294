/*
 * The extension as the Python module loads it. The interpreter is the running program, so the
 * host's "beside the executable" rule would look in /usr/bin; the module looks beside itself
 * instead (the build tree links libvxlocfmt.so there), then in the installed library folder.
 *
 *   const vxhost::Library& library = vxpy::shared_library();   // loaded once per process
 */
#pragma once

#include <string>
#include <vector>

#include "library.h"

namespace vxpy {

// $VXLOCFMT_LIBRARY alone when set; else the module's folder, the installed library folder
// (VXPY_LIBDIR_FROM_MODULE, relative to the module's folder), then the bare name.
std::vector<std::string> library_candidates();

// Loaded on first use and kept for the life of the process: threads keep warm sessions on it
// until they end, which may be after the interpreter has dropped the module. Throws
// std::runtime_error listing every place looked when no candidate loads.
const vxhost::Library& shared_library();

}  // namespace vxpy
