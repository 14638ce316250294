/*
 * An informat by SPEC, warm: a registry informat ("@NLDATE20." or "NLDATE20."), a classic
 * informat with a numeric result ("DOLLAR", "HEX16."), the any-date reader ("ANYDATE") or one of
 * its template names ("B8601DA", "MMDDYY10."). One session in the locale; the text's wide copy
 * reuses one buffer. One per thread.
 *
 *   vxhost::Reader r(library, "NLNUM12.2", {.locale = "de_DE"});
 *   r.read("1.234,5").value;            // 1234.5
 *   r.read("abc").ok;                   // false: the value is the missing value
 */
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "embed/request.h"
#include "embed/value_kind.h"
#include "frame/abi.h"
#include "library.h"
#include "session.h"

namespace vxhost {

class Reader {
public:
    // Throws RequestError as Formatter does ("unknown informat 'X'"; a classic informat whose
    // result is bytes or characters, such as UUID, is refused here: it has no numeric value).
    Reader(const Library& library, std::string_view spec, const SessionOptions& options = {});

    struct Result {
        vxlocfmt::status code;  // the informat's own (the any-date driver answers 0 always)
        double value;           // the missing value when the read failed
        bool ok;                // read: a status of 0 and, for the any-date driver, a value
    };
    // The text in UTF-8; without a width in SPEC a classic or template informat reads it whole.
    Result read(std::string_view text);

    ValueKind kind() const { return kind_; }
    const std::string& name() const { return name_; }

private:
    enum class Route { registry, classic, anydate, template_name };
    Route route_;
    std::string name_;
    std::u32string wide_name_;
    const vxlocfmt::FuncInfo* row_ = nullptr;
    void* function_ = nullptr;  // classic informat, any-date driver or dtmInformat
    std::optional<int> width_;
    int decimals_ = 0;
    ValueKind kind_;
    std::unique_ptr<Session> session_;
    std::u32string text_;
};

}  // namespace vxhost
