// The results of createPresetFile, and what is on the disk after each.
#include "tests/unit/PresetCreaterFixture.h"

#include "tests/doubles/PresetFileBytes.h"

using namespace Steinberg::Vst;
using doubles::le32;
using testing::ElementsAre;

using CreatePresetFile = PresetCreaterTest;

TEST_F(CreatePresetFile, GivesZeroForAFileThatIsWritten)
{
    makeFolder();
    EXPECT_EQ(createFile("a", 0, 1), 0);
    EXPECT_EQ(createFile("b", 14, 1), 0);
    EXPECT_EQ(createFile("c", 0, 1, false), 0);
    EXPECT_THAT(home.files(), ElementsAre("a.vstpreset", "b.vstpreset", "c.vstpreset"));
}

TEST_F(CreatePresetFile, GivesTwoForAnExcludedNameAndWritesNothing)
{
    makeFolder();
    const std::vector<const char*> excluded = {nullptr, "b", "a"};
    EXPECT_EQ(createFile("a", 0, 1, true, &excluded), 2);
    EXPECT_EQ(createFile("A", 0, 1, true, &excluded), 0);
    EXPECT_EQ(createFile("a ", 0, 1, true, &excluded), 0);
    EXPECT_EQ(createFile("a.vstpreset", 0, 1, true, &excluded), 0);
    EXPECT_THAT(home.files(), ElementsAre("A.vstpreset", "a .vstpreset", "a.vstpreset.vstpreset"));
    // Excluded even where there is no folder to look in.
    std::filesystem::remove_all(home.presetFolder());
    EXPECT_EQ(createFile("a", 0, 1, false, &excluded), 2);
}

TEST_F(CreatePresetFile, ComparesTheCleanedNameWithTheExcludedOnes)
{
    Voices voices = {{0, {{0, "80:A/B"}, {1, "80:C"}}}};
    const std::vector<const char*> excluded = {nullptr, "A_B", "X", "A_B", nullptr};
    creater.setVoiceDataInfo(voices, kEverything, Creater::kUserFolder, &excluded, true, false);
    EXPECT_THAT(home.files(), ElementsAre("C.vstpreset"));
}

TEST_F(CreatePresetFile, GivesOneForAnExistingNameUnlessOverwriteIsSet)
{
    makeFolder();
    home.write("a.vstpreset", "old");
    std::filesystem::create_directory(home.presetFolder() + "/folder.vstpreset");
    std::filesystem::create_symlink("nowhere", home.presetFolder() + "/link.vstpreset");
    EXPECT_EQ(createFile("a", 0, 1, false), 1);
    EXPECT_EQ(home.content("a.vstpreset"), "old");
    EXPECT_EQ(createFile("folder", 0, 1, false), 1);
    EXPECT_EQ(createFile("link", 0, 1, false), 1);
    EXPECT_EQ(createFile("a", 0, 1, true), 0);
    EXPECT_EQ(home.content("a.vstpreset").substr(48, 12), le32(1) + le32(0) + le32(1));
}

TEST_F(CreatePresetFile, GivesThreeForAFolderOrFileThatCannotBeOpened)
{
    EXPECT_EQ(createFile("a", 0, 1, false), 3); // no folder to look in
    EXPECT_EQ(createFile("a", 0, 1, true), 3);  // no folder to write to
    makeFolder();
    std::filesystem::create_directory(home.presetFolder() + "/folder.vstpreset");
    EXPECT_EQ(createFile("folder", 0, 1, true), 3);
    EXPECT_EQ(createFile(std::string(300, 'n'), 0, 1, true), 3);
    EXPECT_EQ(createFile(std::string("a\0b", 3), 0, 1, true), 3);
    EXPECT_EQ(createFile(std::string("a\0b", 3), 0, 1, false), 3);
    EXPECT_THAT(home.files(), ElementsAre());
}

TEST_F(CreatePresetFile, GivesThreeForAFileInPlaceOfTheFolder)
{
    makeFolder();
    std::filesystem::remove(home.presetFolder());
    std::ofstream(home.presetFolder()) << "a file";
    std::string path;
    EXPECT_EQ(Creater::createOutputPath(path, Creater::kUserFolder), 0);
    EXPECT_EQ(createFile("a", 0, 1, true), 3);
    EXPECT_EQ(createFile("a", 0, 1, false), 3);
}

TEST_F(CreatePresetFile, GivesOneForAnUnknownBankAndLeavesAnEmptyFile)
{
    makeFolder();
    for (const int bank : {15, 100, -1}) {
        home.write("a.vstpreset", "old");
        EXPECT_EQ(createFile("a", bank, 1), 1) << bank;
        EXPECT_EQ(home.content("a.vstpreset"), "") << bank;
        EXPECT_THAT(home.files(), ElementsAre("a.vstpreset"));
    }
}

TEST_F(CreatePresetFile, GivesOneForAnEmptyUserBankAndLeavesAnEmptyFile)
{
    library.userBank = [](int32, int32) { return std::vector<char>(); };
    makeFolder();
    for (const int bank : {8, 9, 10, 14}) {
        EXPECT_EQ(createFile("a", bank, 1), 1) << bank;
        EXPECT_EQ(home.content("a.vstpreset"), "");
    }
    EXPECT_THAT(home.files(), ElementsAre("a.vstpreset"));
}

TEST_F(CreatePresetFile, AsksForAUserBankByBankAndNumber)
{
    std::vector<int32> asked;
    library.userBank = [&asked](int32 bank, int32 number) {
        asked = {bank, number};
        return std::vector<char>{'x'};
    };
    makeFolder();
    EXPECT_EQ(createFile("a", 10, 77), 0);
    EXPECT_THAT(asked, ElementsAre(10, 77));
}

TEST_F(CreatePresetFile, GivesOneForAFullDisk)
{
    if (!std::filesystem::exists("/dev/full"))
        GTEST_SKIP() << "needs a device that is always full";
    makeFolder();
    std::filesystem::create_symlink("/dev/full", home.presetFolder() + "/a.vstpreset");
    EXPECT_EQ(createFile("a", 0, 1), 1);
    EXPECT_EQ(createFile("a", 8, 1), 1);
}

TEST_F(CreatePresetFile, FailsWhereTheLibraryThrows)
{
    makeFolder();
    const auto fails = [](auto&&...) -> doubles::BufferAnswer {
        throw std::runtime_error("library");
    };
    library.userBank = [](int32, int32) -> std::vector<char> { throw 5; };
    EXPECT_EQ(createFile("a", 8, 1), 1);
    library.subCategoryName = fails;
    std::string fileName, voiceName, category, subCategory, voiceData = "before";
    EXPECT_EQ(creater.separationVoiceData("80:n", fileName, voiceName, category, subCategory), 1);
    library.voiceData = fails;
    EXPECT_EQ(creater.fetchVoiceData(VoiceBank::kFirst, 0, voiceData), 1);
    EXPECT_EQ(voiceData, "before");
    creater.setVoiceDataInfo(VoiceBank::kFirst, 0, kEverything, Creater::kUserFolder);
    Voices voices = {{0, {{0, "80:n"}}}};
    creater.setVoiceDataInfo(voices, kEverything, Creater::kUserFolder, nullptr, true, false);
    EXPECT_THAT(home.files(), ElementsAre("a.vstpreset"));
}

TEST_F(CreatePresetFile, KeepsTheFirstOrTheLastOfEqualCleanedNames)
{
    Voices voices;
    for (unsigned number = 0; number < 200; ++number)
        voices[0][number] = std::string("80:A") + "/:*?"[number % 4] + "B";
    // A colon ends a field, so every fourth is named "B".
    for (const bool overwrite : {false, true}) {
        creater.setVoiceDataInfo(voices, kEverything, Creater::kUserFolder, nullptr, overwrite,
                                 false);
        EXPECT_THAT(home.files(), ElementsAre("A_B.vstpreset", "B.vstpreset"));
        EXPECT_EQ(home.content("A_B.vstpreset").substr(56, 4), le32(overwrite ? 199 : 0));
        EXPECT_EQ(home.content("B.vstpreset").substr(56, 4), le32(overwrite ? 197 : 1));
    }
}
