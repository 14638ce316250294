/*
 * Test helpers for the money formats: a loaded library (one instance, so one set of locale
 * monetary conventions) and sessions on it in a locale and an encoding; results come back as
 * UTF-8 whatever the session encoding.
 *
 *   money_test::World world;                         // a fresh instance
 *   world.format("de_DE", "UTF-8", U"NLMNIUSD", 12, 2, 1234.5);   // "1.234,50 USD"
 */
#pragma once

#include <unicode/ucnv.h>

#include <map>
#include <memory>
#include <string>
#include <utility>

#include "frame/abi.h"
#include "library.h"
#include "session.h"
#include "text_convert.h"

namespace money_test {

// Bytes of `encoding` as UTF-8 (ICU), for comparing results of any session encoding.
inline std::string utf8_of(std::string_view bytes, const std::string& encoding) {
    if (encoding.empty() || encoding == "UTF-8") return std::string(bytes);
    std::string out(bytes.size() * 4 + 4, '\0');
    UErrorCode error = U_ZERO_ERROR;
    const int32_t n = ucnv_convert("UTF-8", encoding.c_str(), out.data(), static_cast<int32_t>(out.size()), bytes.data(),
                                   static_cast<int32_t>(bytes.size()), &error);
    out.resize(U_SUCCESS(error) ? static_cast<std::size_t>(n) : 0);
    return out;
}

struct Result {
    vxlocfmt::status code;
    std::string text;  // UTF-8
};

class World {
public:
    vxhost::Library library;

    // A session per (locale, encoding), kept warm; encoding "" is a wide session.
    vxhost::Session& session(const std::string& locale, const std::string& encoding) {
        auto& slot = sessions_[{locale, encoding}];
        if (!slot) slot = std::make_unique<vxhost::Session>(library, vxhost::SessionOptions{.locale = locale, .encoding = encoding});
        return *slot;
    }
    Result format(const std::string& locale, const std::string& encoding, std::u32string_view name, int width,
                  int decimals, double value) {
        const vxlocfmt::FuncInfo* row = library.find(name);
        if (!row) return {0xDEADu, "no row " + vxhost::to_utf8(name)};
        const auto r = session(locale, encoding).format(*row, width, decimals, value);
        return {r.code, encoding.empty() ? vxhost::to_utf8(r.text) : utf8_of(r.bytes, encoding)};
    }

private:
    std::map<std::pair<std::string, std::string>, std::unique_ptr<vxhost::Session>> sessions_;
};

}  // namespace money_test
