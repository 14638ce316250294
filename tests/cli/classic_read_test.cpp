// `read` with the classic informats by short name and `list classic`: numbers, bytes in
// lower-case hexadecimal, characters in UTF-8, "." for a failed read.
#include <gtest/gtest.h>

#include <sys/wait.h>

#include <cstdio>
#include <string>

namespace {

std::string run(const std::string& arguments) {
    FILE* pipe = popen((VX_BUILD_DIR "/bin/vxlocfmt " + arguments + " 2>&1").c_str(), "r");
    std::string out;
    char buffer[4096];
    for (std::size_t n; (n = std::fread(buffer, 1, sizeof buffer, pipe)) > 0;) out.append(buffer, n);
    pclose(pipe);
    return out;
}

TEST(CliClassic, ReadsByShortName) {
    const struct {
        const char* arguments;
        const char* out;
    } cases[] = {
        {"read HEX FF 7FF8000000000000 G1 --status", "255\t0x00000000\n.\t0x00000000\n.\t0x00000001\n"},
        {"read dollar '$1,234.50'", "1234.5\n"},
        {"read EURO '(E12.50)'", "-12.5\n"},
        {"read N8.2 12345", "123.45\n"},
        {"read UUID '{00112233-4455-6677-8899-AABBCCDDEEFF}'", "00112233445566778899aabbccddeeff\n"},
        {"read BASE QUJD QQ", "414243\n.\n"},
        {"read UPCASE6. 'straße'", "STRAßE\n"},
        {"read QUOTE \"'it''s'\"", "it's   \n"},
    };
    for (const auto& c : cases) EXPECT_EQ(run(c.arguments), c.out) << c.arguments;
}

TEST(CliClassic, ListsEveryInformatWithItsFunction) {
    const std::string out = run("list classic");
    EXPECT_NE(out.find("HEX\tinformat\tvxfmtzifmhex\n"), std::string::npos);
    EXPECT_NE(out.find("BASE\tinformat\tvxfmtzifmb64\n"), std::string::npos);
    int informats = 0;
    for (std::size_t at = 0; (at = out.find("\tinformat\t", at)) != std::string::npos; ++at) ++informats;
    EXPECT_EQ(informats, 21);
}

}  // namespace
