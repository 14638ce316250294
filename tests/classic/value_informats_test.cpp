// The classic value informats: every rule from the case file, round trips against writers of
// our own (hexadecimal, binary, Base64, UUID text), the kernel reader path, and the bound on
// what the byte and character informats write.
#include <gtest/gtest.h>

#include <bit>
#include <charconv>
#include <cstdio>
#include <fstream>
#include <random>
#include <string>
#include <vector>

#include "classic/value_informats.h"
#include "frame/kernel.h"
#include "kernel_handle.h"
#include "nls_service.h"
#include "numeric_reader.h"
#include "text/base64.h"
#include "text_convert.h"

namespace {

using namespace vxlocfmt;

enum class Yields { number, bytes, characters };
struct Informat {
    const char* name;
    format_fn function;
    Yields yields;
};
const Informat informats[] = {
    {"vxfmtzifmn", vxfmtzifmn, Yields::number},       {"vxfmtzifmcmx", vxfmtzifmcmx, Yields::number},
    {"vxfmtzifmnmx", vxfmtzifmnmx, Yields::number},   {"vxfmtzifmdlr", vxfmtzifmdlr, Yields::number},
    {"vxfmtzifmdlx", vxfmtzifmdlx, Yields::number},   {"vxfmtzifmeur", vxfmtzifmeur, Yields::number},
    {"vxfmtzifmerx", vxfmtzifmerx, Yields::number},   {"vxfmtzifmpct", vxfmtzifmpct, Yields::number},
    {"vxfmtzifmnpn", vxfmtzifmnpn, Yields::number},   {"vxfmtzifmnpr", vxfmtzifmnpr, Yields::number},
    {"vxfmtzifmskg", vxfmtzifmskg, Yields::number},   {"vxfmtzifmhex", vxfmtzifmhex, Yields::number},
    {"vxfmtzifmbin", vxfmtzifmbin, Yields::number},   {"vxfmtzifmuuid", vxfmtzifmuuid, Yields::bytes},
    {"vxfmtzifmhxc", vxfmtzifmhxc, Yields::bytes},    {"vxfmtzifmbnc", vxfmtzifmbnc, Yields::bytes},
    {"vxfmtzifmb64", vxfmtzifmb64, Yields::bytes},    {"vxfmtzifmc", vxfmtzifmc, Yields::characters},
    {"vxfmtzifmupc", vxfmtzifmupc, Yields::characters}, {"vxfmtzifmquo", vxfmtzifmquo, Yields::characters},
    {"vxfmtzifmocc", vxfmtzifmocc, Yields::characters},
};

const Informat* find(const std::string& name) {
    for (const Informat& i : informats)
        if (name == i.name) return &i;
    return nullptr;
}

constexpr std::size_t capacity = 64;

struct Outcome {
    status code;
    std::string result;  // as the case file writes it
};

std::string hex_bytes(const unsigned char* bytes, std::size_t n) {
    std::string out;
    char two[3];
    for (std::size_t i = 0; i < n; ++i) {
        std::snprintf(two, sizeof two, "%02x", bytes[i]);
        out += two;
    }
    return n ? out : "-";
}

// Runs one informat; numbers come back as their bits for comparison by the caller.
Outcome run(const Informat& informat, std::u32string_view text, int width, int decimals, bool check,
            double* number = nullptr) {
    std::vector<char32_t> cells(capacity, U'~');
    double value = 0;
    FmtCall call{};
    call.width = width;
    call.decimals = decimals;
    call.flags = check ? call_flag_check_limits : 0;
    call.input = text.data();
    call.input_length = static_cast<std::int32_t>(text.size());
    if (informat.yields == Yields::number) {
        call.output = &value;
    } else {
        call.output = cells.data();
        call.capacity = static_cast<std::int32_t>(capacity);
    }
    const status code = informat.function(&call, nullptr);
    if (number) *number = value;
    switch (informat.yields) {
        case Yields::number: return {code, ""};
        case Yields::bytes:
            return {code, hex_bytes(reinterpret_cast<const unsigned char*>(cells.data()), static_cast<std::size_t>(call.produced))};
        case Yields::characters:
            return {code, "«" + vxhost::to_utf8({cells.data(), static_cast<std::size_t>(call.produced)}) + "»"};
    }
    return {code, ""};
}

std::u32string unescape(const std::string& utf8) {
    std::u32string wide = vxhost::from_utf8(utf8), out;
    for (std::size_t i = 0; i < wide.size(); ++i) {
        if (wide[i] == U'\\' && i + 2 < wide.size() && wide[i + 1] == U'u' && wide[i + 2] == U'{') {
            const std::size_t close = wide.find(U'}', i);
            const std::string digits = vxhost::to_utf8(wide.substr(i + 3, close - i - 3));
            out += static_cast<char32_t>(std::stoul(digits, nullptr, 16));
            i = close;
        } else {
            out += wide[i];
        }
    }
    return out;
}

bool same_number(double got, const std::string& expected) {
    if (expected == ".") return std::bit_cast<std::uint64_t>(got) == missing_bits;
    if (expected.rfind("bits:", 0) == 0) return std::bit_cast<std::uint64_t>(got) == std::stoull(expected.substr(5), nullptr, 16);
    double want = 0;
    std::from_chars(expected.data(), expected.data() + expected.size(), want);
    return std::bit_cast<std::uint64_t>(got) == std::bit_cast<std::uint64_t>(want);
}

TEST(ClassicInformats, CaseFile) {
    std::ifstream file(VX_SOURCE_DIR "/tests/classic/value_informats_cases.txt");
    ASSERT_TRUE(file) << "case file";
    std::string line;
    int cases = 0;
    while (std::getline(file, line)) {
        if (line.empty() || line[0] == '#') continue;
        const std::size_t open = line.find("«"), close = line.find("»", open);
        ASSERT_NE(close, std::string::npos) << line;
        char name[32], check[16] = "";
        int width = 0, decimals = 0;
        ASSERT_GE(std::sscanf(line.c_str(), "%31s %d.%d %15s", name, &width, &decimals, check), 3) << line;
        const Informat* informat = find(name);
        ASSERT_TRUE(informat) << line;
        const std::u32string text = unescape(line.substr(open + 2, close - open - 2));
        const std::string tail = line.substr(close + 2);
        const std::size_t space = tail.find(' ', 1);
        const status want_code = static_cast<status>(std::stoul(tail.substr(1, space - 1)));
        const std::string want = tail.substr(space + 1);
        double number = 0;
        const Outcome got = run(*informat, text, width, decimals, std::string(check) == "check", &number);
        EXPECT_EQ(got.code, want_code) << line;
        if (informat->yields == Yields::number)
            EXPECT_TRUE(same_number(number, want)) << line << "\n  got " << number;
        else
            EXPECT_EQ(got.result, want) << line;
        ++cases;
    }
    EXPECT_GT(cases, 100);
}

TEST(ClassicInformats, HexadecimalRoundTripsEveryPattern) {
    std::mt19937_64 random(15);
    for (int i = 0; i < 200000; ++i) {
        std::uint64_t bits = random();
        if (i % 4 == 0) bits |= 0x7FF0000000000000ull;  // NaN codes and infinities
        char text[17];
        std::snprintf(text, sizeof text, i % 2 ? "%016llX" : "%016llx", static_cast<unsigned long long>(bits));
        double value = 0;
        const std::u32string wide(text, text + 16);
        ASSERT_EQ(run(*find("vxfmtzifmhex"), wide, 16, 0, true, &value).code, 0u) << text;
        ASSERT_EQ(std::bit_cast<std::uint64_t>(value), bits) << text;
        // Fewer digits: the integer they spell.
        const int digits = 1 + i % 15;
        ASSERT_EQ(run(*find("vxfmtzifmhex"), wide.substr(16 - digits), 16, 0, true, &value).code, 0u);
        ASSERT_EQ(value, static_cast<double>(bits & ((1ull << (4 * digits)) - 1))) << text;
    }
}

TEST(ClassicInformats, BinaryRoundTripsPatternsAndIntegers) {
    std::mt19937_64 random(16);
    for (int i = 0; i < 50000; ++i) {
        const std::uint64_t bits = random();
        std::u32string text;
        for (int b = 63; b >= 0; --b) text += (bits >> b & 1) ? U'1' : U'0';
        const int digits = 1 + i % 64;
        double value = 0;
        ASSERT_EQ(run(*find("vxfmtzifmbin"), text.substr(64 - static_cast<std::size_t>(digits)), 64, 0, true, &value).code, 0u);
        const std::uint64_t tail = digits == 64 ? bits : bits & ((1ull << digits) - 1);
        if (digits <= 56) ASSERT_EQ(value, static_cast<double>(tail)) << digits;
        else ASSERT_EQ(std::bit_cast<std::uint64_t>(value), tail) << digits;
    }
}

TEST(ClassicInformats, Base64AndUuidRoundTripRandomBytes) {
    std::mt19937 random(17);
    for (int i = 0; i < 5000; ++i) {
        std::vector<std::uint8_t> bytes(random() % 48);
        for (auto& b : bytes) b = static_cast<std::uint8_t>(random());
        std::u32string text(text::base64_encoded_size(bytes.size()), U' ');
        text::base64_encode(bytes, text.data());
        const Outcome got = run(*find("vxfmtzifmb64"), text, static_cast<int>(text.size()), 0, false);
        ASSERT_EQ(got.code, 0u);
        ASSERT_EQ(got.result, hex_bytes(bytes.data(), bytes.size()));

        std::uint8_t id[16];
        for (auto& b : id) b = static_cast<std::uint8_t>(random());
        std::string uuid = i % 2 ? "{" : "";
        for (int k = 0; k < 16; ++k) {
            char two[3];
            std::snprintf(two, sizeof two, random() % 2 ? "%02X" : "%02x", id[k]);
            uuid += two;
            if (k == 3 || k == 5 || k == 7 || k == 9) uuid += '-';
        }
        if (i % 2) uuid += "}";
        const Outcome read = run(*find("vxfmtzifmuuid"), std::u32string(uuid.begin(), uuid.end()), 200, 0, true);
        ASSERT_EQ(read.code, 0u) << uuid;
        ASSERT_EQ(read.result, hex_bytes(id, 16)) << uuid;
    }
}

// Through the kernel handle the host's reader is asked; without a national-language service the
// library's copy of the same reader answers alike.
TEST(ClassicInformats, KernelReaderAndItsFallback) {
    void* saved = Exported_VXHandle;
    Exported_VXHandle = vxhost::kernel_handle();
    double value = 0;
    const std::int64_t before = vxhost::numeric_reader_calls();
    EXPECT_EQ(run(*find("vxfmtzifmdlr"), U"$2.5", 4, 0, false, &value).code, 0u);
    EXPECT_EQ(value, 2.5);
    EXPECT_EQ(vxhost::numeric_reader_calls(), before + 1);
    vxhost::set_nls_service(nullptr);
    EXPECT_EQ(run(*find("vxfmtzifmdlr"), U"$3.5", 4, 0, false, &value).code, 0u);
    EXPECT_EQ(value, 3.5);
    EXPECT_EQ(vxhost::numeric_reader_calls(), before + 1);
    vxhost::set_nls_service(vxhost::nls_service());
    Exported_VXHandle = saved;
}

// Byte and character informats write at most min(width, capacity) cells and no further.
TEST(ClassicInformats, WritesStayWithinTheCapacity) {
    const std::u32string texts[] = {U"0aff10ab", U"0000000111111111", U"QUJDREVG", U"  'ab''cd' ",
                                     U"{00112233-4455-6677-8899-AABBCCDDEEFF}", U"straße"};
    for (const Informat& informat : informats) {
        if (informat.yields == Yields::number) continue;
        for (const std::u32string& text : texts) {
            for (int room = 0; room <= 20; ++room) {
                std::vector<char32_t> cells(40, U'~');
                FmtCall call{};
                call.width = static_cast<std::int32_t>(text.size());
                call.input = text.data();
                call.input_length = call.width;
                call.output = cells.data();
                call.capacity = room;
                informat.function(&call, nullptr);
                const std::size_t unit = informat.yields == Yields::bytes ? 1 : sizeof(char32_t);
                ASSERT_LE(call.produced, room) << informat.name;
                const auto* raw = reinterpret_cast<const unsigned char*>(cells.data());
                for (std::size_t b = static_cast<std::size_t>(room) * unit; b < cells.size() * sizeof(char32_t); ++b)
                    ASSERT_EQ(raw[b], '~' * (b % 4 == 0)) << informat.name << " room " << room << " byte " << b;
            }
        }
    }
}

}  // namespace
