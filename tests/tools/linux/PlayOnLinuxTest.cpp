// What the built program does where one command can be shown another editor library than the next,
// and where the host has the run loop.
#include "tests/tools/MidiBytes.h"
#include "tests/tools/PlayProgram.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

using doubles::midiFile;
using doubles::MidiTrack;
using doubles::Outcome;
using doubles::playWithoutLibrary;
using doubles::playWithScriptedLibrary;
using testing::HasSubstr;
using testing::Not;

namespace {

void expectSentence(const Outcome& outcome, const std::string& words)
{
    EXPECT_TRUE(outcome.isOneSentence()) << outcome.status << outcome.out << outcome.err;
    EXPECT_THAT(outcome.err, HasSubstr(words));
}

} // namespace

TEST(PlayOnLinux, NamesAnEditorLibraryThatIsNotInstalled)
{
    const doubles::ScratchFolder folder;
    const auto song = folder.write(
        "song.mid", midiFile(480, MidiTrack().noteOn(0, 0, 60, 1).noteOff(480, 0, 60, 0)));
    const auto outcome = playWithoutLibrary({song});
    expectSentence(outcome, "it found no editor library that it can use");
    expectSentence(outcome, "check-library");
    expectSentence(outcome, "with-simulator");
    expectSentence(playWithoutLibrary({song, "--binding", "service"}), "is missing.");
}

TEST(PlayOnLinux, LooksAtTheSongBeforeTheEditorLibrary)
{
    const doubles::ScratchFolder folder;
    expectSentence(playWithoutLibrary({folder.file("none.mid")}), "There is no file");
    expectSentence(playWithoutLibrary({folder.write("text.mid", "no music")}),
                   "is not a MIDI file.");
}

TEST(PlayOnLinux, NamesTheSimulatorToWhoeverHasNoLibraryAndNoSong)
{
    EXPECT_THAT(playWithoutLibrary({}).err, HasSubstr("with-simulator"));
    EXPECT_THAT(doubles::runPlay({}).err, Not(HasSubstr("with-simulator")));
}

TEST(PlayOnLinux, NeedsTheSimulatedEditorForTracks)
{
    expectSentence(playWithScriptedLibrary({"--tracks", "demo"}),
                   "Only the simulated editor library has a user who can pick parts");
    expectSentence(playWithScriptedLibrary({"--ports"}), "choose ports");
}

TEST(PlayOnLinux, LetsTheTimerTickTwentyTimesASecondOfTheSong)
{
    // 12 s and half a second after them are 250 ticks of 50 ms.
    const doubles::ScratchFolder folder;
    const auto song = folder.write(
        "song.mid", midiFile(480, MidiTrack().noteOn(0, 0, 60, 1).noteOff(24 * 480, 0, 60, 0)));
    const auto report = doubles::playReport({song, "--rate", "48000", "--block", "480"});
    EXPECT_EQ(report["timerTicks"], 250);
}
