/*
 * The command line: a command, its operands and the options, wherever they stand. Negative
 * numbers are operands, not options.
 *
 *   Arguments args = parse_arguments(argc, argv);   // throws UsageError naming the argument
 *   auto spec = parse_spec("NLNUM12.2");             // {"NLNUM", 12, 2}
 */
#pragma once

#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "embed/request.h"

namespace vxcli {

// A request the command cannot carry out as asked: exit status 2.
using UsageError = vxhost::RequestError;

struct Arguments {
    std::string command;
    std::vector<std::string> operands;
    std::string locale;  // the host's id: -l resolved, else the environment's (locale_names.h)
    std::string encoding;
    std::optional<long long> year_cutoff;
    std::optional<std::string> time_zone;
    std::string library;
    bool check = false;
    bool status = false;
    bool help = false;
    bool explain = false;  // read with a template: append the row that read the text
    std::string as;        // read ANYDATE: "date" or "time" for the driver's views
    bool version = false;
    bool keep_going = false;  // bulk mode: an unreadable line gives the missing value, exit 1 at the end
};

Arguments parse_arguments(int argc, char** argv);

using vxhost::parse_spec;
using vxhost::Spec;

}  // namespace vxcli
