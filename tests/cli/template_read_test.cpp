// The any-date reader on the command line: names with digits taken whole, the driver's views,
// --explain, bulk mode, the template listing.
#include <gtest/gtest.h>

#include <sys/wait.h>

#include <cstdio>
#include <string>

namespace {

struct TemplateRun {
    int status;
    std::string out;
};

TemplateRun run(const std::string& arguments, const std::string& input = "") {
    const std::string command = "printf '%b' '" + input + "' | " VX_BUILD_DIR "/bin/vxlocfmt " + arguments + " 2>&1";
    FILE* pipe = popen(command.c_str(), "r");
    std::string out;
    char buffer[4096];
    std::size_t n;
    while ((n = std::fread(buffer, 1, sizeof buffer, pipe)) > 0) out.append(buffer, n);
    const int status = pclose(pipe);
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, out};
}

TEST(CliTemplates, ReadsAndExplains) {
    const struct {
        const char* arguments;
        const char* out;
        int status;
    } cases[] = {
        // The driver: a datetime; its date and time views.
        {"read ANYDATE 2020-03-04T10:30:00 --explain", "1898937000\t65\t%P%y-%m-%dT%H:%M:%S\n", 0},
        {"read anydate --as date 2020-03-04T10:30:00", "21978\n", 0},
        {"read ANYDATE --as time 2020-03-04T10:30:00", "37800\n", 0},
        // The four-digit-year retry shows in the explanation.
        {"read ANYDATE 20200304 --explain", "1898899200\t2\t%P%Y%m%d\n", 0},
        // A failed read: the missing value; the driver still answers 0.
        {"read ANYDATE nonsense --explain --status", ".\t-\t0x00000000\n", 1},
        // Names with digits are taken whole before a width; the width is no text limit.
        {"read B8601DA10. 20200304 --explain", "21978\t74\t%P%Y%m%d\n", 0},
        {"read E8601DT5. 2020-03-04T10:30:00", "1898937000\n", 0},
        {"read DATETIME 04MAR2020:10:30:00", "1898937000\n", 0},
        // Through dtmInformat: 999 and the missing value when no row gives a value.
        {"read B8601DN 20200304 --status", ".\t0x000003e7\n", 1},
        {"read NLDATE --as date 1", "vxlocfmt: --as needs the ANYDATE reader\n", 2},
    };
    for (const auto& c : cases) {
        const TemplateRun r = run(c.arguments);
        EXPECT_EQ(r.out, c.out) << c.arguments;
        EXPECT_EQ(r.status, c.status) << c.arguments;
    }
}

TEST(CliTemplates, BulkModeAndListing) {
    const TemplateRun bulk = run("read JULIAN --explain", "20001\\n2020001\\nxyz\\n");
    EXPECT_EQ(bulk.out, "21915\t125\t%P%y%j\n21915\t126\t%P%Y%j\n.\t-\n");
    EXPECT_EQ(bulk.status, 1);
    const TemplateRun list = run("list templates");
    EXPECT_EQ(list.status, 0);
    EXPECT_EQ(list.out.substr(0, list.out.find('\n')), "0\tANYDATE\t0\t0\t0\t6\t8\tDTE\t%P%m%d%y");
    EXPECT_NE(list.out.find("\n147\tDUMMY\t0\t0\t0\t1\t1\tDTE\t%P\n"), std::string::npos);
}

}  // namespace
