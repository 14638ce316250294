// The byte wrapper: a wide result converted into the session encoding, cut (left) or
// right-justified again without its leading blanks (right), never past the field.
#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <string>
#include <vector>

#include "frame/byte_output.h"
#include "frame/field.h"
#include "pool.h"
#include "transcoder.h"

namespace {

using namespace vxlocfmt;

// The wide format under the wrapper: writes `text` right- or left-justified in the width.
std::u32string text;
bool right = true;
status fixed_format(FmtCall* call, void*) {
    const OutputField field = OutputField::of(*call);
    field.fill(U' ');
    const auto n = static_cast<std::int32_t>(text.size());
    field.write(right ? call->width - n : 0, text);
    call->produced = call->width;
    return 0;
}

struct ByteCall {
    vxhost::Pool* session_pool = vxhost::Pool::create("session");
    vxhost::Pool* scratch_pool = vxhost::Pool::create("scratch");
    std::array<void*, 40> session{};
    std::array<void*, 12> scratch_block{};
    vxhost::Transcoder* transcoder;
    std::vector<char> bytes = std::vector<char>(600, '~');
    FmtCall call{};
    explicit ByteCall(const char* encoding, std::int32_t width) : transcoder(vxhost::Transcoder::to_session(encoding)) {
        session[session_word_pool] = session_pool;
        const char32_t tag[] = U"VXFM";
        std::memcpy(scratch_block.data(), tag, 16);
        scratch_block[scratch_block_word_pool] = scratch_pool;
        call.session = session.data();
        call.scratch_pool_block = scratch_block.data();
        call.session_transcoder = transcoder;
        call.width = width;
        call.capacity = width;
        call.output = bytes.data() + 8;
    }
    ~ByteCall() {
        transcoder->release();
        session_pool->destroy();
        scratch_pool->destroy();
    }
    std::string field() const { return std::string(bytes.data() + 8, static_cast<std::size_t>(call.produced)); }
    bool guards_intact() const {
        for (std::size_t i = 0; i < bytes.size(); ++i) {
            const bool inside = i >= 8 && i < 8 + static_cast<std::size_t>(std::max(call.width, 0));
            if (!inside && bytes[i] != '~') return false;
        }
        return true;
    }
};

TEST(ByteOutput, RightAlignedMultibyteIsJustifiedAgain) {
    const struct {
        const char* encoding;
        std::u32string wide;
        std::int32_t width;
        status expected;
        std::string bytes;
    } cases[] = {
        // 12 characters, 14 bytes: converted again without the 2 leading blanks.
        {"UTF-8", U"€ 1 234,50", 12, 0, "\xE2\x82\xAC 1 234,50"},
        // Fits at once: the wide blanks pass through.
        {"windows-1252", U"€ 1 234,50", 12, 0, "  \x80 1 234,50"},
        // Still too long without the blanks: the status stands.
        {"UTF-8", U"€€€€€", 12, st::does_not_fit, "\xE2\x82\xAC\xE2\x82\xAC\xE2\x82\xAC\xE2\x82\xAC"},
        // No leading blanks at all: 0x803fe807 is passed to the host.
        {"UTF-8", U"€€€€", 4, st::does_not_fit, "\xE2\x82\xAC"},
        // Shift_JIS: two bytes a yen sign in full width, one for ASCII.
        {"Shift_JIS", U"￥1,234", 8, 0, "\x81\x8F" "1,234"},
    };
    right = true;
    for (const auto& c : cases) {
        ByteCall b(c.encoding, c.width);
        text = c.wide;
        EXPECT_EQ(vxfmtnlbyte(&b.call, nullptr, nullptr, 'r', fixed_format), c.expected) << c.encoding;
        std::string got = b.field();
        if (c.expected == 0) {
            EXPECT_EQ(b.call.produced, c.width);
        }
        EXPECT_EQ(got.substr(got.size() - std::min(got.size(), c.bytes.size())), c.bytes) << c.encoding;
        EXPECT_TRUE(b.guards_intact());
    }
}

TEST(ByteOutput, LeftAlignedIsCutAtAWholeCharacter) {
    right = false;
    text = U"Mittwoch, 3. Jänner 2024";
    ByteCall b("UTF-8", 20);
    EXPECT_EQ(vxfmtnlbyte(&b.call, nullptr, nullptr, 'l', fixed_format), 0u);
    EXPECT_EQ(b.field(), "Mittwoch, 3. J\xC3\xA4nner");  // 20 bytes: the trailing blank is cut
    EXPECT_TRUE(b.guards_intact());

    ByteCall latin("ISO-8859-1", 20);
    text = U"3 € 4";  // the euro sign is not Latin-1: a conversion failure, not a substitute
    EXPECT_EQ(vxfmtnlbyte(&latin.call, nullptr, nullptr, 'l', fixed_format), vxhost::status_unmappable);
    EXPECT_EQ(latin.call.produced, 2);
}

TEST(ByteOutput, SeparateOutputRecordReceivesTheBytes) {
    right = false;
    text = U"abc";
    ByteCall b("UTF-8", 6);
    FmtCall out{};
    std::array<char, 16> target{};
    out.output = target.data();
    out.width = 4;
    out.capacity = 16;
    EXPECT_EQ(vxfmtnlbyte(&b.call, &out, nullptr, 'l', fixed_format), 0u);  // cut from 6 to 4
    EXPECT_EQ(std::string(target.data(), static_cast<std::size_t>(out.produced)), "abc ");
    EXPECT_EQ(b.call.produced, 0) << "the call record's own length is not touched";
}

TEST(ByteOutput, WideFieldsUseTheScratchPoolAndFreeIt) {
    for (std::int32_t width : {256, 257, 300, 500}) {
        right = true;
        text = U"x";
        ByteCall b("UTF-8", width);
        const auto before = vxhost::pool_stats();
        EXPECT_EQ(vxfmtnlbyte(&b.call, nullptr, nullptr, 'r', fixed_format), 0u);
        const auto after = vxhost::pool_stats();
        EXPECT_EQ(after.allocations - before.allocations, width > 256 ? 1 : 0);
        EXPECT_EQ(after.live_blocks, before.live_blocks);
        EXPECT_EQ(b.call.produced, width);
        EXPECT_EQ(b.field(), std::string(static_cast<std::size_t>(width) - 1, ' ') + "x");
        EXPECT_TRUE(b.guards_intact());
    }
}

// A format refusing its width (limits checked): produced length set to the width, nothing
// written. The wrapper converts blanks, not what an earlier call left in its scratch cells.
status refusing_format(FmtCall* call, void*) {
    call->produced = call->width;
    return st::width_too_large;
}

TEST(ByteOutput, RefusedWidthConvertsBlanks) {
    for (std::int32_t width : {40, 300}) {
        right = true;
        text = std::u32string(static_cast<std::size_t>(width), U'x');
        ByteCall b("UTF-8", width);
        ASSERT_EQ(vxfmtnlbyte(&b.call, nullptr, nullptr, 'r', fixed_format), 0u);  // leaves "x" cells behind
        EXPECT_EQ(vxfmtnlbyte(&b.call, nullptr, nullptr, 'r', refusing_format), 0u);
        EXPECT_EQ(b.field(), std::string(static_cast<std::size_t>(width), ' ')) << width;
        EXPECT_TRUE(b.guards_intact());
    }
}

}  // namespace
