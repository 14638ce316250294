/*
 * Warm formatters and readers, one per thread for each SPEC, locale and encoding: each holds its
 * own call record, so the locale's property table is built once per thread, and no two threads
 * ever share a record (the library takes no locks). Built on first use, with every refusal of
 * the embedding API (unknown name, limits, locale, encoding) raised as vxhost::RequestError.
 *
 *   vxhost::Formatter& f = vxpy::warm_formatter({"NLDATE20.", "fr_FR", ""});
 *   f.format(23000).text;   // "21 décembre 2022"
 */
#pragma once

#include <string>

#include "embed/formatter.h"
#include "embed/reader.h"

namespace vxpy {

struct Request {
    std::string spec;
    std::string locale;    // as users write it ("de_DE.UTF-8", "de-DE"); empty: the environment's
    std::string encoding;  // empty: text; else the session's byte encoding (formats only)
};

vxhost::Formatter& warm_formatter(const Request& request);
vxhost::Reader& warm_reader(const Request& request);

// The host's id for a locale name as the CLI resolves it ("unknown locale X (nearest: ...)").
std::string resolve_locale(const std::string& name);

}  // namespace vxpy
