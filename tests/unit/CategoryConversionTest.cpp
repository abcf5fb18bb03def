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

TEST(CategorySearch, WordsAreFoundAnywhereInTheTextWithTheirCase)
{
    EXPECT_EQ(searchKeyWords(kSecondWords, "My Grand"), 0);
    EXPECT_EQ(searchKeyWords(kSecondWords, "ePianoX"), 0);
    EXPECT_EQ(searchKeyWords(kSecondWords, "grand piano"), 1);
    EXPECT_EQ(searchKeyWords(kSecondWords, "Gran"), 1);
    EXPECT_EQ(searchKeyWords(kSecondWords, ""), 1);
}

TEST(CategorySearch, NullListsAndEmptyWordsFindNothing)
{
    const char* const empty[] = {"", "", nullptr};
    EXPECT_EQ(searchKeyWords(nullptr, "Piano"), 1);
    EXPECT_EQ(searchKeyWords(kNoWords, "Piano"), 1);
    EXPECT_EQ(searchKeyWords(empty, "Piano"), 1);
    EXPECT_EQ(searchKeyWords(empty, ""), 1);
    EXPECT_EQ(searchKeyWords(kFirstWords, "Piano"), 0);
}

TEST(CategorySearch, TheFirstRecordWithAWordWins)
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

TEST(CategorySearch, OnlyARecordOfNullsEndsAList)
{
    const SubCategoryCharacter records[] = {
        {"A", "", nullptr},      {nullptr, "", nullptr},      {nullptr, nullptr, kNoWords},
        {"D", "", kSecondWords}, {nullptr, nullptr, nullptr}, {"never", "", kSecondWords}};
    EXPECT_EQ(searchSubCategoryIndex(records, "Grand", true), 3);
    EXPECT_EQ(searchSubCategoryIndex(records + 4, "Grand", true), 0);
}

TEST(CategoryConversion, ADefaultRecordGivesAllThreeTexts)
{
    EXPECT_THAT(convert("Warm Steel", "Guitar", "Electric Distortion"),
                ElementsAre("Guitar/Plucked", "E. Guitar", "Electric|Distorted"));
}

TEST(CategoryConversion, NullListsStopWithTheCategoryOnly)
{
    EXPECT_THAT(convert("X", "Organ", "No Assign"), ElementsAre("Organ", "", ""));
    EXPECT_THAT(convert("X", "Bass", ""), ElementsAre("Bass", "", ""));
    EXPECT_THAT(convert("X", "Strings", "No Assign"), ElementsAre("Strings", "", ""));
    EXPECT_THAT(convert("X", "Synth Lead", "No Assign"), ElementsAre("Synth Lead", "", ""));
    EXPECT_THAT(convert("X", "Drum / Percussion", ""), ElementsAre("Drum&amp;Perc", "", ""));
    EXPECT_THAT(convert("X", "Vocoder", ""), ElementsAre("Other", "", ""));
    EXPECT_THAT(convert("X", "No Assign", ""), ElementsAre("Other", "", ""));
}

TEST(CategoryConversion, ACategoryMayBePickedByAWordWhereItsSubCategoryHasNoList)
{
    EXPECT_THAT(convert("Accordion", "Organ", "No Assign"), ElementsAre("Accordion", "", ""));
}

TEST(CategoryConversion, HarpIsPluckedOnlyByKeyword)
{
    EXPECT_THAT(convert("Celtic Harp", "Strings", "Pizzicato", true),
                ElementsAre("Guitar/Plucked", "Harp", ""));
    EXPECT_THAT(convert("Celtic Harp", "Strings", "Pizzicato", false),
                ElementsAre("Strings", "Other", ""));
}

TEST(CategoryConversion, SoloStringsAreToldApartByName)
{
    EXPECT_THAT(convert("Sweet Violin", "Strings", "Solo"),
                ElementsAre("Strings", "Violin", "Acoustic"));
    EXPECT_THAT(convert("Upright Bass", "Strings", "Solo"),
                ElementsAre("Strings", "Bass", "Acoustic"));
    EXPECT_THAT(convert("Erhu", "Strings", "Solo"), ElementsAre("Strings", "Other", "Acoustic"));
}

TEST(CategoryConversion, WordsMatchWithTheirCase)
{
    EXPECT_THAT(convert("Tp Solo", "Brass", "Solo"), ElementsAre("Brass", "Trumpet", ""));
    EXPECT_THAT(convert("soft trumpet", "Brass", "Solo"), ElementsAre("Brass", "Other", ""));
}

TEST(CategoryConversion, HarmonicaIsFoundInCategoryAndSubCategory)
{
    EXPECT_THAT(convert("Blues Harmonica", "Sax / Woodwind", "Reed / Pipe"),
                ElementsAre("Accordion", "Harmonica", ""));
    EXPECT_THAT(convert("Blues Harmonica", "Sax / Woodwind", "Flute"),
                ElementsAre("Accordion", "Flute", ""));
}

TEST(CategoryConversion, TableOrderDecidesBetweenTwoWords)
{
    EXPECT_THAT(convert("GM Kit", "Drum / Percussion", "Drums"),
                ElementsAre("Drum&amp;Perc", "GM Drum", ""));
    EXPECT_THAT(convert("Kit Tom", "Drum / Percussion", "Drums"),
                ElementsAre("Drum&amp;Perc", "Drumset", ""));
    // The trombone's short word stands before the trumpet's.
    EXPECT_THAT(convert("Tp & Tb", "Brass", "Solo"), ElementsAre("Brass", "Trombone", ""));
    // A banjo is European before a sitar is Asian.
    EXPECT_THAT(convert("Sitar Banjo", "Ethnic", "Plucked"), ElementsAre("Ethnic", "European", ""));
}

TEST(CategoryConversion, RowsThatDoNotFollowTheirNamesStay)
{
    EXPECT_THAT(convert("X", "Synth Lead", "Dance"), ElementsAre("Synth Lead", "Arpeggio", ""));
    EXPECT_THAT(convert("X", "Synth Lead", "Arpeggio"), ElementsAre("Synth Lead", "Other", ""));
    EXPECT_THAT(convert("X", "Acoustic Piano", "Vintage"), ElementsAre("Piano", "E. Grand", ""));
    EXPECT_THAT(convert("CP 80", "Acoustic Piano", "Vintage"),
                ElementsAre("Piano", "A. Piano", "Acoustic"));
    EXPECT_THAT(convert("Harpsichord", "Keyboard", "Clavi"), ElementsAre("Keyboard", "Clavi", ""));
    EXPECT_THAT(convert("Harpsicohord", "Keyboard", "Clavi"),
                ElementsAre("Keyboard", "Harpsichord", ""));
}

TEST(CategoryConversion, NamesOutsideTheTablesGiveNothing)
{
    EXPECT_THAT(convert("Violin", "strings", "Solo"), ElementsAre("", "", ""));
    EXPECT_THAT(convert("Violin", "Strings", "solo"), ElementsAre("", "", ""));
    EXPECT_THAT(convert("Violin", "Strings ", "Solo"), ElementsAre("", "", ""));
    EXPECT_THAT(convert("Violin", "", ""), ElementsAre("", "", ""));
    EXPECT_THAT(convert("Violin", std::string("Strings\0", 8), "Solo"), ElementsAre("", "", ""));
}

TEST(CategoryConversion, IndicesFollowTheSynthsOrder)
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

TEST(CategoryConversion, ResultTellsWhetherAllThreeAreSet)
{
    EXPECT_EQ(VSTK2xTvrSynthConverter("X", "Strings", "Solo", true).convertCategoryName(), 0);
    EXPECT_EQ(VSTK2xTvrSynthConverter("X", "Strings", "No Assign", true).convertCategoryName(), 1);
    EXPECT_EQ(VSTK2xTvrSynthConverter("X", "String", "Solo", true).convertCategoryName(), 1);
    EXPECT_TRUE(std::has_virtual_destructor_v<VSTK2xTvrSynthConverter>);
}

TEST(CategoryConversion, WordsCountInVoiceBanksAndInUnknownOnes)
{
    for (const int bank : {0, 1, 2, 3, 4, 5, 6, 7, 11, 12, 13, 15, 16, 31, 32, 40, -1, -2147483647})
        EXPECT_THAT(convertForBank("Harp", "Strings", "Pizzicato", bank),
                    ElementsAre("Guitar/Plucked", "Harp", ""))
            << bank;
    for (const int bank : {8, 9, 10, 14})
        EXPECT_THAT(convertForBank("Harp", "Strings", "Pizzicato", bank),
                    ElementsAre("Strings", "Other", ""))
            << bank;
}

TEST(CategoryConversion, UnknownCategoriesEmptyTheOutputs)
{
    EXPECT_THAT(convertForBank("Harp", "Nothing", "Known", 0), ElementsAre("", "", ""));
}
