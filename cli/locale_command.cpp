#include "locale_command.h"

#include <cstdio>
#include <memory>
#include <string>

#include "frame/abi.h"
#include "commands.h"
#include "library.h"
#include "locale/property_table.h"
#include "locale_data.h"
#include "embed/locale_names.h"
#include "output.h"
#include "property_labels.h"
#include "session.h"
#include "transcoder.h"

namespace vxcli {
namespace {

// UTF-8, with control characters (the currency placeholder 1 among them) written "<U0001>".
void append_text(Output& out, std::u32string_view text) {
    for (const char32_t c : text) {
        if (c < 0x20) {
            char escape[8];
            std::snprintf(escape, sizeof escape, "<U%04X>", static_cast<unsigned>(c));
            out.append(escape);
        } else {
            out.append_utf8({&c, 1});
        }
    }
}

template <std::size_t N>
std::u32string_view field(const char32_t (&cells)[N]) {
    std::size_t n = 0;
    while (n < N && cells[n]) ++n;
    return {cells, n};
}

void append_number(Output& out, const char* name, long value) {
    out.append("\t");
    out.append(name);
    out.append("=");
    out.append(std::to_string(value));
}

void append_field(Output& out, const char* name, std::u32string_view text) {
    out.append("\t");
    out.append(name);
    out.append("=\"");
    append_text(out, text);
    out.append("\"");
}

void append_conventions(Output& out, std::size_t key, const vxlocfmt::NumberConventions& c) {
    out.append("conventions\t" + std::to_string(key));
    append_field(out, "currency_symbol", field(c.currency_symbol));
    append_field(out, "decimal_point", field(c.decimal_point));
    append_field(out, "thousands_sep", field(c.thousands_sep));
    std::string grouping;
    for (std::int32_t g : c.grouping) {
        if (!g) break;
        if (!grouping.empty()) grouping += ';';
        grouping += std::to_string(g);  // appended apart: ";" + temporary trips GCC 12's -Wrestrict
    }
    out.append("\tgrouping=" + grouping);
    append_field(out, "positive_sign", field(c.positive_sign));
    append_field(out, "negative_sign", field(c.negative_sign));
    append_number(out, "frac_digits", c.frac_digits);
    append_number(out, "p_cs_precedes", c.p_cs_precedes);
    append_number(out, "p_sep_by_space", c.p_sep_by_space);
    append_number(out, "p_sign_posn", c.p_sign_posn);
    append_number(out, "n_cs_precedes", c.n_cs_precedes);
    append_number(out, "n_sep_by_space", c.n_sep_by_space);
    append_number(out, "n_sign_posn", c.n_sign_posn);
    out.newline();
}

}  // namespace

int locale_command(const Arguments& args) {
    if (args.operands.size() != 1) throw UsageError("locale takes one NAME");
    const std::string name = vxhost::resolve_locale(args.operands[0]);
    if (!args.encoding.empty() && vxhost::Transcoder::canonical_name(args.encoding).empty())
        throw UsageError("unknown encoding " + args.encoding);
    const std::unique_ptr<vxhost::Library> loaded = load_library(args);
    const vxhost::Library& library = *loaded;
    vxhost::SessionOptions options;
    options.locale = name;
    options.encoding = args.encoding;
    vxhost::Session session(library, options);

    // The first NL call on the session's warm call record builds the table, as in any session.
    // Only the table matters: the month name itself may not fit its field in the session
    // encoding (Hebrew in UTF-8 takes two bytes a letter), so the call's own status does not.
    const vxlocfmt::FuncInfo* row = library.find(U"NLSTRMON");
    constexpr vxlocfmt::status no_row = 0xffffffffu;  // a library whose registry lacks the row
    const vxlocfmt::status code = row ? session.format(*row, static_cast<int>(row->max_width), 0, 1).code : no_row;
    vxlocfmt::FmtCall& call = session.call();
    if (!call.property_cache) {
        std::fprintf(stderr, "vxlocfmt: the property table of %s was not built: 0x%08x\n", name.c_str(), code);
        return 1;
    }
    Output out;
    const vxlocfmt::PropertyCache& cache = *call.property_cache;
    for (const vxlocfmt::Property& p : cache.properties) {
        out.append(std::to_string(p.number) + "\t" + property_label(p.number) + "\t" + std::to_string(p.width) + "\t");
        append_text(out, {p.value, static_cast<std::size_t>(p.length)});
        out.newline();
    }
    for (std::size_t i = 0; i < vxlocfmt::number_convention_count; ++i)
        append_conventions(out, vxlocfmt::locale::NumIndex[i], cache.conventions[i]);
    return 0;
}

}  // namespace vxcli
