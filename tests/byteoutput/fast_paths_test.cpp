// The session transcoder's fast paths (UTF-8, ISO-8859-1, single-byte tables, the library's own
// narrowing below the identity bound) against the general path, ICU a character at a time: the
// same status, length and bytes for every code point alone, at every room that cuts it, and for
// random texts at random rooms; a measure answers what the conversion answers.
// VXLOCFMT_FAST_PATH_TEXTS sets the random texts per encoding (default 3000).
#include <gtest/gtest.h>

#include <cstdlib>
#include <random>
#include <string>
#include <vector>

#include "frame/session_bytes.h"
#include "frame/session_fit.h"
#include "transcoder.h"

namespace {

using namespace vxlocfmt;
using vxhost::Transcoder;

struct Answer {
    status code;
    std::string bytes;
    bool operator==(const Answer&) const = default;
};

std::string show(const Answer& a) {
    std::string out = std::to_string(a.code) + " [";
    for (unsigned char b : a.bytes) out += std::to_string(b) + " ";
    return out + "]";
}

std::string show(const std::u32string& text) {
    std::string out;
    for (char32_t c : text) out += std::to_string(static_cast<std::uint32_t>(c)) + " ";
    return out;
}

// Every conversion path of one session encoding, on one text and room.
struct Paths {
    Transcoder* transcoder;
    explicit Paths(const char* encoding) : transcoder(Transcoder::to_session(encoding)) {}
    ~Paths() { transcoder->release(); }

    Answer fast(std::u32string_view text, std::int32_t room) const {
        std::vector<unsigned char> out(static_cast<std::size_t>(room) + 1);
        std::int32_t produced = -1;
        const status code = kernel::convert(transcoder, text.data(), static_cast<std::int32_t>(text.size() * 4),
                                            out.data(), room, &produced);
        return {code, std::string(out.begin(), out.begin() + produced)};
    }
    Answer general(std::u32string_view text, std::int32_t room) const {
        std::vector<unsigned char> out(static_cast<std::size_t>(room) + 1);
        std::int32_t produced = -1;
        const status code = transcoder->convert_by_icu(text.data(), text.size(), out.data(), room, &produced);
        return {code, std::string(out.begin(), out.begin() + produced)};
    }
    Answer library(std::u32string_view text, std::int32_t room) const {
        std::vector<unsigned char> out(static_cast<std::size_t>(room) + 1);
        std::int32_t produced = -1;
        const status code = session_bytes::convert(transcoder, text.data(), static_cast<std::int32_t>(text.size()),
                                                   out.data(), room, &produced);
        return {code, std::string(out.begin(), out.begin() + produced)};
    }
    Answer measured(std::u32string_view text, std::int32_t room) const {
        std::int32_t needed = -1;
        const status code = kernel::measure_slot(transcoder)(
            transcoder, text.data(), static_cast<std::int32_t>(text.size() * 4), room, &needed, 0);
        return {code, std::string(static_cast<std::size_t>(needed), '?')};
    }
    bool fits(std::u32string_view text, std::int32_t room) const {
        FmtCall call{};
        call.session_transcoder = transcoder;
        return fits_session_encoding(call, text, room);
    }

    // All paths on one text; false (with a failure) at the first disagreement.
    bool agree(std::u32string_view text, std::int32_t room) const {
        const Answer want = general(text, room);
        const Answer got = fast(text, room);
        const Answer narrowed = library(text, room);
        const Answer size = measured(text, room);
        const bool fit = fits(text, room);
        const bool ok = got == want && narrowed == want && size.code == want.code &&
                        size.bytes.size() == want.bytes.size() && fit == (want.code == 0);
        if (!ok)
            ADD_FAILURE() << transcoder->encoding() << " text {" << show(std::u32string(text)) << "} room " << room
                          << ": general " << show(want) << ", fast " << show(got) << ", library " << show(narrowed)
                          << ", measured " << size.code << "/" << size.bytes.size() << ", fits " << fit;
        return ok;
    }
};

const char* const fast_encodings[] = {"UTF-8", "ISO-8859-1", "windows-1252", "ISO-8859-15", "KOI8-R"};

TEST(FastPaths, EncodingsTakeTheirFastKind) {
    const struct {
        const char* encoding;
        Transcoder::Kind kind;
        std::uintptr_t identity;
    } cases[] = {
        {"UTF-8", Transcoder::Kind::wide_to_utf8, 0x80},
        {"ISO-8859-1", Transcoder::Kind::wide_to_latin1, 0x100},
        {"windows-1252", Transcoder::Kind::wide_to_table, 0x80},
        {"KOI8-R", Transcoder::Kind::wide_to_table, 0x80},
        {"Shift_JIS", Transcoder::Kind::wide_to_icu, 0},  // identity: whatever ICU writes, checked below
        {"UTF-16BE", Transcoder::Kind::wide_to_icu, 0},
    };
    for (const auto& c : cases) {
        const Paths p(c.encoding);
        EXPECT_EQ(p.transcoder->kind(), c.kind) << c.encoding;
        if (c.identity) {
            EXPECT_EQ(kernel::identity_bound(p.transcoder), c.identity) << c.encoding;
        }
    }
    EXPECT_EQ(kernel::identity_bound(Paths("UTF-16BE").transcoder), 0u) << "two bytes a character";
}

// Every code point alone (and a few that are none), with room for it and with one byte too few.
TEST(FastPaths, EveryCodePointAsTheGeneralPath) {
    std::vector<char32_t> points;
    for (char32_t c = 0; c <= 0x10FFFF; ++c) points.push_back(c);
    for (char32_t c : {0x110000u, 0x7FFFFFFFu, 0xFFFFFFFFu}) points.push_back(c);
    for (const char* encoding : fast_encodings) {
        const Paths p(encoding);
        int failures = 0;
        for (char32_t c : points) {
            const std::u32string_view text(&c, 1);
            const Answer whole = p.general(text, 8);
            bool ok = p.agree(text, 8);
            if (!whole.bytes.empty()) ok = p.agree(text, static_cast<std::int32_t>(whole.bytes.size()) - 1) && ok;
            if (!ok && ++failures >= 5) break;
        }
    }
}

// Shift_JIS stays on the general path; the library's narrowing below its identity bound (if any)
// must still write what ICU writes.
TEST(FastPaths, GeneralEncodingsBelowTheirIdentityBound) {
    for (const char* encoding : {"Shift_JIS", "EUC-JP", "ISO-2022-JP", "UTF-16BE"}) {
        const Paths p(encoding);
        for (char32_t c = 0; c < 0x100; ++c) {
            const std::u32string text(3, c);
            p.agree(text, 8);
            p.agree(text, 2);
        }
        p.agree(U"2024年5月1日 12:00", 40);
        p.agree(U"abc 2024", 40);
    }
}

std::size_t random_text_count() {
    const char* n = std::getenv("VXLOCFMT_FAST_PATH_TEXTS");
    return n ? static_cast<std::size_t>(std::strtoull(n, nullptr, 10)) : 3000;
}

// Random texts of the kinds a session meets: mostly ASCII, Latin-1, characters the encoding
// holds, any code point, now and then a surrogate or a value beyond U+10FFFF; random rooms.
TEST(FastPaths, RandomTextsAsTheGeneralPath) {
    std::mt19937_64 random(0x5EED22);
    const std::size_t count = random_text_count();
    for (const char* encoding : fast_encodings) {
        const Paths p(encoding);
        // Characters this encoding holds, from the general path.
        std::vector<char32_t> held;
        for (char32_t c = 0; c < 0x10000; ++c) {
            const char32_t one[] = {c};
            if (p.general({one, 1}, 8).code == 0) held.push_back(c);
        }
        const auto pick = [&](std::uint64_t r) -> char32_t {
            switch (r % 10) {
            case 0: case 1: case 2: case 3: return static_cast<char32_t>(0x20 + (r >> 8) % 0x5F);
            case 4: return static_cast<char32_t>((r >> 8) % 0x100);
            case 5: case 6: return held[(r >> 8) % held.size()];
            case 7: return static_cast<char32_t>((r >> 8) % 0x110000);
            case 8: return static_cast<char32_t>(0xD800 + (r >> 8) % 0x800);
            default: return (r >> 8) % 8 ? static_cast<char32_t>(0x20AC) : static_cast<char32_t>(0x110000 + (r >> 8) % 99);
            }
        };
        int failures = 0;
        for (std::size_t t = 0; t < count && failures < 5; ++t) {
            const std::size_t length = random() % 41;
            const bool plain = random() % 3 == 0;  // all ASCII: the identity path in the library
            std::u32string text;
            for (std::size_t i = 0; i < length; ++i) {
                const std::uint64_t r = random();
                text += plain ? static_cast<char32_t>(0x20 + r % 0x5F) : pick(r);
            }
            const auto room = static_cast<std::int32_t>(random() % (4 * length + 3));
            failures += !p.agree(text, room);
        }
    }
}

}  // namespace
