/*
 * The byte-mode test of the NL formats: a wide text fits the field only if its conversion to the
 * session encoding fits the width in bytes. Any answer of the transcoder but success (too small,
 * a character the encoding cannot hold, no transcoder) counts as not fitting. Nothing is
 * converted: a text below the transcoder's identity bound needs one byte a character, any other
 * is measured by the transcoder (converted into a scratch buffer when it does not measure).
 * Under the byte wrapper the text is converted instead, straight into the caller's field: the
 * test's answer is the same, and a text that fits leaves its bytes for the wrapper
 * (frame/wrapped_call.h). A format must not change a text that passed, nor the readable cells
 * after it, before it returns.
 *
 *   if (call.byte_mode && !fits_session_encoding(call, text, call.width)) try_next_candidate();
 */
#pragma once

#include <algorithm>
#include <cstdint>
#include <string_view>

#include "frame/abi.h"
#include "frame/kernel.h"
#include "frame/narrowed_bytes.h"
#include "frame/session_bytes.h"
#include "frame/wrapped_call.h"

namespace vxlocfmt {

// Session bytes a test may need: 2048 characters (the longest working text) at 4 bytes each.
inline constexpr std::int32_t session_fit_bytes = 4 * 2048;

namespace detail {
// A transcoder that does not measure: convert into the stack and look at the answer.
[[gnu::noinline]] inline status measure_by_converting(void* transcoder, const wchar* text, std::int32_t length,
                                                      std::int32_t limit) {
    unsigned char bytes[session_fit_bytes];
    std::int32_t produced = 0;
    return kernel::convert(transcoder, text, length * static_cast<std::int32_t>(sizeof(wchar)), bytes, limit,
                           &produced);
}
}  // namespace detail

// `readable`: cells from the text's start that the format has written (the text and the blanks
// after it, up to the field's stored cells), at least the text's own; under the wrapper they are
// narrowed with it when they can be, a length that does not vary with the text.
inline bool fits_session_encoding(const FmtCall& call, std::u32string_view text, std::int32_t byte_width,
                                  std::int32_t readable = 0) {
    void* transcoder = call.session_transcoder;
    if (!transcoder) return false;
    const auto length = static_cast<std::int32_t>(std::min<std::size_t>(text.size(), session_fit_bytes / 4));
    const std::int32_t limit = std::clamp(byte_width, 0, session_fit_bytes);
    const wchar bound = session_bytes::identity_mask_bound(transcoder);
    if (WrappedCall* wrapped = WrappedCall::of(call)) {
        wrapped->kept_text = nullptr;
        if (static_cast<std::size_t>(length) == text.size()) {
            // A conversion into min(limit, room) bytes answers the test when it succeeds, or
            // when it is cut short at the limit itself; any other answer is measured below.
            const std::int32_t room = std::min(limit, wrapped->room);
            if (bound && length <= room && wrapped->field) {
                const std::int32_t cells = std::min(std::max(readable, length), room);
                if (session_bytes::narrow_cells(text.data(), cells, wrapped->field, bound)) {
                    wrapped->keep(text.data(), length, length);
                    wrapped->narrowed_cells = cells;
                    return true;
                }
                // A character at or above the bound: converted below.
            }
            std::int32_t produced = 0;
            const status answer =
                session_bytes::convert(transcoder, text.data(), length, wrapped->field, room, &produced);
            if (answer == st::ok) {
                wrapped->keep(text.data(), length, produced);
                return true;
            }
            if (answer == st::does_not_fit && room == limit) return false;
        }
    }
    if (bound && session_bytes::all_below(text.data(), length, bound)) return length <= limit;
    std::int32_t needed = 0;
    status answer = st::ok;
    if (session_bytes::measure_here(transcoder, text.data(), length, limit, &needed, &answer)) return answer == st::ok;
    if (const kernel::measure_fn measure = kernel::measure_slot(transcoder)) {
        return measure(transcoder, text.data(), length * static_cast<std::int32_t>(sizeof(wchar)), limit, &needed,
                       0) == st::ok;
    }
    return detail::measure_by_converting(transcoder, text.data(), length, limit) == st::ok;
}

// Under the wrapper, in a session with an identity bound: where a writer may narrow the text
// it writes (frame/narrowed_bytes.h), the bytes a fit test with this width would convert into.
// False (and nothing to narrow into) otherwise.
inline bool narrowing_target(const FmtCall& call, std::int32_t byte_width, NarrowedBytes* target) {
    target->cells = 0;
    target->encoded_cells = 0;
    const WrappedCall* wrapped = WrappedCall::of(call);
    if (!wrapped || !wrapped->field || !call.session_transcoder) return false;
    target->bound = session_bytes::identity_mask_bound(call.session_transcoder);
    target->bytes = wrapped->field;
    target->room = std::min(std::clamp(byte_width, 0, session_fit_bytes), wrapped->room);
    target->utf8 = target->bound != 0 && kernel::encoding_form(call.session_transcoder) == kernel::transcoder_form_utf8;
    return target->bound != 0;
}

// fits_session_encoding for a text whose cells, and `readable` cells in all from its start, a
// writer has just narrowed into the target: the same verdict and the same bytes kept for the
// wrapper, without converting again. False when the writer did not narrow them all (the caller
// then runs fits_session_encoding); true means the text fits.
inline bool fits_narrowed(const FmtCall& call, std::u32string_view text, std::int32_t readable,
                          const NarrowedBytes& target) {
    const auto length = static_cast<std::int32_t>(text.size());
    WrappedCall* wrapped = WrappedCall::of(call);
    if (!wrapped || wrapped->field != target.bytes) return false;
    if (target.cells == 0) {
        // A UTF-8 text the writer encoded whole within the room: the conversion the plain test
        // would make, which succeeded.
        if (target.encoded_cells == 0 || target.encoded_cells != length) return false;
        wrapped->keep(text.data(), length, target.encoded_bytes);
        return true;
    }
    // The plain test's own narrowing covers min(max(readable, length), room) cells.
    if (length > target.cells || target.cells != std::min(std::max(readable, length), target.room)) return false;
    wrapped->keep(text.data(), length, length);
    wrapped->narrowed_cells = target.cells;
    return true;
}

// The bytes `count` wide characters take in the session encoding, or -1 when a conversion into
// `capacity` bytes would not succeed (no transcoder, a character the encoding cannot hold, too
// long): the fit test of the number and money formats, which need the length itself. Converts
// nothing when the text is below the identity bound or the transcoder measures.
inline std::int32_t session_byte_length(const FmtCall& call, const wchar* text, std::int32_t count,
                                        std::int32_t capacity) {
    void* transcoder = call.session_transcoder;
    if (!transcoder || count < 0 || count > session_fit_bytes / 4) return -1;
    capacity = std::clamp(capacity, 0, session_fit_bytes);
    const wchar bound = session_bytes::identity_mask_bound(transcoder);
    if (bound && session_bytes::all_below(text, count, bound)) return count <= capacity ? count : -1;
    std::int32_t needed = 0;
    status answer = st::ok;
    if (session_bytes::measure_here(transcoder, text, count, capacity, &needed, &answer)) {
    } else if (const kernel::measure_fn measure = kernel::measure_slot(transcoder)) {
        answer = measure(transcoder, text, count * static_cast<std::int32_t>(sizeof(wchar)), capacity, &needed, 0);
    } else {
        unsigned char bytes[session_fit_bytes];
        answer = kernel::convert(transcoder, text, count * static_cast<std::int32_t>(sizeof(wchar)), bytes, capacity,
                                 &needed);
    }
    return answer == st::ok ? needed : -1;
}

// After a test that fitted: the format's answer is that text and then `count` blanks (U+0020).
inline void blanks_follow_fitted(const FmtCall& call, std::int32_t count) {
    if (WrappedCall* wrapped = WrappedCall::of(call); wrapped && wrapped->kept_text)
        wrapped->blanks_after = count;
}

}  // namespace vxlocfmt
