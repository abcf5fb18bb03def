// The built program with another editor library than the simulator or with none, and its run loop:
// a Mac can show one command no other library, and its run loop is the system's.
#include "tests/tools/PlayProgram.h"

#include <gmock/gmock.h>

using doubles::expectSentence;
using doubles::playWithoutLibrary;
using doubles::playWithScriptedLibrary;
using testing::HasSubstr;
using testing::Not;

using PlayOnLinux = doubles::PlayTest;

TEST_F(PlayOnLinux, NamesAnEditorLibraryThatIsNotInstalled)
{
    const auto outcome = playWithoutLibrary({song});
    expectSentence(outcome, "it found no editor library that it can use");
    expectSentence(outcome, "check-library");
    expectSentence(outcome, "with-simulator");
    expectSentence(playWithoutLibrary({song, "--binding", "service"}), "is missing.");
}

TEST_F(PlayOnLinux, LooksAtTheSongBeforeTheEditorLibrary)
{
    expectSentence(playWithoutLibrary({folder.file("none.mid")}), "There is no file");
}

TEST_F(PlayOnLinux, NamesTheSimulatorWhereThereIsNoLibraryAndNoSong)
{
    EXPECT_THAT(playWithoutLibrary({}).err, HasSubstr("with-simulator"));
    EXPECT_THAT(doubles::runPlay({}).err, Not(HasSubstr("with-simulator")));
}

TEST_F(PlayOnLinux, NeedsTheSimulatedEditorForPortsAndTracks)
{
    expectSentence(playWithScriptedLibrary({"--tracks", "demo"}),
                   "Only the simulated editor library has a user who can pick parts");
    expectSentence(playWithScriptedLibrary({"--ports"}), "choose ports");
}

TEST_F(PlayOnLinux, LetsTheTimerTickTwentyTimesASecondOfTheSong)
{
    // 12 s and half a second after them are 250 ticks of 50 ms.
    EXPECT_EQ(report({"--rate", "48000", "--block", "480"})["timerTicks"], 250);
}
