// Base64: RFC 4648 vectors, random round trips against a bit-accumulator encoder, every invalid
// shape, and the buffer contract (pool or caller's buffer, sizes, terminator, release).

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "text/base64.h"
#include "text/text_exports.h"
#include "text_fixtures.h"

namespace vxlocfmt::text {
namespace {

using namespace std::literals;
using Bytes = std::vector<std::uint8_t>;
using testing::CountingPool;

Bytes bytes_of(std::string_view s) { return {s.begin(), s.end()}; }

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

std::u32string encode_blob(const Bytes& in) {
    CountingPool pool;
    wchar* out = nullptr;
    std::int64_t n = -1;
    EXPECT_EQ(base64EncodeBlob(pool.object(), in.data(), std::ssize(in), &out, &n), 0u);
    EXPECT_EQ(out[n], 0u);  // pool buffers are terminated
    return {out, static_cast<std::size_t>(n)};
}

std::pair<status, Bytes> decode_blob(std::u32string_view text) {
    CountingPool pool;
    std::uint8_t* out = nullptr;
    std::int64_t n = -1;
    const status s = base64DecodeBlob(pool.object(), text.data(), std::ssize(text), &out, &n);
    return {s, s ? Bytes{} : Bytes(out, out + n)};
}

TEST(Base64, Rfc4648Vectors) {
    const std::pair<std::string_view, std::u32string_view> vectors[] = {{"", U""},
                                                                        {"f", U"Zg=="},
                                                                        {"fo", U"Zm8="},
                                                                        {"foo", U"Zm9v"},
                                                                        {"foob", U"Zm9vYg=="},
                                                                        {"fooba", U"Zm9vYmE="},
                                                                        {"foobar", U"Zm9vYmFy"}};
    for (auto [bytes, text] : vectors) {
        EXPECT_EQ(encode_blob(bytes_of(bytes)), text) << bytes;
        EXPECT_EQ(decode_blob(text), std::pair(status{0}, bytes_of(bytes))) << bytes;
    }
}

// Lengths 0 to 1000: both encoders against the oracle, both decoders back.
TEST(Base64, RandomRoundTrips) {
    std::mt19937 rng(20240601);
    CountingPool pool;
    for (std::size_t len = 0; len <= 1000; ++len) {
        Bytes data(len);
        std::vector<std::uint32_t> cells(len);
        for (std::size_t i = 0; i < len; ++i) data[i] = static_cast<std::uint8_t>(cells[i] = rng());
        const std::u32string want = reference_encode(data);
        ASSERT_EQ(encode_blob(data), want) << len;

        // Cells (only their low 8 bits count), into a caller's buffer: no terminator after it.
        std::vector<wchar> text(want.size() + 1, 0xCA11AB1E);
        wchar* out = text.data();
        std::int32_t n = -1;
        ASSERT_EQ(base64Encode(nullptr, cells.data(), std::int32_t(len), &out, &n), 0u);
        ASSERT_EQ(std::u32string_view(out, n), want) << len;
        ASSERT_EQ(text.back(), 0xCA11AB1Eu);

        ASSERT_EQ(decode_blob(want).second, data) << len;
        std::uint32_t* back = nullptr;
        ASSERT_EQ(base64Decode(pool.object(), want.data(), std::ssize(want), &back, &n), 0u);
        data.push_back(0);  // pool buffers are terminated
        ASSERT_EQ(std::vector<std::uint32_t>(back, back + n + 1),
                  std::vector<std::uint32_t>(data.begin(), data.end()))
            << len;
    }
}

TEST(Base64, DecodeShapes) {
    const struct {
        std::u32string_view text;
        std::string_view bytes;
        bool valid;
    } cases[] = {
        {U"QQ==", "A", true},
        {U"QUI=", "AB", true},
        {U"QUJD", "ABC", true},
        {U"", "", true},
        {U"QUJDQUJD", "ABCABC", true},
        {U"QQ=x", "A", true},            // after a third "=", the fourth is not looked at
        {U"QR==", "A", true},            // unused low bits are ignored
        {U"\u0151Q==", "A", true},       // U+0151: read by its low byte, "Q"
        {U"QQ\u013D\u013D", "A", true},  // U+013D: read by its low byte, "="
        {U"QUI\u013D", "AB", true},
        {U"QQ", "", false},  // lengths not a multiple of four
        {U"Q", "", false},
        {U"QUJDR", "", false},
        {U"QUJDQUJ", "", false},
        {U"QQ==QUJD", "", false},  // a padded group that is not the last
        {U"QUI=QUJD", "", false},
        {U"QQ=xQUJD", "", false},
        {U"!UJD", "", false},  // a character outside the alphabet anywhere
        {U"Q!JD", "", false},
        {U"QU!D", "", false},
        {U"QUJ!", "", false},
        {U"QUJD QUJ", "", false},
        {U"QUJ-", "", false},
        {U"QUJ_", "", false},
        {U"QUJ\0"sv, "", false},
        {U"=QUJ", "", false},  // "=" first or second
        {U"Q=UJ", "", false},
        {U"====", "", false},
    };
    for (const auto& c : cases) {
        const auto [s, bytes] = decode_blob(c.text);
        EXPECT_EQ(s, c.valid ? 0u : st::bad_base64) << std::string(c.text.begin(), c.text.end());
        EXPECT_EQ(bytes, bytes_of(c.bytes)) << std::string(c.text.begin(), c.text.end());
    }
}

TEST(Base64, PoolBuffers) {
    CountingPool pool;
    const Bytes data(10, 0x5A);
    const std::uint32_t cells[10] = {};
    const std::u32string text = reference_encode(data);  // 16 characters
    wchar* w = nullptr;
    std::uint32_t* c = nullptr;
    std::uint8_t* b = nullptr;
    std::int32_t n32 = 0;
    std::int64_t n64 = 0;
    ASSERT_EQ(base64Encode(pool.object(), cells, 10, &w, &n32), 0u);
    ASSERT_EQ(base64Decode(pool.object(), text.data(), 16, &c, &n32), 0u);
    ASSERT_EQ(base64DecodeBlob(pool.object(), text.data(), 16, &b, &n64), 0u);
    EXPECT_EQ(w[16], 0u);
    EXPECT_EQ(c[10] | b[10], 0u);
    // Bytes asked for: (4 * ceil(10 / 3) + 1) characters; (3 * 16 / 4 + 5) cells, then bytes.
    EXPECT_EQ(pool.requested, (std::vector<std::uint64_t>{68, 68, 17}));

    // Invalid text into a pool buffer: released, pointer nulled, length 0.
    const std::size_t live = pool.live();
    b = nullptr;
    EXPECT_EQ(base64DecodeBlob(pool.object(), U"QUJDQU!D", 8, &b, &n64), st::bad_base64);
    c = nullptr;
    EXPECT_EQ(base64Decode(pool.object(), U"QQ", 2, &c, &n32), st::bad_base64);
    EXPECT_EQ(b, nullptr);
    EXPECT_EQ(c, nullptr);
    EXPECT_EQ(n64 + n32, 0);
    EXPECT_EQ(pool.live(), live);
    EXPECT_EQ(pool.frees, 2u);
}

TEST(Base64, CallerBuffersAndFailures) {
    // Invalid text into the caller's buffer: kept, with the groups decoded before the fault.
    std::uint8_t buffer[16];
    std::fill(std::begin(buffer), std::end(buffer), 0xEE);
    std::uint8_t* b = buffer;
    std::int64_t n = 99;
    EXPECT_EQ(base64DecodeBlob(nullptr, U"QUJDREVG!!!!", 12, &b, &n), st::bad_base64);
    EXPECT_EQ(b, buffer);
    EXPECT_EQ(n, 0);
    EXPECT_EQ(std::string(buffer, buffer + 7), "ABCDEF\xEE");

    // No buffer from the pool (refused, or no pool): nothing written, not even the length.
    CountingPool pool;
    pool.refuse = true;
    wchar* w = nullptr;
    b = nullptr;
    n = 77;
    EXPECT_EQ(base64EncodeBlob(pool.object(), buffer, 3, &w, &n), st::no_memory);
    EXPECT_EQ(base64DecodeBlob(pool.object(), U"AQID", 4, &b, &n), st::no_memory);
    EXPECT_EQ(base64EncodeBlob(nullptr, buffer, 3, &w, &n), st::no_memory);
    EXPECT_EQ(w, nullptr);
    EXPECT_EQ(b, nullptr);
    EXPECT_EQ(n, 77);

    // Negative counts and null inputs are empty inputs.
    pool.refuse = false;
    EXPECT_EQ(base64EncodeBlob(pool.object(), nullptr, 10, &w, &n), 0u);
    EXPECT_EQ(n, 0);
    EXPECT_EQ(base64DecodeBlob(pool.object(), U"QUJD", -4, &b, &n), 0u);
    EXPECT_EQ(n, 0);
}

}  // namespace
}  // namespace vxlocfmt::text
