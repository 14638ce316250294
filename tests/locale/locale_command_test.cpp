// `vxlocfmt locale NAME` as a user runs it: every property and record once, replacements under
// --encoding, and an unknown name refused.
#include <gtest/gtest.h>

#include <sys/wait.h>

#include <cstdio>
#include <sstream>
#include <string>
#include <vector>

namespace {

struct CommandRun {
    int status;
    std::vector<std::string> lines;
};

CommandRun run(const std::string& arguments) {
    const std::string command = VX_BUILD_DIR "/bin/vxlocfmt " + arguments + " 2>&1";
    FILE* pipe = popen(command.c_str(), "r");
    std::string out;
    char buffer[4096];
    std::size_t n;
    while ((n = std::fread(buffer, 1, sizeof buffer, pipe)) > 0) out.append(buffer, n);
    const int status = pclose(pipe);
    CommandRun r{WIFEXITED(status) ? WEXITSTATUS(status) : -1, {}};
    std::istringstream in(out);
    for (std::string line; std::getline(in, line);) r.lines.push_back(line);
    return r;
}

TEST(LocaleCommand, PrintsTheTable) {
    const CommandRun r = run("locale de-DE");
    ASSERT_EQ(r.status, 0);
    ASSERT_EQ(r.lines.size(), 189u + 6u);
    for (std::size_t n = 0; n < 189; ++n) EXPECT_EQ(r.lines[n].substr(0, r.lines[n].find('\t')), std::to_string(n));
    EXPECT_EQ(r.lines[0], "0\t0\tde_DE");
    EXPECT_EQ(r.lines[71], "71\t9\tJanuar");  // width: "September", the widest name of the set
    EXPECT_EQ(r.lines[188], "188\t0\t#,##0.00\u00A0<U0001>") << "the currency placeholder shown as an escape";
    EXPECT_EQ(r.lines[189].rfind("conventions\t170\tcurrency_symbol=\"\u20AC\"\t", 0), 0u) << r.lines[189];
    EXPECT_NE(r.lines[194].find("conventions\t186\tcurrency_symbol=\"%\""), std::string::npos);
}

TEST(LocaleCommand, SessionEncodingReplacements) {
    const CommandRun r = run("locale ru_RU --encoding ISO-8859-1");
    ASSERT_EQ(r.status, 0);
    EXPECT_EQ(r.lines[156], "156\t0\t&#8381;");
    EXPECT_NE(r.lines[189].find("currency_symbol=\"RUB\""), std::string::npos);
}

TEST(LocaleCommand, UnknownLocale) {
    const CommandRun r = run("locale xx_YY");
    EXPECT_EQ(r.status, 2);
    ASSERT_EQ(r.lines.size(), 1u);
    EXPECT_EQ(r.lines[0], "vxlocfmt: unknown locale xx_YY");
    EXPECT_EQ(run("locale").status, 2);
}

}  // namespace
