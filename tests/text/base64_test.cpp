// Base64: RFC 4648 vectors, random round trips checked against a bit-stream encoder, every
// invalid shape, and the buffer contract (pool or caller's buffer, sizes, terminator, release).

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
using testing::CountingPool;

std::vector<std::uint8_t> bytes_of(std::string_view s) { return {s.begin(), s.end()}; }

// A second encoder, written differently (a bit accumulator), as the oracle.
std::u32string reference_encode(const std::vector<std::uint8_t>& in) {
    std::u32string out;
    std::uint32_t acc = 0;
    int bits = 0;
    for (std::uint8_t b : in) {
        acc = (acc << 8) | b;
        for (bits += 8; bits >= 6; bits -= 6) out += base64_alphabet[(acc >> (bits - 6)) & 63];
    }
    if (bits > 0) out += base64_alphabet[(acc << (6 - bits)) & 63];
    while (out.size() % 4) out += U'=';
    return out;
}

std::u32string encode_blob(const std::vector<std::uint8_t>& in) {
    CountingPool pool;
    wchar* out = nullptr;
    std::int64_t n = -1;
    EXPECT_EQ(base64EncodeBlob(pool.object(), in.data(), static_cast<std::int64_t>(in.size()), &out, &n), 0u);
    return {out, static_cast<std::size_t>(n)};
}

struct Decoded {
    status code;
    std::vector<std::uint8_t> bytes;
};
Decoded decode_blob(std::u32string_view text) {
    CountingPool pool;
    std::uint8_t* out = nullptr;
    std::int64_t n = -1;
    const status code = base64DecodeBlob(pool.object(), text.data(), static_cast<std::int32_t>(text.size()), &out, &n);
    if (code != 0) return {code, {}};
    return {code, std::vector<std::uint8_t>(out, out + n)};
}

TEST(Base64, Rfc4648Vectors) {
    const struct {
        std::string_view bytes;
        std::u32string_view text;
    } vectors[] = {
        {"", U""},         {"f", U"Zg=="},         {"fo", U"Zm8="},         {"foo", U"Zm9v"},
        {"foob", U"Zm9vYg=="}, {"fooba", U"Zm9vYmE="}, {"foobar", U"Zm9vYmFy"},
    };
    for (const auto& v : vectors) {
        EXPECT_EQ(encode_blob(bytes_of(v.bytes)), v.text) << v.bytes;
        const Decoded d = decode_blob(v.text);
        EXPECT_EQ(d.code, 0u);
        EXPECT_EQ(d.bytes, bytes_of(v.bytes));
    }
}

// Lengths 0 to 1000 with random bytes: both encoders against the oracle, both decoders back.
TEST(Base64, RandomRoundTrips) {
    std::mt19937 rng(20240601);
    CountingPool pool;
    for (std::size_t len = 0; len <= 1000; ++len) {
        std::vector<std::uint8_t> data(len);
        std::vector<std::uint32_t> cells(len);
        for (std::size_t i = 0; i < len; ++i) {
            cells[i] = rng();  // only the low 8 bits count
            data[i] = static_cast<std::uint8_t>(cells[i]);
        }
        const std::u32string want = reference_encode(data);
        ASSERT_EQ(encode_blob(data), want) << len;

        // Cells, into a caller's buffer with a canary after it: no terminator is written.
        std::vector<wchar> text(want.size() + 1, 0xCA11AB1E);
        wchar* out = text.data();
        std::int32_t n = -1;
        ASSERT_EQ(base64Encode(nullptr, cells.data(), static_cast<std::int32_t>(len), &out, &n), 0u);
        ASSERT_EQ(out, text.data());
        ASSERT_EQ(std::u32string_view(out, n), want) << len;
        ASSERT_EQ(text.back(), 0xCA11AB1Eu);

        ASSERT_EQ(decode_blob(want).bytes, data) << len;
        std::uint32_t* back = nullptr;
        ASSERT_EQ(base64Decode(pool.object(), want.data(), static_cast<std::int32_t>(want.size()), &back, &n), 0u);
        ASSERT_EQ(static_cast<std::size_t>(n), len);
        for (std::size_t i = 0; i < len; ++i) ASSERT_EQ(back[i], data[i]) << len << " " << i;
        ASSERT_EQ(back[len], 0u);  // pool buffer: terminated
    }
}

TEST(Base64, DecodeShapes) {
    const struct {
        std::u32string_view text;
        std::string_view bytes;  // empty with valid == false: invalid
        bool valid;
    } cases[] = {
        {U"QQ==", "A", true},
        {U"QUI=", "AB", true},
        {U"QUJD", "ABC", true},
        {U"", "", true},
        {U"QQ=x", "A", true},               // after "=" in third place the fourth is not looked at
        {U"QR==", "A", true},               // unused low bits are ignored
        {U"QUJDQUJD", "ABCABC", true},
        {U"\u0151Q==", "A", true},          // U+0151: its low byte is 'Q'
        {U"QQ\u013D\u013D", "A", true},     // U+013D: its low byte is '='
        {U"QQ", "", false},                 // length not a multiple of four
        {U"QUJDR", "", false},
        {U"QUJDQUJ", "", false},
        {U"Q", "", false},
        {U"QQ==QUJD", "", false},           // padded group not last
        {U"QUI=QUJD", "", false},
        {U"QQ=xQUJD", "", false},
        {U"!UJD", "", false},               // a character outside the alphabet anywhere
        {U"Q!JD", "", false},
        {U"QU!D", "", false},
        {U"QUJ!", "", false},
        {U"QUJD QUJ", "", false},
        {U"QUJ-", "", false},               // URL-safe letters are not this alphabet
        {U"QUJ_", "", false},
        {U"=QUJ", "", false},               // "=" first or second
        {U"Q=UJ", "", false},
        {U"==QQ", "", false},
        {U"====", "", false},
        {U"QUJ\0"sv, "", false},            // a 0 is not a letter
    };
    for (const auto& c : cases) {
        const Decoded d = decode_blob(c.text);
        EXPECT_EQ(d.code, c.valid ? 0u : st::bad_base64) << std::string(c.text.begin(), c.text.end());
        if (c.valid) {
            EXPECT_EQ(d.bytes, bytes_of(c.bytes));
        }
    }
}

TEST(Base64, EncodesShortInputs) {
    // 0, 1, 2, 3 bytes: nothing; two characters and "=="; three and "="; four.
    const std::uint8_t abc[] = {'A', 'B', 'C'};
    const std::u32string_view want[] = {U"", U"QQ==", U"QUI=", U"QUJD"};
    for (std::int64_t n = 0; n <= 3; ++n) {
        wchar buffer[8] = {};
        wchar* out = buffer;
        std::int64_t len = -1;
        ASSERT_EQ(base64EncodeBlob(nullptr, abc, n, &out, &len), 0u);
        EXPECT_EQ(std::u32string_view(out, len), want[n]);
    }
}

// The sizes asked of the pool, the terminator, and release on invalid input.
TEST(Base64, PoolBuffers) {
    const std::vector<std::uint8_t> data(10, 0x5A);
    const std::u32string text = reference_encode(data);  // 16 characters
    CountingPool pool;

    wchar* w = nullptr;
    std::int32_t n32 = 0;
    std::int64_t n64 = 0;
    const std::uint32_t cells[10] = {};
    ASSERT_EQ(base64Encode(pool.object(), cells, 10, &w, &n32), 0u);
    EXPECT_EQ(w[n32], 0u);
    w = nullptr;
    ASSERT_EQ(base64EncodeBlob(pool.object(), data.data(), 10, &w, &n64), 0u);
    EXPECT_EQ(w[n64], 0u);
    std::uint32_t* c = nullptr;
    ASSERT_EQ(base64Decode(pool.object(), text.data(), 16, &c, &n32), 0u);
    std::uint8_t* b = nullptr;
    ASSERT_EQ(base64DecodeBlob(pool.object(), text.data(), 16, &b, &n64), 0u);
    EXPECT_EQ(b[n64], 0u);
    // (4 * ceil(10 / 3) + 1) characters of 4 bytes, twice; (3 * 16 / 4 + 5) cells, then bytes.
    EXPECT_EQ(pool.requested, (std::vector<std::uint64_t>{68, 68, 68, 17}));

    // Invalid text into a pool buffer: released, pointer nulled, length 0.
    const std::size_t live = pool.live();
    b = nullptr;
    n64 = 99;
    EXPECT_EQ(base64DecodeBlob(pool.object(), U"QUJDQU!D", 8, &b, &n64), st::bad_base64);
    EXPECT_EQ(b, nullptr);
    EXPECT_EQ(n64, 0);
    EXPECT_EQ(pool.live(), live);
    EXPECT_EQ(pool.frees, 1u);
    c = nullptr;
    EXPECT_EQ(base64Decode(pool.object(), U"QQ", 2, &c, &n32), st::bad_base64);
    EXPECT_EQ(c, nullptr);
    EXPECT_EQ(pool.live(), live);
}

TEST(Base64, CallerBuffers) {
    // Invalid text into the caller's buffer: kept, with the groups decoded before the fault.
    std::uint8_t buffer[16];
    std::fill(std::begin(buffer), std::end(buffer), 0xEE);
    std::uint8_t* b = buffer;
    std::int64_t n = 99;
    EXPECT_EQ(base64DecodeBlob(nullptr, U"QUJDREVG!!!!", 12, &b, &n), st::bad_base64);
    EXPECT_EQ(b, buffer);
    EXPECT_EQ(n, 0);
    EXPECT_EQ(std::string(buffer, buffer + 7), "ABCDEF\xEE");

    // A valid decode writes no terminator into the caller's buffer.
    std::fill(std::begin(buffer), std::end(buffer), 0xEE);
    EXPECT_EQ(base64DecodeBlob(nullptr, U"QUJD", 4, &b, &n), 0u);
    EXPECT_EQ(n, 3);
    EXPECT_EQ(buffer[3], 0xEE);
}

TEST(Base64, AllocationFailures) {
    CountingPool pool;
    pool.refuse = true;
    const std::uint8_t bytes[] = {1, 2, 3};
    wchar* w = nullptr;
    std::int64_t n = 77;
    EXPECT_EQ(base64EncodeBlob(pool.object(), bytes, 3, &w, &n), st::no_memory);
    EXPECT_EQ(w, nullptr);
    EXPECT_EQ(n, 77);  // nothing written
    std::uint8_t* b = nullptr;
    EXPECT_EQ(base64DecodeBlob(pool.object(), U"AQID", 4, &b, &n), st::no_memory);
    EXPECT_EQ(n, 77);
    // No pool and no buffer.
    EXPECT_EQ(base64EncodeBlob(nullptr, bytes, 3, &w, &n), st::no_memory);
    std::uint32_t* c = nullptr;
    std::int32_t n32 = 5;
    EXPECT_EQ(base64Decode(nullptr, U"AQID", 4, &c, &n32), st::no_memory);
    EXPECT_EQ(n32, 5);
}

TEST(Base64, NegativeCountsAndNullInputsAreEmpty) {
    CountingPool pool;
    wchar* w = nullptr;
    std::int64_t n = 5;
    EXPECT_EQ(base64EncodeBlob(pool.object(), nullptr, 10, &w, &n), 0u);
    EXPECT_EQ(n, 0);
    EXPECT_EQ(w[0], 0u);
    std::uint8_t* b = nullptr;
    EXPECT_EQ(base64DecodeBlob(pool.object(), U"QUJD", -4, &b, &n), 0u);
    EXPECT_EQ(n, 0);
}

}  // namespace
}  // namespace vxlocfmt::text
