// Parameters, presets, user banks and the simulated user, through the built program and plug-in.
#include "tests/doubles/PresetFileBytes.h"
#include "tests/doubles/PresetXml.h"
#include "tests/doubles/TemporaryHome.h"
#include "tests/hosts/PartParameters.h"
#include "tests/tools/PlayProgram.h"

#include <cstdio>
#include <gmock/gmock.h>
#include <sstream>

using doubles::expectSentence;
using doubles::le32;
using doubles::presetFileBytes;
using doubles::presetXml;
using doubles::runPlay;
using doubles::TemporaryHome;
using doubles::Words;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

namespace {

using PlayControl = doubles::PlayTest;

class PlayBank : public doubles::PlayTest {
protected:
    TemporaryHome home;
};

/** How the line of a parameter begins: with its ID, title and unit. */
std::string columns(unsigned id, const std::string& title, int unit)
{
    auto line = std::to_string(id);
    line.resize(11, ' ');
    line += title;
    line.resize(39, ' ');
    return line + std::to_string(unit);
}

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

TEST(PlayParameters, ListsAllParametersAndUnits)
{
    const auto outcome = runPlay({"--list-parameters"});
    ASSERT_EQ(outcome.status, 0) << outcome.err;
    std::istringstream lines(outcome.out);
    std::string line;
    std::getline(lines, line); // the table's head
    for (int index = 0; index < hosts::kAutomatable; ++index) {
        const auto expected = hosts::expectedParameter(index);
        ASSERT_TRUE(std::getline(lines, line));
        EXPECT_THAT(line, StartsWith(columns(expected.id, expected.title, expected.unit)));
        EXPECT_EQ(line.substr(45, 8), "automate");
    }
    ASSERT_TRUE(std::getline(lines, line));
    EXPECT_THAT(line, StartsWith(columns(201005000, "", -1)));
    EXPECT_EQ(line.substr(45, 2), "- ");
    ASSERT_TRUE(std::getline(lines, line));
    EXPECT_EQ(line, std::to_string(hosts::kParameters) + " parameters, " +
                        std::to_string(hosts::kAutomatable) + " automatable");
    EXPECT_THAT(outcome.out, HasSubstr("\n1     Common            0       1\n"
                                       "2     Part1 / Voice     0       2\n"
                                       "3     Part2             0       3\n"));
    EXPECT_THAT(outcome.out, HasSubstr("\n17    Part16            0       17\n17 units\n"));
}

TEST_F(PlayControl, AutomateSendsAPointInEachBlock)
{
    const auto read = report({"--automate", "Cutoff 1"});
    ASSERT_EQ(read["automation"].size(), 1U);
    EXPECT_EQ(read["automation"][0]["title"], "Cutoff 1");
    EXPECT_EQ(read["automation"][0]["points"], read["process"]["blocks"]);
}

TEST_F(PlayControl, AutomateReachesTheEditor)
{
    const auto text =
        runPlay({song, "--rate", "48000", "--block", "480", "--automate", "Cutoff 1"}).out;
    // 12.5 s in blocks of 10 ms.
    EXPECT_THAT(text, HasSubstr("\"Cutoff 1\", 1,250 points, one a block; the editor got 1,250\n"));
}

TEST_F(PlayControl, UserTurnsAreSeenOnceAndInOrderByEveryKindOfHost)
{
    // The user turns after 1, 3, 5, 7, 9 and 11 of 12.5 seconds.
    for (const Words& host : {Words{"--host", "cubase:7.5.1"}, Words{"--host", "plain"},
                              Words{"--host", "older"}, Words{"--no-unicode"}}) {
        auto options = host;
        options.insert(options.end(), {"--user-turns", "Volume 3"});
        EXPECT_EQ(report(options)["userTurns"], nlohmann::json::parse(R"([
            {"title": "Volume 3", "gestures": 6, "begin": 6, "perform": 6, "end": 6,
             "inOrder": true}])"))
            << host.back();
    }
}

TEST_F(PlayControl, RefusesParametersThatThePlugInDoesNotHave)
{
    for (const char* option : {"--automate", "--user-turns"})
        expectSentence(runPlay({song, option, "Loudness"}), "no parameter \"Loudness\"");
}

TEST_F(PlayControl, PresetReachesTheEditor)
{
    const auto file =
        folder.write("voice.vstpreset", presetFileBytes(le32(1) + le32(3) + le32(17)));
    EXPECT_EQ(report({"--preset", file})["preset"]["reached"], "voice 17 of bank 3");
}

TEST_F(PlayControl, PresetIsRefusedThatIsMissingForeignOrNone)
{
    constexpr size_t classID = 8; // its 32 digits come after "VST3" and a number
    auto foreign = presetFileBytes(le32(1) + le32(3) + le32(17));
    foreign.replace(classID, 32, 32, '0');
    const auto refuse = [&](const std::string& file, const char* words) {
        expectSentence(runPlay({song, "--preset", file}), words);
    };
    refuse(folder.write("foreign.vstpreset", foreign), "is a preset of another plug-in.");
    refuse(folder.file("none.vstpreset"), "There is no preset file");
    refuse(folder.write("text.vstpreset", "a text"), "not a VST 3 preset.");
    refuse(folder.write("empty.vstpreset", ""), "not a VST 3 preset.");
}

TEST_F(PlayBank, StoreBankWritesAFileBelowHomeThatPresetLoads)
{
    const auto file = home.presetFolder() + "/Gig Bank Studio.vstpreset";
    const auto stored = report({"--store-bank", "9:2"})["storedBanks"];
    ASSERT_EQ(stored.size(), 1U);
    EXPECT_EQ(stored[0], nlohmann::json({{"bank", 9}, {"number", 2}, {"file", file}}));
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

TEST_F(PlayBank, StoreBankWritesWhatAPresetBroughtBefore)
{
    const auto data = std::string("\x00\xFF\x10List", 7);
    const auto brought = folder.write("brought.vstpreset", presetFileBytes(userBank(14, 3, data)));
    const auto read = report({"--preset", brought, "--store-bank", "14:3"});
    EXPECT_EQ(read["preset"]["data"], "00ff104c697374");
    EXPECT_EQ(home.content("Whole Desk Four.vstpreset"),
              presetFileBytes(userBank(14, 3, data), presetXml("Other", "Other", "")));
}

TEST_F(PlayBank, StoreBankStoresSeveralAndSaysWhere)
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

TEST_F(PlayBank, StoreBankSaysWhatItCannotStore)
{
    for (const char* words : {"9", "9:", ":2", "9:2:1", "9:x", " 9:2", "9: 2", "99999999999:0"})
        expectSentence(runPlay({song, "--store-bank", words}), "is no user bank");
    // A bank of voices, one without this number, and two numbers that no bank has.
    for (const char* words : {"0:0", "9:4", "15:0", "-1:0"})
        expectSentence(runPlay({song, "--store-bank", words}),
                       "The plug-in wrote no file for bank");
    EXPECT_THAT(home.files(), IsEmpty());
    TemporaryHome::set("");
    expectSentence(runPlay({song, "--store-bank", "9:2"}), "HOME names no folder");
}
