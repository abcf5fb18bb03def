#include "presets/CubaseCategory.h"
#include "presets/VstK2xPresetCreater.h"
#include "presets/VSTK2xTvrSynthConverter.h"

#include <gmock/gmock.h>

#include <type_traits>

using namespace Steinberg::Vst;
using namespace Steinberg::Vst::Cubase;
using testing::ElementsAre;

namespace {

/** Category, sub-category and character of a voice. */
std::vector<std::string> convert(const std::string& voiceName, const std::string& category,
                                 const std::string& subCategory, bool keywordSearch = true)
{
    const VSTK2xTvrSynthConverter converter(voiceName, category, subCategory, keywordSearch);
    return {converter.getCategory(), converter.getSubCategory(), converter.getCharacter()};
}

std::vector<std::string> convertForBank(const std::string& voiceName, const std::string& category,
                                        const std::string& subCategory, int bank)
{
    std::vector<std::string> results = {"x", "y", "z"};
    EXPECT_EQ(VstK2xPresetCreater::convertCubaseCategoryName(voiceName, category, subCategory,
                                                             results[0], results[1], results[2],
                                                             static_cast<VoiceBank::Bank>(bank)),
              0);
    return results;
}

const char* const kFirstWords[] = {"", "Piano", nullptr};
const char* const kSecondWords[] = {"Grand", "Piano", nullptr};
const char* const kNoWords[] = {nullptr};

} // namespace

TEST(CubaseCategory, SearchKeyWordsFindsAWordAnywhereInTheSameCaseAndNoEmptyOne)
{
    EXPECT_EQ(searchKeyWords(kSecondWords, "My Grand"), 0);
    EXPECT_EQ(searchKeyWords(kSecondWords, "ePianoX"), 0);
    EXPECT_EQ(searchKeyWords(kSecondWords, "grand piano"), 1);
    EXPECT_EQ(searchKeyWords(kSecondWords, "Gran"), 1);
    EXPECT_EQ(searchKeyWords(kSecondWords, ""), 1);
    const char* const empty[] = {"", "", nullptr};
    EXPECT_EQ(searchKeyWords(nullptr, "Piano"), 1);
    EXPECT_EQ(searchKeyWords(kNoWords, "Piano"), 1);
    EXPECT_EQ(searchKeyWords(empty, "Piano"), 1);
    EXPECT_EQ(searchKeyWords(empty, ""), 1);
    EXPECT_EQ(searchKeyWords(kFirstWords, "Piano"), 0);
}

TEST(CubaseCategory, SearchIndexIsThatOfTheFirstRecordWithAWord)
{
    const SubCategoryCharacter records[] = {{"A", "", nullptr},
                                            {"B", "", kNoWords},
                                            {"C", "", kFirstWords},
                                            {"D", "", kSecondWords},
                                            {nullptr, nullptr, nullptr}};
    EXPECT_EQ(searchSubCategoryIndex(records, "Grand Piano", true), 2);
    EXPECT_EQ(searchSubCategoryIndex(records, "Grand", true), 3);
    EXPECT_EQ(searchSubCategoryIndex(records, "Organ", true), 0);
    EXPECT_EQ(searchSubCategoryIndex(records, "Grand", false), 0);
    EXPECT_EQ(searchSubCategoryIndex(nullptr, "Grand", true), 0);

    const SubCategoryCharacter* const lists[6] = {};
    const Category::CategorySubCategory categories[] = {{"A", lists, nullptr},
                                                        {"B", lists, kFirstWords},
                                                        {"C", lists, kSecondWords},
                                                        {nullptr, nullptr, nullptr}};
    EXPECT_EQ(searchCategoryIndex(categories, "Grand Piano", true), 1);
    EXPECT_EQ(searchCategoryIndex(categories, "Grand", true), 2);
    EXPECT_EQ(searchCategoryIndex(categories, "Organ", true), 0);
    EXPECT_EQ(searchCategoryIndex(categories, "Grand", false), 0);
    EXPECT_EQ(searchCategoryIndex(nullptr, "Grand", true), 0);
}

TEST(CubaseCategory, SearchSubCategoryIndexEndsAtARecordOfNullsOnly)
{
    const SubCategoryCharacter records[] = {
        {"A", "", nullptr},      {nullptr, "", nullptr},      {nullptr, nullptr, kNoWords},
        {"D", "", kSecondWords}, {nullptr, nullptr, nullptr}, {"never", "", kSecondWords}};
    EXPECT_EQ(searchSubCategoryIndex(records, "Grand", true), 3);
    EXPECT_EQ(searchSubCategoryIndex(records + 4, "Grand", true), 0);
}

struct Conversion {
    std::string voiceName;
    std::string category;
    std::string subCategory;
    std::vector<std::string> expected; ///< category, sub-category and character
};

TEST(CategoryConversion, ConvertFollowsTheTables)
{
    const Conversion rows[] = {
        // A default record gives all three texts.
        {"Warm Steel",
         "Guitar",
         "Electric Distortion",
         {"Guitar/Plucked", "E. Guitar", "Electric|Distorted"}},
        // A sub-category without a list gives the category alone, which a word may still pick.
        {"X", "Organ", "No Assign", {"Organ", "", ""}},
        {"X", "Bass", "", {"Bass", "", ""}},
        {"X", "Strings", "No Assign", {"Strings", "", ""}},
        {"X", "Synth Lead", "No Assign", {"Synth Lead", "", ""}},
        {"X", "Drum / Percussion", "", {"Drum&amp;Perc", "", ""}},
        {"X", "Vocoder", "", {"Other", "", ""}},
        {"X", "No Assign", "", {"Other", "", ""}},
        {"Accordion", "Organ", "No Assign", {"Accordion", "", ""}},
        // Words are found in the voice's name, in the same case.
        {"Celtic Harp", "Strings", "Pizzicato", {"Guitar/Plucked", "Harp", ""}},
        {"Sweet Violin", "Strings", "Solo", {"Strings", "Violin", "Acoustic"}},
        {"Upright Bass", "Strings", "Solo", {"Strings", "Bass", "Acoustic"}},
        {"Erhu", "Strings", "Solo", {"Strings", "Other", "Acoustic"}},
        {"Tp Solo", "Brass", "Solo", {"Brass", "Trumpet", ""}},
        {"soft trumpet", "Brass", "Solo", {"Brass", "Other", ""}},
        {"Blues Harmonica", "Sax / Woodwind", "Reed / Pipe", {"Accordion", "Harmonica", ""}},
        {"Blues Harmonica", "Sax / Woodwind", "Flute", {"Accordion", "Flute", ""}},
        // Of two words the one that stands first in the table decides.
        {"GM Kit", "Drum / Percussion", "Drums", {"Drum&amp;Perc", "GM Drum", ""}},
        {"Kit Tom", "Drum / Percussion", "Drums", {"Drum&amp;Perc", "Drumset", ""}},
        {"Tp & Tb", "Brass", "Solo", {"Brass", "Trombone", ""}},
        {"Sitar Banjo", "Ethnic", "Plucked", {"Ethnic", "European", ""}},
        // Rows whose texts do not follow their names.
        {"X", "Synth Lead", "Dance", {"Synth Lead", "Arpeggio", ""}},
        {"X", "Synth Lead", "Arpeggio", {"Synth Lead", "Other", ""}},
        {"X", "Acoustic Piano", "Vintage", {"Piano", "E. Grand", ""}},
        {"CP 80", "Acoustic Piano", "Vintage", {"Piano", "A. Piano", "Acoustic"}},
        {"Harpsichord", "Keyboard", "Clavi", {"Keyboard", "Clavi", ""}},
        {"Harpsicohord", "Keyboard", "Clavi", {"Keyboard", "Harpsichord", ""}},
        // Names that are not in the tables give nothing.
        {"Violin", "strings", "Solo", {"", "", ""}},
        {"Violin", "Strings", "solo", {"", "", ""}},
        {"Violin", "Strings ", "Solo", {"", "", ""}},
        {"Violin", "", "", {"", "", ""}},
        {"Violin", std::string("Strings\0", 8), "Solo", {"", "", ""}},
    };
    for (const auto& row : rows)
        EXPECT_EQ(convert(row.voiceName, row.category, row.subCategory), row.expected)
            << row.voiceName << ", " << row.category << ", " << row.subCategory;
    // Without a search for words the default record is taken.
    EXPECT_THAT(convert("Celtic Harp", "Strings", "Pizzicato", false),
                ElementsAre("Strings", "Other", ""));
}

TEST(CategoryConversion, GetTavrinSynthCategorySubCategoryIndexFollowsTheSynthsOrder)
{
    VSTK2xTvrSynthConverter drums("X", "Drum / Percussion", "No Assign", false);
    int category = -5;
    int subCategory = -6;
    EXPECT_EQ(drums.getTavrinSynthCategorySubCategoryIndex(&category, &subCategory), 0);
    EXPECT_EQ(category, 12);
    EXPECT_EQ(subCategory, 4);
    VSTK2xTvrSynthConverter vocoder("X", "Vocoder", "", false);
    EXPECT_EQ(vocoder.getTavrinSynthCategorySubCategoryIndex(&category, &subCategory), 0);
    EXPECT_EQ(category, 16);
    EXPECT_EQ(subCategory, 1);
    VSTK2xTvrSynthConverter unknown("X", "Strings", "Drums", false);
    category = -5;
    subCategory = -6;
    EXPECT_EQ(unknown.getTavrinSynthCategorySubCategoryIndex(&category, &subCategory), 1);
    EXPECT_EQ(category, -5);
    EXPECT_EQ(subCategory, -6);
    EXPECT_EQ(drums.getTavrinSynthCategorySubCategoryIndex(nullptr, &subCategory), 1);
    EXPECT_EQ(drums.getTavrinSynthCategorySubCategoryIndex(&category, nullptr), 1);
}

TEST(CategoryConversion, ConvertCategoryNameTellsWhetherAllThreeAreSet)
{
    EXPECT_EQ(VSTK2xTvrSynthConverter("X", "Strings", "Solo", true).convertCategoryName(), 0);
    EXPECT_EQ(VSTK2xTvrSynthConverter("X", "Strings", "No Assign", true).convertCategoryName(), 1);
    EXPECT_EQ(VSTK2xTvrSynthConverter("X", "String", "Solo", true).convertCategoryName(), 1);
    EXPECT_TRUE(std::has_virtual_destructor_v<VSTK2xTvrSynthConverter>);
}

TEST(CategoryConversion, ConvertCubaseCategoryNameUsesWordsInVoiceBanksAndInUnknownOnes)
{
    for (const int bank : {0, 1, 2, 3, 4, 5, 6, 7, 11, 12, 13, 15, 16, 31, 32, 40, -1, -2147483647})
        EXPECT_THAT(convertForBank("Harp", "Strings", "Pizzicato", bank),
                    ElementsAre("Guitar/Plucked", "Harp", ""))
            << bank;
    for (const int bank : {8, 9, 10, 14})
        EXPECT_THAT(convertForBank("Harp", "Strings", "Pizzicato", bank),
                    ElementsAre("Strings", "Other", ""))
            << bank;
    // An unknown category empties all three.
    EXPECT_THAT(convertForBank("Harp", "Nothing", "Known", 0), ElementsAre("", "", ""));
}
