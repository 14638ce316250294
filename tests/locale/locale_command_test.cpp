// `vxlocfmt locale NAME` as a user runs it: every property and record once, replacements under
// --encoding, and an unknown name refused.
#include <gtest/gtest.h>

#include <sys/wait.h>

#include <cstdio>
#include <sstream>
#include <string>
#include <vector>

namespace {

// The exit status and the lines of stdout and stderr.
std::pair<int, std::vector<std::string>> run(const std::string& arguments) {
    FILE* pipe = popen((VX_BUILD_DIR "/bin/vxlocfmt " + arguments + " 2>&1").c_str(), "r");
    std::string out;
    char buffer[4096];
    for (std::size_t n; (n = std::fread(buffer, 1, sizeof buffer, pipe)) > 0;) out.append(buffer, n);
    const int status = pclose(pipe);
    std::vector<std::string> lines;
    std::istringstream in(out);
    for (std::string line; std::getline(in, line);) lines.push_back(line);
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, lines};
}

TEST(LocaleCommand, PrintsTheTable) {
    const auto [status, lines] = run("locale de-DE");
    ASSERT_EQ(status, 0);
    ASSERT_EQ(lines.size(), 189u + 6u);
    for (std::size_t n = 0; n < 189; ++n) EXPECT_EQ(lines[n].substr(0, lines[n].find('\t')), std::to_string(n));
    EXPECT_EQ(lines[0], "0\tlocale id\t0\tde_DE");
    EXPECT_EQ(lines[71], "71\tmonth name, wide, 1\t9\tJanuar");  // width: "September", the widest of the set
    EXPECT_EQ(lines[188], "188\tsource: currency pattern\t0\t#,##0.00\u00A0<U0001>")
        << "the currency placeholder shown as an escape";
    EXPECT_EQ(lines[189].rfind("conventions\t170\tcurrency_symbol=\"\u20AC\"\t", 0), 0u) << lines[189];
    EXPECT_NE(lines[194].find("conventions\t186\tcurrency_symbol=\"%\""), std::string::npos);
}

TEST(LocaleCommand, SessionEncodingAndUnknownLocale) {
    const auto [status, lines] = run("locale ru_RU --encoding ISO-8859-1");
    ASSERT_EQ(status, 0);
    EXPECT_EQ(lines[156], "156\tcurrency: symbol\t0\t&#8381;");
    EXPECT_NE(lines[189].find("currency_symbol=\"RUB\""), std::string::npos);
    const auto [unknown_status, unknown_lines] = run("locale xx_YY");
    EXPECT_EQ(unknown_status, 2);
    ASSERT_EQ(unknown_lines.size(), 1u);
    EXPECT_EQ(unknown_lines[0].rfind("vxlocfmt: unknown locale xx_YY (nearest: ", 0), 0u) << unknown_lines[0];
    EXPECT_EQ(run("locale").first, 2);
}

}  // namespace
