// The reporting layer: integer-to-text against std::to_chars, forwarders that hand the packed
// argument list to the right slot, and the no-journal path.
#include <gtest/gtest.h>

#include <charconv>
#include <cstdarg>
#include <random>
#include <string>

#include "frame/kernel.h"
#include "frame/reporting.h"
#include "journal.h"
#include "kernel_handle.h"

namespace {

using namespace vxlocfmt;

std::string expected_digits(std::uint64_t value, int base, bool upper) {
    const int b = base < 2 ? 10 : base > 16 ? 16 : base;
    char buffer[70];
    auto [end, error] = std::to_chars(buffer, buffer + sizeof buffer, value, b);
    std::string s(buffer, end);
    if (upper)
        for (char& c : s) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    return s;
}

TEST(IntegerToText, MatchesToCharsForEveryBase) {
    std::mt19937_64 random(42);
    for (int base = -1; base <= 40; ++base) {
        for (int i = 0; i < 200; ++i) {
            const std::uint64_t value = i < 3 ? std::uint64_t(i) * UINT64_MAX / 2 : random() >> (random() % 64);
            for (int upper = 0; upper < 2; ++upper) {
                const std::string want = expected_digits(value, base, upper);
                wchar out[64];
                std::int64_t length = -1;
                ASSERT_EQ(vxzIMaxToBuff(value, base, upper, out, 64, &length), 0u);
                ASSERT_EQ(length, static_cast<std::int64_t>(want.size()));
                EXPECT_EQ(std::u32string(out, out + length), std::u32string(want.begin(), want.end()));
                const auto small = static_cast<std::uint32_t>(value);
                const std::string want32 = expected_digits(small, base, upper);
                ASSERT_EQ(vxzIFastToBuff(small, base, upper, out, 64, &length), 0u);
                EXPECT_EQ(std::u32string(out, out + length), std::u32string(want32.begin(), want32.end()));
            }
        }
    }
}

TEST(IntegerToText, TooSmallWritesNothingButTheLength) {
    wchar out[4] = {U'~', U'~', U'~', U'~'};
    std::int64_t length = -1;
    EXPECT_EQ(vxzIMaxToBuff(0, 10, 0, out, 0, &length), st::too_small_for_digits);
    EXPECT_EQ(length, 1);
    EXPECT_EQ(vxzIFastToBuff(12345, 10, 0, out, 4, &length), st::too_small_for_digits);
    EXPECT_EQ(length, 5);
    EXPECT_EQ(out[0], U'~');
    EXPECT_EQ(vxzIMaxToBuff(1234, 10, 0, out, 4, nullptr), 0u);  // no length wanted
    EXPECT_EQ(std::u32string(out, 4), U"1234");
}

// A journal and a buffer object that record what reached each slot: the severity, the status
// or message, and the first of the packed arguments; each slot answers its own number.
struct Recorder {
    std::array<void*, 8> words{};
    std::int32_t severity = -1;
    std::uint64_t code = 0;
    const wchar* message = nullptr;
    int argument = 0, slot = -1;
    template <int Slot>
    status take(std::int32_t severity_, std::uint64_t code_, const wchar* message_, va_list* args) {
        severity = severity_, code = code_, message = message_, argument = va_arg(*args, int), slot = Slot;
        return 70 + Slot;
    }
};

TEST(Forwarders, PassArgumentsAndResultsThrough) {
    Recorder r;
    static_assert(offsetof(Recorder, words) == 0);
    r.words[kernel::journal_status_slot] = reinterpret_cast<void*>(+[](void* o, std::int32_t s, status c, va_list* a) {
        return static_cast<Recorder*>(o)->take<kernel::journal_status_slot>(s, c, nullptr, a);
    });
    r.words[kernel::journal_message_slot] =
        reinterpret_cast<void*>(+[](void* o, std::int32_t s, const wchar* m, const wchar*, va_list* a) {
            return static_cast<Recorder*>(o)->take<kernel::journal_message_slot>(s, 0, m, a);
        });
    r.words[kernel::object_status_to_buf_slot] =
        reinterpret_cast<void*>(+[](void* o, std::uint64_t what, wchar*, std::int64_t, va_list* a) {
            return static_cast<Recorder*>(o)->take<kernel::object_status_to_buf_slot>(-1, what, nullptr, a);
        });
    r.words[kernel::object_message_to_buf_slot] =
        reinterpret_cast<void*>(+[](void* o, std::uint64_t, wchar*, std::int64_t, va_list* a) {
            return static_cast<Recorder*>(o)->take<kernel::object_message_to_buf_slot>(-1, 0, nullptr, a);
        });
    wchar buffer[8];
    EXPECT_EQ(vxlStatusToJnl(&r, 4, st::no_memory, 11), 70u + kernel::journal_status_slot);
    EXPECT_TRUE(r.severity == 4 && r.code == st::no_memory && r.argument == 11);
    EXPECT_EQ(vxlMessageToJnl(&r, 2, U"hello", U"%d", 12), 70u + kernel::journal_message_slot);
    EXPECT_TRUE(r.severity == 2 && std::u32string_view(r.message) == U"hello" && r.argument == 12);
    EXPECT_EQ(vxlStatusToBuf(&r, 0x803fc003u, buffer, 8, 13), 70u + kernel::object_status_to_buf_slot);
    EXPECT_TRUE(r.code == 0x803fc003u && r.argument == 13);
    EXPECT_EQ(vxlMessageToBuf(&r, U"m", buffer, 8, 14), 70u + kernel::object_message_to_buf_slot);
    EXPECT_EQ(r.argument, 14);
}

TEST(Forwarders, StatusWithoutContextNeedsTheDefaultJournal) {
    void* saved = Exported_VXHandle;
    Exported_VXHandle = vxhost::kernel_handle();
    wchar buffer[64];
    std::int64_t length = 0;
    vxhost::set_default_journal(nullptr);
    EXPECT_EQ(vxzStatusBuff(nullptr, st::no_memory, buffer, 64, &length), st::no_journal);
    EXPECT_EQ(vxzStatus2Buff(nullptr, st::no_memory, buffer, 64, &length), st::no_journal);

    vxhost::Journal* journal = vxhost::Journal::create("default");
    vxhost::set_default_journal(journal);
    EXPECT_EQ(vxzStatusBuff(nullptr, st::no_memory, buffer, 64, &length), 0u);
    EXPECT_EQ(std::u32string(buffer, buffer + length), U"memory exhausted");
    vxhost::set_default_journal(nullptr);
    journal->release();

    Exported_VXHandle = nullptr;
    EXPECT_EQ(vxzStatusBuff(nullptr, st::no_memory, buffer, 64, &length), st::no_journal);
    Exported_VXHandle = saved;
}

TEST(Clock, LocalTimeIsUniversalPlusTheZoneOffset) {
    void* saved = Exported_VXHandle;
    Exported_VXHandle = vxhost::kernel_handle();
    double offset = 1e9;
    const double universal = vxzdtgmt(&offset);
    const double local = vxzdttme();
    EXPECT_GT(universal, 2.0e9);  // after 2023 in seconds from 1960
    EXPECT_NEAR(local - universal, offset, 5.0);
    EXPECT_NE(vxGetBDConv(), nullptr);
    Exported_VXHandle = saved;
}

}  // namespace
