#include "commands.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <iterator>
#include <memory>
#include <stdexcept>
#include <string>

#include "classic_informats.h"
#include "embed/classic_routines.h"
#include "embed/formatter.h"
#include "library.h"
#include "help_command.h"
#include "locale_command.h"
#include "bulk_input.h"
#include "locale_data.h"
#include "output.h"
#include "session.h"
#include "template_command.h"
#include "text_convert.h"
#include "transcoder.h"
#include "embed/value_text.h"

namespace vxcli {
namespace {

using vxlocfmt::FuncInfo;

std::u32string widen(const std::string& s) { return std::u32string(s.begin(), s.end()); }

std::unique_ptr<vxhost::Session> open_session(const vxhost::Library& library, const Arguments& args) {
    return vxhost::open_session(library, {.locale = args.locale, .encoding = args.encoding, .check_limits = args.check});
}

void append_status(Output& out, const Arguments& args, vxlocfmt::status code) {
    if (!args.status) return;
    char text[16];
    std::snprintf(text, sizeof text, "\t0x%08x", code);
    out.append(text);
}

const FuncInfo& find_row(const vxhost::Library& library, const std::string& name, std::uint32_t kind,
                         const std::string& spec_text) {
    const FuncInfo* row = library.find(widen(name));
    if (!row) row = vxhost::classic_row(library, name, kind);
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
    std::size_t unreadable = 0;  // --keep-going: lines given the missing value
    std::string first_unreadable;

    void finish(Output& out, const Arguments& args, vxlocfmt::status code) {
        append_status(out, args, code);
        out.newline();
        any_failed |= code != 0;
    }
    // A text that is no value: a usage error (exit 2), or with --keep-going counted for the end.
    void unreadable_input(Output& out, const Arguments& args, std::string_view text, std::size_t index) {
        const std::string where = args.operands.size() > 1 ? "" : "line " + std::to_string(index) + ": ";
        const std::string what = text.empty() ? where + "empty line" : where + "unreadable value " + excerpt(text);
        if (!args.keep_going) {
            out.flush();
            throw UsageError(what);
        }
        if (unreadable++ == 0) first_unreadable = what;
    }
    int exit_status() const {
        if (unreadable)
            std::fprintf(stderr, "vxlocfmt: %zu input%s could not be read, given the missing value (first: %s)\n",
                         unreadable, unreadable == 1 ? "" : "s", first_unreadable.c_str());
        return report_journals(*library, any_failed || unreadable ? 1 : 0);
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
    const vxhost::Layout layout = vxhost::resolve_layout(spec, *call.row, args.check);
    call.session = open_session(*call.library, args);
    call.width = layout.width;
    call.decimals = layout.decimals;
    return call;
}

int format_command(const Arguments& args) {
    Call call = prepare(args, vxlocfmt::row_kind_format);
    Output out;
    for_each_input(args, out, [&](std::string_view text, std::size_t index) {
        auto value = vxhost::parse_value(text);
        if (!value) {
            call.unreadable_input(out, args, text, index);
            value = vxhost::missing_value(2);
        }
        const vxhost::FormatResult result = call.session->format(*call.row, call.width, call.decimals, *value);
        // Refused limits (--check) leave the field unwritten though the produced length is set.
        const bool refused = result.code >= vxlocfmt::st::width_too_small && result.code <= vxlocfmt::st::decimals_too_large;
        // Rows without a `_b` variant (the classic routines) answer in characters in any session.
        if (!refused && call.session->byte_output() && call.row->byte_function) out.append(result.bytes);
        else if (!refused) out.append_utf8(result.text);
        call.finish(out, args, result.code);
    });
    out.flush();
    return call.exit_status();
}

// A classic informat (no registry row): without a width, each text is read at its own length.
int read_classic_command(const Arguments& args, const Spec& spec, const ClassicInformat& informat) {
    auto library = load_library(args);
    const auto function = reinterpret_cast<vxlocfmt::format_fn>(library->symbol(informat.symbol));
    if (!function) throw UsageError("unknown informat '" + args.operands[0] + "'");
    auto session = open_session(*library, args);
    Output out;
    bool any_failed = false;
    for_each_input(args, out, [&](std::string_view text, std::size_t) {
        if (!text.empty() && text.back() == '\r') text.remove_suffix(1);
        const std::u32string wide = vxhost::from_utf8(text);
        const int width = spec.width.value_or(static_cast<int>(wide.size()));
        const vxlocfmt::status code =
            read_classic(informat, function, session->call(), width, spec.decimals.value_or(0), wide, out.raw());
        append_status(out, args, code);
        out.newline();
        any_failed |= code != 0;
    });
    out.flush();
    return report_journals(*library, any_failed ? 1 : 0);
}

int read_command(const Arguments& args) {
    // Template names hold digits (B8601DA) that a SPEC would take for a width: they go first.
    if (const auto code = template_read_command(args)) return *code;
    if (!args.operands.empty()) {
        const Spec spec = parse_spec(args.operands[0]);
        // No classic name is also a registry informat's.
        const std::string name = spec.name.front() == '@' ? spec.name.substr(1) : spec.name;
        if (const ClassicInformat* classic = vxhost::find_classic_informat(name)) return read_classic_command(args, spec, *classic);
    }
    Call call = prepare(args, vxlocfmt::row_kind_informat);
    Output out;
    for_each_input(args, out, [&](std::string_view text, std::size_t) {
        if (!text.empty() && text.back() == '\r') text.remove_suffix(1);
        const std::u32string wide = vxhost::from_utf8(text);
        const vxhost::ReadResult result = call.session->read(*call.row, call.width, call.decimals, wide);
        // A read that failed shows the missing value, whatever the informat left behind.
        vxhost::append_value_text(out.raw(), result.code == 0 || std::isnan(result.value) ? result.value : vxhost::missing_value(2));
        call.finish(out, args, result.code);
    });
    out.flush();
    return call.exit_status();
}

int list_command(const Arguments& args) {
    if (args.operands.size() != 1) throw UsageError("list takes one of: formats, informats, classic, locales, templates");
    const std::string& what = args.operands[0];
    if (what == "templates") return list_templates(args);
    Output out;
    if (what == "locales") {
        for (const auto& name : vxhost::locale_names()) {
            out.append(name);
            out.newline();
        }
        return 0;
    }
    if (what == "classic") {
        for (std::span<const vxhost::ClassicRoutine> table : vxhost::classic_tables())
            for (const vxhost::ClassicRoutine& routine : table) {
                out.append(std::string(routine.name) + "\t" +
                           (routine.kind == vxlocfmt::row_kind_format ? "format" : "informat") + "\t" + routine.symbol);
                out.newline();
            }
        for (const ClassicInformat& c : vxhost::classic_informats()) {
            out.append(std::string(c.name) + "\tinformat\t" + c.symbol);
            out.newline();
        }
        return 0;
    }
    if (what != "formats" && what != "informats") throw UsageError("cannot list '" + what + "'");
    auto library = load_library(args);
    const std::uint32_t kind = what == "formats" ? vxlocfmt::row_kind_format : vxlocfmt::row_kind_informat;
    for (const FuncInfo* row = library->registry(); row->function; ++row) {
        if (row->kind != kind) continue;
        out.append(vxhost::row_name(*row));
        out.newline();
    }
    return 0;
}

}  // namespace

const FuncInfo& find_spec_row(const vxhost::Library& library, const std::string& name, std::uint32_t kind,
                              const std::string& spec_text) {
    return find_row(library, name, kind, spec_text);
}

std::unique_ptr<vxhost::Session> open_call_session(const vxhost::Library& library, const Arguments& args) {
    return open_session(library, args);
}

std::unique_ptr<vxhost::Library> load_library(const Arguments& args) {
    return args.library.empty() ? std::make_unique<vxhost::Library>() : std::make_unique<vxhost::Library>(args.library);
}

int run_command(const Arguments& args) {
    if (args.command == "format") return format_command(args);
    if (args.command == "read") return read_command(args);
    if (args.command == "list") return list_command(args);
    if (args.command == "locale") return locale_command(args);
    if (args.command == "help") return help_command(args);
    throw UsageError("unknown command '" + args.command + "'");
}

}  // namespace vxcli
