#include "help_command.h"

#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>

#include "commands.h"
#include "locale_data.h"
#include "embed/classic_routines.h"
#include "embed/reader.h"
#include "embed/request.h"
#include "embed/template_names.h"
#include "text_convert.h"
#include "embed/value_text.h"

namespace vxcli {
namespace {

// A value each family shows well: a day number, a datetime, a time of day, an amount, a share,
// a month number for the name formats.
double example_value(std::string_view name) {
    if (name.starts_with("NLDATM") || name == "DTWEEKV") return 2000000000;  // 2023-05-18T03:33:20
    if (name.starts_with("NLTIM") || name == "TIME" || name == "TIMEAMPM" || name == "TOD") return 45296;  // 12:34:56
    if (name.starts_with("NLPCT")) return 0.125;
    if (name.starts_with("NLNUM") || name.starts_with("NLMN") || name == "NLBEST" || name == "NLD") return -1234.56;
    if (name.starts_with("NLSTR")) return 3;
    return 23000;  // 2022-12-21
}

std::string trimmed(std::string text) {
    while (!text.empty() && text.back() == ' ') text.pop_back();
    while (!text.empty() && text.front() == ' ') text.erase(0, 1);
    return text;
}

std::string status_text(std::uint32_t code) {
    char text[24];
    std::snprintf(text, sizeof text, "status 0x%08x", code);
    return text;
}

// A reader without a registry row: the any-date reader's names and the classic informats.
int reader_help(const Arguments& args, const std::string& name, const char* what, const char* example) {
    const auto library = load_library(args);
    vxhost::Reader reader(*library, name, {.locale = args.locale});
    std::printf("%s: %s (text to %s): vxlocfmt read\n", name.c_str(), what, vxhost::value_kind_name(reader.kind()));
    std::printf("  without a width the whole text is read\n");
    if (!example) return 0;
    const vxhost::Reader::Result read = reader.read(example);
    std::printf("  example: vxlocfmt read %s '%s'\n", name.c_str(), example);
    std::printf("           %s\n", read.ok ? vxhost::value_text(read.value).c_str() : status_text(read.code).c_str());
    return 0;
}

}  // namespace

int help_command(const Arguments& args) {
    if (args.operands.size() != 1) throw UsageError("help takes one SPEC, or nothing");
    if (const auto name = vxhost::template_spec_name(args.operands[0]))
        return reader_help(args, *name, *name == "ANYDATE" ? "the any-date reader" : "a template name of the any-date reader",
                           *name == "ANYDATE" ? "Mar 4, 2020" : nullptr);
    const Spec spec = parse_spec(args.operands[0]);
    const std::string bare_name = spec.name.front() == '@' ? spec.name.substr(1) : spec.name;
    // DOLLAR, N and PERCENT are classic formats too: "@DOLLAR" asks for the informat.
    if (const auto* classic = vxhost::find_classic_informat(bare_name);
        classic && (spec.name.front() == '@' || !vxhost::classic_row(*load_library(args), bare_name, vxlocfmt::row_kind_format))) {
        if (classic->yields != vxhost::Yields::number) {
            std::printf("%s: classic informat (text to %s): vxlocfmt read\n", bare_name.c_str(),
                        classic->yields == vxhost::Yields::bytes ? "bytes, printed in hexadecimal" : "characters");
            return 0;
        }
        return reader_help(args, bare_name, "classic informat", nullptr);
    }
    const auto library = load_library(args);
    const bool informat = spec.name.front() == '@';
    const vxlocfmt::FuncInfo& row = find_spec_row(
        *library, spec.name, informat ? vxlocfmt::row_kind_informat : vxlocfmt::row_kind_format, args.operands[0]);
    const std::string name = vxhost::row_name(row);
    std::printf("%s: %s\n", name.c_str(), informat ? "informat (text to value): vxlocfmt read" : "format (value to text): vxlocfmt format");
    std::printf("  width %u to %u, default %u\n", row.min_width, row.max_width, row.default_width);
    std::printf("  decimals %u to %u, default %u\n", row.min_decimals, row.max_decimals, row.default_decimals);

    // The example runs through the library, so it shows what this build does.
    const auto session = open_call_session(*library, args);
    const std::string bare = informat ? name.substr(1) : name;
    const double value = example_value(bare);
    const vxlocfmt::FuncInfo* format_row = informat ? library->find(vxhost::from_utf8(bare)) : &row;
    if (!format_row) {  // an informat with no format of its name to write the example
        std::printf("  example: none\n");
        return 0;
    }
    const auto written = session->format(*format_row, static_cast<int>(format_row->default_width),
                                         static_cast<int>(format_row->default_decimals), value);
    const vxlocfmt::status code = written.code;
    const std::string text = trimmed(vxhost::to_utf8(written.text));
    const std::string locale = " -l " + args.locale;
    if (!informat) {
        std::printf("  example: vxlocfmt format %s %s%s\n", name.c_str(), vxhost::value_text(value).c_str(), locale.c_str());
        std::printf("           %s\n", code == 0 ? text.c_str() : status_text(code).c_str());
        return 0;
    }
    if (code != 0) {
        std::printf("  example: none (%s: %s)\n", bare.c_str(), status_text(code).c_str());
        return 0;
    }
    const auto read = session->read(row, static_cast<int>(row.default_width), static_cast<int>(row.default_decimals),
                                    vxhost::from_utf8(text));
    std::printf("  example: vxlocfmt read %s '%s'%s\n", bare.c_str(), text.c_str(), locale.c_str());
    std::printf("           %s\n", read.code == 0 ? vxhost::value_text(read.value).c_str() : status_text(read.code).c_str());
    return 0;
}

int version_command(const Arguments& args) {
    std::printf("vxlocfmt %s (locale data from ICU %s)\n", VXLOCFMT_VERSION,
                std::string(vxhost::locale_data_icu_version()).c_str());
    try {
        const auto library = load_library(args);
        std::uint64_t major = 0, minor = 0, level = 0;
        library->instance()->own_version(library->instance(), &major, &minor, &level);
        std::printf("extension %llu.%llu.%llu\n", static_cast<unsigned long long>(major),
                    static_cast<unsigned long long>(minor), static_cast<unsigned long long>(level));
    } catch (const std::exception& error) {
        std::printf("extension: %s\n", error.what());
        return 3;
    }
    return 0;
}

}  // namespace vxcli
