// The renderer's one-pass first attempt against its retry loop alone: random conventions
// (every pattern, selectors out of range, signs, separators and points of zero to two cells,
// blanks in them, symbols up to 50 characters), values of every magnitude, ties, zeros, widths
// 1 to 32, decimals 0 to 9, capacities at and below the width. Every cell (guards included),
// the status, the produced length and the decimals must be the same.
#include <gtest/gtest.h>

#include <random>

#include "nlnum_fixture.h"
#include "random_conventions.h"

namespace {

using namespace nlnum_test;

TEST(StyledField, FirstAttemptWritesWhatTheRetryLoopWrites) {
    std::mt19937_64 rng(1234);
    Renderer fast, loop;
    for (int i = 0; i < 300000; ++i) {
        const NumberConventions c = random_conventions(rng);
        const double value = random_value(rng);
        const int width = 1 + static_cast<int>(rng() % 32);
        const int decimals = static_cast<int>(rng() % 10);
        const int capacity = rng() % 8 == 0 ? static_cast<int>(rng() % (width + 1)) : width;
        const auto a = fast.run(c, value, width, decimals, 1, capacity, true);
        const auto b = loop.run(c, value, width, decimals, 1, capacity, false);
        ASSERT_EQ(a, b);
        ASSERT_EQ(fast.cells(), loop.cells()) << std::hexfloat << value << " width " << width << "." << decimals << " case " << i;
        ASSERT_EQ(fast.call().produced, loop.call().produced);
        ASSERT_EQ(fast.call().decimals, decimals);
        ASSERT_EQ(loop.call().decimals, decimals);
    }
}

}  // namespace
