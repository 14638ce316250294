// The edges of the C ABI for every registry row: capacity 0, width above the capacity, null
// output with no room, negative and null texts, a session without our extension. And the fuzz
// harness's own guards: an injected overflow must be caught.
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <vector>

#include "harness.h"
#include "library.h"
#include "session.h"

namespace {

using namespace vxlocfmt;

class AbiEdges : public ::testing::Test {
protected:
    static void SetUpTestSuite() {
        library = new vxhost::Library();
        vxhost::SessionOptions options;
        options.locale = "de_DE";
        session = new vxhost::Session(*library, options);
    }
    static void TearDownTestSuite() {
        delete session;
        delete library;
    }
    static vxhost::Library* library;
    static vxhost::Session* session;
};
vxhost::Library* AbiEdges::library = nullptr;
vxhost::Session* AbiEdges::session = nullptr;

TEST_F(AbiEdges, FormatsNeverWritePastWidthOrCapacity) {
    const struct {
        std::int32_t width, capacity;
    } fields[] = {{20, 0}, {300, 10}, {5, 200}, {0, 16}, {-3, 16}, {200, 200}};
    for (const FuncInfo* row = library->registry(); row->function; ++row) {
        if (row->kind != row_kind_format) continue;
        for (const auto& f : fields) {
            for (double value : {23000.5, std::nan(""), -1e300, 1e300}) {
                for (bool bytes : {false, true}) {
                    FmtCall& call = session->call();
                    call.width = f.width;
                    call.decimals = 2;
                    call.flags = 0;
                    call.input = &value;
                    call.capacity = f.capacity;
                    call.byte_mode = bytes;
                    const auto allowed = static_cast<std::size_t>(std::max(0, std::min(f.width, f.capacity)));
                    if (bytes) {
                        vxfuzz::GuardedCells<char> out(static_cast<std::size_t>(f.capacity));
                        call.output = out.data();
                        row->byte_function(&call, nullptr, nullptr);
                        out.expect_untouched_beyond(allowed, "byte format");
                    } else {
                        vxfuzz::GuardedCells<char32_t> out(static_cast<std::size_t>(f.capacity));
                        call.output = out.data();
                        row->function(&call, nullptr);
                        out.expect_untouched_beyond(allowed, "format");
                    }
                }
            }
        }
    }
    session->call().byte_mode = 0;
}

TEST_F(AbiEdges, NullOutputWithNoRoom) {
    for (const FuncInfo* row = library->registry(); row->function; ++row) {
        if (row->kind != row_kind_format) continue;
        double value = 23000;
        FmtCall& call = session->call();
        call.width = 12;
        call.decimals = 0;
        call.input = &value;
        call.output = nullptr;
        call.capacity = 0;
        row->function(&call, nullptr);  // must not crash
    }
}

// The locale number informats (@NLNUM, @NLPCT, @NLMNY and their I forms) leave the result
// untouched on an empty text and read with the classic informat when they have no instance; the
// fixed-currency ones (@NLMNI<ccy>, @NLMNL<ccy>) answer 0 whatever they read. Both by design.
bool row_named(const FuncInfo& row, std::u32string_view prefix) {
    return std::u32string_view(row.name, registry_name_length).starts_with(prefix);
}
bool locale_number_informat(const FuncInfo& row) {
    return row_named(row, U"@NLNUM") || row_named(row, U"@NLPCT") || row_named(row, U"@NLMNY");
}
bool fixed_currency_informat(const FuncInfo& row) { return row_named(row, U"@NLMNI") || row_named(row, U"@NLMNL"); }

TEST_F(AbiEdges, InformatsOnEmptyNegativeAndNullTexts) {
    const char32_t text[] = U"2024-01-03";
    const struct {
        const char32_t* input;
        std::int32_t length, limit;
    } cases[] = {{nullptr, 0, 0}, {text, -5, 10}, {text, 10, -1}, {text, 10, 0}, {U"    ", 4, 4}};
    for (const FuncInfo* row = library->registry(); row->function; ++row) {
        if (row->kind != row_kind_informat) continue;
        for (const auto& c : cases) {
            FmtCall& call = session->call();
            call.width = static_cast<std::int32_t>(row->default_width);
            call.decimals = 0;
            call.input = c.input;
            call.input_length = c.length;
            call.text_limit = c.limit;
            double result = 1.0;
            call.output = &result;
            const status code = row->function(&call, nullptr);
            // @NLSTRMON answers an empty text with the missing value and 0, as an unknown name.
            const bool month_name = row->function == library->find(U"@NLSTRMON")->function;
            EXPECT_EQ(code, fixed_currency_informat(*row) || month_name ? 0u : 1u) << "an empty text reads as nothing";
            if (locale_number_informat(*row)) EXPECT_EQ(result, 1.0) << "and leaves the result untouched";
            else EXPECT_TRUE(std::isnan(result)) << "and leaves the missing value";
        }
    }
}

TEST_F(AbiEdges, SessionWithoutOurExtension) {
    std::array<void*, 3> other{nullptr, const_cast<char*>("otherext"), nullptr};
    std::array<void*, 40> words{};
    words[session_word_extensions] = other.data();
    for (bool empty_list : {false, true}) {
        if (empty_list) words[session_word_extensions] = nullptr;
        for (const FuncInfo* row = library->registry(); row->function; ++row) {
            FmtCall call{};
            call.session = words.data();
            double value = 1;
            std::array<char32_t, 32> out;
            out.fill(U'~');
            call.width = 10;
            call.capacity = 32;
            if (row->kind == row_kind_format) {
                call.input = &value;
                call.output = out.data();
            } else {
                call.input = U"1";
                call.input_length = 1;
                call.text_limit = 1;
                call.output = &value;
            }
            const status code = row->function(&call, nullptr);
            if (row->kind == row_kind_format) {
                EXPECT_EQ(code, st::instance_not_found);
                for (char32_t c : out) EXPECT_EQ(c, U'~');
            } else if (locale_number_informat(*row)) {
                EXPECT_EQ(code, 0u) << "read by the classic informat";
                EXPECT_EQ(value, 1.0);
            } else {
                EXPECT_NE(code, 0u);
            }
        }
    }
}

TEST_F(AbiEdges, CallRecordWithoutLocaleObjectStarsTheField) {
    FmtCall call = session->call();  // a copy: same session, no table yet, no locale object
    call.property_cache = nullptr;
    call.number_format = nullptr;
    double value = 23000;
    std::array<char32_t, 20> out{};
    call.width = 12;
    call.capacity = 20;
    call.input = &value;
    call.output = out.data();
    EXPECT_EQ(library->find(U"NLDATE")->function(&call, nullptr), 0u);
    EXPECT_EQ(std::u32string(out.data(), 12), std::u32string(12, U'*'));
}

TEST(FuzzHarness, GuardsCatchAnInjectedOverflow) {
    // One cell past the allowed field, still inside the allocation: only the guards can see it.
    EXPECT_DEATH(
        {
            vxfuzz::GuardedCells<char32_t> out(8);
            out.data()[5] = U'x';  // the field is 5 cells
            out.expect_untouched_beyond(5, "injected overflow");
        },
        "injected overflow");
    EXPECT_DEATH(
        {
            vxfuzz::GuardedCells<char> out(8);
            out.data()[-1] = 'x';  // just before the field
            out.expect_untouched_beyond(8, "injected underflow");
        },
        "injected underflow");
}

}  // namespace
