#include "tools/play/music/TempoMap.h"

#include <gtest/gtest.h>

using Steinberg::Vst::play::TempoMap;

TEST(TempoMap, SampleAtGivesTheNearestSampleAtATempoOf120UntilItChanges)
{
    // 480 pulses last half a second. One lasts 45.9375 samples at 44.1 kHz and 50 at 48 kHz.
    const TempoMap map(480);
    EXPECT_EQ(map.sampleAt(0, 44100), 0);
    EXPECT_EQ(map.sampleAt(1, 44100), 46);
    EXPECT_EQ(map.sampleAt(7, 44100), 322); // 321.5625
    EXPECT_EQ(map.sampleAt(8, 44100), 368); // 367.5: a half is rounded up
    EXPECT_EQ(map.sampleAt(480, 44100), 22050);
    EXPECT_EQ(map.sampleAt(1, 48000), 50);
    EXPECT_EQ(map.sampleAt(480, 48000), 24000);
    EXPECT_EQ(map.sampleAt(1, 96000), 100);
    EXPECT_EQ(map.sampleAt(480, 96000), 48000);
}

TEST(TempoMap, ChangeCountsFromItsPulseOn)
{
    // 0.5 s to pulse 480, 0.6 s to pulse 960, then 333,333 / 480 microseconds a pulse.
    TempoMap map(480);
    map.change(480, 600000);
    map.change(960, 333333);
    EXPECT_EQ(map.sampleAt(480, 44100), 22050);
    EXPECT_EQ(map.sampleAt(960, 44100), 48510);
    EXPECT_EQ(map.sampleAt(960, 48000), 52800);
    EXPECT_EQ(map.sampleAt(961, 44100), 48541);  // 48,510 + 30.62...
    EXPECT_EQ(map.sampleAt(961, 48000), 52833);  // 52,800 + 33.33...
    EXPECT_EQ(map.sampleAt(961, 96000), 105667); // 105,600 + 66.66...
    EXPECT_EQ(map.sampleAt(1440, 44100), 63210); // 48,510 + 14,699.985...
    EXPECT_EQ(map.secondsAt(959), 1);
    EXPECT_EQ(map.secondsAt(479), 0);
}

TEST(TempoMap, SampleAtDoesNotDriftOverManyTempoChanges)
{
    // 960 pulses of 333,333 / 96 and 333,334 / 96 microseconds in turn: 3.333335 s together.
    TempoMap map(96);
    for (int pulse = 0; pulse < 960; ++pulse)
        map.change(pulse, pulse % 2 == 0 ? 333333 : 333334);
    EXPECT_EQ(map.sampleAt(960, 44100), 147000);  // 147,000.07
    EXPECT_EQ(map.sampleAt(960, 192000), 640000); // 640,000.32
}

TEST(TempoMap, ChangeReplacesAnEarlierOneAtTheSamePulse)
{
    TempoMap map(480);
    map.change(0, 1000000);
    map.change(0, 250000);
    EXPECT_EQ(map.sampleAt(480, 48000), 12000);
}

TEST(TempoMap, SampleAtStaysExactInTheLongestAndSlowestSong)
{
    // One quarter note of 32,767 pulses lasts 16.777215 s, 60,000 of them 1,006,632.9 s.
    TempoMap map(32767);
    map.change(0, 16777215);
    EXPECT_EQ(map.sampleAt(32767, 192000), 3221225); // 16.777215 s * 192,000 = 3,221,225.28
    EXPECT_EQ(map.sampleAt(32767 * 60000, 192000), 193273516800);
}
