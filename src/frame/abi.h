/*
 * The C ABI the host and the library share: the call record `FmtCall`, the registry row, the
 * instance record, and the plain status codes. Layouts are fixed by the host and checked with
 * static_assert below; everything above this header is typed C++.
 *
 *   FmtCall call{};            // zero-initialised by the host
 *   call.width = 20;           // then the row's function is called with &call
 */
#pragma once

#include <cstddef>
#include <cstdint>

// Marks a name the shared library exports; the export list decides what is really visible.
#define VX_EXPORT extern "C" __attribute__((visibility("default")))

namespace vxlocfmt {

// One Unicode code point; all library text is counted arrays of these.
using wchar = char32_t;
// Every exported function answers one of these; 0 is success.
using status = std::uint32_t;

namespace st {
inline constexpr status ok = 0;
inline constexpr status width_too_small = 2;
inline constexpr status width_too_large = 3;
inline constexpr status decimals_negative = 4;
inline constexpr status decimals_too_large = 5;
inline constexpr status instance_not_found = 0xFFFFFFFFu;          // formats
inline constexpr status date_instance_not_found = 0x80000000u;     // date and time informats
inline constexpr status no_memory = 0x803fc002u;
inline constexpr status bad_base64 = 0x803fc003u;
inline constexpr status no_journal = 0x803fc009u;
inline constexpr status too_small_for_digits = 0x803fc0c9u;
inline constexpr status does_not_fit = 0x803fe807u;
inline constexpr status unmappable = 0x803fe808u;  // the session encoding cannot hold a character
inline constexpr status number_shortened = 0x803fe816u;
// The kernel number formatter left out the thousands separators to fit (COMMA answers 0).
inline constexpr status number_grouping_dropped = 0x803fe85bu;
// The kernel number formatter had no room at all (width or capacity below 1): nothing written.
inline constexpr status number_no_room = 0x803fe80eu;
// The call record carries no locale object to build the property table from.
inline constexpr status no_locale = 0x803fe80au;
}  // namespace st

struct PropertyCache;  // the locale property table, built by the locale subsystem

// The call record passed to every format and informat. Field order and widths are the host's.
struct FmtCall {
    std::int32_t width;
    std::int32_t decimals;
    const void* input;            // format: const double*; informat: const wchar*
    std::int32_t input_length;    // informat: characters of text supplied
    void* output;                 // format: wchar* (or bytes in byte mode); informat: double*
    std::int32_t capacity;        // output capacity; the "field length" of the number renderers
    std::int32_t produced;        // characters (bytes in byte mode) written
    unsigned char unused_a[16];
    std::uint8_t flags;           // bit 0: check width and decimals against the row's limits
    void* number_format;          // the kernel locale object of this call
    unsigned char unused_b[168];
    PropertyCache* property_cache;  // built on first NL call, then reused
    void* session_transcoder;     // wide text to the session encoding
    std::uint8_t byte_mode;       // non-zero: answer in the session encoding
    std::int32_t text_limit;      // informats read at most min(input_length, text_limit)
    void** session;               // word 18: session pool; words 30..: extension instances, null-ended
    void* scratch_pool_block;     // "VXFM" block carrying a scratch pool at its word 10
    void* further[8];             // copied as they stand by the byte wrapper
};

inline constexpr std::uint8_t call_flag_check_limits = 0x01;

static_assert(offsetof(FmtCall, width) == 0);
static_assert(offsetof(FmtCall, decimals) == 4);
static_assert(offsetof(FmtCall, input) == 8);
static_assert(offsetof(FmtCall, input_length) == 16);
static_assert(offsetof(FmtCall, output) == 24);
static_assert(offsetof(FmtCall, capacity) == 32);
static_assert(offsetof(FmtCall, produced) == 36);
static_assert(offsetof(FmtCall, unused_a) == 40);
static_assert(offsetof(FmtCall, flags) == 56);
static_assert(offsetof(FmtCall, number_format) == 64);
static_assert(offsetof(FmtCall, unused_b) == 72);
static_assert(offsetof(FmtCall, property_cache) == 240);
static_assert(offsetof(FmtCall, session_transcoder) == 248);
static_assert(offsetof(FmtCall, byte_mode) == 256);
static_assert(offsetof(FmtCall, text_limit) == 260);
static_assert(offsetof(FmtCall, session) == 264);
static_assert(offsetof(FmtCall, scratch_pool_block) == 272);
static_assert(offsetof(FmtCall, further) == 280);
static_assert(sizeof(FmtCall) == 344);

// Session context words the library reads.
inline constexpr std::size_t session_word_pool = 18;
inline constexpr std::size_t session_word_extensions = 30;
// Word of the "VXFM" scratch-pool block that holds the scratch pool.
inline constexpr std::size_t scratch_block_word_pool = 10;

extern "C" {
using format_fn = status (*)(FmtCall* call, void* extra);
using byte_format_fn = status (*)(FmtCall* call, FmtCall* out, void* extra);
}

inline constexpr std::size_t registry_name_length = 32;
inline constexpr std::uint32_t row_kind_format = 1;
inline constexpr std::uint32_t row_kind_informat = 2;
inline constexpr std::uint32_t row_style_format = 2;
inline constexpr std::uint32_t row_style_informat = 1;

// One row of `funcinfo`.
struct FuncInfo {
    wchar name[registry_name_length];  // blank padded, not terminated; informats start with '@'
    std::uint32_t kind;
    std::uint32_t style;
    format_fn function;
    std::uint32_t min_width;
    std::uint32_t max_width;
    std::uint32_t default_width;
    std::uint32_t min_decimals;
    std::uint32_t max_decimals;
    std::uint32_t default_decimals;
    void* reserved;                    // null on every row
    byte_format_fn byte_function;      // null on informat rows
    std::uint32_t extra_width;         // handed to the host as it stands
    std::uint32_t zero;
};
static_assert(offsetof(FuncInfo, kind) == 128);
static_assert(offsetof(FuncInfo, function) == 136);
static_assert(offsetof(FuncInfo, min_width) == 144);
static_assert(offsetof(FuncInfo, default_decimals) == 164);
static_assert(offsetof(FuncInfo, reserved) == 168);
static_assert(offsetof(FuncInfo, byte_function) == 176);
static_assert(offsetof(FuncInfo, extra_width) == 184);
static_assert(sizeof(FuncInfo) == 192);

inline constexpr std::size_t registry_rows = 247;  // plus the end row

extern "C" {
using version_fn = status (*)(void* instance, std::uint64_t* major, std::uint64_t* minor,
                              std::uint64_t* level);
using destroy_fn = status (*)(void* instance);
}

// Room the instance keeps for 189 locale property records of 672 bytes.
inline constexpr std::size_t instance_reserved_bytes = 189 * 672;
static_assert(instance_reserved_bytes == 127008);

// The instance record, one per load, allocated from the library's own pool.
struct Instance {
    void* host_words[3];          // [1] points at the extension's name (the tag "vxlocfmt")
    version_fn required_version;  // vxfmtwfnlsReqVersion
    version_fn own_version;       // vxfmtwfnlsVersion
    void* context;                // the host's extension context
    destroy_fn destroy;           // vxfmtwfnlsDestroy
    void* unset_a[2];
    const FuncInfo* registry;     // funcinfo
    void* unset_b;
    void* pool;
    void* journal;                // may be null
    std::uint64_t journal_flush;  // non-zero: flush the journal before releasing it
    unsigned char reserved[instance_reserved_bytes];
    void* primary_transcoder;     // locale encoding (62) to wide (27)
    void* second_object;          // (25, 27); created and released only
    void* fixed_locale;           // "en_US"
    void* currency_cache;         // 64-byte block, made on first international currency call
};
static_assert(offsetof(Instance, required_version) == 24);
static_assert(offsetof(Instance, destroy) == 48);
static_assert(offsetof(Instance, registry) == 72);
static_assert(offsetof(Instance, pool) == 88);
static_assert(offsetof(Instance, journal) == 96);
static_assert(offsetof(Instance, journal_flush) == 104);
static_assert(offsetof(Instance, reserved) == 112);
static_assert(offsetof(Instance, primary_transcoder) == 112 + instance_reserved_bytes);
static_assert(sizeof(Instance) == 112 + instance_reserved_bytes + 4 * 8);

// The 8-byte tag by which a format finds its instance among the session's extensions.
inline constexpr char instance_tag[8] = {'v', 'x', 'l', 'o', 'c', 'f', 'm', 't'};

// The ordinary missing value and its bit pattern.
inline constexpr std::uint64_t missing_bits = 0xFFFFFE0000000000ull;

}  // namespace vxlocfmt
