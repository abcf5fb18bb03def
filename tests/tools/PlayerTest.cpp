#include "tools/play/music/Player.h"
#include "tests/tools/MidiBytes.h"
#include "tests/tools/RecordingProcessor.h"
#include "tests/tools/ScratchFolder.h"

#include <bitset>
#include <gmock/gmock.h>

using namespace Steinberg;
using namespace Steinberg::Vst;
using namespace Steinberg::Vst::play;
using doubles::midiFile;
using doubles::MidiTrack;
using doubles::RecordingProcessor;
using testing::Each;
using testing::ElementsAre;
using testing::FieldsAre;

namespace {

/** Plays one song through a recording processor. */
class PlayerTest : public testing::Test {
protected:
    PlayResult play(const std::string& midi, const Player::Settings& settings,
                    const Player::BetweenBlocks& between = {})
    {
        const Song song(folder.write("song.mid", midi));
        Player player(processor, data, song, settings);
        return player.run(between);
    }

    /** The same, live. @param notes what somebody plays, all in the first block */
    PlayResult playLive(const Song& song, Player::Settings settings, std::vector<NoteEvent> notes,
                        const std::function<bool()>& isStopAsked)
    {
        Player player(processor, data, song, settings);
        size_t next = 0;
        player.playLive(
            [&](NoteEvent& note) {
                if (next >= notes.size())
                    return false;
                note = notes[next++];
                return true;
            },
            isStopAsked);
        const auto result = player.run();
        soundingAtEnd = player.soundingChannels();
        return result;
    }

    /** Notes at pulses 0, 1, 8, 480, 960, 961 with tempo changes at 480 and 960. */
    static std::string songWithTempoChanges()
    {
        return midiFile(480, MidiTrack()
                                 .noteOn(0, 0, 60, 127)
                                 .noteOn(1, 1, 61, 127)
                                 .noteOn(7, 2, 62, 127)
                                 .tempo(472, 600000)
                                 .noteOn(0, 3, 63, 127)
                                 .tempo(480, 333333)
                                 .noteOn(0, 4, 64, 127)
                                 .noteOn(1, 15, 65, 127));
    }

    doubles::ScratchFolder folder;
    std::bitset<16> soundingAtEnd;
    RecordingProcessor processor;
    ProcessData data;
};

} // namespace

TEST_F(PlayerTest, RunSendsEachNoteAtItsSampleWhateverTheBlockSize)
{
    struct Row {
        int32 sampleRate;
        std::vector<int64> samples;
    };
    const Song song(folder.write("song.mid", songWithTempoChanges()));
    for (const Row& row : {Row{44100, {0, 46, 368, 22050, 48510, 48541}},
                           Row{48000, {0, 50, 400, 24000, 52800, 52833}},
                           Row{96000, {0, 100, 800, 48000, 105600, 105667}}})
        // At 44,100 Hz sample 22,050 is the first of a block of 50, and 368 of one of 368.
        for (const int32 blockSize : {1, 50, 64, 367, 368, 369, 512, 4096, 65536}) {
            RecordingProcessor fresh;
            Player(fresh, data, song, {row.sampleRate, blockSize, false}).run();
            std::vector<int64> samples;
            for (const auto& received : fresh.events)
                samples.push_back(received.sample);
            EXPECT_EQ(samples, row.samples) << row.sampleRate << " " << blockSize;
            EXPECT_TRUE(fresh.everyOffsetInsideItsBlock) << row.sampleRate << " " << blockSize;
            EXPECT_THAT(fresh.blockSizes, Each(blockSize));
        }
}

TEST_F(PlayerTest, RunTellsThePlayHeadWithEachBlock)
{
    play(midiFile(480, MidiTrack().noteOn(0, 0, 60, 1)), {48000, 8000, false});
    EXPECT_THAT(processor.blockStarts, ElementsAre(0, 8000, 16000)); // half a second after the end
}

TEST_F(PlayerTest, RunSendsVelocitiesAsPartsOf127AndNoteOffsAsNoteOffs)
{
    play(midiFile(480, MidiTrack().noteOn(0, 9, 36, 64).noteOff(10, 9, 36, 127)),
         {44100, 512, false});
    ASSERT_EQ(processor.events.size(), 2U);
    const auto& on = processor.events[0].event;
    EXPECT_EQ(on.type, Event::kNoteOnEvent);
    EXPECT_EQ(on.noteOn.channel, 9);
    EXPECT_EQ(on.noteOn.pitch, 36);
    EXPECT_FLOAT_EQ(on.noteOn.velocity, 64.F / 127.F);
    const auto& off = processor.events[1].event;
    EXPECT_EQ(off.type, Event::kNoteOffEvent);
    EXPECT_EQ(off.noteOff.channel, 9);
    EXPECT_EQ(off.noteOff.pitch, 36);
    EXPECT_FLOAT_EQ(off.noteOff.velocity, 1.F);
}

TEST_F(PlayerTest, RunCountsAndKeepsWhatWasSentAndWhatLeft)
{
    const auto result = play(midiFile(480, MidiTrack()
                                               .noteOn(0, 0, 60, 100)
                                               .noteOn(0, 9, 36, 100)
                                               .noteOff(480, 0, 60, 0)
                                               .noteOn(0, 9, 36, 0)),
                             {44100, 512, false});
    EXPECT_EQ(result.sent.ons[0], 1);
    EXPECT_EQ(result.sent.offs[0], 1);
    EXPECT_EQ(result.sent.ons[9], 1);
    EXPECT_EQ(result.sent.offs[9], 1);
    EXPECT_EQ(result.sent.allOns(), 2);
    EXPECT_EQ(result.left.ons, result.sent.ons);
    EXPECT_EQ(result.left.offs, result.sent.offs);
    EXPECT_EQ(result.crowdedBlocks, 0);
    EXPECT_THAT(result.incoming,
                ElementsAre(FieldsAre(0, 0, 60, 100, true), FieldsAre(0, 9, 36, 100, true),
                            FieldsAre(22050, 0, 60, 0, false), FieldsAre(22050, 9, 36, 0, false)));
    // Sample 22,050 is in block 43. What leaves has the sample at which its block begins.
    EXPECT_THAT(result.outgoing,
                ElementsAre(FieldsAre(0, 0, 60, 127), FieldsAre(0, 9, 36, 127),
                            FieldsAre(22016, 0, 60, 0), FieldsAre(22016, 9, 36, 0)));
}

TEST_F(PlayerTest, RunSendsEveryNoteOfACrowdedBlock)
{
    MidiTrack track;
    for (int i = 0; i < 3000; ++i)
        track.noteOn(0, i % 16, i % 128, 100);
    const auto result = play(midiFile(480, track), {44100, 512, false});
    EXPECT_EQ(result.sent.allOns(), 3000);
    EXPECT_EQ(processor.events.size(), 3000U);
}

TEST_F(PlayerTest, RunAsksBeforeEachBlockAndSendsItsParameterChangesWithIt)
{
    std::vector<int64> asked;
    play(midiFile(480, MidiTrack().noteOn(0, 0, 60, 1)), {48000, 12000, false},
         [&](int64 position, int64 length, double blockSeconds, ParameterChanges& changes) {
             asked.push_back(position);
             EXPECT_EQ(length, 24000);
             EXPECT_DOUBLE_EQ(blockSeconds, 0.25);
             int32 index = 0;
             changes.addParameterData(7, index)->addPoint(0, position == 0 ? 0.25 : 0.75, index);
         });
    EXPECT_THAT(asked, ElementsAre(0, 12000));
    EXPECT_THAT(processor.points, ElementsAre(FieldsAre(0, 7U, 0.25), FieldsAre(12000, 7U, 0.75)));
}

TEST_F(PlayerTest, RunMeasuresEveryBlock)
{
    const auto result = play(songWithTempoChanges(), {44100, 512, false});
    EXPECT_EQ(result.process.blocks(), result.blocks);
    EXPECT_GT(result.process.longest(), 0);
    int64 blocks = 0;
    int64 sent = 0;
    for (const auto& span : result.timeline.spans()) {
        blocks += span.blocks;
        sent += span.sent;
        EXPECT_LE(span.longest, result.process.longest());
    }
    EXPECT_EQ(blocks, result.blocks);
    EXPECT_EQ(sent, 6);
    // Three notes in the first block.
    EXPECT_EQ(result.timeline.spans()[0].mostSent, 3);
}

TEST_F(PlayerTest, RunCountsBlocksThatComeTooLate)
{
    // A block lasts 0.37 s, longer than other programs keep this one waiting.
    processor.secondsInTheFirstBlock = 0.5;
    const auto result = play(songWithTempoChanges(), {44100, 16384, false});
    EXPECT_EQ(result.lateBlocks, 1);
    EXPECT_GE(result.process.longest(), 0.5);
    EXPECT_GE(result.timeline.spans()[0].longest, 0.5);
    EXPECT_LT(result.timeline.spans()[1].longest, 0.37);
}

TEST_F(PlayerTest, PlayLiveSendsWhatSomebodyPlaysWithTheSong)
{
    const Song song(folder.write(
        "song.mid", midiFile(480, MidiTrack().noteOn(0, 0, 60, 1).noteOff(480, 0, 60, 0))));
    const auto result =
        playLive(song, {48000, 512, false}, {{0, 3, 72, 90, true}, {0, 3, 72, 0, false}},
                 [] { return false; });
    EXPECT_EQ(result.sent.ons[3], 1);
    EXPECT_EQ(result.sent.offs[3], 1);
    EXPECT_EQ(result.sent.ons[0], 1);
    EXPECT_EQ(result.sent.offs[0], 1);
    ASSERT_EQ(processor.events.size(), 4U);
    EXPECT_EQ(processor.events[1].event.noteOn.pitch, 72);
    EXPECT_EQ(processor.events[1].sample, 0);
}

TEST_F(PlayerTest, PlayLiveGoesOnWithoutASongAndEndsWhatSoundsWhenItIsStopped)
{
    int blocks = 0;
    const auto result = playLive(
        Song(), {48000, 512, false, true},
        {{0, 3, 72, 90, true}, {0, 15, 127, 1, true}, {0, 3, 50, 9, true}, {0, 3, 50, 0, false}},
        [&] { return ++blocks > 100; });
    EXPECT_EQ(result.blocks, 101) << "of which the last one ends the notes";
    EXPECT_EQ(result.sent.ons[3], 2);
    EXPECT_EQ(result.sent.offs[3], 2);
    EXPECT_EQ(result.sent.offs[15], 1);
    EXPECT_TRUE(soundingAtEnd.none());
    EXPECT_EQ(processor.events.back().sample, 100 * 512);
}

TEST_F(PlayerTest, PlayLiveEndsWhatTheSongLeavesSounding)
{
    const Song song(folder.write("song.mid", midiFile(480, MidiTrack().noteOn(0, 9, 60, 1))));
    const auto result = playLive(song, {48000, 512, false}, {}, [] { return false; });
    EXPECT_EQ(result.sent.offs[9], 1);
}
