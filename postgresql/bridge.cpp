// The C++ side of the PostgreSQL functions: the library loaded once per backend, the warm
// formatters and readers, the SQL value converted by the routine's kind. No exception leaves
// this file: each is turned into an outcome and a message for functions.c to raise.
#include "bridge.h"

#include <dlfcn.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <new>
#include <optional>
#include <stdexcept>
#include <string>

#include "embed/formatter.h"
#include "embed/reader.h"
#include "embed/request.h"
#include "library.h"
#include "locale_data.h"
#include "routine_cache.h"
#include "time_zone.h"

namespace vxpg {
namespace {

constexpr double seconds_per_day = 86400.0;

std::string configured_path;  // vxlocfmt.library

// The loader's refusal, told apart from the library's own failures.
struct LoadError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

// The configured path; else the host's own rules when $VXLOCFMT_LIBRARY is set (empty: the
// host decides); else libvxlocfmt.so beside this module (where the install puts it); else the
// host's rules, which look beside the server's executable, then ask the dynamic loader, and list
// every place looked.
std::string path_to_load() {
    if (!configured_path.empty()) return configured_path;
    if (const char* variable = std::getenv("VXLOCFMT_LIBRARY"); variable && *variable) return {};
    Dl_info info{};
    if (dladdr(reinterpret_cast<void*>(&vxpg_format), &info) && info.dli_fname) {
        const auto beside = std::filesystem::path(info.dli_fname).parent_path() / "libvxlocfmt.so";
        std::error_code ignored;
        if (std::filesystem::exists(beside, ignored)) return beside.string();
    }
    return {};
}

// The path the first instance was loaded from: every later locale's comes from the same file.
// Until a load succeeds, each attempt looks again (a corrected setting takes effect).
std::optional<std::string> settled_path;

std::unique_ptr<vxhost::Library> open_library() {
    const std::string path = settled_path ? *settled_path : path_to_load();
    try {
        auto library = path.empty() ? std::make_unique<vxhost::Library>() : std::make_unique<vxhost::Library>(path);
        settled_path = path;
        return library;
    } catch (const std::runtime_error& refused) {
        throw LoadError(refused.what());
    }
}

// One instance of the library per locale. The instance builds its money conventions from the
// first international or local currency format called on it and keeps them (NLMNIEUR after a
// de_DE call writes German separators for every later locale); an instance per locale keeps
// each result a function of its arguments alone, whatever the backend formatted before. Kept
// for the backend's life, as PostgreSQL keeps its modules; at most one per known locale.
const vxhost::Library& library_for(const std::string& locale) {
    static auto* libraries = new std::map<std::string, std::unique_ptr<vxhost::Library>, std::less<>>;
    static bool zone_pinned = false;
    if (!zone_pinned) {
        // A timestamp carries no zone: the zone-aware formats and the local-zone readers take UTC,
        // which also keeps every result independent of the server's environment.
        vxhost::set_time_zone("UTC");
        zone_pinned = true;
    }
    // An unknown name shares one instance: the session refuses it before any call.
    const std::string key = vxhost::canonical_locale(locale);
    auto found = libraries->find(key);
    if (found == libraries->end()) found = libraries->emplace(key, open_library()).first;
    return *found->second;
}

// A database is a byte session: the formats answer through their byte variants in UTF-8, styled
// as the host's byte sessions style them (NLMNIEUR writes "EUR"), and functions.c converts to the
// database encoding.
constexpr const char* session_encoding = "UTF-8";

RoutineCache<vxhost::Formatter>& formatters() {
    static auto* cache = new RoutineCache<vxhost::Formatter>(session_encoding);
    return *cache;
}

RoutineCache<vxhost::Reader>& readers() {
    static auto* cache = new RoutineCache<vxhost::Reader>(session_encoding);
    return *cache;
}

// What a format of `kind` is handed for an SQL value: a date keeps its day number for date
// formats and plain numbers, a timestamp its seconds; each becomes the other where the format
// wants it, and time formats see the seconds since midnight.
double value_for(vxhost::ValueKind kind, vxpg_value_type type, double value) {
    using vxhost::ValueKind;
    if (type == vxpg_date) {
        if (kind == ValueKind::datetime) return value * seconds_per_day;
        if (kind == ValueKind::time) return 0;
        return value;
    }
    if (type == vxpg_datetime) {
        const double day = std::floor(value / seconds_per_day);
        if (kind == ValueKind::date) return day;
        if (kind == ValueKind::time) return value - day * seconds_per_day;
    }
    return value;
}

void copy_message(char* message, const std::string& text) {
    std::snprintf(message, VXPG_MESSAGE_SIZE, "%s", text.c_str());
}

// Runs `body`, turning whatever it throws into an outcome and a message.
template <class Body>
vxpg_outcome guarded(char* message, Body&& body) noexcept {
    try {
        return body();
    } catch (const vxhost::RequestError& refused) {
        copy_message(message, refused.what());
        return vxpg_bad_request;
    } catch (const std::bad_alloc&) {
        copy_message(message, "out of memory");
        return vxpg_out_of_memory;
    } catch (const LoadError& failed) {
        copy_message(message, failed.what());
        return vxpg_no_library;
    } catch (const std::exception& failed) {
        copy_message(message, failed.what());
        return vxpg_internal;
    } catch (...) {
        copy_message(message, "unexpected exception");
        return vxpg_internal;
    }
}

}  // namespace
}  // namespace vxpg

extern "C" void vxpg_set_library(const char* path) {
    try {
        vxpg::configured_path = path ? path : "";
    } catch (...) {
        // Out of memory while keeping a GUC's value: the default rules stay in force.
    }
}

extern "C" vxpg_outcome vxpg_format(const char* spec, size_t spec_length, const char* locale, size_t locale_length,
                                    vxpg_value_type type, double value, const char** text, size_t* length,
                                    char message[VXPG_MESSAGE_SIZE]) {
    return vxpg::guarded(message, [&] {
        vxhost::Formatter& formatter =
            vxpg::formatters().get({spec, spec_length}, {locale, locale_length}, vxpg::library_for);
        const auto result = formatter.format(vxpg::value_for(formatter.kind(), type, value));
        *text = result.text.data();
        *length = result.text.size();
        return vxpg_ok;
    });
}

extern "C" vxpg_outcome vxpg_read(const char* spec, size_t spec_length, const char* locale, size_t locale_length,
                                  const char* text, size_t text_length, vxpg_value_type type, double* value,
                                  char message[VXPG_MESSAGE_SIZE]) {
    return vxpg::guarded(message, [&] {
        using vxhost::ValueKind;
        vxhost::Reader& reader = vxpg::readers().get({spec, spec_length}, {locale, locale_length}, vxpg::library_for);
        const ValueKind kind = reader.kind();
        if (type != vxpg_number && kind != ValueKind::date && kind != ValueKind::datetime)
            throw vxhost::RequestError("informat '" + std::string(spec, spec_length) + "' reads " +
                                       vxhost::value_kind_name(kind) + "s, not dates or datetimes");
        const auto result = reader.read({text, text_length});
        if (!result.ok || std::isnan(result.value)) return vxpg_missing;
        double read = result.value;
        if (type == vxpg_date && kind == ValueKind::datetime) read = std::floor(read / vxpg::seconds_per_day);
        if (type == vxpg_datetime && kind == ValueKind::date) read *= vxpg::seconds_per_day;
        *value = read;
        return vxpg_ok;
    });
}
