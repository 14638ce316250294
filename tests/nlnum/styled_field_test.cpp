// The renderer's one-pass first attempt against its retry loop alone: random conventions
// (every pattern, selectors out of range, signs, separators and points of zero to two cells,
// blanks in them, symbols up to 50 characters), values of every magnitude, ties, zeros, widths
// 1 to 32, decimals 0 to 9, capacities at and below the width. Wide, and in byte mode (taken
// when the session writes the number a byte a character) in sessions whose identity bounds
// differ and one without any. Every cell (guards included), the status, the produced length and
// the decimals must be the same. And the byte-field attempt of the byte variants against the
// cell one converted by the session (UTF-8, ISO-8859-1, windows-1252, KOI8-R): taken exactly
// when that text's bytes fit the width (and, outside UTF-8, its cells are below the identity
// bound), then the same bytes right-aligned, nothing past them.
#include <gtest/gtest.h>

#include <random>
#include <string>

#include "frame/kernel.h"
#include "frame/session_bytes.h"
#include "locale_object.h"
#include "nlnum/styled_bytes.h"
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

TEST(StyledField, ByteFieldAttemptIsTheCellOneConverted) {
    using namespace vxlocfmt;
    vxhost::LocaleObject* locale = vxhost::LocaleObject::create("en_US");
    ASSERT_NE(locale, nullptr);
    for (const char* encoding : {"UTF-8", "ISO-8859-1", "windows-1252", "KOI8-R"}) {
        vxhost::Transcoder* session = vxhost::Transcoder::to_session(encoding);
        ASSERT_NE(session, nullptr) << encoding;
        const nlnum::SessionForm form{kernel::encoding_form(session) == kernel::transcoder_form_utf8,
                                      session_bytes::identity_mask_bound(session)};
        ASSERT_GT(form.bound, U' ') << encoding;
        std::mt19937_64 rng(99);
        int taken_count = 0;
        for (int i = 0; i < 60000; ++i) {
            const NumberConventions c = random_conventions(rng);
            const double value = random_value(rng);
            const int width = 1 + static_cast<int>(rng() % 32);
            const int decimals = static_cast<int>(rng() % 10);
            wchar cells[32];
            std::int32_t length = 0;
            const bool wide = nlnum::first_attempt(locale, value, width, decimals, 256, c, cells, &length);
            std::string want;
            // Outside UTF-8 only a text below the identity bound is taken (a euro in windows-1252
            // is the transcoder's).
            if (wide && (form.utf8 || session_bytes::all_below(cells + width - length, length, form.bound))) {
                unsigned char converted[4 * 32];
                std::int32_t produced = 0;
                if (session_bytes::convert(session, cells + width - length, length, converted, width, &produced) ==
                    st::ok)
                    want = std::string(static_cast<std::size_t>(width - produced), ' ') +
                           std::string(reinterpret_cast<const char*>(converted), static_cast<std::size_t>(produced));
            }
            std::string got(static_cast<std::size_t>(width) + 8, '~');
            const bool taken = nlnum::first_attempt_bytes(locale, value, width, decimals, 256, c, form,
                                                          reinterpret_cast<unsigned char*>(got.data()));
            ASSERT_EQ(taken, !want.empty()) << encoding << " case " << i << " " << value << " " << width << "." << decimals;
            ASSERT_EQ(got.substr(static_cast<std::size_t>(width)), "~~~~~~~~") << encoding << " case " << i;
            if (taken) {
                ++taken_count;
                ASSERT_EQ(got.substr(0, static_cast<std::size_t>(width)), want) << encoding << " case " << i;
            }
        }
        EXPECT_GT(taken_count, 10000) << encoding;
        session->release();
    }
    locale->release();
}

}  // namespace
