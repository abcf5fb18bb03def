// Voice names that could reach a file outside the preset folder or overrun a buffer.
#include "tests/unit/PresetCreaterFixture.h"

#include "basics/PlugInInfo.h"
#include "presets/VstK2xPreset.h"
#include "tests/doubles/PresetXml.h"

#include "pluginterfaces/base/smartpointer.h"

#include <pugixml.hpp>

using namespace Steinberg;
using namespace Steinberg::Vst;
using testing::ElementsAre;

using HostileVoiceTest = PresetCreaterTest;

namespace {

/** The meta information that the SDK finds in a file. */
std::string metaInfo(const std::string& path)
{
    const auto stream = owned(FileStream::open(path.c_str(), "rb"));
    PresetFile file(stream);
    int32 size = 0;
    if (!file.readChunkList() || !file.readMetaInfo(nullptr, size))
        return {};
    EXPECT_EQ(file.getClassID(), kProcessorUID);
    std::string text(static_cast<size_t>(size), '\0');
    EXPECT_TRUE(file.readMetaInfo(text.data(), size));
    return text;
}

std::string attribute(const pugi::xml_document& document, const char* id)
{
    return document.child("MetaInfo")
        .find_child_by_attribute("Attribute", "id", id)
        .attribute("value")
        .value();
}

} // namespace

TEST_F(HostileVoiceTest, SetVoiceDataInfoKeepsNamesOfDotsAndSlashesInTheFolder)
{
    const std::pair<const char*, const char*> names[] = {
        {"..", "...vstpreset"},
        {".", "..vstpreset"},
        {"", ".vstpreset"},
        {"../x", ".._x.vstpreset"},
        {"../../../../x", ".._.._.._.._x.vstpreset"},
        {"/etc/x", "_etc_x.vstpreset"},
        {"~/x", "~_x.vstpreset"},
        {"x/", "x_.vstpreset"},
        {"..\\x", ".._x.vstpreset"},
        {"\\/,*?\"<>|", "_________.vstpreset"},
        {"\x01\x02\n\t\x7F", "\x01\x02\n\t\x7F.vstpreset"},
        {"\xFF\xFE\xC0\x80", "\xFF\xFE\xC0\x80.vstpreset"},
        {"-rf", "-rf.vstpreset"},
        {"%s%n", "%s%n.vstpreset"},
        {"<b id=\"x\">&", "_b id=_x__&.vstpreset"},
    };
    for (const auto& [name, file] : names) {
        writeVoice(std::string("80:") + name);
        EXPECT_THAT(home.files(), ElementsAre(file));
        std::filesystem::remove_all(home.home() + "/Library");
    }
}

TEST_F(HostileVoiceTest, SetVoiceDataInfoWritesNothingForACodeThatNamesNoCategory)
{
    for (const char* code : {"-1", "-17", "-2147483648", "288", "6", "2147483647", "2147483648",
                             "99999999999999999999", "x", "80x", "..", "../80"})
        writeVoice(std::string(code) + ":n");
    EXPECT_THAT(home.files(), ElementsAre());
}

TEST_F(HostileVoiceTest, SetVoiceDataInfoTakesOnlyColonsForAVoiceWithoutName)
{
    writeVoice(":::::");
    EXPECT_THAT(home.files(), ElementsAre(".vstpreset"));
}

TEST_F(HostileVoiceTest, SetVoiceDataInfoTakesAnEmptyTextForAVoiceWithoutName)
{
    library.voiceData = [](int32, int32) -> doubles::BufferAnswer {
        return {};
    }; // leaves the buffer
    creater.setVoiceDataInfo(VoiceBank::kFirst, 0, kEverything, Creater::kUserFolder);
    EXPECT_THAT(home.files(), ElementsAre(".vstpreset"));
}

TEST_F(HostileVoiceTest, SetVoiceDataInfoReadsAFullBufferWithoutTerminator)
{
    const std::string text = "80:123456789012345678901234567";
    ASSERT_EQ(text.size(), 30u);
    library.voiceData = [&text](int32, int32) -> doubles::BufferAnswer { return {text}; };
    library.categoryName = [](int32) -> doubles::BufferAnswer { return {std::string(30, 'c')}; };
    library.subCategoryName = [](int32, int32) -> doubles::BufferAnswer {
        return {std::string(30, 's')};
    };
    creater.setVoiceDataInfo(VoiceBank::kFirst, 0, kEverything, Creater::kUserFolder);
    EXPECT_THAT(home.files(), ElementsAre("123456789012345678901234567.vstpreset"));
    std::string fileName, voiceName, category, subCategory;
    EXPECT_EQ(creater.separationVoiceData(text, fileName, voiceName, category, subCategory), 0);
    EXPECT_EQ(category, std::string(30, 'c'));
    EXPECT_EQ(subCategory, std::string(30, 's'));
}

TEST_F(HostileVoiceTest, SeparationVoiceDataZeroesEachBufferBeforeItsCall)
{
    library.categoryName = [](int32) -> doubles::BufferAnswer { return {std::string(30, 'c')}; };
    library.subCategoryName = [](int32, int32) -> doubles::BufferAnswer { return {}; };
    std::string fileName, voiceName, category, subCategory = "before";
    EXPECT_EQ(creater.separationVoiceData("80:n", fileName, voiceName, category, subCategory), 0);
    EXPECT_EQ(subCategory, "");
}

TEST_F(HostileVoiceTest, SetVoiceDataInfoWritesNoFileForANameWithAZeroByte)
{
    writeVoice(std::string("80:..\0x", 7));
    writeVoice(std::string("80:a\0", 5));
    EXPECT_THAT(home.files(), ElementsAre());
}

TEST_F(HostileVoiceTest, SetVoiceDataInfoWritesNoFileForAVeryLongName)
{
    writeVoice("80:" + std::string(4 << 20, '/'));
    writeVoice("80:" + std::string(4 << 20, 'x'));
    EXPECT_THAT(home.files(), ElementsAre());
}

TEST_F(HostileVoiceTest, SetVoiceDataInfoWritesNoMarkupOfNamesIntoTheXml)
{
    const char* const hostile = "<b id=\"x\">&";
    library.categoryName = [hostile](int32) -> doubles::BufferAnswer { return {hostile}; };
    library.subCategoryName = [hostile](int32, int32) -> doubles::BufferAnswer {
        return {hostile};
    };
    writeVoice(std::string("80:") + hostile);
    pugi::xml_document document;
    const auto text = metaInfo(home.presetFolder() + "/_b id=_x__&.vstpreset");
    ASSERT_TRUE(document.load_string(text.c_str())) << text;
    EXPECT_EQ(attribute(document, "MusicalInstrument"), "|");
    EXPECT_EQ(attribute(document, "MusicalCharacter"), "");
    EXPECT_EQ(attribute(document, "MusicalCategory"), "");
}

TEST_F(HostileVoiceTest, SetVoiceDataInfoKeepsTheCategoryOfANameWithMarkup)
{
    writeVoice("80:<Violin x=\"1\">&amp;]]>");
    const auto text = metaInfo(home.presetFolder() + "/_Violin x=_1__&amp;]]_.vstpreset");
    EXPECT_EQ(text, doubles::presetXml("Strings", "Violin", "Acoustic"));
    // The same for a user bank.
    library.voiceData = [](int32, int32) -> doubles::BufferAnswer { return {"80:</MetaInfo>"}; };
    creater.setVoiceDataInfo(VoiceBank::kUser4, 0, kEverything, Creater::kUserFolder);
    EXPECT_EQ(metaInfo(home.presetFolder() + "/__MetaInfo_.vstpreset"),
              doubles::presetXml("Strings", "Other", "Acoustic"));
}

TEST_F(HostileVoiceTest, SetVoiceDataInfoWritesXmlThatAParserReadsForEveryCategory)
{
    Voices voices;
    for (unsigned main = 0; main < 18; ++main)
        for (unsigned sub = 0; sub < 6; ++sub)
            voices[5][main * 16 + sub] = std::to_string(main * 16 + sub) + ":Voice " +
                                         std::to_string(main) + " " + std::to_string(sub);
    creater.setVoiceDataInfo(voices, kEverything, Creater::kUserFolder, nullptr, false, false);
    const auto files = home.files();
    ASSERT_EQ(files.size(), 108u);
    for (const auto& file : files) {
        pugi::xml_document document;
        const auto text = metaInfo(home.presetFolder() + "/" + file);
        ASSERT_TRUE(document.load_string(text.c_str())) << file;
        const auto children = document.child("MetaInfo").children("Attribute");
        EXPECT_EQ(std::distance(children.begin(), children.end()), 11);
        EXPECT_EQ(attribute(document, "PlugInName"), "RDL3/RDL5 VST");
        EXPECT_EQ(attribute(document, "VST3UniqueID"), "13EEE3484D664261B90352CE35DD18B4");
    }
    // Texts that are escaped in the tables come out unescaped.
    pugi::xml_document hit;
    ASSERT_TRUE(hit.load_string(metaInfo(home.presetFolder() + "/Voice 14 3.vstpreset").c_str()));
    EXPECT_EQ(attribute(hit, "MusicalInstrument"), "Musical FX|Hits&Stabs");
    pugi::xml_document drums;
    ASSERT_TRUE(drums.load_string(metaInfo(home.presetFolder() + "/Voice 12 1.vstpreset").c_str()));
    EXPECT_EQ(attribute(drums, "MusicalCategory"), "Drum&Perc");
}
