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

std::optional<int> template_read_command(const Arguments& args);
int list_templates(const Arguments& args);

}  // namespace vxcli
