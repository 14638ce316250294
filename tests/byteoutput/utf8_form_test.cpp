// The library's own UTF-8 (a session transcoder that promises UTF-8 in its encoding-form word):
// the measure of the number and money formats' fit test against ICU, the general path, for every
// code point alone (with room for it and one byte short) and for random texts at random rooms.
// Its conversion is held to the same path by fast_paths_test.cpp, which sees it through
// session_bytes::convert.
#include <gtest/gtest.h>

#include <random>
#include <string>

#include "frame/session_fit.h"
#include "transcoder.h"

namespace {

using namespace vxlocfmt;
using vxhost::Transcoder;

// The general path's byte count, or -1 when its conversion does not succeed.
std::int32_t general_length(Transcoder* t, std::u32string_view text, std::int32_t room) {
    std::string out(static_cast<std::size_t>(room) + 1, '\0');
    std::int32_t produced = 0;
    const status code = t->convert_by_icu(text.data(), text.size(), reinterpret_cast<unsigned char*>(out.data()),
                                          room, &produced);
    return code == st::ok ? produced : -1;
}

TEST(Utf8Form, OnlyTheUtf8SessionPromisesIt) {
    for (const char* encoding : {"UTF-8", "ISO-8859-1", "windows-1252", "Shift_JIS", "UTF-16BE"}) {
        Transcoder* t = Transcoder::to_session(encoding);
        EXPECT_EQ(kernel::encoding_form(t), std::string(encoding) == "UTF-8" ? kernel::transcoder_form_utf8
                                                                              : kernel::transcoder_form_none)
            << encoding;
        t->release();
    }
}

TEST(Utf8Form, MeasureAsTheGeneralPath) {
    Transcoder* t = Transcoder::to_session("UTF-8");
    FmtCall call{};
    call.session_transcoder = t;
    int failures = 0;
    const auto agree = [&](std::u32string_view text, std::int32_t room) {
        const std::int32_t want = general_length(t, text, room);
        const std::int32_t got = session_byte_length(call, text.data(), static_cast<std::int32_t>(text.size()), room);
        if (got != want && ++failures <= 5)
            ADD_FAILURE() << "first " << static_cast<std::uint32_t>(text.empty() ? 0 : text[0]) << " length "
                          << text.size() << " room " << room << ": " << got << ", general " << want;
    };
    for (char32_t c = 0; c <= 0x110000 && failures < 5; ++c) {
        const std::u32string_view one(&c, 1);
        const std::int32_t size = general_length(t, one, 8);
        agree(one, 8);
        if (size > 0) agree(one, size - 1);
    }
    std::mt19937_64 random(0x0F7F8);
    const char32_t others[] = {U'ä', U'€', U'\u202F', U'月', U'\U0001F600', 0xDC00, 0x110000};
    for (int n = 0; n < 3000 && failures < 5; ++n) {
        std::u32string text;
        for (std::size_t i = random() % 33; i > 0; --i) {
            const std::uint64_t r = random();
            text += r % 3 ? static_cast<char32_t>(0x20 + (r >> 8) % 0x5F) : others[(r >> 8) % std::size(others)];
        }
        agree(text, static_cast<std::int32_t>(random() % (4 * text.size() + 3)));
    }
    t->release();
}

}  // namespace
