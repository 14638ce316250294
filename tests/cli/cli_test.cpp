// The command-line contract others rely on: listings, exit statuses, messages, value texts.
#include <gtest/gtest.h>

#include <sys/wait.h>

#include <cstdio>
#include <string>

namespace {

struct CliRun {
    int status;
    std::string out;
};

CliRun run(const std::string& arguments, const std::string& input = "") {
    const std::string command = "printf '%b' '" + input + "' | " VX_BUILD_DIR "/bin/vxlocfmt " + arguments + " 2>&1";
    FILE* pipe = popen(command.c_str(), "r");
    std::string out;
    char buffer[4096];
    std::size_t n;
    while ((n = std::fread(buffer, 1, sizeof buffer, pipe)) > 0) out.append(buffer, n);
    const int status = pclose(pipe);
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, out};
}

int lines(const std::string& text) {
    int count = 0;
    for (char c : text) count += c == '\n';
    return count;
}

TEST(Cli, ListsTheRegistry) {
    const CliRun formats = run("list formats");
    EXPECT_EQ(formats.status, 0);
    EXPECT_EQ(lines(formats.out), 150);
    EXPECT_EQ(formats.out.substr(0, 15), "NLBEST\nNLD\nNLDA");
    const CliRun informats = run("list informats");
    EXPECT_EQ(lines(informats.out), 97);
    EXPECT_EQ(informats.out.substr(0, 17), "@NLDATE\n@NLDATEW\n");
    const CliRun locales = run("list locales");
    EXPECT_GT(lines(locales.out), 500);
    EXPECT_NE(locales.out.find("\nde_DE\n"), std::string::npos);
}

// Every classic routine listed resolves and runs; a few numeric texts as users see them.
TEST(Cli, ListsAndRunsTheClassicFormats) {
    const CliRun list = run("list classic");
    ASSERT_EQ(list.status, 0);
    EXPECT_EQ(list.out.substr(0, 25), "TIME\tformat\tvxfmtzfmtime\n");
    for (std::size_t start = 0, end; (end = list.out.find('\n', start)) != std::string::npos; start = end + 1) {
        const std::string line = list.out.substr(start, end - start);
        const std::string name = line.substr(0, line.find('\t'));
        if (line.find("\tformat\t") == std::string::npos) continue;
        EXPECT_EQ(run("format " + name + " 0.5").status, 0) << line;
    }
    EXPECT_EQ(run("format COMMA12.2 1234.5").out, "    1,234.50\n");
    EXPECT_EQ(run("format DOLLAR10.2 1234.5").out, " $1,234.50\n");
    EXPECT_EQ(run("format PERCENT8. -0.25").out, "(   25%)\n");
}

TEST(Cli, UsageErrorsNameTheArgumentAndExitTwo) {
    const struct {
        const char* arguments;
        const char* message;
    } cases[] = {
        {"format NOSUCH 1", "unknown format 'NOSUCH'"},
        {"format NLDATE20 1", "bad SPEC 'NLDATE20'"},
        {"format NLDATE2x. 1", "bad SPEC 'NLDATE2x.'"},
        {"format NLDATE20. 1 -l xx_YY", "unknown locale xx_YY"},
        {"format NLDATE20. abc", "unreadable value 'abc'"},
        {"format NLDATE20. 1 --encoding nosuch-enc", "unknown encoding nosuch-enc"},
        {"format NLDATE20. 1 --tz Nowhere/City", "unknown time zone Nowhere/City"},
        {"format NLDATE20. 1 --bogus", "unknown option --bogus"},
        {"read @NOSUCH x", "unknown informat"},
        {"list things", "cannot list 'things'"},
        {"frobnicate", "unknown command 'frobnicate'"},
    };
    for (const auto& c : cases) {
        const CliRun r = run(c.arguments);
        EXPECT_EQ(r.status, 2) << c.arguments;
        EXPECT_NE(r.out.find(c.message), std::string::npos) << c.arguments << " said: " << r.out;
    }
}

TEST(Cli, BulkModeReadsEveryLine) {
    const CliRun r = run("format NLDATE20. --status", "1\\n2\\n.A\\n-3");
    int results = 0;
    for (std::size_t at = 0; (at = r.out.find("\t0x", at)) != std::string::npos; ++at) ++results;
    EXPECT_EQ(results, 4);
}

}  // namespace
