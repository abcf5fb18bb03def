#include "view/InputConversion.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using namespace Steinberg::Vst;

namespace {

TEST(ConvertChar16ToChar, KeepsAsciiAndGivesZeroForTheRest)
{
    for (Steinberg::char16 key = 0; key < 0x80; ++key)
        ASSERT_EQ(convertChar16ToChar(key), static_cast<char>(key));
    for (unsigned key = 0x80; key <= 0xFFFF; ++key)
        ASSERT_EQ(convertChar16ToChar(static_cast<Steinberg::char16>(key)), 0) << key;
}

TEST(HalveScrollDistance, HalvesFromTwoLinesOn)
{
    const float rows[][2] = {{0, 0},           {0.5F, 0.5F}, {1.6F, 1.6F}, {1.99F, 1.99F},
                             {2, 1},           {3, 1.5F},    {100, 50},    {-1.6F, -1.6F},
                             {-1.99F, -1.99F}, {-2, -1},     {-3, -1.5F},  {-100, -50}};
    for (const auto& row : rows)
        EXPECT_EQ(halveScrollDistance(row[0]), row[1]) << row[0];
}

TEST(RoundWheelDistanceOutward, MakesAWholeLineOfLessAndKeepsInfinityAndNotANumber)
{
    const float rows[][2] = {{0, 0},        {0.3F, 1},     {0.999F, 1}, {1e-30F, 1},
                             {1, 1},        {1.5F, 1.5F},  {3, 3},      {-0.2F, -1},
                             {-0.999F, -1}, {-1e-30F, -1}, {-1, -1},    {-1.5F, -1.5F},
                             {-3, -3}};
    for (const auto& row : rows)
        EXPECT_EQ(roundWheelDistanceOutward(row[0]), row[1]) << row[0];
    constexpr float infinity = std::numeric_limits<float>::infinity();
    EXPECT_EQ(roundWheelDistanceOutward(infinity), infinity);
    EXPECT_EQ(roundWheelDistanceOutward(-infinity), -infinity);
    EXPECT_TRUE(std::isnan(roundWheelDistanceOutward(std::nanf(""))));
    EXPECT_TRUE(std::isnan(halveScrollDistance(std::nanf(""))));
}

} // namespace
