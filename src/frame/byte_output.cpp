#include "frame/byte_output.h"

#include <algorithm>
#include <cstddef>
#include <cstring>

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

// The fields of the caller's record that the wrapper or a format may change while the format
// runs on it: saved and put back after, so the caller finds its record as it gave it, as if the
// format had run on a copy. The formats write no other field of their record (they copy it to
// change more).
//
// Each is loaded alone, at its own width: the host has just stored some of them, and a load that
// spans a fresh narrower store (the compiler merges neighbouring fields into one load) waits until
// the store is done; a volatile read is one load of that field.
template <class T>
T load_alone(const T& field) {
    return *static_cast<const volatile T*>(&field);
}
struct SavedFields {
    std::int32_t width, decimals;
    const void* input;
    std::int32_t input_length;
    void* output;
    std::int32_t capacity, produced;
    std::uint64_t unused_a[2];
    std::uint8_t flags;
    std::int32_t text_limit;

    explicit SavedFields(const FmtCall& call)
        : width(load_alone(call.width)), decimals(load_alone(call.decimals)), input(load_alone(call.input)),
          input_length(load_alone(call.input_length)), output(load_alone(call.output)),
          capacity(load_alone(call.capacity)), produced(load_alone(call.produced)), flags(call.flags),
          text_limit(call.text_limit) {
        std::memcpy(unused_a, call.unused_a, sizeof unused_a);
    }
    void restore(FmtCall& call) const {
        call.width = width;
        call.decimals = decimals;
        call.input = input;
        call.input_length = input_length;
        call.output = output;
        call.capacity = capacity;
        call.produced = produced;
        std::memcpy(call.unused_a, unused_a, sizeof unused_a);
        call.flags = flags;
        call.text_limit = text_limit;
    }
};
static_assert(sizeof(FmtCall::unused_a) == sizeof(SavedFields::unused_a));

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

bool wide_answer_in_bytes(FmtCall* call, FmtCall* out, void* extra, format_fn format, bool byte_mode_off,
                          status* result) {
    void* const transcoder = call->session_transcoder;
    if (!transcoder) return false;
    const wchar bound = session_bytes::identity_mask_bound(transcoder);
    const std::int32_t width = load_alone(call->width);
    if (!bound || width > local_scratch_cells || out->width > local_scratch_cells) return false;
    auto* dest = static_cast<unsigned char*>(out->output);
    const std::int32_t room = std::min(std::max(0, std::min(out->width, out->capacity)), std::max(width, 0));
    if (!dest && room != 0) return false;

    // The fields the served formats change on their record, put back after.
    wchar cells[local_scratch_cells];
    void* const output = load_alone(call->output);
    const std::int32_t capacity = load_alone(call->capacity);
    const std::int32_t produced_before = load_alone(call->produced);
    const std::uint8_t byte_mode = call->byte_mode;
    call->output = cells;
    call->capacity = local_scratch_cells;
    call->produced = 0;
    if (byte_mode_off) call->byte_mode = 0;
    const status code = format(call, extra);
    const std::int32_t produced = std::clamp(call->produced, 0, local_scratch_cells);
    call->output = output;
    call->capacity = capacity;
    call->produced = produced_before;
    call->byte_mode = byte_mode;
    if (code != st::ok) return false;

    if (produced <= room && session_bytes::narrow_whole(cells, room, dest, bound)) {
        out->produced = produced;
        *result = st::ok;
        return true;
    }
    // A character at or above the bound: the session's conversion of the text alone (in a UTF-8
    // session the library's own encoder, the narrowing above having found nothing to keep).
    std::int32_t written = 0;
    const status converted = session_bytes::utf8_here(transcoder, produced, dest, room)
                                 ? session_bytes::utf8<true>(cells, produced, dest, room, &written)
                                 : session_bytes::convert(transcoder, cells, produced, dest, room, &written);
    if (converted != st::ok) return false;
    out->produced = written;
    *result = st::ok;
    return true;
}

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

    // The wide format runs on the caller's record, its output pointed at the scratch cells; what
    // it changes there is put back after (SavedFields), all but a property table it built, which
    // the call keeps. Byte mode stays as the caller set it: formats then pick what fits in bytes.
    auto* dest = static_cast<unsigned char*>(out->output);
    const SavedFields saved(*call);
    WrappedCall wrapped;
    if (dest || field == 0) {
        wrapped.field = dest;
        wrapped.room = field;
        wrapped.mark(*call);
    }
    call->output = scratch;
    call->capacity = cells;
    call->produced = 0;
    const status code = format(call, extra);
    const std::int32_t produced = std::clamp(call->produced, 0, cells);
    saved.restore(*call);
    // A format that refuses the width or decimals (2 to 5) has set its produced length to the
    // width and written nothing: the cells it left are converted as blanks, never as what the
    // stack or the pool block held before.
    if (code >= st::width_too_small && code <= st::decimals_too_large)
        std::fill(scratch, scratch + produced, U' ');

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
