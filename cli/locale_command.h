/*
 * `vxlocfmt locale NAME`: the locale property table as the library builds it for a session in
 * that locale (and, with --encoding, that session encoding): the 189 properties as
 * "number TAB width TAB text" and the six number-convention records, for users checking a
 * locale and for bug reports.
 *
 *   vxlocfmt locale de-DE
 *   vxlocfmt locale ru_RU --encoding latin1     # characters Latin-1 cannot hold, replaced
 */
#pragma once

#include "arguments.h"

namespace vxcli {

// Throws UsageError("unknown locale NAME") for a name the host does not know.
int locale_command(const Arguments& args);

}  // namespace vxcli
