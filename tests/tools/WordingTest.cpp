#include "tools/play/basics/Wording.h"

#include <gtest/gtest.h>

using namespace Steinberg::Vst::play;

TEST(Wording, PutsSecondsAsMinutesAndSeconds)
{
    EXPECT_EQ(minutes(0), "0:00");
    EXPECT_EQ(minutes(125.9), "2:05");
    EXPECT_EQ(minutes(3600), "60:00");
}

TEST(Wording, NeverPutsASongBeyondItsEnd)
{
    EXPECT_EQ(minutesOf(30, 60), "0:30 of 1:00");
    EXPECT_EQ(minutesOf(90, 60), "1:00 of 1:00");
    EXPECT_EQ(minutesOf(0, 0), "0:00 of 0:00");
}

TEST(Wording, PadsByCharactersAndNotByBytes)
{
    EXPECT_EQ(padded("B\xC3\xB6gen", 6), "B\xC3\xB6gen ");
    EXPECT_EQ(padded("longer", 3), "longer");
}
