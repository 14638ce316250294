// Base64: RFC 4648 vectors, random round trips against a bit-stream encoder, the decoder's shapes
// (its deliberate quirks included), and the buffer contract (pool or caller's buffer, sizes,
// terminator, release on failure).

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <optional>
#include <random>
#include <string>
#include <vector>

#include "frame/kernel.h"
#include "text/base64.h"
#include "text/text_exports.h"

namespace vxlocfmt::text {
namespace {

using namespace std::literals;
using Bytes = std::vector<std::uint8_t>;

// A pool whose blocks come dirty (so a missing terminator shows), recording the sizes asked for.
struct DirtyPool {
    void* slots[8]{};  // first: the table the library indexes
    bool refuse = false;
    std::vector<std::uint64_t> requested;
    std::map<void*, std::vector<std::uint8_t>> live;
    static void* alloc(void* self, std::uint64_t size, std::uint32_t) {
        auto& p = *static_cast<DirtyPool*>(self);
        p.requested.push_back(size);
        std::vector<std::uint8_t> block(size, 0xAB);
        return p.refuse ? nullptr : p.live.emplace(block.data(), std::move(block)).first->first;
    }
    static status release(void* self, void* block) { return static_cast<DirtyPool*>(self)->live.erase(block) ? 0 : 1; }
    DirtyPool() {
        slots[kernel::pool_alloc_slot] = reinterpret_cast<void*>(&alloc);
        slots[kernel::pool_free_slot] = reinterpret_cast<void*>(&release);
    }
};

// The oracle: an encoder written another way, as a bit stream.
std::u32string reference_encode(const Bytes& in) {
    std::u32string out;
    std::uint32_t acc = 0;
    int bits = 0;
    for (std::uint8_t b : in) {
        acc = (acc << 8) | b;
        for (bits += 8; bits >= 6; bits -= 6) out += base64_alphabet[(acc >> (bits - 6)) & 63];
    }
    if (bits > 0) out += base64_alphabet[(acc << (6 - bits)) & 63];
    return out.append((4 - out.size() % 4) % 4, U'=');
}

// Both through pool buffers, which must end in a 0; a failed decode gives {}.
std::u32string encode_blob(const Bytes& in) {
    DirtyPool pool;
    wchar* out = nullptr;
    std::int64_t n = -1;
    EXPECT_EQ(base64EncodeBlob(&pool, in.data(), std::ssize(in), &out, &n), 0u);
    EXPECT_EQ(out[n], 0u);
    return {out, static_cast<std::size_t>(n)};
}
std::optional<Bytes> decode_blob(std::u32string_view text) {
    DirtyPool pool;
    std::uint8_t* out = nullptr;
    std::int64_t n = -1;
    if (base64DecodeBlob(&pool, text.data(), std::ssize(text), &out, &n)) return std::nullopt;
    EXPECT_EQ(out[n], 0u);
    return Bytes(out, out + n);
}
Bytes bytes_of(std::string_view s) { return {s.begin(), s.end()}; }

TEST(Base64, Rfc4648Vectors) {
    for (auto [bytes, text] : {std::pair{""sv, U""sv}, {"f", U"Zg=="}, {"fo", U"Zm8="}, {"foo", U"Zm9v"},
                               {"foob", U"Zm9vYg=="}, {"fooba", U"Zm9vYmE="}, {"foobar", U"Zm9vYmFy"}}) {
        EXPECT_EQ(encode_blob(bytes_of(bytes)), text) << bytes;
        EXPECT_EQ(decode_blob(text), bytes_of(bytes)) << bytes;
    }
}

// Lengths 0 to 1000 (the encoder's 48-byte steps and every tail): both encoders against the
// oracle, both decoders back.
TEST(Base64, RandomRoundTrips) {
    std::mt19937 rng(20240601);
    DirtyPool pool;
    for (std::size_t len = 0; len <= 1000; ++len) {
        Bytes data(len);
        std::vector<std::uint32_t> cells(len);
        for (std::size_t i = 0; i < len; ++i) data[i] = static_cast<std::uint8_t>(cells[i] = rng());
        const std::u32string want = reference_encode(data);
        ASSERT_EQ(encode_blob(data), want) << len;
        ASSERT_EQ(decode_blob(want), data) << len;

        // Cells (only their low 8 bits count), into a caller's buffer: nothing written after it.
        std::vector<wchar> text(want.size() + 1, 0xCA11AB1E);
        wchar* out = text.data();
        std::int32_t n = -1;
        ASSERT_EQ(base64Encode(nullptr, cells.data(), std::int32_t(len), &out, &n), 0u);
        ASSERT_EQ(std::u32string_view(out, n), want) << len;
        ASSERT_EQ(text.back(), 0xCA11AB1Eu);
        std::uint32_t* back = nullptr;
        ASSERT_EQ(base64Decode(&pool, want.data(), std::ssize(want), &back, &n), 0u);
        data.push_back(0);  // the terminator
        ASSERT_TRUE(std::equal(data.begin(), data.end(), back, back + n + 1)) << len;
    }
}

TEST(Base64, DecodeShapes) {
    const std::pair<std::u32string_view, const char*> cases[] = {  // null: refused
        {U"QR==", "A"},         {U"QQ=x", "A"},         // unused low bits ignored; after a third "=" the fourth is not read
        {U"\u0151Q==", "A"},    {U"QQ\u013D\u013D", "A"},  // characters read by their low byte: "Q", "="
        {U"QQ", nullptr},       {U"QUJDR", nullptr},    {U"QQ==QUJD", nullptr},  // lengths; padding not last
        {U"!UJD", nullptr},     {U"Q!JD", nullptr},     {U"QU!D", nullptr},      {U"QUJ!", nullptr},
        {U"QUJ\0"sv, nullptr},  {U"=QUJ", nullptr},     {U"Q=UJ", nullptr},      {U"====", nullptr},
    };
    for (auto [text, bytes] : cases) {
        EXPECT_EQ(decode_blob(text), bytes ? std::optional(bytes_of(bytes)) : std::nullopt)
            << std::string(text.begin(), text.end());
    }
}

TEST(Base64, Buffers) {
    DirtyPool pool;
    const std::uint32_t cells[10] = {};
    const std::u32string text = reference_encode(Bytes(10, 0x5A));  // 16 characters
    wchar* w = nullptr;
    std::uint32_t* c = nullptr;
    std::uint8_t* b = nullptr;
    std::int32_t n32 = 0;
    std::int64_t n64 = 0;
    ASSERT_EQ(base64Encode(&pool, cells, 10, &w, &n32) | base64Decode(&pool, text.data(), 16, &c, &n32) |
                  base64DecodeBlob(&pool, text.data(), 16, &b, &n64), 0u);
    // Bytes asked for: (4 * ceil(10 / 3) + 1) characters; (3 * 16 / 4 + 5) cells, then bytes.
    EXPECT_EQ(pool.requested, (std::vector<std::uint64_t>{68, 68, 17}));

    // Invalid text into a pool buffer: released, pointer nulled, length 0.
    b = nullptr, c = nullptr;
    EXPECT_EQ(base64DecodeBlob(&pool, U"QUJDQU!D", 8, &b, &n64), st::bad_base64);
    EXPECT_EQ(base64Decode(&pool, U"QQ", 2, &c, &n32), st::bad_base64);
    EXPECT_TRUE(b == nullptr && c == nullptr && n64 == 0 && n32 == 0);
    EXPECT_EQ(pool.live.size(), 3u);

    // Invalid text into the caller's buffer: kept, with the groups decoded before the fault.
    std::uint8_t buffer[8];
    std::fill_n(buffer, 8, 0xEE);
    b = buffer;
    EXPECT_EQ(base64DecodeBlob(nullptr, U"QUJDREVG!!!!", 12, &b, &n64), st::bad_base64);
    EXPECT_EQ(std::string(buffer, buffer + 7), "ABCDEF\xEE"s);
    EXPECT_EQ(b, buffer);

    // No buffer (refused, or no pool): nothing written, not even the length.
    pool.refuse = true;
    w = nullptr, b = nullptr, n64 = 77;
    EXPECT_EQ(base64EncodeBlob(&pool, buffer, 3, &w, &n64), st::no_memory);
    EXPECT_EQ(base64DecodeBlob(&pool, U"AQID", 4, &b, &n64), st::no_memory);
    EXPECT_EQ(base64EncodeBlob(nullptr, buffer, 3, &w, &n64), st::no_memory);
    EXPECT_TRUE(w == nullptr && b == nullptr && n64 == 77);

    // Negative counts and null inputs are empty inputs.
    pool.refuse = false;
    EXPECT_EQ(base64EncodeBlob(&pool, nullptr, 10, &w, &n64), 0u);
    EXPECT_EQ(n64, 0);
    EXPECT_EQ(base64DecodeBlob(&pool, U"QUJD", -4, &b, &n64), 0u);
    EXPECT_EQ(n64, 0);
}

}  // namespace
}  // namespace vxlocfmt::text
