#include "tools/play/music/Song.h"
#include "tests/tools/MidiBytes.h"
#include "tests/tools/ScratchFolder.h"
#include "tools/common/Failure.h"

#include <gmock/gmock.h>

using namespace Steinberg;
using namespace Steinberg::Vst::play;
using doubles::midiFile;
using doubles::midiHeader;
using doubles::MidiTrack;
using doubles::ScratchFolder;
using Steinberg::Vst::tools::Failure;
using testing::HasSubstr;

namespace {

/** The sentence with which a file is refused; empty when it is not. */
std::string refusal(const std::string& path)
{
    try {
        const Song song(path);
        return "";
    } catch (const Failure& failure) {
        return failure.what();
    }
}

void expectNote(const NoteEvent& note, int64 pulse, int channel, int pitch, int velocity, bool on)
{
    EXPECT_EQ(note.pulse, pulse);
    EXPECT_EQ(note.channel, channel);
    EXPECT_EQ(note.pitch, pitch);
    EXPECT_EQ(note.velocity, velocity);
    EXPECT_EQ(note.on, on);
}

} // namespace

TEST(Song, TakesNotesProgramsAndTempo)
{
    const ScratchFolder folder;
    const auto path = folder.write("a song.mid", midiFile(96, MidiTrack()
                                                                  .tempo(0, 400000)
                                                                  .program(0, 2, 17)
                                                                  .noteOn(96, 2, 60, 100)
                                                                  .noteOff(48, 2, 60, 64)));
    const Song song(path);
    EXPECT_EQ(song.name(), "a song.mid");
    ASSERT_EQ(song.notes().size(), 2U);
    expectNote(song.notes()[0], 96, 2, 60, 100, true);
    expectNote(song.notes()[1], 144, 2, 60, 64, false);
    ASSERT_EQ(song.programChanges().size(), 1U);
    EXPECT_EQ(song.programChanges()[0].channel, 2);
    EXPECT_EQ(song.programChanges()[0].program, 17);
    EXPECT_EQ(song.tempo().sampleAt(96, 48000), 19200);
    EXPECT_EQ(song.lengthInPulses(), 144);
}

TEST(Song, TakesANoteOnWithoutVelocityForANoteOff)
{
    const ScratchFolder folder;
    const Song song(
        folder.write("s.mid", midiFile(96, MidiTrack().noteOn(0, 0, 60, 1).noteOn(10, 0, 60, 0))));
    ASSERT_EQ(song.notes().size(), 2U);
    expectNote(song.notes()[0], 0, 0, 60, 1, true);
    expectNote(song.notes()[1], 10, 0, 60, 0, false);
}

TEST(Song, FollowsRunningStatus)
{
    const ScratchFolder folder;
    const Song song(folder.write("s.mid", midiFile(96, MidiTrack()
                                                           .noteOn(0, 5, 60, 90)
                                                           .event(3, "\x3E\x50")
                                                           .event(4, std::string("\x3C\x00", 2)))));
    ASSERT_EQ(song.notes().size(), 3U);
    expectNote(song.notes()[1], 3, 5, 62, 80, true);
    expectNote(song.notes()[2], 7, 5, 60, 0, false);
}

TEST(Song, MergesTracksByTimeAndThenByTrack)
{
    const ScratchFolder folder;
    const Song song(folder.write(
        "s.mid", midiHeader(1, 2, 96) + MidiTrack().noteOn(0, 0, 1, 1).noteOn(20, 0, 2, 1).chunk() +
                     MidiTrack().noteOn(10, 1, 3, 1).noteOn(10, 1, 4, 1).chunk()));
    ASSERT_EQ(song.notes().size(), 4U);
    expectNote(song.notes()[0], 0, 0, 1, 1, true);
    expectNote(song.notes()[1], 10, 1, 3, 1, true);
    expectNote(song.notes()[2], 20, 0, 2, 1, true);
    expectNote(song.notes()[3], 20, 1, 4, 1, true);
}

TEST(Song, RefusesAMissingFileWithOneSentence)
{
    const ScratchFolder folder;
    EXPECT_EQ(refusal(folder.file("none.mid")),
              "There is no file \"" + folder.file("none.mid") + "\".");
}

TEST(Song, RefusesAFolder)
{
    const ScratchFolder folder;
    EXPECT_THAT(refusal(folder.file("")), HasSubstr("is not a file"));
}

TEST(Song, RefusesAnEmptyFile)
{
    const ScratchFolder folder;
    EXPECT_THAT(refusal(folder.write("s.mid", "")), HasSubstr("is empty."));
}

TEST(Song, RefusesAFileThatIsNoMidiFile)
{
    const ScratchFolder folder;
    EXPECT_THAT(refusal(folder.write("s.mid", "a plain text, long enough for a header")),
                HasSubstr("is not a MIDI file."));
    EXPECT_THAT(refusal(folder.write("t.mid", "MThd")), HasSubstr("is not a MIDI file."));
}

TEST(Song, RefusesFilmTimeAndIndependentPatterns)
{
    const ScratchFolder folder;
    const auto track = MidiTrack().noteOn(0, 0, 60, 1).chunk();
    EXPECT_THAT(refusal(folder.write("s.mid", midiHeader(0, 1, 0xE728) + track)),
                HasSubstr("film frames"));
    EXPECT_THAT(refusal(folder.write("t.mid", midiHeader(2, 1, 96) + track)),
                HasSubstr("independent patterns"));
}

TEST(Song, RefusesADivisionOfZero)
{
    const ScratchFolder folder;
    const auto track = MidiTrack().noteOn(0, 0, 60, 1).chunk();
    EXPECT_THAT(refusal(folder.write("s.mid", midiHeader(0, 1, 0) + track)), HasSubstr("damaged"));
}

TEST(Song, RefusesASongWithoutNotes)
{
    const ScratchFolder folder;
    EXPECT_THAT(refusal(folder.write("s.mid", midiFile(96, MidiTrack().program(0, 0, 1)))),
                HasSubstr("has no notes"));
}

TEST(Song, RefusesASongThatNeverEnds)
{
    // 2,000,000 quarter notes of half a second are eleven and a half days.
    const ScratchFolder folder;
    EXPECT_THAT(
        refusal(folder.write(
            "s.mid", midiFile(1, MidiTrack().noteOn(0, 0, 60, 1).noteOff(2000000, 0, 60, 0)))),
        HasSubstr("lasts longer than"));
}

TEST(Song, RefusesATruncatedFileWhereverItEnds)
{
    const ScratchFolder folder;
    const auto whole = midiFile(96, MidiTrack()
                                        .tempo(0, 500000)
                                        .noteOn(0, 0, 60, 100)
                                        .noteOff(96, 0, 60, 0)
                                        .noteOn(0, 0, 62, 100)
                                        .noteOff(96, 0, 62, 0));
    EXPECT_EQ(refusal(folder.write("s.mid", whole)), "");
    for (size_t size = 0; size < whole.size(); ++size)
        EXPECT_NE(refusal(folder.write("s.mid", whole.substr(0, size))), "") << size << " bytes";
}

TEST(Song, SurvivesDamagedBytesAnywhere)
{
    // Each byte of a file with every kind of event in turn: whatever comes out, it is a song or a
    // sentence, and nothing ends the process.
    const ScratchFolder folder;
    const auto whole = midiFile(96, MidiTrack()
                                        .tempo(0, 500000)
                                        .event(0, std::string("\xF0\x03\x01\x02\xF7", 5))
                                        .event(0, std::string("\xFF\x03\x02hi", 5))
                                        .program(0, 0, 5)
                                        .noteOn(0, 0, 60, 100)
                                        .event(4, std::string("\xB0\x07\x64", 3))
                                        .noteOff(96, 0, 60, 0));
    for (const char value : {'\x00', '\x7F', '\x80', '\xF0', '\xF7', '\xFF'})
        for (size_t at = 4; at < whole.size(); ++at) {
            auto damaged = whole;
            damaged[at] = value;
            const auto sentence = refusal(folder.write("s.mid", damaged));
            EXPECT_TRUE(sentence.empty() || sentence.back() == '.') << at;
        }
}
