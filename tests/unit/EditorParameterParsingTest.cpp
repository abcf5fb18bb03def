#include "tests/unit/EditorParameterFixture.h"

#include <cmath>

using namespace Steinberg;
using namespace Steinberg::Vst;
using namespace doubles;

namespace {

class EditorParameterFromString : public EditorParameterFixture {
protected:
    /** The normalized value of a text, or NaN when it is refused. */
    static double parsed(const EditorParameter& parameter, const char16* text)
    {
        double value = -1;
        return parameter.fromString(text, value) ? value : kNaN;
    }
};

TEST_F(EditorParameterFromString, LeavesTheValueAloneWhenItFails)
{
    const auto parameter = ranged(0, 127);
    EXPECT_TRUE(std::isnan(parsed(*parameter, u"5"))) << "without a parser";
    parameter->setTextParser(parsePlusMinusValue, 0);
    double value = 0.375;
    EXPECT_FALSE(parameter->fromString(u"128", value));
    EXPECT_EQ(value, 0.375);
}

TEST_F(EditorParameterFromString, AddsTheOffsetAndTestsTheRange)
{
    const auto parameter = ranged(0, 128);
    parameter->setTextParser(parsePlusMinusValue, 64);
    EXPECT_EQ(parsed(*parameter, u"0"), 0.5);
    EXPECT_EQ(parsed(*parameter, u"-64"), 0);
    EXPECT_EQ(parsed(*parameter, u"+64"), 1);
    EXPECT_TRUE(std::isnan(parsed(*parameter, u"-65")));
    EXPECT_TRUE(std::isnan(parsed(*parameter, u"65")));
    EXPECT_TRUE(std::isnan(parsed(*parameter, u"")));
    EXPECT_TRUE(std::isnan(parsed(*parameter, u" 1")));
    EXPECT_TRUE(std::isnan(parsed(*parameter, nullptr)));
}

TEST_F(EditorParameterFromString, ReadsPanPositions)
{
    const auto parameter = ranged(0, 127);
    parameter->setTextParser(parseLRPanValue, 64);
    EXPECT_EQ(parsed(*parameter, u"L63"), 1.0 / 127);
    EXPECT_EQ(parsed(*parameter, u"L64"), 0);
    EXPECT_EQ(parsed(*parameter, u"C"), 64.0 / 127);
    EXPECT_EQ(parsed(*parameter, u"R63"), 1);
    EXPECT_TRUE(std::isnan(parsed(*parameter, u"R64")));
    EXPECT_TRUE(std::isnan(parsed(*parameter, u"L65")));
}

TEST_F(EditorParameterFromString, TakesValuesOfTheRangeAloneAndDoesNotOverflow)
{
    auto parameter = ranged(7, 7);
    parameter->setTextParser(parsePlusMinusValue, 0);
    EXPECT_EQ(parsed(*parameter, u"7"), 0);
    EXPECT_TRUE(std::isnan(parsed(*parameter, u"6")));
    EXPECT_TRUE(std::isnan(parsed(*parameter, u"8")));
    parameter = ranged(10, 6); // nothing is in a reversed range
    parameter->setTextParser(parsePlusMinusValue, 0);
    for (const char16* text : {u"6", u"8", u"10", u"0"})
        EXPECT_TRUE(std::isnan(parsed(*parameter, text)));
    parameter = ranged(kLargest - 1, kLargest);
    parameter->setTextParser(parsePlusMinusValue, 64);
    EXPECT_TRUE(std::isnan(parsed(*parameter, u"2147483647")));
    EXPECT_EQ(parsed(*parameter, u"2147483583"), 1);
    parameter->setTextParser(parsePlusMinusValue, -64);
    EXPECT_TRUE(std::isnan(parsed(*parameter, u"-2147483648")));
}

} // namespace
