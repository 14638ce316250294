// The renderer's one-pass first attempt in byte mode (taken when the session writes the number a
// byte a character) against its retry loop alone, in sessions whose identity bounds differ and
// one without any: random conventions and values as in the wide test, the same cells (guards
// included), status and produced length.
#include <gtest/gtest.h>

#include <random>

#include "nlnum_fixture.h"
#include "random_conventions.h"
#include "transcoder.h"

namespace {

using namespace nlnum_test;

TEST(StyledField, ByteModeFirstAttemptWritesWhatTheRetryLoopWrites) {
    for (const char* encoding : {"UTF-8", "ISO-8859-1", "KOI8-R", "Shift_JIS", "UTF-16BE"}) {
        vxhost::Transcoder* session = vxhost::Transcoder::to_session(encoding);
        ASSERT_NE(session, nullptr) << encoding;
        std::mt19937_64 rng(4321);
        Renderer fast, loop;
        fast.set_byte_session(session);
        loop.set_byte_session(session);
        for (int i = 0; i < 40000; ++i) {
            const NumberConventions c = random_conventions(rng);
            const double value = random_value(rng);
            const int width = 1 + static_cast<int>(rng() % 32);
            const int decimals = static_cast<int>(rng() % 10);
            const int capacity = rng() % 8 == 0 ? static_cast<int>(rng() % (width + 1)) : width;
            const auto a = fast.run(c, value, width, decimals, 1, capacity, true);
            const auto b = loop.run(c, value, width, decimals, 1, capacity, false);
            ASSERT_EQ(a, b) << encoding;
            ASSERT_EQ(fast.cells(), loop.cells())
                << encoding << " " << std::hexfloat << value << " width " << width << "." << decimals << " case " << i;
            ASSERT_EQ(fast.call().produced, loop.call().produced) << encoding;
        }
        session->release();
    }
}

}  // namespace
