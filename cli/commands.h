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
#include "session.h"

namespace vxcli {

// The row a SPEC's name names: "@NAME" an informat, "NAME" a format (or a classic clock format
// the CLI offers by name); throws UsageError("unknown format 'TEXT'").
const vxlocfmt::FuncInfo& find_spec_row(const vxhost::Library& library, const std::string& name, std::uint32_t kind,
                                        const std::string& spec_text);
// A session in the arguments' locale and encoding; throws UsageError for an unknown encoding.
std::unique_ptr<vxhost::Session> open_call_session(const vxhost::Library& library, const Arguments& args);

// The extension named by --library, else the host's default search (vxhost::library_candidates).
std::unique_ptr<vxhost::Library> load_library(const Arguments& args);

int run_command(const Arguments& args);

}  // namespace vxcli
