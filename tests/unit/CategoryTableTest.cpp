// The category tables, compared with a second copy that was written down on its own.
#include "presets/CubaseCategory.h"
#include "presets/TavrinSynthCategory.h"

#include <gmock/gmock.h>

#include <vector>

using namespace Steinberg::Vst;
using namespace Steinberg::Vst::Cubase;

namespace {

using Words = std::vector<std::string>;

struct CategoryRecord {
    const char* name;
    Words words;
};

struct Record {
    const char* subCategory;
    const char* character;
    Words words;
};

struct SubRow {
    const char* synthName;
    std::vector<Record> records; ///< empty when there is no list
};

struct CategoryRow {
    const char* synthName;
    std::vector<CategoryRecord> records;
    std::vector<SubRow> subRows;
};

const std::vector<Record> kNone;

/** A list whose only record is the default. */
std::vector<Record> only(const char* subCategory, const char* character)
{
    return {{subCategory, character, {}}};
}

// clang-format off
const std::vector<CategoryRow> kCategoryRows = {
    {"Acoustic Piano", {{"Piano", {}}}, {
        {"Acoustic", only("A. Piano", "Acoustic")},
        {"Layer", only("Other", "Layer")},
        {"Modern", only("Other", "")},
        {"Vintage", {{"E. Grand", "", {}}, {"A. Piano", "Acoustic", {"CP"}}}},
        {"Arpeggio", only("Other", "")},
        {"No Assign", only("Other", "")}}},
    {"Keyboard", {{"Keyboard", {}}}, {
        {"Electric Piano", only("E. Piano", "Electric")},
        {"FM Piano", only("E. Piano", "Electric")},
        {"Clavi", {{"Clavi", "", {}}, {"Harpsichord", "", {"psicohord"}}}},
        {"Synth", only("Other", "")},
        {"Arpeggio", only("Other", "")},
        {"No Assign", only("Other", "")}}},
    {"Organ", {{"Organ", {}}, {"Accordion", {"Accordion"}}}, {
        {"Tone Wheel", only("Electric", "")},
        {"Combo", only("Electric", "")},
        {"Pipe", {{"Pipe", "", {}}, {"Accordion", "", {"Accordion"}}}},
        {"Synth", only("Other", "")},
        {"Arpeggio", only("Other", "")},
        {"No Assign", kNone}}},
    {"Guitar", {{"Guitar/Plucked", {}}}, {
        {"Acoustic", only("A. Guitar", "Acoustic")},
        {"Electric Clean", only("E. Guitar", "Electric|Clean")},
        {"Electric Distortion", only("E. Guitar", "Electric|Distorted")},
        {"Synth", only("Other", "")},
        {"Arpeggio", only("Other", "")},
        {"No Assign", only("Other", "")}}},
    {"Bass", {{"Bass", {}}}, {
        {"Acoustic", only("A. Bass", "Acoustic")},
        {"Electric", only("E. Bass", "Electric")},
        {"Synth", only("Synth Bass", "")},
        {"Arpeggio", only("Other", "")},
        {"No Assign", only("Other", "")},
        {"", kNone}}},
    {"Strings", {{"Strings", {}}, {"Guitar/Plucked", {"Harp"}}}, {
        {"Solo", {{"Other", "Acoustic", {}}, {"Cello", "Acoustic", {"Cello"}},
                  {"Viola", "Acoustic", {"Viola"}}, {"Violin", "Acoustic", {"Violin"}},
                  {"Bass", "Acoustic", {"Bass"}}}},
        {"Ensemble", only("Section", "")},
        {"Pizzicato", {{"Other", "", {}}, {"Harp", "", {"Harp"}}}},
        {"Synth", only("Synth", "")},
        {"Arpeggio", only("Other", "")},
        {"No Assign", kNone}}},
    {"Brass", {{"Brass", {}}}, {
        {"Solo", {{"Other", "", {}}, {"French Horn", "", {"Horn"}},
                  {"Trombone", "", {"Tb", "Trombone"}}, {"Trumpet", "", {"Tp", "Trumpet"}},
                  {"Tuba", "", {"Tuba"}}}},
        {"Brass Ensemble", only("Section", "")},
        {"Orchestra", only("Section", "")},
        {"Synth", only("Synth", "")},
        {"Arpeggio", only("Other", "")},
        {"No Assign", only("Other", "")}}},
    {"Sax / Woodwind", {{"Woodwinds", {}}, {"Accordion", {"Harmonica"}}}, {
        {"Saxophone", only("Saxophone", "")},
        {"Flute", only("Flute", "")},
        {"Woodwind", {{"Other", "", {}}, {"Oboe", "", {"Oboe"}},
                      {"Bassoon", "", {"Bassoon", "Fagotto"}}, {"Clarinet", "", {"Clarinet"}},
                      {"Engl. Horn", "", {"English Horn"}}}},
        {"Reed / Pipe", {{"Other", "", {}}, {"Oboe", "", {"Oboe"}},
                         {"Bassoon", "", {"Bassoon", "Fagotto"}}, {"Clarinet", "", {"Clarinet"}},
                         {"Engl. Horn", "", {"English Horn"}},
                         {"Harmonica", "", {"Harmonica"}}}},
        {"Arpeggio", only("Other", "")},
        {"No Assign", only("Other", "")}}},
    {"Synth Lead", {{"Synth Lead", {}}}, {
        {"Analog", only("Analog", "")},
        {"Digital", only("Digital", "")},
        {"Hip Hop", only("Other", "")},
        {"Dance", only("Arpeggio", "")},
        {"Arpeggio", only("Other", "")},
        {"No Assign", kNone}}},
    {"SynthPad/Choir", {{"Synth Pad", {}}}, {
        {"Analog", only("Analog", "")},
        {"Warm", only("Other", "")},
        {"Bright", only("Other", "Bright")},
        {"Choir", only("Synth Choir", "")},
        {"Arpeggio", only("Other", "")},
        {"No Assign", only("Other", "")}}},
    {"Synth Comping", {{"Synth Comp", {}}}, {
        {"Analog", only("Analog", "")},
        {"Digital", only("Digital", "")},
        {"Fade", only("Other", "")},
        {"Hook", only("Other", "")},
        {"Arpeggio", only("Other", "")},
        {"No Assign", only("Other", "")}}},
    {"Chromatic Percussion", {{"Chromatic Perc", {}}}, {
        {"Mallet Percussion", only("Mallet", "")},
        {"Bell", only("Bell", "")},
        {"Synth Bell", only("Bell", "")},
        {"Pitched Drum", {{"Other", "", {}}, {"Timpani", "", {"Timpani"}}}},
        {"Arpeggio", only("Other", "")},
        {"No Assign", only("Other", "")}}},
    {"Drum / Percussion", {{"Drum&amp;Perc", {}}}, {
        {"Drums", {{"Other", "", {}}, {"GM Drum", "", {"GM"}}, {"Drumset", "", {"Kit"}},
                   {"Snare Drum", "", {"Snare"}}, {"Toms", "", {"Tom"}}}},
        {"Percussion", only("Percussion", "")},
        {"Synth", only("Other", "Electric")},
        {"Arpeggio", only("Other", "")},
        {"No Assign", only("Other", "")},
        {"", kNone}}},
    {"Sound Effect", {{"Sound FX", {}}}, {
        {"Moving", only("Other", "")},
        {"Ambient", only("Other", "")},
        {"Nature", only("Nature", "")},
        {"Sci-Fi", only("Other", "")},
        {"Arpeggio", only("Other", "")},
        {"No Assign", only("Other", "")}}},
    {"Musical Effect", {{"Musical FX", {}}}, {
        {"Moving", only("Motion", "")},
        {"Ambient", only("Other", "")},
        {"Sweep", only("Sweeps", "")},
        {"Hit", only("Hits&amp;Stabs", "")},
        {"Arpeggio", only("Other", "")},
        {"No Assign", only("Other", "")}}},
    {"Ethnic", {{"Ethnic", {}}}, {
        {"Bowed", {{"Other", "", {}}, {"European", "", {"Fiddle"}},
                   {"Asian", "", {"Kemence", "Kemen Wet", "Yayli", "Kawala"}}}},
        {"Plucked", {{"Other", "", {}}, {"European", "", {"Baglama", "Bouzuki", "Banjo"}},
                     {"Asian", "", {"Kotoun", "Kanun", "Oud Tremolo Vel", "SazFeeze", "Sakura",
                                    "Nomad", "Tambura", "Sitar MW", "Sitar", "Shamisen", "Koto"}},
                     {"African", "", {"Mbira"}}}},
        {"Struck", {{"Other", "", {}}, {"Asian", "", {"Santur", "Tabla Zone", "Dhol", "Khol"}},
                    {"African", "", {"Udu", "Djembe"}}}},
        {"Blown", {{"Other", "", {}},
                   {"Asian", "", {"Ney", "Zurna", "Pungi", "Shehnai 1", "Snake Charmer"}}}},
        {"Arpeggio", only("Other", "")},
        {"No Assign", only("Other", "")}}},
    {"Vocoder", {{"Other", {}}}, {
        {"No Assign", only("Other", "")},
        {"", kNone}, {"", kNone}, {"", kNone}, {"", kNone}, {"", kNone}}},
    {"No Assign", {{"Other", {}}}, {
        {"No Assign", only("Other", "")},
        {"", kNone}, {"", kNone}, {"", kNone}, {"", kNone}, {"", kNone}}},
};
// clang-format on

void expectWords(const char* const* actual, const Words& expected)
{
    if (expected.empty()) {
        EXPECT_EQ(actual, nullptr);
        return;
    }
    ASSERT_NE(actual, nullptr);
    for (const auto& word : expected)
        EXPECT_EQ(*actual++, word);
    EXPECT_EQ(*actual, nullptr);
}

} // namespace

TEST(CategoryTable, VoiceCategoryNamesStandInTheirOrder)
{
    ASSERT_EQ(kCategoryRows.size(), 18u);
    for (size_t row = 0; row < 18; ++row) {
        EXPECT_STREQ(TavrinSynth::VoiceCategoryName[row], kCategoryRows[row].synthName);
        ASSERT_EQ(kCategoryRows[row].subRows.size(), 6u);
        for (size_t column = 0; column < 6; ++column)
            EXPECT_STREQ(TavrinSynth::VoiceSubCategoryName[row][column],
                         kCategoryRows[row].subRows[column].synthName)
                << row;
    }
}

TEST(CategoryTable, CategoryArrayHasTheRecordsOfEveryCategoryAndThenTheEnd)
{
    for (size_t row = 0; row < 18; ++row) {
        SCOPED_TRACE(kCategoryRows[row].synthName);
        const auto* records = Category::categoryArray[row];
        ASSERT_NE(records, nullptr);
        for (const auto& expected : kCategoryRows[row].records) {
            EXPECT_EQ(records->subCategories, Category::categoryArray[row]->subCategories);
            EXPECT_STREQ(records->name, expected.name);
            expectWords(records->searchWords, expected.words);
            ++records;
        }
        EXPECT_EQ(records->name, nullptr);
        EXPECT_EQ(records->subCategories, nullptr);
        EXPECT_EQ(records->searchWords, nullptr);
    }
}

TEST(CategoryTable, SubCategoriesHaveTheirRecordsAndThenTheEnd)
{
    for (size_t row = 0; row < 18; ++row)
        for (size_t column = 0; column < 6; ++column) {
            const auto& expectedRecords = kCategoryRows[row].subRows[column].records;
            SCOPED_TRACE(testing::Message() << kCategoryRows[row].synthName << " " << column);
            const auto* records = Category::categoryArray[row]->subCategories[column];
            ASSERT_EQ(records == nullptr, expectedRecords.empty());
            if (!records)
                continue;
            for (const auto& expected : expectedRecords) {
                EXPECT_STREQ(records->subCategory, expected.subCategory);
                EXPECT_STREQ(records->character, expected.character);
                expectWords(records->searchWords, expected.words);
                ++records;
            }
            EXPECT_EQ(records->subCategory, nullptr);
            EXPECT_EQ(records->character, nullptr);
            EXPECT_EQ(records->searchWords, nullptr);
        }
}

TEST(CategoryTable, CategoryArrayNamesEachList)
{
    using namespace Category;
    const CategorySubCategory* const lists[] = {
        PIANO,    KEYBOARD,  ORGAN,     GUITARPLUCKED, BASS,      STRINGS,
        BRASS,    WOODWINDS, SYNTHLEAD, SYNTHPAD,      SYNTHCOMP, CHROMATICPERC,
        DRUMPERC, SOUNDFX,   MUSICALFX, ETHNIC,        VOCODER,   OTHER};
    for (size_t row = 0; row < 18; ++row)
        EXPECT_EQ(categoryArray[row], lists[row]) << row;
}
