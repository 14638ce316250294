/*
 * The CLI's commands. Each returns the exit status: 0 when every call returned 0, 1 when any
 * did not; usage errors are thrown as UsageError (exit 2).
 *
 *   return vxcli::run_command(args);
 */
#pragma once

#include <memory>

#include "arguments.h"
#include "library.h"

namespace vxcli {

// The extension named by --library, else the host's default search (vxhost::library_candidates).
std::unique_ptr<vxhost::Library> load_library(const Arguments& args);

int run_command(const Arguments& args);

}  // namespace vxcli
