#include "tools/play/music/Timeline.h"
#include "tools/play/music/BlockTimes.h"

#include <gmock/gmock.h>
#include <numeric>

using namespace Steinberg;
using namespace Steinberg::Vst::play;
using testing::ElementsAre;
using testing::FieldsAre;
using testing::SizeIs;

TEST(Timeline, AddFillsASpanForEachBlockOfAShortSong)
{
    Timeline timeline(3);
    timeline.add({0.001, 5, 4});
    timeline.add({0.003, 0, 1});
    timeline.add({0.002, 7, 7});
    EXPECT_EQ(timeline.blocksInASpan(), 1);
    EXPECT_THAT(timeline.spans(), ElementsAre(FieldsAre(1, 0.001, 0.001, 5, 4, 5, 4),
                                              FieldsAre(1, 0.003, 0.003, 0, 1, 0, 1),
                                              FieldsAre(1, 0.002, 0.002, 7, 7, 7, 7)));
    EXPECT_EQ(timeline.longestQueue(), 7);
}

TEST(Timeline, AddPutsTheBlocksOfALongSongTogether)
{
    // 10,001 blocks need three to a span: 3,333 spans of three and one of two.
    Timeline timeline(10001);
    for (int64 i = 0; i < 10001; ++i)
        timeline.add({i == 4 ? 0.5 : 0.25, 1, i == 3 ? 9 : 2});
    EXPECT_EQ(timeline.blocksInASpan(), 3);
    ASSERT_THAT(timeline.spans(), SizeIs(3334));
    // Three blocks of 1 s together and 0.5 s at the most, with 3 events in and 13 out.
    EXPECT_THAT(timeline.spans()[1], FieldsAre(3, 1.0, 0.5, 3, 13, 1, 9));
    EXPECT_EQ(timeline.spans().back().blocks, 2);
    EXPECT_EQ(timeline.longestQueue(), 9);
}

TEST(Timeline, AddCountsABlockTooManyToTheLastSpan)
{
    Timeline timeline(1);
    timeline.add({0.1, 1, 1});
    timeline.add({0.1, 1, 3});
    ASSERT_THAT(timeline.spans(), SizeIs(1));
    EXPECT_EQ(timeline.spans()[0].blocks, 2);
    Timeline nothing;
    nothing.add({0.1, 1, 1});
    EXPECT_EQ(nothing.longestQueue(), 0);
}

TEST(BlockTimes, WithinTellsTheTimeThatAPartOfTheBlocksStayedWithin)
{
    BlockTimes times;
    for (int i = 0; i < 98; ++i)
        times.add(0.0001);
    times.add(0.002);
    times.add(0.05);
    EXPECT_EQ(times.blocks(), 100);
    EXPECT_EQ(times.longest(), 0.05);
    EXPECT_NEAR(times.sum(), 0.0618, 1e-9);
    const auto expectWithin = [&](double part, double seconds) {
        EXPECT_GE(times.within(part), seconds * 0.999) << part;
        EXPECT_LE(times.within(part), seconds * 1.05) << part;
    };
    expectWithin(0.5, 0.0001);
    expectWithin(0.98, 0.0001);
    expectWithin(0.99, 0.002);
    expectWithin(1, 0.05);
    EXPECT_LE(times.within(1), times.longest());
}

TEST(BlockTimes, AddTakesTimesOfAnyLength)
{
    BlockTimes times;
    times.add(0);
    times.add(1e-12);
    times.add(1e6);
    EXPECT_EQ(times.steps().front(), 2);
    EXPECT_EQ(times.steps().back(), 1);
    EXPECT_EQ(std::accumulate(times.steps().begin(), times.steps().end(), int64{0}), 3);
    EXPECT_EQ(times.within(1), 1e6);
    EXPECT_EQ(BlockTimes().within(0.5), 0);
}
