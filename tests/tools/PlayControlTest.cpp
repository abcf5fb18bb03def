// Parameters, presets and the simulated user, through the built program and plug-in.
#include "basics/PlugInInfo.h"
#include "presets/VstK2xPreset.h"
#include "presets/VstK2xUserBank.h"
#include "tests/tools/MidiBytes.h"
#include "tests/tools/PlayProgram.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>
#include <sstream>

using namespace Steinberg;
using namespace Steinberg::Vst;
using doubles::midiFile;
using doubles::MidiTrack;
using doubles::runPlay;
using doubles::Words;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

using Json = nlohmann::json;

class PlayControl : public testing::Test {
protected:
    Json report(Words arguments)
    {
        arguments.insert(arguments.begin(), song);
        return doubles::playReport(arguments);
    }

    doubles::ScratchFolder folder;
    /** Six seconds. */
    std::string song = folder.write(
        "song.mid", midiFile(480, MidiTrack().noteOn(0, 0, 60, 1).noteOff(5760, 0, 60, 0)));
};

/** The ID, title and unit of each parameter of a part, in order, as the instrument numbers them. */
struct ParameterLine {
    int block;
    int number;
    const char* title; ///< "%" stands for the part's number
};

const ParameterLine kPartRows[] = {{37, 12, "Volume %"},
                                   {37, 13, "Pan %"},
                                   {37, 53, "Cutoff %"},
                                   {37, 54, "Resonance %"},
                                   {37, 44, "AEG Attack Time %"},
                                   {37, 45, "AEG Decay Time %"},
                                   {37, 46, "AEG Sustain Level %"},
                                   {37, 47, "AEG Release Time %"},
                                   {37, 16, "Chorus Send %"},
                                   {37, 15, "Reverb Send %"},
                                   {19, 1, "Assignable Function %-1"},
                                   {19, 2, "Assignable Function %-2"},
                                   {37, 56, "Assignable Knob 1"},
                                   {37, 57, "Assignable Knob 2"}};

std::string columns(const std::string& id, const std::string& title, int unit)
{
    auto line = id;
    line.resize(11, ' ');
    line += title;
    line.resize(39, ' ');
    return line + std::to_string(unit);
}

/** How the line of a parameter begins: ID, title and unit in their columns. */
std::string beginning(const ParameterLine& row, int part)
{
    std::string title = row.title;
    const auto mark = title.find('%');
    if (mark != std::string::npos)
        title.replace(mark, 1, std::to_string(part + 1));
    return columns(std::to_string(row.block * 1000000 + row.number * 1000 + part), title, part + 2);
}

} // namespace

TEST(PlayParameters, ListsAll225RowByRow)
{
    const auto outcome = runPlay({"--list-parameters"});
    ASSERT_EQ(outcome.status, 0) << outcome.err;
    std::istringstream lines(outcome.out);
    std::string line;
    std::getline(lines, line); // the table's head
    for (int part = 0; part < 16; ++part)
        for (const auto& row : kPartRows) {
            ASSERT_TRUE(std::getline(lines, line));
            EXPECT_THAT(line, StartsWith(beginning(row, part)));
            EXPECT_EQ(line.substr(45, 8), "automate");
        }
    ASSERT_TRUE(std::getline(lines, line));
    EXPECT_THAT(line, StartsWith(columns("201005000", "", -1)));
    EXPECT_EQ(line.substr(45, 2), "- ");
    ASSERT_TRUE(std::getline(lines, line));
    EXPECT_EQ(line, "225 parameters, 224 automatable");
}

TEST(PlayParameters, ListsTheSeventeenUnits)
{
    const auto text = runPlay({"--list-parameters"}).out;
    EXPECT_THAT(text, HasSubstr("\n1     Common            0       1\n"
                                "2     Part1 / Voice     0       2\n"
                                "3     Part2             0       3\n"));
    EXPECT_THAT(text, HasSubstr("\n17    Part16            0       17\n17 units\n"));
}

TEST_F(PlayControl, AutomatesAParameterOncePerBlock)
{
    const auto read = report({"--automate", "Cutoff 1"});
    ASSERT_EQ(read["automation"].size(), 1U);
    EXPECT_EQ(read["automation"][0]["title"], "Cutoff 1");
    EXPECT_EQ(read["automation"][0]["points"], read["process"]["blocks"]);
}

TEST_F(PlayControl, LetsTheAutomationReachTheEditor)
{
    const auto text =
        runPlay({song, "--rate", "48000", "--block", "480", "--automate", "Cutoff 1"}).out;
    // 6.5 s in blocks of 10 ms.
    EXPECT_THAT(text, HasSubstr("\"Cutoff 1\", 650 points, one a block; the editor got 650\n"));
}

TEST_F(PlayControl, ShowsEachGestureOnceInOrderInEveryKindOfHost)
{
    // The user turns after 1, 3 and 5 of 6.5 seconds.
    for (const Words& host : {Words{"--host", "cubase:7.5.1"}, Words{"--host", "plain"},
                              Words{"--host", "older"}, Words{"--no-unicode"}}) {
        auto arguments = host;
        arguments.insert(arguments.end(), {"--user-turns", "Volume 3"});
        const auto read = report(arguments);
        ASSERT_EQ(read["userTurns"].size(), 1U);
        const auto& turn = read["userTurns"][0];
        EXPECT_EQ(turn["title"], "Volume 3");
        EXPECT_EQ(turn["gestures"], 3) << host.back();
        EXPECT_EQ(turn["begin"], 3) << host.back();
        EXPECT_EQ(turn["perform"], 3) << host.back();
        EXPECT_EQ(turn["end"], 3) << host.back();
        EXPECT_TRUE(turn["inOrder"]) << host.back();
    }
}

TEST_F(PlayControl, LoadsAPresetIntoTheEditor)
{
    const auto file = folder.file("voice.vstpreset");
    {
        const auto stream = owned(FileStream::open(file.c_str(), "wb"));
        ASSERT_TRUE(VstK2xPreset::savePreset(stream, kProcessorUID, 3, 17, nullptr, -1));
    }
    EXPECT_EQ(report({"--preset", file})["preset"]["reached"], "voice 17 of bank 3");
}

TEST_F(PlayControl, LoadsAUserBankIntoTheEditor)
{
    const auto file = folder.file("bank.vstpreset");
    char data[] = {1, 2, 3, 4, 5};
    {
        const auto stream = owned(FileStream::open(file.c_str(), "wb"));
        ASSERT_TRUE(
            VstK2xUserBank::saveUserBank(stream, kProcessorUID, 8, 2, 5, data, nullptr, -1));
    }
    EXPECT_EQ(report({"--preset", file})["preset"]["reached"], "user bank 8, number 2, 5 bytes");
}

TEST_F(PlayControl, RefusesPresetsThatAreNone)
{
    const auto foreign = folder.file("foreign.vstpreset");
    {
        const auto stream = owned(FileStream::open(foreign.c_str(), "wb"));
        VstK2xPreset::savePreset(stream, kControllerUID, 3, 17, nullptr, -1);
    }
    const auto sentence = [&](const std::string& file) {
        const auto outcome = runPlay({song, "--preset", file});
        EXPECT_TRUE(outcome.isOneSentence()) << outcome.out << outcome.err;
        return outcome.err;
    };
    EXPECT_THAT(sentence(foreign), HasSubstr("is a preset of another plug-in."));
    EXPECT_THAT(sentence(folder.file("none.vstpreset")), HasSubstr("There is no preset file"));
    EXPECT_THAT(sentence(folder.write("text.vstpreset", "a text")),
                HasSubstr("not a VST 3 preset."));
    EXPECT_THAT(sentence(folder.write("empty.vstpreset", "")), HasSubstr("not a VST 3 preset."));
}

TEST_F(PlayControl, RefusesParametersThatItCannotMove)
{
    for (const char* option : {"--automate", "--user-turns"}) {
        const auto outcome = runPlay({song, option, "Loudness"});
        EXPECT_TRUE(outcome.isOneSentence()) << outcome.out << outcome.err;
        EXPECT_THAT(outcome.err, HasSubstr("no parameter \"Loudness\""));
    }
}
