#include "template_command.h"

#include <cctype>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <sys/types.h>
#include <memory>
#include <string_view>

#include "dateread/template_table.h"
#include "embed/template_names.h"
#include "bulk_input.h"
#include "commands.h"
#include "library.h"
#include "output.h"
#include "text_convert.h"
#include "embed/value_text.h"

namespace vxcli {
namespace {

using vxlocfmt::dateread::template_row;

extern "C" {
using driver_fn = vxlocfmt::status (*)(vxlocfmt::FmtCall*, void*);
using informat_fn = vxlocfmt::status (*)(vxlocfmt::FmtCall*, const vxlocfmt::wchar*, std::int32_t);
using explain_fn = std::int32_t (*)(const vxlocfmt::wchar*, std::int32_t, const vxlocfmt::wchar*, std::int32_t,
                                    double*, std::int32_t*);
}

std::string narrow(const vxlocfmt::wchar* s) {
    std::string out;
    for (; s && *s; ++s) out += static_cast<char>(*s);
    return out;
}

// The line as wide text into `wide`, reusing its storage: ASCII byte by byte, anything else
// through the UTF-8 decoder.
void widen(std::string_view text, std::u32string& wide) {
    wide.resize(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto b = static_cast<unsigned char>(text[i]);
        if (b >= 0x80) {
            wide = vxhost::from_utf8(text);
            return;
        }
        wide[i] = b;
    }
}

template <class Fn>
Fn symbol(const vxhost::Library& library, const char* name) {
    void* p = library.symbol(name);
    if (!p) throw std::runtime_error(std::string("the library lacks ") + name);
    return reinterpret_cast<Fn>(p);
}

}  // namespace

std::optional<int> template_read_command(const Arguments& args) {
    if (args.operands.empty()) return std::nullopt;
    const std::optional<std::string> name = vxhost::template_spec_name(args.operands[0]);
    if (!name) {
        if (!args.as.empty()) throw UsageError("--as needs the ANYDATE reader");
        return std::nullopt;
    }
    const bool anydate = *name == "ANYDATE";
    if (!args.as.empty() && (!anydate || (args.as != "date" && args.as != "time" && args.as != "datetime")))
        throw UsageError(anydate ? "--as takes date, time or datetime" : "--as needs the ANYDATE reader");
    const auto library = load_library(args);
    const auto* table = static_cast<const template_row*>(library->symbol("vxfmt_templates"));
    const auto driver = symbol<driver_fn>(*library, args.as == "date" ? "dtmAnyDate" : args.as == "time" ? "dtmAnyTime"
                                                                                                    : "dtmAnyDateTime");
    const auto informat = symbol<informat_fn>(*library, "dtmInformat");
    const auto explain = symbol<explain_fn>(*library, "dtm_explain");
    const std::u32string wide_name(name->begin(), name->end());
    const auto name_length = static_cast<std::int32_t>(wide_name.size());

    Output out;
    bool any_failed = false;
    std::u32string wide;  // one buffer for every line: bulk mode makes no string per line
    for_each_input(args, out, [&](std::string_view text, std::size_t) {
        if (!text.empty() && text.back() == '\r') text.remove_suffix(1);
        widen(text, wide);
        double value = 0;
        vxlocfmt::FmtCall call{};
        call.input = wide.data();
        call.input_length = static_cast<std::int32_t>(wide.size());
        call.text_limit = call.input_length;  // the whole text: a row's width is no text limit
        call.output = &value;
        const vxlocfmt::status code = anydate ? driver(&call, nullptr) : informat(&call, wide_name.data(), name_length);
        // A failed read shows the missing value, whatever the reader left behind.
        vxhost::append_value_text(out.raw(), code == 0 ? value : vxhost::missing_value(2));
        if (args.explain) {
            double explained = 0;
            std::int32_t four = 0;
            const std::int32_t row = explain(wide_name.data(), name_length, wide.data(), call.input_length, &explained, &four);
            if (row < 0 || !table) {
                out.append("\t-");
            } else {
                std::string pattern = narrow(table[row].pattern);
                if (const auto at = pattern.find("%y"); four && at != std::string::npos) pattern[at + 1] = 'Y';
                // Appended piece by piece: GCC 12 takes "\t" + string for an overlapping copy.
                out.append("\t");
                out.append(std::to_string(row));
                out.append("\t");
                out.append(pattern);
            }
        }
        if (args.status) {
            char status_text[16];
            std::snprintf(status_text, sizeof status_text, "\t0x%08x", code);
            out.append(status_text);
        }
        out.newline();
        // The ANYDATE driver answers 0 even when nothing read the text: the missing value tells.
        any_failed |= code != 0 || std::isnan(value);
    });
    out.flush();
    return any_failed ? 1 : 0;
}

int list_templates(const Arguments& args) {
    const auto library = load_library(args);
    const auto* table = static_cast<const template_row*>(library->symbol("vxfmt_templates"));
    if (!table) throw std::runtime_error("the library lacks vxfmt_templates");
    Output out;
    for (std::size_t r = 0; r < vxlocfmt::dateread::template_count; ++r) {
        const template_row& row = table[r];
        out.append(std::to_string(r) + "\t" + narrow(row.name) + "\t" + std::to_string(row.min_length) + "\t" +
                   std::to_string(row.max_length) + "\t" + std::to_string(row.width) + "\t" +
                   std::to_string(row.any_min) + "\t" + std::to_string(row.any_max) + "\t" + narrow(row.kind) + "\t" +
                   narrow(row.pattern));
        out.newline();
    }
    return 0;
}

}  // namespace vxcli
