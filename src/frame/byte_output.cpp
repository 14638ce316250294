#include "frame/byte_output.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <utility>

#include "frame/kernel.h"
#include "frame/session_bytes.h"
#include "frame/wrapped_call.h"

namespace vxlocfmt {
namespace {

// Widths up to this many characters render into the stack; wider ones into a pool block.
constexpr std::int32_t local_scratch_cells = 256;

bool is_scratch_block(const void* block) {
    const auto* tag = static_cast<const wchar*>(block);
    return tag[0] == U'V' && tag[1] == U'X' && tag[2] == U'F' && tag[3] == U'M';
}

void* scratch_pool(const FmtCall& call) {
    if (call.scratch_pool_block && is_scratch_block(call.scratch_pool_block)) {
        if (void* pool = kernel::word(call.scratch_pool_block, scratch_block_word_pool)) return pool;
    }
    return kernel::session_pool(call);
}

// Converts `count` wide characters into `bytes` cells of the field.
status convert_to(const FmtCall& call, const wchar* text, std::int32_t count, unsigned char* dest,
                  std::int32_t bytes, std::int32_t* produced) {
    *produced = 0;
    if (!call.session_transcoder) return st::does_not_fit;
    return session_bytes::convert(call.session_transcoder, text, count, dest, bytes, produced);
}

// The call record into the wrapper's copy. The host has just stored the value pointer and the
// produced length: its first fields are copied as the fields they are, since a wider load across
// a fresh narrower store stalls until the store is done. The output, capacity and produced length
// are the wrapper's own and are not copied; the rest goes in 16-byte pieces (a plain copy of the
// record compiles to a string move whose start-up costs more than the copy itself).
template <std::size_t... piece>
void copy_pieces(unsigned char* to, const unsigned char* from, std::index_sequence<piece...>) {
    (std::memcpy(to + piece * 16, from + piece * 16, 16), ...);
}
void copy_record(FmtCall& to, const FmtCall& from) {
    to.width = from.width;
    to.decimals = from.decimals;
    to.input = from.input;
    to.input_length = from.input_length;
    constexpr std::size_t rest = offsetof(FmtCall, unused_a);
    static_assert(rest == offsetof(FmtCall, produced) + sizeof(FmtCall::produced), "the skipped fields end here");
    constexpr std::size_t pieces = (sizeof(FmtCall) - rest) / 16;
    constexpr std::size_t tail = (sizeof(FmtCall) - rest) % 16;
    auto* t = reinterpret_cast<unsigned char*>(&to) + rest;
    const auto* f = reinterpret_cast<const unsigned char*>(&from) + rest;
    copy_pieces(t, f, std::make_index_sequence<pieces>());
    if constexpr (tail > 0) std::memcpy(t + pieces * 16, f + pieces * 16, tail);
}

// The wide text's conversion when the format's fit test has left the bytes of its beginning in
// the field: the rest, below the identity bound, is narrowed after them (a text below the bound
// adds one byte a character to any other, as the transcoder promises). False when the rest needs
// the transcoder: the whole text is then converted as usual.
bool finish_kept(const WrappedCall& wrapped, void* transcoder, const wchar* text, std::int32_t count,
                 std::int32_t* produced, status* answer) {
    if (wrapped.kept_text != text) return false;
    if (count <= wrapped.narrowed_cells) {
        // The whole text was narrowed with the test's: it fits the field, a byte a character.
        *produced = count;
        *answer = st::ok;
        return true;
    }
    if (wrapped.kept_count > count) return false;
    const std::int32_t done = wrapped.kept_bytes;
    if (wrapped.kept_count == count) {
        *produced = done;
        *answer = st::ok;
        return true;
    }
    const wchar bound = session_bytes::identity_mask_bound(transcoder);
    const std::int32_t rest = count - wrapped.kept_count;
    if (rest == wrapped.blanks_after && bound > U' ') {
        // Blanks the format vouched for: written, not read (the cells were just stored in
        // pieces of another size, and loading them back would wait for the stores).
        const std::int32_t stored = std::min(rest, wrapped.room - done);
        std::memset(wrapped.field + done, ' ', static_cast<std::size_t>(stored));
        *produced = done + stored;
        *answer = stored == rest ? st::ok : st::does_not_fit;
        return true;
    }
    std::int32_t more = 0;
    if (!session_bytes::narrow(bound, text + wrapped.kept_count, rest, wrapped.field + done, wrapped.room - done,
                               &more, answer))
        return false;
    *produced = done + more;
    return true;
}

}  // namespace
}  // namespace vxlocfmt

using namespace vxlocfmt;

VX_EXPORT status vxfmtnlbyte(FmtCall* call, FmtCall* out, void* extra, int alignment, format_fn format) {
    if (!out) out = call;
    // The field in bytes: the width, and never more than the buffer offers.
    const std::int32_t field = std::max(0, std::min(out->width, out->capacity));

    wchar local[local_scratch_cells];
    wchar* scratch = local;
    void* pool = nullptr;
    const std::int32_t wanted = std::max(call->width, out->width);
    std::int32_t cells = local_scratch_cells;
    if (wanted > local_scratch_cells) {
        // The block holds one wide character per cell of the width, whatever the width counts.
        pool = scratch_pool(*call);
        scratch = pool ? static_cast<wchar*>(kernel::pool_alloc(pool, std::uint64_t(wanted) * sizeof(wchar),
                                                                kernel::alloc_scratch))
                       : nullptr;
        if (!scratch) {
            out->produced = 0;
            return st::no_memory;
        }
        cells = wanted;
    }

    WrappedCall wrapped;
    FmtCall& wide = wrapped.record;
    copy_record(wide, *call);
    wide.output = scratch;
    wide.capacity = cells;
    wide.produced = 0;  // byte mode stays as the caller set it: formats then pick what fits in bytes
    auto* dest = static_cast<unsigned char*>(out->output);
    if (dest || field == 0) {
        wrapped.field = dest;
        wrapped.room = field;
        wrapped.mark();
    }
    format(&wide, extra);
    const std::int32_t produced = std::clamp(wide.produced, 0, cells);

    // The wide format may have built the call's property table on its copy: keep it. Stored
    // only when it changed: the next call's copy loads this word as part of a 16-byte piece, and
    // a load across a fresh narrower store waits until the store is done.
    if (call->property_cache != wide.property_cache) call->property_cache = wide.property_cache;

    status result = st::ok;
    if (!call->session_transcoder ||
        !finish_kept(wrapped, call->session_transcoder, scratch, produced, &out->produced, &result))
        result = convert_to(*call, scratch, produced, dest, field, &out->produced);

    if (result == st::does_not_fit && (alignment == 'r' || alignment == 'R') && field >= 1) {
        std::int32_t blanks = 0;
        const std::int32_t look = std::min(produced, out->width);
        while (blanks < look && scratch[blanks] == U' ') ++blanks;
        if (blanks > 0) {
            std::int32_t written = 0;
            result = convert_to(*call, scratch + blanks, produced - blanks, dest, field, &written);
            written = std::clamp(written, 0, field);
            std::memmove(dest + (field - written), dest, static_cast<std::size_t>(written));
            std::memset(dest, ' ', static_cast<std::size_t>(field - written));
            out->produced = field;
        }
    } else if (result == st::does_not_fit && (alignment == 'l' || alignment == 'L')) {
        result = st::ok;  // a left-aligned result is simply cut at the width
    }

    if (pool) kernel::pool_free(pool, scratch);
    return result;
}
