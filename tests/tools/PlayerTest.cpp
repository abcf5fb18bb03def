#include "tools/play/music/Player.h"
#include "tests/tools/MidiBytes.h"
#include "tests/tools/RecordingProcessor.h"
#include "tests/tools/ScratchFolder.h"

#include <bitset>
#include <chrono>
#include <gmock/gmock.h>
#include <map>

using namespace Steinberg;
using namespace Steinberg::Vst;
using namespace Steinberg::Vst::play;
using doubles::midiFile;
using doubles::MidiTrack;
using doubles::RecordingProcessor;
using testing::Each;
using testing::ElementsAre;

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

    std::vector<int64> samples() const
    {
        std::vector<int64> positions;
        for (const auto& received : processor.events)
            positions.push_back(received.sample);
        return positions;
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

TEST_F(PlayerTest, SendsEachNoteAtItsSampleAt44100)
{
    play(songWithTempoChanges(), {44100, 512, false});
    EXPECT_THAT(samples(), ElementsAre(0, 46, 368, 22050, 48510, 48541));
    EXPECT_TRUE(processor.everyOffsetInsideItsBlock);
}

TEST_F(PlayerTest, SendsEachNoteAtItsSampleAt48000)
{
    play(songWithTempoChanges(), {48000, 512, false});
    EXPECT_THAT(samples(), ElementsAre(0, 50, 400, 24000, 52800, 52833));
    EXPECT_TRUE(processor.everyOffsetInsideItsBlock);
}

TEST_F(PlayerTest, SendsEachNoteAtItsSampleAt96000)
{
    play(songWithTempoChanges(), {96000, 512, false});
    EXPECT_THAT(samples(), ElementsAre(0, 100, 800, 48000, 105600, 105667));
    EXPECT_TRUE(processor.everyOffsetInsideItsBlock);
}

TEST_F(PlayerTest, SendsTheSameSamplesWhateverTheBlockSize)
{
    for (const int32 blockSize : {1, 50, 64, 367, 368, 369, 4096, 65536}) {
        processor.events.clear();
        RecordingProcessor fresh;
        const Song song(folder.write("song.mid", songWithTempoChanges()));
        Player player(fresh, data, song, {44100, blockSize, false});
        player.run();
        std::vector<int64> positions;
        for (const auto& received : fresh.events)
            positions.push_back(received.sample);
        EXPECT_THAT(positions, ElementsAre(0, 46, 368, 22050, 48510, 48541)) << blockSize;
        EXPECT_TRUE(fresh.everyOffsetInsideItsBlock) << blockSize;
        EXPECT_THAT(fresh.blockSizes, Each(blockSize));
    }
}

TEST_F(PlayerTest, PutsANoteOnABlockBoundaryAtOffsetZeroOfTheLaterBlock)
{
    // Sample 22,050 is the first of block 441 of 50 samples.
    play(songWithTempoChanges(), {44100, 50, false});
    EXPECT_EQ(processor.events[3].sample, 22050);
    EXPECT_EQ(processor.events[3].event.sampleOffset, 0);
}

TEST_F(PlayerTest, TellsThePlayHeadWithEachBlock)
{
    play(midiFile(480, MidiTrack().noteOn(0, 0, 60, 1)), {48000, 8000, false});
    EXPECT_THAT(processor.blockStarts, ElementsAre(0, 8000, 16000)); // half a second after the end
}

TEST_F(PlayerTest, SendsVelocitiesAsPartsOf127AndNoteOffsAsSuch)
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

TEST_F(PlayerTest, CountsWhatWasSentAndWhatLeftByChannel)
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
    ASSERT_EQ(result.outgoing.size(), 4U);
    EXPECT_EQ(result.outgoing[0].sample, 0);
    EXPECT_EQ(result.outgoing[0].velocity, 127);
    // Sample 22,050 lies in block 43, which begins at 22,016: what leaves carries the block's
    // start.
    EXPECT_EQ(result.outgoing[2].sample, 22016);
    EXPECT_EQ(result.outgoing[2].velocity, 0);
}

TEST_F(PlayerTest, ReportsWhatACrowdedBlockLost)
{
    // 101 notes at once: the hundred before the last are dropped.
    MidiTrack track;
    for (int i = 0; i < 101; ++i)
        track.noteOn(0, 0, i, 100);
    const auto result = play(midiFile(480, track), {44100, 512, false});
    EXPECT_EQ(result.sent.allOns(), 101);
    EXPECT_EQ(result.left.allOns(), 1);
    EXPECT_EQ(result.crowdedBlocks, 1);
    ASSERT_EQ(result.outgoing.size(), 1U);
    EXPECT_EQ(result.outgoing[0].pitch, 100);
}

TEST_F(PlayerTest, SendsEveryNoteOfACrowdedBlock)
{
    MidiTrack track;
    for (int i = 0; i < 3000; ++i)
        track.noteOn(0, i % 16, i % 128, 100);
    const auto result = play(midiFile(480, track), {44100, 512, false});
    EXPECT_EQ(result.sent.allOns(), 3000);
    EXPECT_EQ(processor.events.size(), 3000U);
}

TEST_F(PlayerTest, AsksBeforeEachBlockAndSendsItsParameterChangesWithIt)
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
    ASSERT_EQ(processor.points.size(), 2U);
    EXPECT_EQ(processor.points[0].sample, 0);
    EXPECT_EQ(processor.points[0].id, 7U);
    EXPECT_DOUBLE_EQ(processor.points[0].value, 0.25);
    EXPECT_EQ(processor.points[1].sample, 12000);
    EXPECT_DOUBLE_EQ(processor.points[1].value, 0.75);
}

TEST_F(PlayerTest, MeasuresEveryBlock)
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

TEST_F(PlayerTest, CountsBlocksThatComeTooLate)
{
    // A block lasts 0.37 s, longer than other programs keep this one waiting.
    processor.secondsInTheFirstBlock = 0.5;
    const auto result = play(songWithTempoChanges(), {44100, 16384, false});
    EXPECT_EQ(result.lateBlocks, 1);
    EXPECT_GE(result.process.longest(), 0.5);
    EXPECT_GE(result.timeline.spans()[0].longest, 0.5);
    EXPECT_LT(result.timeline.spans()[1].longest, 0.37);
}

TEST_F(PlayerTest, RemembersWhatItSent)
{
    const auto result = play(songWithTempoChanges(), {44100, 512, false});
    ASSERT_EQ(result.incoming.size(), 6U);
    EXPECT_EQ(result.incoming[5].sample, 48541);
    EXPECT_EQ(result.incoming[5].channel, 15);
    EXPECT_EQ(result.incoming[5].pitch, 65);
    EXPECT_TRUE(result.incoming[5].on);
}

TEST_F(PlayerTest, PlayingLiveSendsWhatSomebodyPlaysWithTheSong)
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

TEST_F(PlayerTest, PlayingLiveGoesOnWithoutASongAndEndsWhatSoundsWhenItIsStopped)
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

TEST_F(PlayerTest, PlayingLiveEndsWhatTheSongLeavesSounding)
{
    const Song song(folder.write("song.mid", midiFile(480, MidiTrack().noteOn(0, 9, 60, 1))));
    const auto result = playLive(song, {48000, 512, false}, {}, [] { return false; });
    EXPECT_EQ(result.sent.offs[9], 1);
}

TEST_F(PlayerTest, TakesTheSongsTimeWhenAskedTo)
{
    // One quarter note of 0.1 s and half a second after it: the last block of 0.1 s begins at 0.5
    // s.
    const auto midi =
        midiFile(480, MidiTrack().tempo(0, 100000).noteOn(0, 0, 60, 1).noteOff(480, 0, 60, 0));
    const auto begin = std::chrono::steady_clock::now();
    play(midi, {48000, 4800, true});
    const std::chrono::duration<double> passed = std::chrono::steady_clock::now() - begin;
    EXPECT_GE(passed.count(), 0.5);
}
