// The steps every NL format takes first: find the instance by its tag, build the property
// table, check width and decimals under flag bit 0, fill "*" when the table cannot be built.
#include <gtest/gtest.h>

#include <array>
#include <vector>

#include "frame/field.h"
#include "frame/prologue.h"
#include "pool.h"

namespace {

using namespace vxlocfmt;

struct Harness {
    std::array<void*, 3> other{nullptr, const_cast<char*>("otherext"), nullptr};
    std::array<void*, 3> nameless{};  // an extension without a name is passed by
    std::array<void*, 3> ours{nullptr, const_cast<char*>("vxlocfmt and more"), nullptr};
    std::array<void*, 40> session{};
    std::vector<wchar> cells = std::vector<wchar>(64, U'~');
    FmtCall call{};
    vxhost::Pool* pool = vxhost::Pool::create("test session");
    Harness() {
        session[session_word_pool] = pool;
        session[session_word_extensions] = other.data();
        session[session_word_extensions + 1] = nameless.data();
        session[session_word_extensions + 2] = ours.data();
        call.session = session.data();
        call.output = cells.data();
        call.capacity = static_cast<std::int32_t>(cells.size());
        call.width = 10;
    }
    ~Harness() { pool->destroy(); }
};

TEST(Prologue, FindsTheInstanceByItsTag) {
    Harness h;
    const Start start = begin_format(h.call, {200, 3});
    EXPECT_TRUE(start.proceed);
    EXPECT_EQ(static_cast<void*>(start.instance), h.ours.data());
    EXPECT_EQ(h.call.produced, 10);
}

TEST(Prologue, NoInstanceLeavesTheBufferAlone) {
    for (int variant = 0; variant < 3; ++variant) {
        Harness h;
        if (variant == 0) h.session[session_word_extensions + 2] = nullptr;  // not in the list
        if (variant == 1) h.session[session_word_extensions] = nullptr;      // empty list
        if (variant == 2) h.call.session = nullptr;                          // no session at all
        const Start start = begin_nl_format(h.call, {200, 3});
        EXPECT_FALSE(start.proceed);
        EXPECT_EQ(start.code, st::instance_not_found);
        EXPECT_EQ(h.call.produced, 0);
        for (wchar c : h.cells) EXPECT_EQ(c, U'~');
    }
}

TEST(Prologue, LimitsUnderFlagBitZero) {
    const struct {
        std::int32_t width, decimals;
        status expected;
    } cases[] = {
        {0, 0, st::width_too_small},
        {-3, 9, st::width_too_small},     // width is checked first
        {201, -1, st::width_too_large},
        {200, -1, st::decimals_negative},
        {1, 4, st::decimals_too_large},
        {1, 3, st::ok},
        {200, 0, st::ok},
    };
    for (const auto& c : cases) {
        Harness h;
        h.call.width = c.width;
        h.call.decimals = c.decimals;
        h.call.flags = call_flag_check_limits;
        const Start start = begin_format(h.call, {200, 3});
        EXPECT_EQ(start.code, c.expected) << c.width << "." << c.decimals;
        EXPECT_EQ(start.proceed, c.expected == st::ok);
        EXPECT_EQ(h.call.produced, c.width);  // set before the checks
        h.call.flags = 0;
        EXPECT_TRUE(begin_format(h.call, {200, 3}).proceed) << "unchecked without bit 0";
    }
}

TEST(Prologue, TableThatCannotBeBuiltFillsStars) {
    Harness h;
    h.call.width = 12;
    h.call.capacity = 8;  // the fill stops at the capacity
    vxhost::fail_allocations_after(0);
    const Start start = begin_nl_format(h.call, {200, 3});
    vxhost::fail_allocations_after(-1);
    EXPECT_FALSE(start.proceed);
    EXPECT_EQ(start.code, st::ok);
    EXPECT_EQ(h.call.produced, 12);
    EXPECT_EQ(h.call.property_cache, nullptr);
    for (std::size_t i = 0; i < h.cells.size(); ++i) EXPECT_EQ(h.cells[i], i < 8 ? U'*' : U'~') << i;
}

TEST(OutputField, NeverWritesOutsideWidthAndCapacity) {
    for (std::int32_t width : {-5, 0, 1, 7, 16}) {
        for (std::int32_t capacity : {-1, 0, 3, 7, 16}) {
            std::vector<wchar> cells(24, U'~');
            OutputField field(cells.data() + 4, width, capacity);
            field.fill(U'x');
            field.write(-2, U"abcdefghijklmnopqrstuvwxyz");
            field.put(width, U'!');
            const std::int32_t stored = std::max(0, std::min(width, capacity));
            for (std::int32_t i = 0; i < 24; ++i) {
                const bool inside = i >= 4 && i < 4 + stored;
                EXPECT_EQ(cells[static_cast<std::size_t>(i)] != U'~', inside) << width << "/" << capacity << " at " << i;
            }
        }
    }
}

}  // namespace
