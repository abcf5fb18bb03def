#include "tools/play/music/Song.h"
#include "tests/tools/MidiBytes.h"
#include "tests/tools/ScratchFolder.h"
#include "tools/common/Failure.h"

#include <gmock/gmock.h>

using namespace Steinberg::Vst::play;
using doubles::midiFile;
using doubles::midiHeader;
using doubles::MidiTrack;
using testing::ElementsAre;
using testing::FieldsAre;
using testing::HasSubstr;

namespace {

class SongTest : public testing::Test {
protected:
    Song read(const std::string& bytes) { return Song(folder.write("a song.mid", bytes)); }

    /** The sentence with which a file is refused; empty when it is not. */
    static std::string refusalOf(const std::string& path)
    {
        try {
            const Song song(path);
            return "";
        } catch (const Steinberg::Vst::tools::Failure& failure) {
            return failure.what();
        }
    }
    std::string refusal(const std::string& bytes)
    {
        return refusalOf(folder.write("s.mid", bytes));
    }

    doubles::ScratchFolder folder;
};

} // namespace

TEST_F(SongTest, TakesNotesProgramsAndTempo)
{
    const auto song = read(midiFile(96, MidiTrack()
                                            .tempo(0, 400000)
                                            .program(0, 2, 17)
                                            .noteOn(96, 2, 60, 100)
                                            .noteOff(48, 2, 60, 64)));
    EXPECT_EQ(song.name(), "a song.mid");
    EXPECT_THAT(song.notes(),
                ElementsAre(FieldsAre(96, 2, 60, 100, true), FieldsAre(144, 2, 60, 64, false)));
    EXPECT_THAT(song.programChanges(), ElementsAre(FieldsAre(0, 2, 17)));
    EXPECT_EQ(song.tempo().sampleAt(96, 48000), 19200);
    EXPECT_EQ(song.lengthInPulses(), 144);
}

TEST_F(SongTest, TakesANoteOnOfVelocityZeroForANoteOff)
{
    const auto song = read(midiFile(96, MidiTrack().noteOn(0, 0, 60, 1).noteOn(10, 0, 60, 0)));
    EXPECT_THAT(song.notes(),
                ElementsAre(FieldsAre(0, 0, 60, 1, true), FieldsAre(10, 0, 60, 0, false)));
}

TEST_F(SongTest, FollowsRunningStatus)
{
    const auto song = read(midiFile(96, MidiTrack()
                                            .noteOn(0, 5, 60, 90)
                                            .event(3, "\x3E\x50")
                                            .event(4, std::string("\x3C\x00", 2))));
    EXPECT_THAT(song.notes(),
                ElementsAre(FieldsAre(0, 5, 60, 90, true), FieldsAre(3, 5, 62, 80, true),
                            FieldsAre(7, 5, 60, 0, false)));
}

TEST_F(SongTest, MergesTracksByTimeAndThenByTrack)
{
    const auto song =
        read(midiHeader(1, 2, 96) + MidiTrack().noteOn(0, 0, 1, 1).noteOn(20, 0, 2, 1).chunk() +
             MidiTrack().noteOn(10, 1, 3, 1).noteOn(10, 1, 4, 1).chunk());
    EXPECT_THAT(song.notes(),
                ElementsAre(FieldsAre(0, 0, 1, 1, true), FieldsAre(10, 1, 3, 1, true),
                            FieldsAre(20, 0, 2, 1, true), FieldsAre(20, 1, 4, 1, true)));
}

TEST_F(SongTest, RefusesWhatItCannotPlayWithOneSentence)
{
    EXPECT_EQ(refusalOf(folder.file("none.mid")),
              "There is no file \"" + folder.file("none.mid") + "\".");
    EXPECT_THAT(refusalOf(folder.file("")), HasSubstr("is not a file"));

    struct Row {
        std::string bytes;
        const char* words;
    };
    const auto track = MidiTrack().noteOn(0, 0, 60, 1).chunk();
    for (const auto& row :
         {Row{"", "is empty."},
          Row{"a plain text, long enough for a header", "is not a MIDI file."},
          Row{"MThd", "is not a MIDI file."}, Row{midiHeader(0, 1, 0xE728) + track, "film frames"},
          Row{midiHeader(2, 1, 96) + track, "independent patterns"},
          Row{midiHeader(0, 1, 0) + track, "damaged"},
          Row{midiFile(96, MidiTrack().program(0, 0, 1)), "has no notes"},
          // 2,000,000 quarter notes of half a second are eleven and a half days.
          Row{midiFile(1, MidiTrack().noteOn(0, 0, 60, 1).noteOff(2000000, 0, 60, 0)),
              "lasts longer than"}})
        EXPECT_THAT(refusal(row.bytes), HasSubstr(row.words));
}

TEST_F(SongTest, RefusesATruncatedFileWhereverItEnds)
{
    const auto whole = midiFile(96, MidiTrack()
                                        .tempo(0, 500000)
                                        .noteOn(0, 0, 60, 100)
                                        .noteOff(96, 0, 60, 0)
                                        .noteOn(0, 0, 62, 100)
                                        .noteOff(96, 0, 62, 0));
    EXPECT_EQ(refusal(whole), "");
    for (size_t size = 0; size < whole.size(); ++size)
        EXPECT_NE(refusal(whole.substr(0, size)), "") << size << " bytes";
}

TEST_F(SongTest, SurvivesDamagedBytesAnywhere)
{
    // Each byte of a file with every kind of event in turn: the file is read or refused with a
    // sentence, and nothing ends the process.
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
            const auto sentence = refusal(damaged);
            EXPECT_TRUE(sentence.empty() || sentence.back() == '.') << at;
        }
}
