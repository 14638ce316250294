// vxlocfmt: format and read values the way the host does, from the command line or in bulk.
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <iostream>
#include <memory>
#include <string>

#include "arguments.h"
#include "commands.h"
#include "help_command.h"
#include "kernel_handle.h"
#include "time_zone.h"

namespace {

constexpr const char* usage_text =
    "usage: vxlocfmt format SPEC [VALUE...]     format values (stdin, one a line, when none are given)\n"
    "       vxlocfmt read SPEC [TEXT...]        read texts with an informat (stdin when none are given)\n"
    "       vxlocfmt read ANYDATE|TEMPLATE [TEXT...] [--explain] [--as date|time]\n"
    "       vxlocfmt list formats|informats|classic|locales|templates\n"
    "       vxlocfmt locale NAME                print a locale's properties\n"
    "       vxlocfmt help [SPEC]                this text, or a format's limits, defaults and an example\n"
    "SPEC is NAME, NAMEw. or NAMEw.d (NLDATE20., NLNUM12.2, WEEKV).\n"
    "options: -l/--locale NAME ($LC_ALL, $LANG, else en_US)  --encoding NAME  --yearcutoff N\n"
    "         --tz ZONE ($TZ, else UTC)  --check (the library checks width and decimals)\n"
    "         --status (append each return code)  --keep-going (bulk: an unreadable line gives\n"
    "         the missing value, exit 1 at the end)  --library PATH (the extension to load)\n"
    "         --version\n";

}  // namespace

int main(int argc, char** argv) {
    try {
        const vxcli::Arguments args = vxcli::parse_arguments(argc, argv);
        if (args.version) return vxcli::version_command(args);
        const bool help = args.help || (args.command == "help" && args.operands.empty());
        if (help || args.command.empty()) {
            std::fputs(usage_text, help ? stdout : stderr);
            return help ? 0 : 2;
        }
        if (args.year_cutoff) vxhost::set_year_cutoff(*args.year_cutoff);
        if (args.time_zone && !vxhost::set_time_zone(*args.time_zone))
            throw vxcli::UsageError("unknown time zone " + *args.time_zone);
        // $TZ is the default --tz, and as strictly checked (POSIX's leading ':' allowed).
        if (const char* tz = std::getenv("TZ"); !args.time_zone && tz && *tz &&
                                                !vxhost::set_time_zone(tz[0] == ':' ? tz + 1 : tz))
            throw vxcli::UsageError(std::string("unknown time zone ") + tz + " (from $TZ)");
        return vxcli::run_command(args);
    } catch (const vxcli::UsageError& error) {
        std::fprintf(stderr, "vxlocfmt: %s\n", error.what());
        return 2;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "vxlocfmt: %s\n", error.what());
        return 3;
    }
}
