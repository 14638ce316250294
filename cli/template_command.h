/*
 * The any-date reader on the command line: `read ANYDATE TEXT` (the driver; `--as date|time`
 * for its date and time views), `read NAME TEXT` for every other template name (through
 * dtmInformat), `--explain` for the row that read the text, and `list templates`.
 *
 *   if (auto code = template_read_command(args)) return *code;   // not a template name: nullopt
 */
#pragma once

#include <optional>
#include <string>

#include "arguments.h"

namespace vxcli {

// The template name a SPEC starts with (the longest known one, taken whole, so B8601DA10. is
// B8601DA with a width), followed by nothing or a width; nullopt when it names no template.
std::optional<std::string> template_spec_name(const std::string& spec);

std::optional<int> template_read_command(const Arguments& args);
int list_templates(const Arguments& args);

}  // namespace vxcli
