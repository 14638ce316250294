// The shared library exports exactly the names of the export list, nothing else of its own.
#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <set>
#include <string>

namespace {

std::set<std::string> exported_names(const std::string& library) {
    std::set<std::string> names;
    const std::string command = "nm -D --defined-only " + library;
    FILE* pipe = popen(command.c_str(), "r");
    if (!pipe) return names;
    char line[512];
    while (std::fgets(line, sizeof line, pipe)) {
        char address[64], type[8], name[400];
        if (std::sscanf(line, "%63s %7s %399s", address, type, name) == 3) names.insert(name);
    }
    pclose(pipe);
    return names;
}

TEST(Exports, MatchTheList) {
    std::set<std::string> listed;
    std::ifstream list(VX_BUILD_DIR "/exports.txt");
    for (std::string name; std::getline(list, name);)
        if (!name.empty()) listed.insert(name);
    ASSERT_GT(listed.size(), 400u);
    const std::set<std::string> exported = exported_names(VX_BUILD_DIR "/bin/libvxlocfmt.so");
    for (const auto& name : listed) EXPECT_TRUE(exported.count(name)) << "listed, not exported: " << name;
    for (const auto& name : exported) EXPECT_TRUE(listed.count(name)) << "exported, not listed: " << name;
}

}  // namespace
