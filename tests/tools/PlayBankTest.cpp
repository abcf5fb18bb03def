// A user bank on its way from the instrument to a preset file and back, through the built program.
#include "tests/doubles/PresetFileBytes.h"
#include "tests/doubles/PresetXml.h"
#include "tests/doubles/TemporaryHome.h"
#include "tests/tools/MidiBytes.h"
#include "tests/tools/PlayProgram.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

using doubles::le32;
using doubles::midiFile;
using doubles::MidiTrack;
using doubles::presetFileBytes;
using doubles::presetXml;
using doubles::runPlay;
using doubles::Words;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

using Json = nlohmann::json;

class PlayBank : public testing::Test {
protected:
    Json report(Words arguments)
    {
        arguments.insert(arguments.begin(), song);
        return doubles::playReport(arguments);
    }

    doubles::TemporaryHome home;
    doubles::ScratchFolder folder;
    std::string song = folder.write(
        "song.mid", midiFile(480, MidiTrack().noteOn(0, 0, 60, 1).noteOff(480, 0, 60, 0)));
};

/** The chunk of a user bank. */
std::string userBank(int bank, int number, const std::string& data)
{
    return le32(2) + le32(bank) + le32(number) + le32(static_cast<int32_t>(data.size())) + data;
}

/** What the simulated instrument's bank holds until something is loaded into it. */
std::string factoryBytes(int bank, int number)
{
    std::string data = "UB";
    data += static_cast<char>(bank);
    data += static_cast<char>(number);
    for (int index = 0; index < 512; ++index)
        data += static_cast<char>((index * 7 + bank * 16 + number) % 256);
    return data;
}

} // namespace

TEST_F(PlayBank, StoresABankBelowHomeAndLoadsTheSameBytesFromThere)
{
    const auto file = home.presetFolder() + "/Gig Bank Studio.vstpreset";
    const auto stored = report({"--store-bank", "9:2"})["storedBanks"];
    ASSERT_EQ(stored.size(), 1U);
    EXPECT_EQ(stored[0], Json({{"bank", 9}, {"number", 2}, {"file", file}}));
    EXPECT_THAT(home.files(), ElementsAre("Gig Bank Studio.vstpreset"));
    const auto data = factoryBytes(9, 2);
    EXPECT_EQ(home.content("Gig Bank Studio.vstpreset"),
              presetFileBytes(userBank(9, 2, data), presetXml("Bass", "Synth Bass", "")));

    const auto preset = report({"--preset", file})["preset"];
    EXPECT_EQ(preset["reached"], "user bank 9, number 2, 516 bytes");
    std::string hex;
    for (const char byte : data) {
        char digits[3];
        std::snprintf(digits, sizeof(digits), "%02x", static_cast<unsigned char>(byte));
        hex += digits;
    }
    EXPECT_EQ(preset["data"], hex);
}

TEST_F(PlayBank, StoresWhatAPresetBroughtFirst)
{
    const auto data = std::string("\x00\xFF\x10List", 7);
    const auto brought = folder.write("brought.vstpreset", presetFileBytes(userBank(14, 3, data)));
    const auto read = report({"--preset", brought, "--store-bank", "14:3"});
    EXPECT_EQ(read["preset"]["data"], "00ff104c697374");
    EXPECT_EQ(home.content("Whole Desk Four.vstpreset"),
              presetFileBytes(userBank(14, 3, data), presetXml("Other", "Other", "")));
}

TEST_F(PlayBank, StoresSeveralBanksAndSaysWhere)
{
    const auto outcome =
        runPlay({song, "--store-bank", "8:0", "--store-bank", "10:1", "--store-bank", "8:0"});
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    const auto line = [this](const std::string& place, const std::string& name) {
        return "Bank stored   user bank " + place + ", as " + home.presetFolder() + "/" + name +
               ".vstpreset\n";
    };
    EXPECT_THAT(outcome.out, HasSubstr(line("8, number 0", "My Kit Shelf") +
                                       line("10, number 1", "Sketches Harp") +
                                       line("8, number 0", "My Kit Shelf")));
    EXPECT_THAT(home.files(), ElementsAre("My Kit Shelf.vstpreset", "Sketches Harp.vstpreset"));
}

TEST_F(PlayBank, SaysWhatItCannotStore)
{
    const auto sentence = [&](const std::string& place) {
        const auto outcome = runPlay({song, "--store-bank", place});
        EXPECT_TRUE(outcome.isOneSentence()) << outcome.out << outcome.err;
        return outcome.err;
    };
    for (const char* words : {"9", "9:", ":2", "9:2:1", "9:x", " 9:2", "9: 2", "99999999999:0"})
        EXPECT_THAT(sentence(words), HasSubstr("is no user bank")) << words;
    // A bank of voices, one without this number, and none at all.
    for (const char* words : {"0:0", "9:4", "15:0", "-1:0"})
        EXPECT_THAT(sentence(words), HasSubstr("The plug-in wrote no file for bank")) << words;
    EXPECT_THAT(home.files(), IsEmpty());
    doubles::TemporaryHome::set("");
    EXPECT_THAT(sentence("9:2"), HasSubstr("HOME names no folder"));
}
