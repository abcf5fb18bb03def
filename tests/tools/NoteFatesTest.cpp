#include "tools/play/music/NoteFates.h"

#include <gmock/gmock.h>

using namespace Steinberg;
using namespace Steinberg::Vst::play;
using testing::SizeIs;

namespace {

constexpr int32 kBlock = 100;
constexpr int64 kLength = 10000;

/** What was sent and what left, written down as a test needs it. */
struct Exchange {
    PlayResult played;

    Exchange& on(int64 sample, uint8 pitch = 60, uint8 channel = 0)
    {
        played.incoming.push_back({sample, channel, pitch, 90, true});
        return *this;
    }
    Exchange& off(int64 sample, uint8 pitch = 60, uint8 channel = 0)
    {
        played.incoming.push_back({sample, channel, pitch, 0, false});
        return *this;
    }
    Exchange& onLeft(int64 sample, uint8 pitch = 60, uint8 channel = 0)
    {
        played.outgoing.push_back({sample, channel, pitch, 127});
        return *this;
    }
    Exchange& offLeft(int64 sample, uint8 pitch = 60, uint8 channel = 0)
    {
        played.outgoing.push_back({sample, channel, pitch, 0});
        return *this;
    }
    NoteFates fates()
    {
        played.samples = kLength;
        return fatesOf(played, kBlock);
    }
};

} // namespace

TEST(NoteFates, PutTogetherWhatWasSentAndWhatLeft)
{
    const auto fates = Exchange().on(130).off(380).onLeft(100).offLeft(300).fates();
    ASSERT_THAT(fates.notes, SizeIs(1));
    const auto& note = fates.notes[0];
    EXPECT_EQ(note.start, 130);
    EXPECT_EQ(note.end, 380);
    EXPECT_EQ(note.startBack, 100); // the start of the block in which it was sent
    EXPECT_EQ(note.endBack, 300);
    EXPECT_FALSE(note.lostItsStart());
    EXPECT_FALSE(note.lostItsEnd());
    EXPECT_THAT(fates.extra, SizeIs(0));
}

TEST(NoteFates, NameTheEventThatDidNotLeave)
{
    const auto noStart = Exchange().on(130).off(380).offLeft(300).fates();
    EXPECT_TRUE(noStart.notes[0].lostItsStart());
    EXPECT_FALSE(noStart.notes[0].lostItsEnd());
    EXPECT_EQ(noStart.lostStarts(), 1);
    EXPECT_EQ(noStart.lostEnds(), 0);
    const auto noEnd = Exchange().on(130).off(380).onLeft(100).fates();
    EXPECT_FALSE(noEnd.notes[0].lostItsStart());
    EXPECT_TRUE(noEnd.notes[0].lostItsEnd());
    EXPECT_EQ(noEnd.lostEnds(), 1);
}

TEST(NoteFates, TakeTheOlderOfTwoForTheLostOne)
{
    // Two notes of one key; of the note-ons one left, in the second one's block.
    const auto fates =
        Exchange().on(10).off(110).on(210).off(310).offLeft(100).onLeft(200).offLeft(300).fates();
    ASSERT_THAT(fates.notes, SizeIs(2));
    EXPECT_TRUE(fates.notes[0].lostItsStart());
    EXPECT_EQ(fates.notes[1].startBack, 200);
}

TEST(NoteFates, KeepTheOrderOfWhatLeavesABlockLate)
{
    const auto fates =
        Exchange().on(10).on(110).on(210).onLeft(100).onLeft(200).onLeft(300).fates();
    ASSERT_THAT(fates.notes, SizeIs(3));
    EXPECT_EQ(fates.notes[0].startBack, 100);
    EXPECT_EQ(fates.notes[1].startBack, 200);
    EXPECT_EQ(fates.notes[2].startBack, 300);
}

TEST(NoteFates, NeverTakeAnEventForTheAnswerToALaterOne)
{
    const auto fates = Exchange().onLeft(0).on(100).fates();
    EXPECT_TRUE(fates.notes[0].lostItsStart());
    ASSERT_THAT(fates.extra, SizeIs(1));
    EXPECT_EQ(fates.extra[0].sample, 0);
}

TEST(NoteFates, TellPartsAndKeysApart)
{
    const auto fates = Exchange().on(0, 60, 3).onLeft(0, 61, 3).onLeft(0, 60, 4).fates();
    EXPECT_TRUE(fates.notes[0].lostItsStart());
    EXPECT_THAT(fates.extra, SizeIs(2));
}

TEST(NoteFates, EndTheOldestOfSeveralNotesOfOneKey)
{
    const auto fates = Exchange().on(0).on(10).off(500).off(600).fates();
    ASSERT_THAT(fates.notes, SizeIs(2));
    EXPECT_EQ(fates.notes[0].end, 500);
    EXPECT_EQ(fates.notes[1].end, 600);
}

TEST(NoteFates, KeepNotesWithoutEndAndEndsWithoutNote)
{
    const auto fates = Exchange().off(50).on(70).fates();
    ASSERT_THAT(fates.notes, SizeIs(2));
    EXPECT_FALSE(fates.notes[0].begins);
    EXPECT_TRUE(fates.notes[0].lostItsEnd());
    EXPECT_FALSE(fates.notes[1].ends);
    EXPECT_EQ(fates.notes[1].end, kLength);
    EXPECT_FALSE(fates.notes[1].lostItsEnd());
    EXPECT_EQ(fates.lostStarts(), 1);
    EXPECT_EQ(fates.lostEnds(), 1);
}
