/*
 * What a caller can name: every format and informat SPEC may start with, for listings and
 * completions in the CLI and the bindings.
 *
 *   for (const std::string& name : vxhost::format_names(library)) ...   // "NLBEST", ..., "COMMA"
 */
#pragma once

#include <string>
#include <vector>

#include "library.h"

namespace vxhost {

// The registry's formats in registry order, then the classic formats.
std::vector<std::string> format_names(const Library& library);
// The registry's informats ("@NLDATE", ...), the classic informats with a numeric result, then
// "ANYDATE" and the other template names of the any-date reader, each once.
std::vector<std::string> informat_names(const Library& library);

}  // namespace vxhost
