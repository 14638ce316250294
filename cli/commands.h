/*
 * The CLI's commands. Each returns the exit status: 0 when every call returned 0, 1 when any
 * did not; usage errors are thrown as UsageError (exit 2).
 *
 *   return vxcli::run_command(args);
 */
#pragma once

#include "arguments.h"

namespace vxcli {

int run_command(const Arguments& args);

}  // namespace vxcli
