// check-library on libraries that are broken in Linux's file format, or that its loader refuses.
#include "tests/tools/CheckLibraryFixture.h"

using doubles::Words;
using testing::HasSubstr;

using CheckLibraryOnLinux = doubles::CheckLibrary;

TEST_F(CheckLibraryOnLinux, TellsOfALibraryForAnotherMachine)
{
    auto bytes = doubles::ScratchFolder::read(SIMULATOR_LIBRARY);
    bytes[18] = static_cast<char>(243); // the ELF header's machine
    expectBadFile(folder.write("riscv", bytes), "is made for riscv, and this is ");
    const std::string arm("\xCF\xFA\xED\xFE\x0C\x00\x00\x01", 8);
    expectBadFile(folder.write("mac", arm + std::string(100, '\0')), "is made for macOS (arm64)");
}

TEST_F(CheckLibraryOnLinux, TellsOfAFunctionThatIsNowhere)
{
    const Words words = {"--json",       "--library",   UNRESOLVED_LIBRARY,
                         "--plugin",     BUNDLE_FOLDER, "--only",
                         "library-load", "--only",      "library-start"};
    const auto usual = of(reportOf(check(words)), "bad");
    ASSERT_EQ(usual.size(), 1u);
    EXPECT_EQ(usual[0]["check"], "library-start");
    EXPECT_THAT(usual[0]["text"],
                HasSubstr("ends the program in getVSTEditorConnectObject, with status 127"));
    EXPECT_THAT(usual[0]["text"], HasSubstr("undefined symbol: aFunctionThatIsNowhere"));
    auto strictWords = words;
    strictWords.emplace_back("--strict");
    const auto strict = of(reportOf(check(strictWords)), "bad");
    ASSERT_EQ(strict.size(), 2u);
    EXPECT_EQ(strict[0]["check"], "complete");
    EXPECT_THAT(strict[0]["text"], HasSubstr("undefined symbol: aFunctionThatIsNowhere"));
}
