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

namespace vxcli {

struct UsageError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

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

struct Spec {
    std::string name;  // upper case, as the registry writes it
    std::optional<int> width;
    std::optional<int> decimals;
};
// NAME, NAMEw. or NAMEw.d.
Spec parse_spec(const std::string& text);

}  // namespace vxcli
