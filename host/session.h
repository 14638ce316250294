/*
 * The embedding API: a session opens a locale (and optionally a byte encoding) on a loaded
 * library and formats or reads values by registry row, reusing one warm call record so the
 * locale's property table is built once.
 *
 *   vxhost::Session session(library, {.locale = "fr_FR"});
 *   auto result = session.format(*library.find(U"NLDATE"), 20, 0, 23000);   // result.text
 */
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "frame/abi.h"
#include "library.h"

namespace vxhost {

class Pool;
class LocaleObject;
class Transcoder;

struct SessionOptions {
    std::string locale = "en_US";
    std::string encoding{};     // empty: wide results; else bytes in this encoding via the _b variants
    bool check_limits = false;  // sets bit 0 of the call flags
};

struct FormatResult {
    vxlocfmt::status code;
    std::u32string_view text;  // wide results
    std::string_view bytes;    // byte results (encoding set)
};

struct ReadResult {
    vxlocfmt::status code;
    double value;
};

class Session {
public:
    // Throws std::invalid_argument("unknown locale NAME") or ("unknown encoding NAME").
    Session(const Library& library, const SessionOptions& options);
    // A session on an instance the caller made itself (linked in, not loaded).
    Session(vxlocfmt::Instance* instance, const SessionOptions& options);
    ~Session();
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    FormatResult format(const vxlocfmt::FuncInfo& row, std::int32_t width, std::int32_t decimals, double value);
    ReadResult read(const vxlocfmt::FuncInfo& row, std::int32_t width, std::int32_t decimals,
                    std::u32string_view text);

    // Many values, each straight into a buffer of the caller's (a row of a NumPy column): the
    // call record is set up once for the row and layout, then each value costs the library's
    // call and nothing more (no copy out of the session's buffer). Wide characters, or with
    // `bytes` the session encoding's bytes through the row's byte variant. No other call on
    // this session while a run is in use.
    class FormatRun;
    FormatRun format_run(const vxlocfmt::FuncInfo& row, std::int32_t width, std::int32_t decimals, bool bytes);

    // The warm call record, for callers that drive the C ABI themselves.
    vxlocfmt::FmtCall& call() { return call_; }
    const std::string& locale_id() const;
    bool byte_output() const { return !options_.encoding.empty(); }

private:
    void ensure_capacity(std::int32_t width);

    SessionOptions options_;
    Pool* pool_ = nullptr;
    Pool* scratch_pool_ = nullptr;
    LocaleObject* locale_ = nullptr;
    Transcoder* transcoder_ = nullptr;
    std::array<void*, 64> session_words_{};
    std::array<void*, 3> other_extension_{};    // a second extension listed before ours
    std::array<void*, 12> scratch_block_{};     // "VXFM" in wide characters, scratch pool at word 10
    vxlocfmt::FmtCall call_{};
    std::vector<vxlocfmt::wchar> wide_;
    std::vector<char> bytes_;
};

class Session::FormatRun {
public:
    struct Written {
        vxlocfmt::status code;
        std::size_t length;  // produced, within [0, the field's capacity]
    };
    // `out` holds at least the run's width units (char32_t, or bytes in a byte run).
    Written operator()(double value, void* out) {
        call_->input = &value;
        call_->output = out;
        call_->produced = 0;
        const vxlocfmt::status code =
            bytes_ ? row_->byte_function(call_, nullptr, nullptr) : row_->function(call_, nullptr);
        return {code, static_cast<std::size_t>(std::clamp(call_->produced, 0, call_->capacity))};
    }

private:
    friend class Session;
    FormatRun(vxlocfmt::FmtCall& call, const vxlocfmt::FuncInfo& row, bool bytes)
        : call_(&call), row_(&row), bytes_(bytes) {}
    vxlocfmt::FmtCall* call_;
    const vxlocfmt::FuncInfo* row_;
    bool bytes_;
};

}  // namespace vxhost
