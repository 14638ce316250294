// The command as users run it, from a shell: the cases in tests/cli/cases.txt and every example
// in README.md, each compared whole (stdout lines, stderr text, exit status); then what a table
// cannot show: results arriving while the input is still open.
#include <gtest/gtest.h>

#include <fcntl.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <future>
#include <sstream>
#include <string>
#include <vector>

namespace {

// One command and what it must give. In a case file (and in README.md, indented by four):
//   $ COMMAND     a shell line; `vxlocfmt` is the built command
//   < TEXT        stdin, with printf %b escapes (default: empty)
//   ! TEXT        stderr must contain TEXT (several allowed)
//   = N           exit status (default 0)
//   anything else one line of stdout, in order; a case with no such line checks none
struct Case {
    std::string where;
    std::string command;
    std::string input;
    std::vector<std::string> errors;
    int status = 0;
    std::vector<std::string> out;
    bool check_out = false;
};

std::vector<Case> parse_cases(const std::string& file, bool indented) {
    std::ifstream in(file);
    std::vector<Case> cases;
    bool open = false;
    int number = 0;
    for (std::string line; std::getline(in, line);) {
        ++number;
        if (indented) {
            if (line.rfind("    ", 0) != 0) {
                open = false;
                continue;
            }
            line.erase(0, 4);
        }
        if (line.rfind("$ ", 0) == 0) {
            Case& c = cases.emplace_back();
            c.where = file + ":" + std::to_string(number);
            c.command = line.substr(2);
            open = true;
        } else if (!open || (!indented && (line.empty() || line[0] == '#'))) {
            continue;
        } else if (line.rfind("< ", 0) == 0) {
            cases.back().input = line.substr(2);
        } else if (line.rfind("! ", 0) == 0) {
            cases.back().errors.push_back(line.substr(2));
        } else if (line.rfind("= ", 0) == 0) {
            cases.back().status = std::atoi(line.c_str() + 2);
        } else {
            cases.back().out.push_back(line);
            cases.back().check_out = true;
        }
    }
    return cases;
}

std::string slurp(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

std::string quoted(const std::string& text) {
    std::string out = "'";
    for (char c : text) out += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return out + "'";
}

struct Outcome {
    int status;
    std::string out, err;
};

// Runs the case in a scratch folder with a clean locale, time zone and library environment.
Outcome execute(const Case& c) {
    char folder[] = "/tmp/vxcli.XXXXXX";
    if (!mkdtemp(folder)) return {-1, "", "mkdtemp failed"};
    const std::string dir = folder;
    const std::string script = "cd " + dir + " && unset LANG LC_ALL TZ VXLOCFMT_LIBRARY && PATH=" VX_BUILD_DIR
                               "/bin:$PATH && printf '%b' " + quoted(c.input) + " | { " + c.command + "; } >" +
                               dir + "/out 2>" + dir + "/err";
    const int raw = std::system(("sh -c " + quoted(script)).c_str());
    Outcome outcome{WIFEXITED(raw) ? WEXITSTATUS(raw) : -1, slurp(dir + "/out"), slurp(dir + "/err")};
    std::filesystem::remove_all(dir);
    return outcome;
}

void check(const Case& c, const Outcome& r) {
    SCOPED_TRACE(c.where + ": $ " + c.command + "\nstdout:\n" + r.out + "stderr:\n" + r.err);
    EXPECT_EQ(r.status, c.status);
    for (const std::string& e : c.errors) EXPECT_NE(r.err.find(e), std::string::npos) << "stderr lacks: " << e;
    if (c.errors.empty() && c.status == 0) {
        EXPECT_EQ(r.err, "");
    }
    if (!c.check_out) return;
    std::vector<std::string> lines;
    std::istringstream text(r.out);
    for (std::string line; std::getline(text, line);) lines.push_back(line);
    EXPECT_EQ(lines, c.out);
}

// The cases are independent processes: run them side by side, check them in order.
void run_all(const std::vector<Case>& cases) {
    std::vector<std::future<Outcome>> outcomes;
    for (const Case& c : cases) outcomes.push_back(std::async(std::launch::async, execute, std::cref(c)));
    for (std::size_t i = 0; i < cases.size(); ++i) check(cases[i], outcomes[i].get());
}

TEST(Cli, Cases) {
    const auto cases = parse_cases(VX_SOURCE_DIR "/tests/cli/cases.txt", false);
    ASSERT_GT(cases.size(), 40u);
    run_all(cases);
}

TEST(Cli, ReadmeExamples) {
    const auto cases = parse_cases(VX_SOURCE_DIR "/README.md", true);
    ASSERT_GE(cases.size(), 5u);
    run_all(cases);
}

// `tail -f log | vxlocfmt ...`: each result is written while the input is still open.
TEST(Cli, ResultsFlowWhileInputWaits) {
    int to_child[2], from_child[2];
    ASSERT_EQ(pipe(to_child), 0);
    ASSERT_EQ(pipe(from_child), 0);
    const pid_t pid = fork();
    if (pid == 0) {
        dup2(to_child[0], 0);
        dup2(from_child[1], 1);
        close(to_child[1]);
        close(from_child[0]);
        execl(VX_BUILD_DIR "/bin/vxlocfmt", "vxlocfmt", "format", "NLDATE20.", "-l", "en_US", nullptr);
        _exit(127);
    }
    close(to_child[0]);
    close(from_child[1]);
    for (const char* line : {"23000\n", "0\n"}) {
        ASSERT_EQ(write(to_child[1], line, std::char_traits<char>::length(line)),
                  static_cast<ssize_t>(std::char_traits<char>::length(line)));
        pollfd ready{from_child[0], POLLIN, 0};
        ASSERT_EQ(poll(&ready, 1, 10000), 1) << "no result within 10 s for " << line;
        char buffer[64];
        const ssize_t n = read(from_child[0], buffer, sizeof buffer);
        ASSERT_GT(n, 0);
        EXPECT_EQ(buffer[n - 1], '\n') << "a whole line";
    }
    close(to_child[1]);
    int status = 0;
    waitpid(pid, &status, 0);
    close(from_child[0]);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
}

}  // namespace
