// What goes wrong for the program's user, who gets one sentence for it.
#include "tests/tools/MidiBytes.h"
#include "tests/tools/PlayProgram.h"

#include <gmock/gmock.h>

using doubles::midiFile;
using doubles::MidiTrack;
using doubles::Outcome;
using doubles::playOnThisMachine;
using doubles::runPlay;
using doubles::Words;
using testing::HasSubstr;

namespace {

class PlayFailure : public testing::Test {
protected:
    void expect(const Outcome& outcome, const std::string& words)
    {
        EXPECT_TRUE(outcome.isOneSentence()) << outcome.status << outcome.out << outcome.err;
        EXPECT_THAT(outcome.err, HasSubstr(words));
    }

    doubles::ScratchFolder folder;
    std::string song = folder.write(
        "song.mid", midiFile(480, MidiTrack().noteOn(0, 0, 60, 1).noteOff(480, 0, 60, 0)));
};

} // namespace

TEST_F(PlayFailure, NamesASongThatIsMissingEmptyOrNone)
{
    expect(runPlay({folder.file("none.mid")}), "There is no file");
    expect(runPlay({folder.write("empty.mid", "")}), "is empty.");
    expect(runPlay({folder.write("text.mid", "This is no music at all.")}), "is not a MIDI file.");
    const auto whole = doubles::ScratchFolder::read(song);
    expect(runPlay({folder.write("cut.mid", whole.substr(0, whole.size() - 3))}),
           "is a damaged MIDI file.");
}

TEST_F(PlayFailure, NamesABundleThatIsMissing)
{
    expect(runPlay({song, "--plugin", folder.file("none.vst3")}), "There is no plug-in bundle");
    expect(runPlay({song, "--plugin", folder.file("")}), "cannot be loaded");
}

TEST_F(PlayFailure, NamesAnEditorLibraryThatIsMissing)
{
    expect(playOnThisMachine({song, "--binding", "service", "--library", folder.file("none")}),
           "is missing.");
    expect(playOnThisMachine({song, "--binding", "service", "--library", song}),
           "cannot be loaded.");
}

TEST_F(PlayFailure, NamesASoundFontThatIsMissingBeforeItPlays)
{
    expect(runPlay({song, "--audio", folder.file("o.wav"), "--soundfont", folder.file("none.sf2")}),
           "There is no soundfont");
    expect(runPlay({song, "--audio", folder.file("o.wav"), "--soundfont", song}),
           "is not a soundfont.");
}

TEST_F(PlayFailure, NamesFilesThatCannotBeWritten)
{
    expect(runPlay({song, "--midi-out", folder.file("none/o.mid")}), "cannot be written.");
    expect(runPlay({song, "--audio", folder.file("none/o.wav")}), "cannot be written.");
    expect(runPlay({song, "--report", folder.file("none/o.html")}), "cannot be written.");
}

TEST_F(PlayFailure, NamesAHostThatIsUnknown)
{
    expect(runPlay({song, "--host", "somebody:1.0"}), "There is no host \"somebody\"");
}

TEST_F(PlayFailure, RefusesACommandLineThatMakesNoSense)
{
    for (const Words& words : {Words{}, Words{song, "--tempo", "3"}, Words{song, "--rate", "12345"},
                               Words{song, "--block", "0"}, Words{song, "--block", "many"},
                               Words{song, "--binding", "glue"}, Words{song, song}}) {
        const auto outcome = playOnThisMachine(words);
        EXPECT_EQ(outcome.status, 2);
        EXPECT_EQ(outcome.out, "");
        EXPECT_NE(outcome.err, "");
    }
}

TEST_F(PlayFailure, TellsItsVersion)
{
    const auto outcome = playOnThisMachine({"--version"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.out, "play (RDL3/RDL5 VST) 1.6.6\n");
    EXPECT_EQ(outcome.err, "");
}

TEST_F(PlayFailure, ExplainsItself)
{
    const auto outcome = playOnThisMachine({"--help"});
    EXPECT_EQ(outcome.status, 0);
    for (const char* option :
         {"--midi-out", "--ports", "--connect-audio", "--connect-midi", "--tracks", "--select"})
        EXPECT_THAT(outcome.out, HasSubstr(option));
    EXPECT_EQ(outcome.err, "");
}
