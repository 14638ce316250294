// The base64 exports: any bytes encode and decode back; any text (any 32-bit values) decodes or
// is refused with the pool's block released; caller buffers of exactly the documented size.
#include <cstring>
#include <vector>

#include "harness.h"
#include "pool.h"
#include "text/text_exports.h"

namespace {

using vxfuzz::FuzzInput;
using vxlocfmt::wchar;

vxhost::Pool* pool() {
    static vxhost::Pool* p = vxhost::Pool::create("fuzz");
    return p;
}

void round_trip(std::span<const std::uint8_t> bytes, bool use_pool) {
    const auto n = static_cast<std::int64_t>(bytes.size());
    auto input = vxfuzz::exact_copy(bytes.data(), bytes.size());
    const std::size_t encoded_cells = static_cast<std::size_t>(4 * ((n + 2) / 3));
    std::vector<wchar> caller(encoded_cells + 1);
    wchar* text = use_pool ? nullptr : caller.data();
    std::int64_t text_length = -1;
    if (base64EncodeBlob(pool(), input.get(), n, &text, &text_length) != 0) vxfuzz::fail("encode failed");
    if (text_length != static_cast<std::int64_t>(encoded_cells)) vxfuzz::fail("encoded length", text_length);
    auto exact_text = vxfuzz::exact_copy(text, static_cast<std::size_t>(text_length));
    std::uint8_t* decoded = nullptr;
    std::int64_t decoded_length = -1;
    if (base64DecodeBlob(pool(), exact_text.get(), static_cast<std::int32_t>(text_length), &decoded, &decoded_length) != 0)
        vxfuzz::fail("decode of own encoding failed");
    if (decoded_length != n || std::memcmp(decoded, input.get(), bytes.size()) != 0) vxfuzz::fail("round trip differs");
    pool()->release(decoded);
    if (use_pool) pool()->release(text);
}

void decode_any(FuzzInput& in, bool use_pool) {
    const std::size_t count = std::min<std::size_t>(in.left() / 4, 300);
    std::vector<wchar> text(count);
    for (auto& c : text) {
        c = in.take<wchar>();
        if (c & 0x100) c = U"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/="[c % 65];
    }
    auto exact = vxfuzz::exact_copy(text.data(), count);
    const std::size_t room = 3 * (count / 4) + 5;
    vxfuzz::GuardedCells<std::uint8_t> caller(room);
    std::uint8_t* out = use_pool ? nullptr : caller.data();
    std::int64_t length = -1;
    const std::int64_t blocks_before = static_cast<std::int64_t>(pool()->live_blocks());
    const vxlocfmt::status s = base64DecodeBlob(pool(), exact.get(), static_cast<std::int32_t>(count), &out, &length);
    if (s == 0) {
        if (length < 0 || static_cast<std::size_t>(length) > 3 * (count / 4)) vxfuzz::fail("decoded length", length);
        if (use_pool) pool()->release(out);
    } else {
        if (s != 0x803fc003u) vxfuzz::fail("decode status", s);
        if (length != 0) vxfuzz::fail("refused text leaves a length", length);
        if (use_pool && out != nullptr) vxfuzz::fail("refused text keeps the pool block");
    }
    if (static_cast<std::int64_t>(pool()->live_blocks()) != blocks_before) vxfuzz::fail("pool block leaked");
    if (!use_pool) caller.expect_untouched_beyond(3 * (count / 4), "decoder wrote past its output");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzInput in(data, size);
    const std::uint32_t mode = in.pick(4);
    if (mode < 2) round_trip(in.rest().first(std::min<std::size_t>(in.left(), 1000)), mode == 0);
    else decode_any(in, mode == 2);
    return 0;
}
