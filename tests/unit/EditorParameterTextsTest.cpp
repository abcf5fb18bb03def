#include "tests/unit/EditorParameterFixture.h"

#include <vector>

using namespace Steinberg;
using namespace Steinberg::Vst;
using namespace doubles;
using testing::ElementsAre;

namespace {

using EditorParameterToString = EditorParameterFixture;

TEST_F(EditorParameterToString, GivesTheLibrarysTextsAndFetchesThemOnce)
{
    const auto parameter = make({0, 0, 2, 0, {{0, "off"}, {1, "half"}, {2, "on"}}});
    trace.clear();
    for (int round = 0; round < 3; ++round) {
        EXPECT_EQ(textOf(*parameter, 0), u"off");
        EXPECT_EQ(textOf(*parameter, 0.5), u"half");
        EXPECT_EQ(textOf(*parameter, 1), u"on");
    }
    parameter->updateParemeterInfo();
    EXPECT_EQ(textOf(*parameter, 1), u"on");
    EXPECT_THAT(trace.texts(), ElementsAre("library.getParameterValue(5)"));
}

TEST_F(EditorParameterToString, FollowsTheRoundingOfANegativeMinimum)
{
    const auto parameter = ranged(-2, 2);
    // -2 + 0.5 is cut to -1: the lowest value's own text is never shown.
    EXPECT_EQ(textOf(*parameter, 0), u"-1");
    EXPECT_EQ(textOf(*parameter, 0.5), u"0");
    EXPECT_EQ(textOf(*parameter, 1), u"2");
}

TEST_F(EditorParameterToString, IsEmptyForAValueWithoutText)
{
    const auto parameter = ranged(0, 2);
    for (const double value : {-1.0, 1.5, 1e300, -1e300, kInfinity, -kInfinity})
        EXPECT_EQ(textOf(*parameter, value), u"") << value;
    EXPECT_EQ(textOf(*parameter, kNaN), u"0");
    EXPECT_EQ(textOf(*ranged(7, 7), 0), u"");
    EXPECT_EQ(textOf(*ranged(9, 7), 0), u"");
}

TEST_F(EditorParameterToString, GivesTheNumberWithFourPlacesWithoutTexts)
{
    const auto parameter = ranged(0, 2);
    parameter->setHasValueTexts(false);
    EXPECT_EQ(textOf(*parameter, 0), u"0.0000");
    EXPECT_EQ(textOf(*parameter, 0.5), u"0.5000");
    EXPECT_EQ(textOf(*parameter, 0.123456), u"0.1235");
    EXPECT_EQ(textOf(*parameter, 1), u"1.0000");
    EXPECT_EQ(textOf(*parameter, -0.5), u"-0.5000");
    EXPECT_EQ(textOf(*parameter, 1e300).size(), 127u);
    EXPECT_EQ(textOf(*parameter, kInfinity), u"inf");
}

TEST_F(EditorParameterToString, ReadsUtf8AndCutsItToTheHostsBuffer)
{
    const auto parameter = make({0,
                                 0,
                                 4,
                                 0,
                                 {{0, "20\xC2\xB0"},
                                  {1, "\xFF\xFE"},
                                  {2, std::string(126, 'x') + "\xF0\x9D\x84\x9E"},
                                  {3, std::string(5000, 'y')},
                                  {4, std::string("a\0b", 3)}}});
    EXPECT_EQ(textOf(*parameter, 0), u"20\u00B0");
    EXPECT_EQ(textOf(*parameter, 0.25), u"??");
    EXPECT_EQ(textOf(*parameter, 0.5), std::u16string(126, u'x')); // no half character at the end
    EXPECT_EQ(textOf(*parameter, 0.75), std::u16string(127, u'y'));
    EXPECT_EQ(textOf(*parameter, 1), u"a");
}

TEST_F(EditorParameterToString, IsEmptyForATextWhoseCallThrew)
{
    class HalfWay : public ScriptedLibrary {
    public:
        using ScriptedLibrary::ScriptedLibrary;
        int32 getParameterValueString(uint32, int32 value, std::string& text) override
        {
            text = "half a text";
            if (value == 1)
                throw ScriptedFailure("half way");
            return 0;
        }
    } breaking(trace);
    breaking.setParameter(kID, {0, 0, 2, 0, {}});
    const auto parameter = owned(new EditorParameter(&breaking, 0, kID, 0, 0, "x"));
    parameter->setHasValueTexts(true);
    EXPECT_EQ(textOf(*parameter, 0), u"half a text");
    EXPECT_EQ(textOf(*parameter, 0.5), u"");
    EXPECT_EQ(textOf(*parameter, 1), u"half a text");
}

TEST_F(EditorParameterToString, StartsWithAnEmptyTextForEveryValue)
{
    class Appending : public ScriptedLibrary {
    public:
        using ScriptedLibrary::ScriptedLibrary;
        int32 getParameterValueString(uint32, int32 value, std::string& text) override
        {
            if (value != 1)
                text += "told";
            return 0;
        }
    } appending(trace);
    appending.setParameter(kID, {0, 0, 2, 0, {}});
    const auto parameter = owned(new EditorParameter(&appending, 0, kID, 0, 0, "x"));
    parameter->setHasValueTexts(true);
    EXPECT_EQ(textOf(*parameter, 0), u"told");
    EXPECT_EQ(textOf(*parameter, 0.5), u"");
    EXPECT_EQ(textOf(*parameter, 1), u"told");
}

TEST_F(EditorParameterToString, FetchesTextsAtTheEndOfTheIntegerRangeOnce)
{
    const auto high = ranged(kLargest - 2, kLargest);
    EXPECT_EQ(trace.textsOf({"library.getParameterValueString"}),
              (std::vector<std::string>{"library.getParameterValueString(5, 2147483645)",
                                        "library.getParameterValueString(5, 2147483646)",
                                        "library.getParameterValueString(5, 2147483647)"}));
    EXPECT_EQ(textOf(*high, 1), u"2147483647");
    trace.clear();
    const auto low = ranged(kSmallest, kSmallest + 1);
    EXPECT_EQ(trace.textsOf({"library.getParameterValueString"}).size(), 2u);
    EXPECT_EQ(textOf(*low, 0), u"-2147483647"); // the lowest value + 0.5, cut towards zero
    EXPECT_EQ(textOf(*low, 1), u"");            // above the range
}

TEST_F(EditorParameterToString, FetchesNoMoreThanAMillionTexts)
{
    CountingLibrary counting(trace);
    counting.setParameter(kID, {0, kSmallest, kLargest, 0, {}});
    const auto parameter = owned(new EditorParameter(&counting, 0, kID, 0, 0, "x"));
    parameter->setHasValueTexts(true);
    EXPECT_EQ(counting.asked, 1048576u);
    // 1,048,575 of 4,294,967,295 steps is the last value with a text.
    EXPECT_EQ(textOf(*parameter, 1048574.0 / 4294967295.0), u"-2146435073");
    EXPECT_EQ(textOf(*parameter, 1048580.0 / 4294967295.0), u"");
    EXPECT_EQ(textOf(*parameter, 1), u"");
    EXPECT_EQ(counting.asked, 1048576u);
}

} // namespace
