/*
 * `vxlocfmt help SPEC`: what a row is (format or informat), its width and decimals limits and
 * defaults, and one example computed by the library itself; `vxlocfmt --version`.
 *
 *   vxlocfmt help NLDATE      vxlocfmt help @NLNUM      vxlocfmt --version
 */
#pragma once

#include "arguments.h"

namespace vxcli {

// `help` alone is the usage text, printed by main.
int help_command(const Arguments& args);
int version_command(const Arguments& args);

}  // namespace vxcli
