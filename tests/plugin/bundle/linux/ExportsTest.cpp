// The module's ELF file: what it exports, which libraries it needs, where it looks for them.
#include "tests/doubles/Sanitized.h"

#include <array>
#include <cstdio>
#include <gmock/gmock.h>
#include <regex>

namespace {

using testing::UnorderedElementsAre;

std::vector<std::string> linesOf(const std::string& command)
{
    std::vector<std::string> lines;
    FILE* pipe = popen(command.c_str(), "r");
    std::array<char, 4096> line{};
    while (pipe && fgets(line.data(), line.size(), pipe))
        lines.emplace_back(line.data());
    EXPECT_TRUE(pipe && pclose(pipe) == 0) << command;
    return lines;
}

TEST(ModuleFile, ExportsTheFactoryAndTheEntryPointsOnly)
{
    std::vector<std::string> names;
    for (const auto& line : linesOf("nm -D --defined-only '" MODULE_FILE "'")) {
        std::smatch match;
        ASSERT_TRUE(std::regex_match(line, match, std::regex("[0-9a-f]+ ([A-Za-z]) (\\S+)\n")));
        names.push_back(match[1].str() + " " + match[2].str());
    }
    EXPECT_THAT(names, UnorderedElementsAre("T GetPluginFactory", "T ModuleEntry", "T ModuleExit"));
}

TEST(ModuleFile, NeedsTheCAndCppRuntimesOnly)
{
#ifdef VSTK2X_SANITIZED
    GTEST_SKIP() << "in this build the module also needs a sanitizer's runtime";
#endif
    const std::vector<std::string> allowed = {"libstdc++.so.6", "libc.so.6", "libm.so.6",
                                              "libgcc_s.so.1"};
    size_t needed = 0;
    for (const auto& line : linesOf("readelf -d '" MODULE_FILE "'")) {
        std::smatch match;
        if (!std::regex_search(line, match, std::regex("\\(NEEDED\\).*\\[(.*)\\]")))
            continue;
        ++needed;
        EXPECT_THAT(allowed, testing::Contains(match[1].str()));
    }
    EXPECT_GE(needed, 2u) << "readelf lists no libraries";
}

TEST(ModuleFile, SearchesNoFolderOfTheBuild)
{
    for (const auto& line : linesOf("readelf -d '" MODULE_FILE "'"))
        EXPECT_EQ(line.find("PATH)"), std::string::npos) << line;
}

} // namespace
