// vxlocfmt: format and read values the way the host does, from the command line or in bulk.
#include <cstdio>
#include <exception>
#include <iostream>
#include <memory>
#include <string>

#include "arguments.h"
#include "commands.h"
#include "kernel_handle.h"
#include "time_zone.h"

namespace {

constexpr const char* usage_text =
    "usage: vxlocfmt format SPEC [VALUE...]     format values (stdin, one a line, when none are given)\n"
    "       vxlocfmt read SPEC [TEXT...]        read texts with an informat (stdin when none are given)\n"
    "       vxlocfmt read ANYDATE|TEMPLATE [TEXT...] [--explain] [--as date|time]\n"
    "       vxlocfmt list formats|informats|classic|locales|templates\n"
    "       vxlocfmt locale NAME                print a locale's properties\n"
    "SPEC is NAME, NAMEw. or NAMEw.d (NLDATE20., NLNUM12.2, WEEKV).\n"
    "options: -l/--locale NAME (en_US)  --encoding NAME  --yearcutoff N  --tz ZONE\n"
    "         --check (check width and decimals)  --status (append each return code)\n"
    "         --library PATH (the extension to load)\n";

}  // namespace

int main(int argc, char** argv) {
    try {
        const vxcli::Arguments args = vxcli::parse_arguments(argc, argv);
        if (args.help || args.command.empty()) {
            std::fputs(usage_text, args.help ? stdout : stderr);
            return args.help ? 0 : 2;
        }
        if (args.year_cutoff) vxhost::set_year_cutoff(*args.year_cutoff);
        if (args.time_zone && !vxhost::set_time_zone(*args.time_zone))
            throw vxcli::UsageError("unknown time zone " + *args.time_zone);
        return vxcli::run_command(args);
    } catch (const vxcli::UsageError& error) {
        std::fprintf(stderr, "vxlocfmt: %s\n", error.what());
        return 2;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "vxlocfmt: %s\n", error.what());
        return 3;
    }
}
