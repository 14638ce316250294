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

// Each value's text straight into its row through the run, the rest of the row zeros.
template <class Unit>
void fill_rows(Session::FormatRun run, const double* values, std::size_t count, Unit* rows, std::size_t row_width) {
    for (std::size_t i = 0; i < count; ++i) {
        Unit* row = rows + i * row_width;
        const Session::FormatRun::Written written = run(values[i], row);
        std::fill(row + (refused(written.code) ? 0 : written.length), row + row_width, Unit{});
    }
}

void check_row_width(std::size_t row_width, int width) {
    if (row_width < static_cast<std::size_t>(std::max(width, 0)))
        throw std::invalid_argument("rows of " + std::to_string(row_width) + " cannot hold a field of " +
                                    std::to_string(width));
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

void Formatter::format_rows(const double* values, std::size_t count, char32_t* rows, std::size_t row_width) {
    if (session_->byte_output()) throw std::logic_error("format_rows writes characters: this is a byte session");
    check_row_width(row_width, layout_.width);
    fill_rows(session_->format_run(*row_, layout_.width, layout_.decimals, false), values, count, rows, row_width);
}

void Formatter::format_byte_rows(const double* values, std::size_t count, char* rows, std::size_t row_width) {
    check_row_width(row_width, layout_.width);
    if (session_->byte_output() && row_->byte_function) {
        fill_rows(session_->format_run(*row_, layout_.width, layout_.decimals, true), values, count, rows, row_width);
        return;
    }
    // UTF-8 made from the wide text, which may take more bytes than the field has characters.
    for (std::size_t i = 0; i < count; ++i) {
        char* row = rows + i * row_width;
        const std::string_view text = format(values[i]).text;
        if (text.size() > row_width)
            throw std::length_error(name_ + " wrote " + std::to_string(text.size()) + " bytes into a row of " +
                                    std::to_string(row_width));
        std::fill(std::copy(text.begin(), text.end(), row), row + row_width, '\0');
    }
}

}  // namespace vxhost
