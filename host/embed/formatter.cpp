#include "formatter.h"

#include <algorithm>
#include <stdexcept>

#include "embed/classic_routines.h"
#include "locale_data.h"
#include "text_convert.h"
#include "transcoder.h"

namespace vxhost {
namespace {

// Refused limits leave the field unwritten though the produced length may be set.
bool refused(vxlocfmt::status code) {
    return code >= vxlocfmt::st::width_too_small && code <= vxlocfmt::st::decimals_too_large;
}

}  // namespace

std::unique_ptr<Session> open_session(const Library& library, const SessionOptions& options) {
    if (canonical_locale(options.locale).empty()) throw RequestError("unknown locale " + options.locale);
    if (!options.encoding.empty() && Transcoder::canonical_name(options.encoding).empty())
        throw RequestError("unknown encoding " + options.encoding);
    try {
        return std::make_unique<Session>(library, options);
    } catch (const std::invalid_argument& refused) {
        throw RequestError(refused.what());
    }
}

Formatter::Formatter(const Library& library, std::string_view spec_text, const SessionOptions& options) {
    const Spec spec = parse_spec(spec_text);
    if (spec.name.front() == '@') throw RequestError("unknown format '" + std::string(spec_text) + "'");
    row_ = library.find(std::u32string(spec.name.begin(), spec.name.end()));
    if (!row_) row_ = classic_row(library, spec.name, vxlocfmt::row_kind_format);
    if (!row_ || row_->kind != vxlocfmt::row_kind_format)
        throw RequestError("unknown format '" + std::string(spec_text) + "'");
    name_ = spec.name;
    layout_ = resolve_layout(spec, *row_, options.check_limits);
    kind_ = format_value_kind(name_);
    session_ = open_session(library, options);
}

Formatter::Result Formatter::format(double value) {
    const FormatResult result = session_->format(*row_, layout_.width, layout_.decimals, value);
    if (refused(result.code)) return {result.code, {}};
    if (session_->byte_output() && row_->byte_function) return {result.code, result.bytes};
    text_.clear();
    for (const char32_t c : result.text) append_utf8(text_, c);
    return {result.code, text_};
}

Formatter::WideResult Formatter::format_wide(double value) {
    const FormatResult result = session_->format(*row_, layout_.width, layout_.decimals, value);
    return {result.code, refused(result.code) ? std::u32string_view{} : result.text};
}

}  // namespace vxhost
