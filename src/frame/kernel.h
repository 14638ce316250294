/*
 * Kernel objects as the library sees them. A kernel object is a table of pointer-sized words;
 * a "slot" is a word holding a function whose first argument is the object itself. The slot
 * numbers and signatures below are the whole contract between the library and a host: the host
 * runtime in host/ builds its objects from this same header.
 *
 *   void* block = kernel::pool_alloc(pool, 64, kernel::alloc_long_lived);
 *   kernel::pool_free(pool, block);
 *
 * Ordinals: "the fourth slot" is index 3; "slot 14" and "word 27" are indexes as written.
 */
#pragma once

#include <cstdarg>
#include <cstddef>
#include <cstdint>

#include "frame/abi.h"

namespace vxlocfmt::kernel {

// ---- slot indexes -------------------------------------------------------------------------

// Extension context (argument of the entry point).
inline constexpr std::size_t ctx_create_journal = 5;   // sixth slot
inline constexpr std::size_t ctx_create_pool = 6;      // seventh slot
inline constexpr std::size_t ctx_word_service = 27;    // twenty-eighth word: kernel service object
// Kernel service object.
inline constexpr std::size_t svc_object_factory = 14;  // fifteenth slot
inline constexpr std::size_t svc_locale_object = 33;   // thirty-fourth slot
// Memory pool.
inline constexpr std::size_t pool_destroy_slot = 2;
inline constexpr std::size_t pool_alloc_slot = 3;
inline constexpr std::size_t pool_free_slot = 4;
// Journal.
inline constexpr std::size_t journal_release_slot = 2;
inline constexpr std::size_t journal_flush_slot = 3;
inline constexpr std::size_t journal_message_slot = 5;
inline constexpr std::size_t journal_status_slot = 7;
// Any kernel object made by the factory or the locale service.
inline constexpr std::size_t object_release_slot = 2;
inline constexpr std::size_t object_convert_slot = 4;
// Session transcoder (wide text to the session encoding): what it offers beyond converting.
// All may be null (0): the library then converts into a scratch buffer to measure, and converts
// every text through the convert slot.
inline constexpr std::size_t transcoder_measure_slot = 5;   // sixth: convert's answer, no bytes
inline constexpr std::size_t transcoder_word_identity = 6;  // seventh word: the identity bound
inline constexpr std::size_t transcoder_word_form = 7;      // eighth word: the encoding form it promises
// Encoding forms a session transcoder may promise (word 7): what convert and measure write and
// answer for every character, so the library may do it in their place.
inline constexpr std::uintptr_t transcoder_form_none = 0;
inline constexpr std::uintptr_t transcoder_form_utf8 = 1;
// Locale object (the call's number-format service).
inline constexpr std::size_t locale_number_format_slot = 39;
inline constexpr std::size_t locale_text_to_integer_slot = 51;
inline constexpr std::size_t locale_data_block_slot = 60;  // sixty-first
// Buffer-formatting objects of the reporting layer.
inline constexpr std::size_t object_message_to_buf_slot = 4;  // fifth
inline constexpr std::size_t object_status_to_buf_slot = 6;   // seventh
// Kernel handle (Exported_VXHandle).
inline constexpr std::size_t handle_option_lookup = 14;
inline constexpr std::size_t handle_word_nls = 27;         // national-language service, or null
inline constexpr std::size_t handle_clock = 33;            // thirty-fourth slot
inline constexpr std::size_t handle_word_default_journal = 35;
inline constexpr std::size_t handle_word_zone = 36;        // time-zone object, or null
inline constexpr std::size_t handle_word_number_format = 37;  // global number-format object, or null
inline constexpr std::size_t handle_word_conversion = 185;
inline constexpr std::size_t handle_capture = 229;
inline constexpr std::size_t handle_format_buff = 230;
inline constexpr std::size_t handle_render = 231;
inline constexpr std::size_t handle_render_fmt = 232;
inline constexpr std::size_t handle_status_buff = 233;
inline constexpr std::size_t handle_words = 240;           // size of the host's handle table

// Kernel encoding ids.
inline constexpr std::uint32_t encoding_locale_text = 62;  // ASCII with <Uxxxx> escapes
inline constexpr std::uint32_t encoding_wide = 27;         // 32-bit code points, host order
inline constexpr std::uint32_t encoding_second = 25;

// Allocation flags.
inline constexpr std::uint32_t alloc_scratch = 0;
inline constexpr std::uint32_t alloc_long_lived = 0x80000000u;

// ---- signatures ---------------------------------------------------------------------------
extern "C" {
using create_pool_fn = void* (*)(void* ctx, void* options, void* journal, const char* name);
using create_journal_fn = void* (*)(void* ctx, void* options, void* parent, const wchar* name);
using object_factory_fn = void* (*)(void* svc, std::uint32_t from, std::uint32_t to, void* a, void* b);
using locale_object_fn = void* (*)(void* svc, const char* name, std::int32_t length);
using pool_destroy_fn = status (*)(void* pool);
using pool_alloc_fn = void* (*)(void* pool, std::uint64_t size, std::uint32_t flags);
using pool_free_fn = status (*)(void* pool, void* block);
using release_fn = status (*)(void* object);
using flush_fn = status (*)(void* journal);
using journal_status_fn = status (*)(void* journal, std::int32_t severity, status code, va_list* args);
using journal_message_fn = status (*)(void* journal, std::int32_t severity, const wchar* message,
                                      const wchar* format, va_list* args);
using to_buf_fn = status (*)(void* object, std::uint64_t what, wchar* buffer, std::int64_t capacity,
                             va_list* args);
// Converts `length` bytes of source text into at most `capacity` bytes; writes the bytes
// produced. Stops at the last whole character that fits and answers does_not_fit.
using convert_fn = status (*)(void* object, const void* source, std::int32_t length, void* dest,
                              std::int32_t capacity, std::int32_t* produced, std::int64_t zero);
// Answers what convert would answer with `limit` as its capacity, and the bytes it would produce,
// without writing anything.
using measure_fn = status (*)(void* object, const void* source, std::int32_t length, std::int32_t limit,
                              std::int32_t* needed, std::int64_t zero);
using locale_data_fn = status (*)(void* locale, std::int64_t zero, const unsigned char** block);
// The number formatter: plain rendering of a value in wide characters.
using number_format_fn = status (*)(void* locale, double value, std::int32_t width,
                                    std::int32_t decimals, std::uint32_t mode, wchar* out,
                                    std::int32_t capacity, std::int32_t* length);
using option_lookup_fn = status (*)(void* handle, const wchar* name, std::int32_t length, void* result,
                                    std::int32_t result_size);
using clock_fn = status (*)(void* handle, std::int32_t what, double* area, std::uint32_t flags);
}

// ---- typed calls --------------------------------------------------------------------------

inline void* word(void* object, std::size_t index) { return static_cast<void**>(object)[index]; }

template <class Fn>
inline Fn slot(void* object, std::size_t index) {
    return reinterpret_cast<Fn>(static_cast<void**>(object)[index]);
}

inline void* pool_alloc(void* pool, std::uint64_t size, std::uint32_t flags) {
    return slot<pool_alloc_fn>(pool, pool_alloc_slot)(pool, size, flags);
}
inline status pool_free(void* pool, void* block) {
    return slot<pool_free_fn>(pool, pool_free_slot)(pool, block);
}
inline status pool_destroy(void* pool) {
    return slot<pool_destroy_fn>(pool, pool_destroy_slot)(pool);
}
inline status release(void* object) {
    return slot<release_fn>(object, object_release_slot)(object);
}
inline status convert(void* object, const void* source, std::int32_t length, void* dest,
                      std::int32_t capacity, std::int32_t* produced) {
    return slot<convert_fn>(object, object_convert_slot)(object, source, length, dest, capacity,
                                                         produced, 0);
}
// Null when the transcoder does not measure.
inline measure_fn measure_slot(void* transcoder) { return slot<measure_fn>(transcoder, transcoder_measure_slot); }
// A text made only of code points below this bound converts to one byte per character, the byte
// being the code point itself; 0 when the transcoder promises nothing.
inline std::uintptr_t identity_bound(void* transcoder) {
    return reinterpret_cast<std::uintptr_t>(word(transcoder, transcoder_word_identity));
}
// The encoding form the transcoder promises (transcoder_form_utf8), or transcoder_form_none. Read
// only from a transcoder that publishes an identity bound: an older host's table may end before it.
inline std::uintptr_t encoding_form(void* transcoder) {
    return identity_bound(transcoder) ? reinterpret_cast<std::uintptr_t>(word(transcoder, transcoder_word_form))
                                      : transcoder_form_none;
}
inline status locale_data(void* locale, const unsigned char** block) {
    return slot<locale_data_fn>(locale, locale_data_block_slot)(locale, 0, block);
}

// The session's memory pool, from the call record's session context.
inline void* session_pool(const FmtCall& call) {
    return call.session ? call.session[session_word_pool] : nullptr;
}

}  // namespace vxlocfmt::kernel

// The process-wide kernel handle, set by vxextver and vxextent.
extern "C" __attribute__((visibility("default"))) void* Exported_VXHandle;
