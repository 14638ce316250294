// The renderer's one-pass first attempt against its retry loop alone: random conventions
// (every pattern, selectors out of range, signs, separators and points of zero to two cells,
// blanks in them, symbols up to 50 characters), values of every magnitude, ties, zeros, widths
// 1 to 32, decimals 0 to 9, capacities at and below the width. Wide, and in byte mode (taken
// when the session writes the number a byte a character) in sessions whose identity bounds
// differ and one without any. Every cell (guards included), the status, the produced length and
// the decimals must be the same.
#include <gtest/gtest.h>

#include <random>
#include <string>

#include "nlnum_fixture.h"
#include "random_conventions.h"
#include "transcoder.h"

namespace {

using namespace nlnum_test;

void compare_first_attempt(Renderer& fast, Renderer& loop, std::uint64_t seed, int cases, const std::string& where) {
    std::mt19937_64 rng(seed);
    for (int i = 0; i < cases; ++i) {
        const NumberConventions c = random_conventions(rng);
        const double value = random_value(rng);
        const int width = 1 + static_cast<int>(rng() % 32);
        const int decimals = static_cast<int>(rng() % 10);
        const int capacity = rng() % 8 == 0 ? static_cast<int>(rng() % (width + 1)) : width;
        const auto a = fast.run(c, value, width, decimals, 1, capacity, true);
        const auto b = loop.run(c, value, width, decimals, 1, capacity, false);
        ASSERT_EQ(a, b) << where;
        ASSERT_EQ(fast.cells(), loop.cells())
            << where << " " << std::hexfloat << value << " width " << width << "." << decimals << " case " << i;
        ASSERT_EQ(fast.call().produced, loop.call().produced) << where;
        ASSERT_EQ(fast.call().decimals, decimals) << where;
        ASSERT_EQ(loop.call().decimals, decimals) << where;
    }
}

TEST(StyledField, FirstAttemptWritesWhatTheRetryLoopWrites) {
    Renderer fast, loop;
    compare_first_attempt(fast, loop, 1234, 300000, "wide");
}

TEST(StyledField, ByteModeFirstAttemptWritesWhatTheRetryLoopWrites) {
    for (const char* encoding : {"UTF-8", "ISO-8859-1", "KOI8-R", "Shift_JIS", "UTF-16BE"}) {
        vxhost::Transcoder* session = vxhost::Transcoder::to_session(encoding);
        ASSERT_NE(session, nullptr) << encoding;
        Renderer fast, loop;
        fast.set_byte_session(session);
        loop.set_byte_session(session);
        compare_first_attempt(fast, loop, 4321, 40000, encoding);
        session->release();
    }
}

}  // namespace
