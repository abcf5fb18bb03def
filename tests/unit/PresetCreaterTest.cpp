#include "tests/unit/PresetCreaterFixture.h"

#include "tests/doubles/PresetFileBytes.h"
#include "tests/doubles/PresetXml.h"

using namespace Steinberg::Vst;
using doubles::le32;
using doubles::presetFileBytes;
using doubles::presetXml;
using testing::ElementsAre;

namespace {

const std::string kViolinXml = presetXml("Strings", "Violin", "Acoustic");

} // namespace

TEST_F(PresetCreaterTest, SetVoiceDataInfoWritesAPresetFileNamedAfterTheVoice)
{
    creater.setVoiceDataInfo(static_cast<Bank>(3), 5, kEverything, Creater::kUserFolder);
    EXPECT_THAT(home.files(), ElementsAre("Sweet Violin.vstpreset"));
    EXPECT_EQ(home.content("Sweet Violin.vstpreset"),
              presetFileBytes(le32(1) + le32(3) + le32(5), kViolinXml));
}

TEST_F(PresetCreaterTest, SetVoiceDataInfoWritesAUserBanksFileWithTheLibrarysBytes)
{
    creater.setVoiceDataInfo(VoiceBank::kUser2, 4, Creater::kAllUserBanks, Creater::kUserFolder);
    // No search for words in a user bank: the default of solo strings.
    const auto state = le32(2) + le32(9) + le32(4) + le32(3) +
                       std::string("\0\xFF"
                                   "d",
                                   3);
    EXPECT_EQ(home.content("Sweet Violin.vstpreset"),
              presetFileBytes(state, presetXml("Strings", "Other", "Acoustic")));
}

TEST_F(PresetCreaterTest, SetVoiceDataInfoWritesCategoryTextsAsTheTablesHoldThem)
{
    writeVoice("195:GM Kit"); // main category 12, sub-category 3
    EXPECT_EQ(
        home.content("GM Kit.vstpreset"),
        presetFileBytes(le32(1) + le32(0) + le32(0), presetXml("Drum&amp;Perc", "Other", "")));
}

TEST_F(PresetCreaterTest, SetVoiceDataInfoKeepsTheBarBeforeAnEmptySubCategory)
{
    writeVoice("37:Odd Organ"); // main category 2, sub-category 5, which has no list
    EXPECT_EQ(home.content("Odd Organ.vstpreset"),
              presetFileBytes(le32(1) + le32(0) + le32(0), presetXml("Organ", "", "")));
}

TEST_F(PresetCreaterTest, SetVoiceDataInfoWritesEmptyTextsForUnknownCategories)
{
    library.categoryName = [](int32) -> doubles::BufferAnswer { return {"<Unheard \"of\">"}; };
    writeVoice("80:X");
    EXPECT_EQ(home.content("X.vstpreset"),
              presetFileBytes(le32(1) + le32(0) + le32(0), presetXml("", "", "")));
}

TEST_F(PresetCreaterTest, BankToPresetTypeGivesEachBankItsBitAndItsKindOfFile)
{
    const unsigned bits[] = {0x1,     0x2,     0x4,     0x8,   0x10,  0x20,  0x40,    0x80,
                             0x10000, 0x20000, 0x40000, 0x100, 0x200, 0x400, 0x100000};
    const std::set<int> userBanks = {8, 9, 10, 14};
    for (int bank = 0; bank <= 14; ++bank) {
        EXPECT_EQ(Creater::bankToPresetType(static_cast<Bank>(bank)), bits[bank]) << bank;
        creater.setVoiceDataInfo(static_cast<Bank>(bank), 0,
                                 static_cast<Creater::PresetType>(bits[bank]),
                                 Creater::kUserFolder);
        EXPECT_EQ(home.content("Sweet Violin.vstpreset").substr(48, 8),
                  le32(userBanks.count(bank) ? 2 : 1) + le32(bank));
        for (int other = 0; other <= 14; ++other)
            EXPECT_EQ(creater.isCreatePresetBank(static_cast<Bank>(other)), other != bank);
    }
    for (const int bank : {15, 16, 32, 1000, -1, -2147483647}) {
        EXPECT_EQ(Creater::bankToPresetType(static_cast<Bank>(bank)), 0u) << bank;
        EXPECT_TRUE(creater.isCreatePresetBank(static_cast<Bank>(bank))) << bank;
    }
}

TEST_F(PresetCreaterTest, SetVoiceDataInfoOnlyMakesTheFolderForAVoiceOfABankNotAskedFor)
{
    int asked = 0;
    library.voiceData = [&asked](int32, int32) -> doubles::BufferAnswer {
        ++asked;
        return {"80:X"};
    };
    creater.setVoiceDataInfo(static_cast<Bank>(3), 5, Creater::kAllUserBanks, Creater::kUserFolder);
    creater.setVoiceDataInfo(static_cast<Bank>(15), 5, kEverything, Creater::kUserFolder);
    creater.setVoiceDataInfo(static_cast<Bank>(-1), 5, kEverything, Creater::kUserFolder);
    EXPECT_EQ(asked, 0);
    EXPECT_TRUE(std::filesystem::is_directory(home.presetFolder()));
    EXPECT_THAT(home.files(), ElementsAre());
}

TEST_F(PresetCreaterTest, SetVoiceDataInfoReplacesTheFileOfTheVoicesName)
{
    makeFolder();
    home.write("Sweet Violin.vstpreset", std::string(5000, 'x'));
    creater.setVoiceDataInfo(static_cast<Bank>(3), 5, kEverything, Creater::kUserFolder);
    EXPECT_EQ(home.content("Sweet Violin.vstpreset"),
              presetFileBytes(le32(1) + le32(3) + le32(5), kViolinXml));
}

TEST_F(PresetCreaterTest, SetVoiceDataInfoWritesNothingForAVoiceThatTheLibraryRefuses)
{
    library.voiceData = [](int32, int32) -> doubles::BufferAnswer { return {"80:X", 1}; };
    creater.setVoiceDataInfo(static_cast<Bank>(3), 5, kEverything, Creater::kUserFolder);
    library.voiceData = [](int32, int32) -> doubles::BufferAnswer { return {"80:X", -1}; };
    creater.setVoiceDataInfo(static_cast<Bank>(3), 5, kEverything, Creater::kUserFolder);
    EXPECT_THAT(home.files(), ElementsAre());
}

TEST_F(PresetCreaterTest, SetVoiceDataInfoWalksAMapInAscendingOrderWithinTheAskedBanks)
{
    std::vector<std::string> order;
    library.categoryName = [&order](int32 main) -> doubles::BufferAnswer {
        order.push_back(std::to_string(main));
        return {"Strings"};
    };
    Voices voices = {{14, {{0, "16:a"}}},          {2, {{9, "32:b"}, {3, "48:c"}}},
                     {1, {{7, "64:d"}}},           {15, {{0, "80:e"}}},
                     {4294967295U, {{0, "96:f"}}}, {11, {{4294967295U, "112:g"}}}};
    creater.setVoiceDataInfo(voices, static_cast<Creater::PresetType>(0x100104),
                             Creater::kUserFolder, nullptr, true, false);
    EXPECT_THAT(order, ElementsAre("3", "2", "7", "1"));
    EXPECT_THAT(home.files(),
                ElementsAre("a.vstpreset", "b.vstpreset", "c.vstpreset", "g.vstpreset"));
    EXPECT_EQ(home.content("c.vstpreset").substr(48, 12), le32(1) + le32(2) + le32(3));
    EXPECT_EQ(home.content("g.vstpreset").substr(48, 12), le32(1) + le32(11) + le32(-1));
}

TEST_F(PresetCreaterTest, SetVoiceDataInfoOnlyMakesTheFolderForAMapOfBanksNotAskedFor)
{
    Voices voices = {{3, {{0, "80:a"}}}, {15, {{0, "80:b"}}}};
    creater.setVoiceDataInfo(voices, Creater::kAllUserBanks, Creater::kUserFolder, nullptr, true,
                             false);
    EXPECT_TRUE(std::filesystem::is_directory(home.presetFolder()));
    EXPECT_THAT(home.files(), ElementsAre());
    EXPECT_THAT(trace.texts(), ElementsAre());
}

TEST_F(PresetCreaterTest, SetVoiceDataInfoGoesOnAfterAVoiceThatFails)
{
    makeFolder();
    std::filesystem::create_directory(home.presetFolder() + "/folder.vstpreset");
    Voices voices = {{0, {{0, "no number:a"}, {1, "4096:b"}, {2, "80:folder"}, {3, "80:d"}}}};
    creater.setVoiceDataInfo(voices, kEverything, Creater::kUserFolder, nullptr, true, false);
    EXPECT_THAT(home.files(), ElementsAre("d.vstpreset"));
}

TEST_F(PresetCreaterTest, SetVoiceDataInfoChangesNothingForAnEmptyMap)
{
    creater.setVoiceDataInfo(static_cast<Bank>(3), 5, Creater::kBank3,
                             static_cast<Creater::OutputDir>(2));
    EXPECT_FALSE(creater.isCreatePresetBank(static_cast<Bank>(3)));
    Voices voices;
    creater.setVoiceDataInfo(voices, Creater::kBank4, Creater::kUserFolder, nullptr, true, false);
    EXPECT_FALSE(creater.isCreatePresetBank(static_cast<Bank>(3)));
    EXPECT_TRUE(creater.isCreatePresetBank(static_cast<Bank>(4)));
    EXPECT_FALSE(std::filesystem::exists(home.home() + "/Library"));
}

TEST_F(PresetCreaterTest, SetVoiceDataInfoWritesNothingForAnUnknownOutputFolder)
{
    for (const int dir : {2, 3, -1}) {
        const auto other = static_cast<Creater::OutputDir>(dir);
        creater.setVoiceDataInfo(static_cast<Bank>(3), 5, kEverything, other);
        Voices voices = {{0, {{0, "80:X"}}}};
        creater.setVoiceDataInfo(voices, kEverything, other, nullptr, true, false);
        std::string path = "untouched";
        EXPECT_EQ(Creater::createOutputPath(path, other), 1);
        EXPECT_EQ(path, "untouched");
    }
    EXPECT_FALSE(std::filesystem::exists(home.home() + "/Library"));
}

TEST_F(PresetCreaterTest, SeparationVoiceDataReplacesForbiddenCharactersInTheFileNameOnly)
{
    std::string fileName, voiceName, category, subCategory;
    EXPECT_EQ(creater.separationVoiceData("80:A/B?C", fileName, voiceName, category, subCategory),
              0);
    EXPECT_EQ(fileName, "A_B_C");
    EXPECT_EQ(voiceName, "A/B?C");
    EXPECT_EQ(category, "Strings");
    EXPECT_EQ(subCategory, "Solo");
    writeVoice("80:A/B?C");
    EXPECT_THAT(home.files(), ElementsAre("A_B_C.vstpreset"));
}

TEST_F(PresetCreaterTest, SeparationVoiceDataReadsTheFirstAndTheLastField)
{
    std::string fileName, voiceName, category, subCategory;
    EXPECT_EQ(
        creater.separationVoiceData("97:1:x y:B:C", fileName, voiceName, category, subCategory), 0);
    EXPECT_EQ(voiceName, "C");
    EXPECT_EQ(category, "Brass");
    EXPECT_EQ(subCategory, "Brass Ensemble");
}

TEST_F(PresetCreaterTest, SeparationVoiceDataTakesAVoiceWithoutColonForNameAndNumber)
{
    std::string fileName, voiceName, category = "c", subCategory = "s";
    EXPECT_EQ(creater.separationVoiceData("A/B", fileName, voiceName, category, subCategory), 1);
    EXPECT_EQ(voiceName, "A/B");
    EXPECT_EQ(fileName, "A_B");
    EXPECT_EQ(category, "c");
    EXPECT_EQ(subCategory, "s");
    EXPECT_EQ(creater.separationVoiceData("80", fileName, voiceName, category, subCategory), 0);
    EXPECT_EQ(voiceName, "80");
    EXPECT_EQ(category, "Strings");
}

TEST_F(PresetCreaterTest, SeparationVoiceDataReadsAnEmptyFirstFieldAsZero)
{
    std::string fileName, voiceName, category, subCategory;
    EXPECT_EQ(creater.separationVoiceData(":Grand", fileName, voiceName, category, subCategory), 0);
    EXPECT_EQ(voiceName, "Grand");
    EXPECT_EQ(category, "Acoustic Piano");
    EXPECT_EQ(subCategory, "Acoustic");
    EXPECT_EQ(creater.separationVoiceData("", fileName, voiceName, category, subCategory), 0);
    EXPECT_EQ(voiceName, "");
    EXPECT_EQ(fileName, "");
}

TEST_F(PresetCreaterTest, SeparationVoiceDataTakesOnlyADecimalNumberForTheCategory)
{
    std::vector<std::pair<int32, int32>> asked;
    library.subCategoryName = [&asked](int32 main, int32 sub) -> doubles::BufferAnswer {
        asked.emplace_back(main, sub);
        return {"x"};
    };
    library.categoryName = [](int32) -> doubles::BufferAnswer { return {"x"}; };
    std::string fileName, voiceName, category, subCategory;
    const auto split = [&](const std::string& field) {
        return creater.separationVoiceData(field + ":n", fileName, voiceName, category,
                                           subCategory);
    };
    for (const char* field : {"31", " 31", "\t 31", "+31", "0031", "-33", "2147483647"})
        EXPECT_EQ(split(field), 0) << field;
    using Pair = std::pair<int32, int32>;
    EXPECT_THAT(asked, ElementsAre(Pair(1, 15), Pair(1, 15), Pair(1, 15), Pair(1, 15), Pair(1, 15),
                                   Pair(-2, -1), Pair(134217727, 15)));
    for (const char* field : {" ", "31 ", "31x", "x31", "0x1F", "1.0", "+", "-", "--1", "+ 1",
                              "2147483648", "-2147483649", "99999999999999999999", "1,2"})
        EXPECT_EQ(split(field), 1) << field;
    EXPECT_EQ(split(std::string("31\0", 3)), 1);
    EXPECT_EQ(asked.size(), 7u);
}

TEST_F(PresetCreaterTest, SeparationVoiceDataAsksForTheSubCategoryAfterTheCategory)
{
    int asked = 0;
    library.subCategoryName = [&asked](int32, int32) -> doubles::BufferAnswer {
        ++asked;
        return {"x", 1};
    };
    std::string fileName, voiceName, category = "c", subCategory = "s";
    EXPECT_EQ(creater.separationVoiceData("4096:n", fileName, voiceName, category, subCategory), 1);
    EXPECT_EQ(asked, 0);
    EXPECT_EQ(creater.separationVoiceData("80:n", fileName, voiceName, category, subCategory), 1);
    EXPECT_EQ(asked, 1);
    EXPECT_EQ(category, "c");
    EXPECT_EQ(subCategory, "s");
    EXPECT_EQ(voiceName, "n");
}

TEST_F(PresetCreaterTest, SearchNotFilenameLangLooksForTheCharactersInTheirOrder)
{
    EXPECT_EQ(Creater::searchNotFilenameLang("a|b>c<d\"e?f*g:h,i/j\\k"), 19);
    EXPECT_EQ(Creater::searchNotFilenameLang("a|b>c<d\"e?f*g:h,i/j"), 17);
    EXPECT_EQ(Creater::searchNotFilenameLang("a|b>c<d\"e?f*g:h,i"), 15);
    EXPECT_EQ(Creater::searchNotFilenameLang("a|b>c<d\"e?f*g:h"), 13);
    EXPECT_EQ(Creater::searchNotFilenameLang("a|b>c<d\"e?f*g"), 11);
    EXPECT_EQ(Creater::searchNotFilenameLang("a|b>c<d\"e?f"), 9);
    EXPECT_EQ(Creater::searchNotFilenameLang("a|b>c<d\"e"), 7);
    EXPECT_EQ(Creater::searchNotFilenameLang("a|b>c<d"), 5);
    EXPECT_EQ(Creater::searchNotFilenameLang("a|b>c"), 3);
    EXPECT_EQ(Creater::searchNotFilenameLang("a|b|"), 1);
    EXPECT_EQ(Creater::searchNotFilenameLang("//"), 0);
    EXPECT_EQ(Creater::searchNotFilenameLang("plain name_;.'"), -1);
    EXPECT_EQ(Creater::searchNotFilenameLang(""), -1);
    std::string text = "\\/,:*?\"<>|";
    Creater::changeNotFileNameLang(text);
    EXPECT_EQ(text, "__________");
    text = "Fine (2); 'it's' & +.~";
    Creater::changeNotFileNameLang(text);
    EXPECT_EQ(text, "Fine (2); 'it's' & +.~");
}

TEST_F(PresetCreaterTest, ReplaceStringReplacesTheFirstOccurrenceOnly)
{
    std::string text = "a-b-c";
    EXPECT_EQ(Creater::replaceString(text, "-", "--"), 0);
    EXPECT_EQ(text, "a--b-c");
    EXPECT_EQ(Creater::replaceString(text, "x", "y"), 1);
    EXPECT_EQ(text, "a--b-c");
    EXPECT_EQ(Creater::replaceString(text, "a--b-c", ""), 0);
    EXPECT_EQ(text, "");
}
