// What goes wrong for the program's user, who gets one sentence for it.
#include "tests/tools/PlayProgram.h"

using doubles::expectSentence;
using doubles::playOnThisMachine;
using doubles::runPlay;
using doubles::Words;

using PlayFailure = doubles::PlayTest;

TEST_F(PlayFailure, NamesASongThatIsMissingEmptyOrNone)
{
    expectSentence(runPlay({folder.file("none.mid")}), "There is no file");
    expectSentence(runPlay({folder.write("empty.mid", "")}), "is empty.");
    expectSentence(runPlay({folder.write("text.mid", "This is no music at all.")}),
                   "is not a MIDI file.");
    const auto whole = doubles::ScratchFolder::read(song);
    expectSentence(runPlay({folder.write("cut.mid", whole.substr(0, whole.size() - 3))}),
                   "is a damaged MIDI file.");
}

TEST_F(PlayFailure, NamesABundleThatIsMissing)
{
    expectSentence(runPlay({song, "--plugin", folder.file("none.vst3")}),
                   "There is no plug-in bundle");
    expectSentence(runPlay({song, "--plugin", folder.file("")}), "cannot be loaded");
}

TEST_F(PlayFailure, NamesAnEditorLibraryThatIsMissing)
{
    Words words = {song, "--binding", "service", "--library", folder.file("none")};
    expectSentence(playOnThisMachine(words), "is missing.");
    words.back() = song;
    expectSentence(playOnThisMachine(words), "cannot be loaded.");
}

TEST_F(PlayFailure, NamesASoundFontThatIsMissingBeforeItPlays)
{
    Words words = {song, "--audio", folder.file("o.wav"), "--soundfont", folder.file("none.sf2")};
    expectSentence(runPlay(words), "There is no soundfont");
    words.back() = song;
    expectSentence(runPlay(words), "is not a soundfont.");
}

TEST_F(PlayFailure, NamesFilesThatCannotBeWritten)
{
    for (const char* option : {"--midi-out", "--audio", "--report"})
        expectSentence(runPlay({song, option, folder.file("none/o")}), "cannot be written.");
}

TEST_F(PlayFailure, NamesAHostThatIsUnknown)
{
    expectSentence(runPlay({song, "--host", "somebody:1.0"}), "There is no host \"somebody\"");
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
