// The `_b` entries that answer without the wrapper's frame: the NL date, datetime and time
// formats (a wide run, byte mode off), the number, percent and money formats (a run in byte mode),
// the week formats (their ASCII text written as bytes) and the name formats (the name and its
// blanks narrowed in one go), each falling back to the wrapper.
// Held to the wrapper itself on every such row, every width from the row's minimum to its
// maximum, random values with missing and out-of-range ones, output records narrower than the
// call or none, in four locales (ja_JP and fr_FR take the non-ASCII paths, de_DE and ja_JP money
// a symbol of three bytes in UTF-8) and UTF-8, ISO-8859-1 (no euro) and windows-1252 (a euro of
// one byte above the identity bound) sessions: the same status, produced length and bytes. The
// number rows take several values a width, so that widths where the symbol's bytes decide are
// met. The direct answer narrows the whole field, not only the text, so every format it serves
// must write every cell of its field: checked too, on cells filled with a mark.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <string>
#include <vector>

#include "frame/byte_output.h"
#include "frame/registry.h"
#include "library.h"
#include "session.h"
#include "text_convert.h"

namespace {

using namespace vxlocfmt;

std::u32string name_of(const FuncInfo& row) {
    std::u32string name(row.name, registry_name_length);
    name.erase(name.find_last_not_of(U' ') + 1);
    return name;
}

bool is_number(std::u32string_view name) {
    for (const std::u32string_view n : {U"NLBEST", U"NLD", U"NLMNY", U"NLMNYI", U"NLNUM", U"NLNUMI", U"NLPCT",
                                        U"NLPCTI", U"NLPCTN", U"NLPCTP"})
        if (name == n) return true;
    return false;
}

bool answered_from_wide(std::u32string_view name) {
    return name.starts_with(U"NLDATE") || name.starts_with(U"NLDATM") || name.starts_with(U"NLTIM") ||
           is_number(name);
}

double random_value(std::mt19937_64& random, std::u32string_view name) {
    const std::uint64_t r = random();
    switch (r % 16) {
    case 0: return std::nan("");
    case 1: return 1e300;
    case 2: return -1e300;
    case 3: return -1e15;
    default: break;
    }
    const double fraction = static_cast<double>(random() % 1000) / 1000;
    if (is_number(name)) {
        // Amounts of every size, signs, a few tiny and huge.
        const int digits = static_cast<int>(random() % 14);
        const double amount = static_cast<double>(random() % 100'000'000) * std::pow(10.0, digits - 8) + fraction;
        return r % 5 == 0 ? -amount : r % 17 == 0 ? amount * 1e25 : amount;
    }
    if (name.starts_with(U"NLSTR")) return static_cast<double>(random() % 14) + (r % 4 == 0 ? fraction : 0);
    if (name.starts_with(U"NLDATM")) return static_cast<double>(random() % 6'000'000'000) - 1e9 + fraction;
    if (name.starts_with(U"NLTIM")) return static_cast<double>(random() % 200'000) - 10'000 + fraction;
    return static_cast<double>(random() % 80'000) - 20'000;
}

struct Answer {
    status code;
    std::int32_t produced;
    std::string bytes;
    bool guarded;  // nothing written past the field
};

TEST(WideAnswer, SameAsTheWrapperOnEveryRowServed) {
    vxhost::Library library;
    std::mt19937_64 random(0xDA7E5);
    int checked = 0, failures = 0, tries = 0;
    for (const char* encoding : {"UTF-8", "ISO-8859-1", "windows-1252"}) {
        for (const char* locale : {"en_US", "de_DE", "fr_FR", "ja_JP"}) {
            vxhost::SessionOptions options;
            options.locale = locale;
            options.encoding = encoding;
            vxhost::Session session(library, options);
            for (const FuncInfo* row = library.registry(); row->function; ++row) {
                const std::u32string name = name_of(*row);
                const bool direct = name == U"WEEKU" || name == U"WEEKV" || name == U"WEEKW" ||
                                    name == U"NLSTRMON" || name == U"NLSTRQTR" || name == U"NLSTRWK";
                const char align = registry::row_specs[static_cast<std::size_t>(row - library.registry())].alignment;
                if (row->kind != row_kind_format || !(answered_from_wide(name) || direct)) continue;
                const int per_width = is_number(name) ? 4 : 1;
                for (auto width = static_cast<std::int32_t>(row->min_width);
                     width <= static_cast<std::int32_t>(row->max_width); width += (++tries % per_width) == 0) {
                    const double value = random_value(random, name);
                    const auto decimals = static_cast<std::int32_t>(random() % (row->max_decimals + 1));
                    // No output record, one as wide as the call, or a narrower field.
                    const int shape = static_cast<int>(random() % 3);
                    FmtCall out{};
                    out.width = shape == 2 ? static_cast<std::int32_t>(random() % (width + 1)) : width;
                    out.capacity = shape == 2 ? static_cast<std::int32_t>(random() % (width + 8)) : width;
                    const auto run = [&](bool wrapper) {
                        FmtCall& call = session.call();
                        std::vector<char> bytes(static_cast<std::size_t>(width) + 16, '~');
                        call.width = width;
                        call.decimals = decimals;
                        call.input = &value;
                        call.output = bytes.data();
                        call.capacity = width;
                        call.byte_mode = 1;
                        call.produced = -1;
                        FmtCall* target = shape == 0 ? &call : &out;
                        if (shape != 0) {
                            out.output = bytes.data();
                            out.produced = -1;
                        }
                        const status code = wrapper ? vxfmtnlbyte(&call, shape == 0 ? nullptr : &out, nullptr, align, row->function)
                                                    : row->byte_function(&call, shape == 0 ? nullptr : &out, nullptr);
                        const std::int32_t field = std::max(0, std::min(target->width, target->capacity));
                        const std::int32_t produced = target->produced;
                        return Answer{code, produced,
                                      std::string(bytes.data(), static_cast<std::size_t>(std::clamp(produced, 0, field))),
                                      std::all_of(bytes.begin() + field, bytes.end(), [](char b) { return b == '~'; })};
                    };
                    const Answer want = run(true);
                    const Answer got = run(false);
                    ++checked;
                    if ((got.code != want.code || got.produced != want.produced || got.bytes != want.bytes ||
                         !got.guarded) &&
                        ++failures <= 10)
                        ADD_FAILURE() << encoding << " " << locale << " " << vxhost::to_utf8(name) << width << "."
                                      << decimals << " value " << value << " shape " << shape << ": [" << got.bytes
                                      << "] " << got.produced << " " << std::hex << got.code << " want [" << want.bytes
                                      << "] " << std::dec << want.produced << " " << std::hex << want.code;
                }
            }
        }
    }
    EXPECT_GT(checked, 10000);
}

TEST(WideAnswer, FormatsServedWriteEveryCellOfTheirField) {
    vxhost::Library library;
    std::mt19937_64 random(0xF1E1D);
    constexpr char32_t mark = 0x7FFFFFFF;
    int failures = 0;
    for (const char* locale : {"en_US", "ja_JP"}) {
        vxhost::SessionOptions options;
        options.locale = locale;
        options.encoding = "UTF-8";
        vxhost::Session session(library, options);
        for (const FuncInfo* row = library.registry(); row->function; ++row) {
            const std::u32string name = name_of(*row);
            if (row->kind != row_kind_format || !answered_from_wide(name)) continue;
            for (auto width = static_cast<std::int32_t>(row->min_width);
                 width <= static_cast<std::int32_t>(row->max_width); width += 1 + width / 8) {
                for (int k = 0; k < 4; ++k) {
                    const double value = random_value(random, name);
                    std::vector<char32_t> cells(256, mark);
                    FmtCall& call = session.call();
                    call.width = width;
                    call.decimals = static_cast<std::int32_t>(random() % (row->max_decimals + 1));
                    call.input = &value;
                    call.output = cells.data();
                    call.capacity = 256;
                    call.byte_mode = is_number(name) ? 1 : 0;  // as the direct answer runs them
                    if (row->function(&call, nullptr) != st::ok) continue;
                    const auto end = cells.begin() + std::min(width, 256);
                    if (std::find(cells.begin(), end, mark) != end && ++failures <= 10)
                        ADD_FAILURE() << locale << " " << vxhost::to_utf8(name) << width << " value " << value;
                }
            }
        }
    }
}

}  // namespace
