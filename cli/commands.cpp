#include "commands.h"

#include <cstdio>
#include <algorithm>
#include <cstring>
#include <iterator>
#include <memory>
#include <stdexcept>
#include <string>

#include "library.h"
#include "locale_command.h"
#include "locale_data.h"
#include "output.h"
#include "session.h"
#include "text_convert.h"
#include "transcoder.h"
#include "values.h"

namespace vxcli {
namespace {

using vxlocfmt::FuncInfo;

std::u32string widen(const std::string& s) { return std::u32string(s.begin(), s.end()); }

std::string row_name(const FuncInfo& row) {
    std::u32string_view name(row.name, vxlocfmt::registry_name_length);
    while (!name.empty() && name.back() == U' ') name.remove_suffix(1);
    return vxhost::to_utf8(name);
}


std::unique_ptr<vxhost::Session> open_session(const vxhost::Library& library, const Arguments& args) {
    if (vxhost::canonical_locale(args.locale).empty()) throw UsageError("unknown locale " + args.locale);
    if (!args.encoding.empty() && vxhost::Transcoder::canonical_name(args.encoding).empty())
        throw UsageError("unknown encoding " + args.encoding);
    vxhost::SessionOptions options;
    options.locale = args.locale;
    options.encoding = args.encoding;
    options.check_limits = args.check;
    return std::make_unique<vxhost::Session>(library, options);
}

// Says once per run that a row's family is not built yet.
void note_not_implemented(vxlocfmt::status code, const FuncInfo& row) {
    static bool said = false;
    if (code != vxlocfmt::st::not_implemented || said) return;
    said = true;
    std::fprintf(stderr, "vxlocfmt: %s: not implemented yet\n", row_name(row).c_str());
}

void append_status(Output& out, const Arguments& args, vxlocfmt::status code) {
    if (!args.status) return;
    char text[16];
    std::snprintf(text, sizeof text, "\t0x%08x", code);
    out.append(text);
}

// Feeds each operand, or each line of stdin when there are none, to `each`.
template <class Each>
void for_each_input(const Arguments& args, Each each) {
    if (args.operands.size() > 1) {
        for (std::size_t i = 1; i < args.operands.size(); ++i) each(std::string_view(args.operands[i]), i);
        return;
    }
    static char buffer[1 << 16];
    std::string pending;
    std::size_t line = 0;
    std::size_t n;
    while ((n = std::fread(buffer, 1, sizeof buffer, stdin)) > 0) {
        std::string_view chunk(buffer, n);
        std::size_t start = 0;
        for (std::size_t nl; (nl = chunk.find('\n', start)) != std::string_view::npos; start = nl + 1) {
            std::string_view piece = chunk.substr(start, nl - start);
            if (!pending.empty()) {
                pending.append(piece);
                each(std::string_view(pending), ++line);
                pending.clear();
            } else {
                each(piece, ++line);
            }
        }
        pending.append(chunk.substr(start));
    }
    if (!pending.empty()) each(std::string_view(pending), ++line);
}

// Classic clock formats the CLI offers by name; they have no registry rows.
const FuncInfo* clock_row(const vxhost::Library& library, const std::string& name) {
    static const struct {
        const char* name;
        const char* symbol;
        std::uint32_t default_width;
    } clocks[] = {{"TIME", "vxfmtzfmtime", 8}, {"TIMEAMPM", "vxfmtzfmtimm", 11}, {"TOD", "vxfmtzfmtod", 8}};
    static FuncInfo rows[std::size(clocks)];
    for (std::size_t i = 0; i < std::size(clocks); ++i) {
        if (name != clocks[i].name) continue;
        FuncInfo& row = rows[i];
        std::fill(std::begin(row.name), std::end(row.name), U' ');
        std::copy(name.begin(), name.end(), row.name);
        row.kind = vxlocfmt::row_kind_format;
        row.function = reinterpret_cast<vxlocfmt::format_fn>(library.symbol(clocks[i].symbol));
        row.min_width = 2;
        row.max_width = 40;
        row.default_width = clocks[i].default_width;
        row.max_decimals = 39;
        return row.function ? &row : nullptr;
    }
    return nullptr;
}

const FuncInfo& find_row(const vxhost::Library& library, const std::string& name, std::uint32_t kind,
                         const std::string& spec_text) {
    const FuncInfo* row = library.find(widen(name));
    if (!row && kind == vxlocfmt::row_kind_format) row = clock_row(library, name);
    if (!row || row->kind != kind)
        throw UsageError("unknown " + std::string(kind == vxlocfmt::row_kind_format ? "format" : "informat") +
                         " '" + spec_text + "'");
    return *row;
}

int report_journals(const vxhost::Library& library, int exit_code) {
    for (const vxhost::Journal* journal : {library.journal(), static_cast<vxhost::Journal*>(library.instance()->journal)}) {
        if (!journal) continue;
        for (const auto& entry : journal->entries())
            std::fprintf(stderr, "vxlocfmt: journal: severity %d: %s\n", entry.severity, entry.text.c_str());
    }
    return exit_code;
}

// What format and read share: the library, the row named by SPEC, a session, width, decimals.
struct Call {
    std::unique_ptr<vxhost::Library> library;
    const FuncInfo* row;
    std::unique_ptr<vxhost::Session> session;
    int width;
    int decimals;
    bool any_failed = false;

    void finish(Output& out, const Arguments& args, vxlocfmt::status code) {
        append_status(out, args, code);
        out.newline();
        note_not_implemented(code, *row);
        any_failed |= code != 0;
    }
};

Call prepare(const Arguments& args, std::uint32_t kind) {
    const char* command = kind == vxlocfmt::row_kind_format ? "format" : "read";
    if (args.operands.empty()) throw UsageError(std::string(command) + " needs a SPEC");
    Spec spec = parse_spec(args.operands[0]);
    if (kind == vxlocfmt::row_kind_informat && spec.name.front() != '@') spec.name = "@" + spec.name;
    Call call;
    call.library = load_library(args);
    call.row = &find_row(*call.library, spec.name, kind, args.operands[0]);
    call.session = open_session(*call.library, args);
    call.width = spec.width.value_or(static_cast<int>(call.row->default_width));
    call.decimals = spec.decimals.value_or(spec.width ? 0 : static_cast<int>(call.row->default_decimals));
    return call;
}

int format_command(const Arguments& args) {
    Call call = prepare(args, vxlocfmt::row_kind_format);
    Output out;
    for_each_input(args, [&](std::string_view text, std::size_t index) {
        const auto value = parse_value(text);
        if (!value) {
            out.flush();
            throw UsageError((args.operands.size() > 1 ? "" : "line " + std::to_string(index) + ": ") +
                             "unreadable value '" + std::string(text) + "'");
        }
        const vxhost::FormatResult result = call.session->format(*call.row, call.width, call.decimals, *value);
        if (call.session->byte_output()) out.append(result.bytes);
        else out.append_utf8(result.text);
        call.finish(out, args, result.code);
    });
    out.flush();
    return report_journals(*call.library, call.any_failed ? 1 : 0);
}

int read_command(const Arguments& args) {
    Call call = prepare(args, vxlocfmt::row_kind_informat);
    Output out;
    for_each_input(args, [&](std::string_view text, std::size_t) {
        if (!text.empty() && text.back() == '\r') text.remove_suffix(1);
        const std::u32string wide = vxhost::from_utf8(text);
        const vxhost::ReadResult result = call.session->read(*call.row, call.width, call.decimals, wide);
        append_value_text(out.raw(), result.value);
        call.finish(out, args, result.code);
    });
    out.flush();
    return report_journals(*call.library, call.any_failed ? 1 : 0);
}

int list_command(const Arguments& args) {
    if (args.operands.size() != 1) throw UsageError("list takes one of: formats, informats, locales");
    const std::string& what = args.operands[0];
    Output out;
    if (what == "locales") {
        for (const auto& name : vxhost::locale_names()) {
            out.append(name);
            out.newline();
        }
        return 0;
    }
    if (what != "formats" && what != "informats") throw UsageError("cannot list '" + what + "'");
    auto library = load_library(args);
    const std::uint32_t kind = what == "formats" ? vxlocfmt::row_kind_format : vxlocfmt::row_kind_informat;
    for (const FuncInfo* row = library->registry(); row->function; ++row) {
        if (row->kind != kind) continue;
        out.append(row_name(*row));
        out.newline();
    }
    return 0;
}

}  // namespace

std::unique_ptr<vxhost::Library> load_library(const Arguments& args) {
    return args.library.empty() ? std::make_unique<vxhost::Library>() : std::make_unique<vxhost::Library>(args.library);
}

int run_command(const Arguments& args) {
    if (args.command == "format") return format_command(args);
    if (args.command == "read") return read_command(args);
    if (args.command == "list") return list_command(args);
    if (args.command == "locale") return locale_command(args);
    throw UsageError("unknown command '" + args.command + "'");
}

}  // namespace vxcli
