/*
 * Locale names as people have them in their environment, resolved the same way by the CLI and
 * the Python module: "pt_BR.UTF-8" (the code set is
 * dropped), "de_DE@euro" (the modifier is dropped), "C" and "POSIX" (the host's en_US_POSIX),
 * and, when no -l is given, $LC_ALL, then $LANG.
 *
 *   resolve_locale("pt_BR.UTF-8")    // "pt_BR"
 *   resolve_locale("fr_FX")          // throws RequestError("unknown locale fr_FX (nearest: fr_FR, ...)")
 */
#pragma once

#include <string>
#include <string_view>

namespace vxhost {

// The host's id for the name; throws RequestError naming the nearest known names when unknown.
std::string resolve_locale(std::string_view name);

// The locale of the environment ($LC_ALL, else $LANG) when it names one the host knows; en_US
// when neither is set or the first set is C or POSIX (the environment's "nothing chosen"). An
// unknown name there is reported on stderr and en_US used, so a machine set to a locale the host
// lacks still runs every command.
std::string environment_locale();

}  // namespace vxhost
