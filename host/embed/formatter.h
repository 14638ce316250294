/*
 * A format by SPEC, warm: the row found (registry or classic routine), its width and decimals
 * checked, one session in the locale. Each call reuses the session's call record and this
 * object's buffer: nothing is allocated per value once the buffer has grown. One per thread.
 *
 *   vxhost::Library library;
 *   vxhost::Formatter f(library, "NLDATE20.", {.locale = "fr_FR"});
 *   f.format(23000).text;              // "21 décembre 2022" (UTF-8)
 *   f.kind();                          // ValueKind::date: the value is a day number
 */
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

#include "embed/request.h"
#include "embed/value_kind.h"
#include "frame/abi.h"
#include "library.h"
#include "session.h"

namespace vxhost {

class Formatter {
public:
    // Throws RequestError: "bad SPEC ...", "unknown format 'X'", "NLDATE: width 500 is outside
    // 10 to 200", "unknown locale X", "unknown encoding X". With options.check_limits the width
    // and decimals go to the library unchecked (its statuses 2 to 5 come back instead).
    Formatter(const Library& library, std::string_view spec, const SessionOptions& options = {});

    struct Result {
        vxlocfmt::status code;
        std::string_view text;  // UTF-8; in a byte session the encoding's bytes. Valid until the next call.
    };
    // Any NaN is a missing value.
    Result format(double value);

    struct WideResult {
        vxlocfmt::status code;
        std::u32string_view text;  // the library's own characters. Valid until the next call.
    };
    // The same without the conversion to UTF-8, for callers that keep UTF-32 (NumPy's text
    // arrays). Text sessions only: in a byte session the text is empty.
    WideResult format_wide(double value);

    // Many values into fixed-width rows of `row_width` units (at least width()), each text
    // written by the library straight into its row and the rest of the row zeros: NumPy's "<Uw"
    // and "Sw" layouts. The texts are format_wide's (text sessions; a byte session throws
    // std::logic_error) and format's (format_byte_rows; a text longer than its row, which only
    // UTF-8 from a row without a byte variant can be, throws std::length_error). The library's
    // call per value and nothing more: no copy, no call record set-up.
    void format_rows(const double* values, std::size_t count, char32_t* rows, std::size_t row_width);
    void format_byte_rows(const double* values, std::size_t count, char* rows, std::size_t row_width);

    ValueKind kind() const { return kind_; }
    const std::string& name() const { return name_; }
    int width() const { return layout_.width; }
    int decimals() const { return layout_.decimals; }

private:
    const vxlocfmt::FuncInfo* row_;
    std::string name_;
    Layout layout_;
    ValueKind kind_;
    std::unique_ptr<Session> session_;
    std::string text_;
};

// A session for the options, its refusals ("unknown locale X") as RequestError.
std::unique_ptr<Session> open_session(const Library& library, const SessionOptions& options);

}  // namespace vxhost
