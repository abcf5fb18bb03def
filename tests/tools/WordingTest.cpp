#include "tools/play/basics/Wording.h"

#include "tools/common/Failure.h"
#include "tools/host/HostFamily.h"

#include <algorithm>
#include <gtest/gtest.h>

using namespace Steinberg::Vst::play;

TEST(Wording, HostTextEndsWithItsFieldWithoutATerminator)
{
    Steinberg::Vst::String128 field{};
    field[0] = 0x20AC;
    EXPECT_EQ(hostText(field), "\xE2\x82\xAC");
    std::fill(std::begin(field), std::end(field), static_cast<Steinberg::char16>('a'));
    EXPECT_EQ(hostText(field), std::string(128, 'a'));
}

TEST(HostFamily, ParseHostFamilyRefusesWhatIsNone)
{
    for (const char* text : {"", "reaper", ":7.5.1", "cubase:", "cubase:new", "plain:1.0"})
        EXPECT_THROW(parseHostFamily(text, true), Steinberg::Vst::tools::Failure) << text;
}

TEST(Wording, MinutesGivesMinutesAndSeconds)
{
    EXPECT_EQ(minutes(0), "0:00");
    EXPECT_EQ(minutes(125.9), "2:05");
    EXPECT_EQ(minutes(3600), "60:00");
}

TEST(Wording, MinutesOfStopsAtTheSongsEnd)
{
    EXPECT_EQ(minutesOf(30, 60), "0:30 of 1:00");
    EXPECT_EQ(minutesOf(90, 60), "1:00 of 1:00");
    EXPECT_EQ(minutesOf(0, 0), "0:00 of 0:00");
}

TEST(Wording, PaddedCountsCharactersAndNotBytes)
{
    EXPECT_EQ(padded("B\xC3\xB6gen", 6), "B\xC3\xB6gen ");
    EXPECT_EQ(padded("longer", 3), "longer");
}
