#include "tools/play/music/NoteFates.h"

#include <gmock/gmock.h>
#include <tuple>

using namespace Steinberg;
using namespace Steinberg::Vst::play;
using testing::ElementsAre;
using testing::FieldsAre;
using testing::SizeIs;

namespace {

constexpr int32 kBlock = 100;
constexpr int64 kLength = 10000;
constexpr auto kNever = NoteFate::kNever;

/** Builds what was sent and what left. */
struct Exchange {
    PlayResult played;

    Exchange& on(int64 sample, uint8 pitch = 60, uint8 channel = 0)
    {
        played.incoming.push_back({sample, channel, pitch, 90, true});
        return *this;
    }
    Exchange& off(int64 sample)
    {
        played.incoming.push_back({sample, 0, 60, 0, false});
        return *this;
    }
    Exchange& onLeft(int64 sample, uint8 pitch = 60, uint8 channel = 0)
    {
        played.outgoing.push_back({sample, channel, pitch, 127});
        return *this;
    }
    Exchange& offLeft(int64 sample)
    {
        played.outgoing.push_back({sample, 0, 60, 0});
        return *this;
    }
    NoteFates fates()
    {
        played.samples = kLength;
        return fatesOf(played, kBlock);
    }
};

/** Start, end, and when they left. */
using Times = std::tuple<int64, int64, int64, int64>;

std::vector<Times> timesOf(const NoteFates& fates)
{
    std::vector<Times> times;
    for (const auto& note : fates.notes)
        times.emplace_back(note.start, note.end, note.startBack, note.endBack);
    return times;
}

} // namespace

TEST(NoteFates, PutTogetherWhatWasSentAndWhatLeft)
{
    // What left has the sample at which its block begins.
    const auto fates = Exchange().on(130).off(380).onLeft(100).offLeft(300).fates();
    EXPECT_THAT(timesOf(fates), ElementsAre(Times{130, 380, 100, 300}));
    EXPECT_FALSE(fates.notes[0].lostItsStart());
    EXPECT_FALSE(fates.notes[0].lostItsEnd());
    EXPECT_THAT(fates.extra, SizeIs(0));
}

TEST(NoteFates, NameTheEventThatDidNotLeave)
{
    const auto noStart = Exchange().on(130).off(380).offLeft(300).fates();
    EXPECT_EQ(noStart.lostStarts(), 1);
    EXPECT_EQ(noStart.lostEnds(), 0);
    const auto noEnd = Exchange().on(130).off(380).onLeft(100).fates();
    EXPECT_EQ(noEnd.lostStarts(), 0);
    EXPECT_EQ(noEnd.lostEnds(), 1);
}

TEST(NoteFates, TakeTheOlderOfTwoForTheLostOne)
{
    // Two notes of one key. One note-on left, in the block of the second one.
    const auto fates =
        Exchange().on(10).off(110).on(210).off(310).offLeft(100).onLeft(200).offLeft(300).fates();
    EXPECT_THAT(timesOf(fates),
                ElementsAre(Times{10, 110, kNever, 100}, Times{210, 310, 200, 300}));
}

TEST(NoteFates, KeepTheOrderOfWhatLeavesABlockLate)
{
    const auto fates =
        Exchange().on(10).on(110).on(210).onLeft(100).onLeft(200).onLeft(300).fates();
    EXPECT_THAT(timesOf(fates),
                ElementsAre(Times{10, kLength, 100, kNever}, Times{110, kLength, 200, kNever},
                            Times{210, kLength, 300, kNever}));
}

TEST(NoteFates, NeverTakeAnEventForTheAnswerToALaterOne)
{
    const auto fates = Exchange().onLeft(0).on(100).fates();
    EXPECT_TRUE(fates.notes[0].lostItsStart());
    EXPECT_THAT(fates.extra, ElementsAre(FieldsAre(0, 0, 60, 127)));
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
    EXPECT_THAT(timesOf(fates),
                ElementsAre(Times{0, 500, kNever, kNever}, Times{10, 600, kNever, kNever}));
}

TEST(NoteFates, KeepNotesWithoutEndAndEndsWithoutNote)
{
    const auto fates = Exchange().off(50).on(70).fates();
    EXPECT_THAT(timesOf(fates),
                ElementsAre(Times{50, 50, kNever, kNever}, Times{70, kLength, kNever, kNever}));
    EXPECT_FALSE(fates.notes[0].begins);
    EXPECT_FALSE(fates.notes[1].ends);
    EXPECT_EQ(fates.lostStarts(), 1);
    EXPECT_EQ(fates.lostEnds(), 1);
}
