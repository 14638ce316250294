#include "arguments.h"

#include <cctype>
#include <charconv>

#include "embed/locale_names.h"

namespace vxcli {
namespace {

// "-5", "-.5", "-inf", "-nan": values, not options; so is a text with a digit after one "-"
// ("-$1,234.50", "-USD12.00", "-€5"), which no option has.
bool looks_like_value(const std::string& arg) {
    if (arg.size() < 2 || arg[0] != '-') return false;
    if (std::isdigit(static_cast<unsigned char>(arg[1])) || arg[1] == '.') return true;
    if (arg[1] != '-' && arg.find_first_of("0123456789") != std::string::npos) return true;
    std::string word;
    for (std::size_t i = 1; i < arg.size(); ++i) word += static_cast<char>(std::tolower(static_cast<unsigned char>(arg[i])));
    return word == "inf" || word == "infinity" || word == "nan";
}

long long parse_integer(const std::string& option, const std::string& text) {
    long long value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size() || text.empty())
        throw UsageError("option " + option + ": not an integer: '" + text + "'");
    return value;
}

}  // namespace

Arguments parse_arguments(int argc, char** argv) {
    Arguments args;
    bool options_done = false;
    for (int i = 1; i < argc; ++i) {
        std::string arg = argv[i];
        if (options_done || arg.empty() || arg[0] != '-' || arg == "-" || looks_like_value(arg)) {
            (args.command.empty() ? args.command : args.operands.emplace_back()) = arg;
            continue;
        }
        if (arg == "--") {
            options_done = true;
            continue;
        }
        std::string value;
        bool has_inline = false;
        if (auto eq = arg.find('='); arg.rfind("--", 0) == 0 && eq != std::string::npos) {
            value = arg.substr(eq + 1);
            arg.resize(eq);
            has_inline = true;
        }
        auto take = [&]() -> std::string {
            if (has_inline) return value;
            if (i + 1 >= argc) throw UsageError("option " + arg + " needs a value");
            return argv[++i];
        };
        if (arg == "-l" || arg == "--locale") {
            args.locale = take();
            if (args.locale.empty()) throw UsageError("option " + arg + " needs a locale name");
        }
        else if (arg == "--encoding") args.encoding = take();
        else if (arg == "--yearcutoff") args.year_cutoff = parse_integer(arg, take());
        else if (arg == "--tz") args.time_zone = take();
        else if (arg == "--library") args.library = take();
        else if (arg == "--check") args.check = true;
        else if (arg == "--status") args.status = true;
        else if (arg == "--explain") args.explain = true;
        else if (arg == "--as") args.as = take();
        else if (arg == "--keep-going") args.keep_going = true;
        else if (arg == "-h" || arg == "--help") args.help = true;
        else if (arg == "--version") args.version = true;
        else throw UsageError("unknown option " + arg);
    }
    args.locale = args.locale.empty() ? vxhost::environment_locale() : vxhost::resolve_locale(args.locale);
    return args;
}

}  // namespace vxcli
