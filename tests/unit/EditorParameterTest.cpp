#include "controller/EditorParameter.h"

#include "tests/doubles/ScriptedLibrary.h"

#include "pluginterfaces/vst/ivsteditcontroller.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cmath>
#include <limits>
#include <thread>

using namespace Steinberg;
using namespace Steinberg::Vst;
using namespace doubles;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

constexpr ParamID kID = 5;
constexpr int32 kLargest = std::numeric_limits<int32>::max();
constexpr int32 kSmallest = std::numeric_limits<int32>::min();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

/** Counts instead of recording, for ranges of a million values. */
class CountingLibrary : public ScriptedLibrary {
public:
    using ScriptedLibrary::ScriptedLibrary;
    int32 getParameterValueString(uint32, int32 value, std::string& text) override
    {
        ++asked;
        text = std::to_string(value);
        return 0;
    }
    size_t asked = 0;
};

class EditorParameterTest : public testing::Test {
protected:
    IPtr<EditorParameter> make(const ScriptedParameter& described)
    {
        library.setParameter(kID, described);
        auto made = owned(
            new EditorParameter(&library, ParameterInfo::kCanAutomate, kID, 2, 3, "Volume 1"));
        made->setHasValueTexts(true);
        return made;
    }
    IPtr<EditorParameter> ranged(int32 minimum, int32 maximum)
    {
        return make({minimum, minimum, maximum, 0, {}});
    }

    static std::u16string textOf(const EditorParameter& parameter, double normalized)
    {
        char16 text[129];
        std::fill_n(text, 129, char16('#'));
        parameter.toString(normalized, text);
        EXPECT_EQ(text[128], u'#') << "written behind the buffer";
        const auto length = static_cast<size_t>(std::find(text, text + 128, char16(0)) - text);
        EXPECT_LT(length, 128u) << "no terminator";
        return {text, length};
    }

    static double parsed(const EditorParameter& parameter, const char16* text)
    {
        double value = -1;
        return parameter.fromString(text, value) ? value : kNaN;
    }

    Trace trace;
    ScriptedLibrary library{trace};
};

using EditorValues = EditorParameterTest;
using EditorTexts = EditorParameterTest;
using EditorTextParsing = EditorParameterTest;

TEST_F(EditorParameterTest, DescribesItselfToTheHost)
{
    const auto parameter = make({1, 0, 4, 0, {}});
    const ParameterInfo& info = parameter->getInfo();
    EXPECT_EQ(info.id, kID);
    EXPECT_EQ(std::u16string(info.title), u"Volume 1");
    EXPECT_EQ(std::u16string(info.shortTitle), u"");
    EXPECT_EQ(std::u16string(info.units), u"");
    EXPECT_EQ(info.stepCount, 3);
    EXPECT_EQ(info.unitId, 2);
    EXPECT_EQ(info.flags, 1);
    EXPECT_EQ(info.defaultNormalizedValue, 0.25);
    EXPECT_EQ(parameter->getNormalized(), 0.25);
    EXPECT_EQ(parameter->getEditorParameter(), 1);
}

TEST_F(EditorParameterTest, AsksForRangeThenValueThenEveryText)
{
    make({-1, -1, 1, 0, {}});
    EXPECT_THAT(trace.texts(),
                ElementsAre("library.getParameterMax(5)", "library.getParameterMin(5)",
                            "library.getParameterValue(5)",
                            "library.getParameterValueString(5, -1)",
                            "library.getParameterValueString(5, 0)",
                            "library.getParameterValueString(5, 1)"));
}

TEST_F(EditorParameterTest, WithoutALibraryHasASingleValueAndNoTexts)
{
    const auto parameter = owned(new EditorParameter(nullptr, 0, kID, -1, 0, nullptr));
    parameter->setHasValueTexts(true);
    parameter->updateParemeterInfo();
    EXPECT_EQ(std::u16string(parameter->getInfo().title), u"");
    EXPECT_EQ(parameter->convertToVSTParameter(5), 0);
    EXPECT_EQ(parameter->convertToEditorValue(0), 0);
    EXPECT_EQ(textOf(*parameter, 0), u"");
}

TEST_F(EditorParameterTest, CutsATitleToTheHostsBuffer)
{
    const auto parameter =
        owned(new EditorParameter(nullptr, 0, kID, 0, 0, std::string(500, 'x').c_str()));
    EXPECT_EQ(std::u16string(parameter->getInfo().title), std::u16string(127, u'x'));
}

TEST_F(EditorParameterTest, RefreshMakesTheEditorsValueTheHostsDefault)
{
    const auto parameter = make({1, 0, 4, 0, {}});
    library.setParameterValue(kID, 3);
    trace.clear();
    parameter->updateParemeterInfo();
    EXPECT_THAT(trace.texts(), ElementsAre("library.getParameterValue(5)"));
    EXPECT_EQ(parameter->getEditorParameter(), 3);
    EXPECT_EQ(parameter->getInfo().defaultNormalizedValue, 0.75);
    EXPECT_EQ(parameter->getNormalized(), 0.75);
}

TEST_F(EditorParameterTest, RefreshKeepsOthersFromTheValueUntilItIsTheLibrarys)
{
    const auto parameter = make({1, 0, 4, 0, {}});
    library.setParameterValue(kID, 3);
    std::thread other;
    std::atomic<bool> started{false};
    std::atomic<bool> stored{false};
    library.onCall = [&](const std::string&) {
        other = std::thread([&] {
            started = true;
            parameter->setEditorParameter(2);
            stored = true;
        });
        while (!started)
            std::this_thread::yield();
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
        EXPECT_FALSE(stored);
    };
    parameter->updateParemeterInfo();
    other.join();
    EXPECT_EQ(parameter->getEditorParameter(), 2); // the later of the two
    EXPECT_EQ(parameter->getNormalized(), 0.75);
}

TEST_F(EditorParameterTest, KeepsAnOutOfRangeDefaultWhileTheHostsValueStaysInRange)
{
    const auto parameter = make({6, 0, 4, 0, {}});
    EXPECT_EQ(parameter->getInfo().defaultNormalizedValue, 1.5);
    EXPECT_EQ(parameter->getNormalized(), 1);
}

TEST_F(EditorParameterTest, TakesACallThatThrowsForOneThatDidNothing)
{
    for (const char* call :
         {"getParameterMax", "getParameterMin", "getParameterValue", "getParameterValueString"}) {
        library.clearFaults();
        library.throwAt(call);
        EXPECT_NO_THROW(make({1, 0, 4, 0, {}})) << call;
    }
    library.clearFaults();
    const auto parameter = make({3, 0, 4, 0, {}});
    library.throwAt("getParameterValue");
    parameter->updateParemeterInfo();
    EXPECT_EQ(parameter->getEditorParameter(), 3);
}

TEST_F(EditorParameterTest, ChangesItsValueOnlyToAnotherOne)
{
    const auto parameter = make({1, 0, 4, 0, {}});
    EXPECT_FALSE(parameter->changeEditorParameter(1));
    EXPECT_TRUE(parameter->changeEditorParameter(2));
    EXPECT_FALSE(parameter->changeEditorParameter(2));
    EXPECT_EQ(parameter->getEditorParameter(), 2);
    parameter->setEditorParameter(kSmallest);
    EXPECT_EQ(parameter->getEditorParameter(), kSmallest);
}

// Values ----------------------------------------------------------------------

TEST_F(EditorValues, BecomeNormalizedWithoutClamping)
{
    const auto parameter = ranged(-10, 10);
    EXPECT_EQ(parameter->convertToVSTParameter(-10), 0);
    EXPECT_EQ(parameter->convertToVSTParameter(0), 0.5);
    EXPECT_EQ(parameter->convertToVSTParameter(10), 1);
    EXPECT_EQ(parameter->convertToVSTParameter(-15), -0.25);
    EXPECT_EQ(parameter->convertToVSTParameter(20), 1.5);
}

TEST_F(EditorValues, OfASingleValueRangeAreZero)
{
    const auto parameter = ranged(7, 7);
    for (const int value : {7, 0, 8, kLargest, kSmallest})
        EXPECT_EQ(parameter->convertToVSTParameter(value), 0);
    EXPECT_EQ(parameter->convertToEditorValue(0), 7); // 7 + 0.5, cut
    EXPECT_EQ(parameter->convertToEditorValue(1), 7);
}

TEST_F(EditorValues, OfAReversedRangeFollowTheSameFormula)
{
    const auto parameter = ranged(10, 6);
    EXPECT_EQ(parameter->convertToVSTParameter(10), 0);
    EXPECT_EQ(parameter->convertToVSTParameter(6), 1);
    EXPECT_EQ(parameter->convertToVSTParameter(8), 0.5);
    EXPECT_EQ(parameter->convertToVSTParameter(12), -0.5);
    EXPECT_EQ(parameter->convertToEditorValue(0), 10);  // 10 + 0.5
    EXPECT_EQ(parameter->convertToEditorValue(0.5), 8); // 10 - 2 + 0.5
    EXPECT_EQ(parameter->convertToEditorValue(1), 6);   // 10 - 4 + 0.5
    EXPECT_EQ(textOf(*parameter, 0.5), u"");
    EXPECT_EQ(trace.textsOf({"library.getParameterValueString"}).size(), 0u);
}

TEST_F(EditorValues, ComeBackRoundedInAPositiveRange)
{
    const auto parameter = ranged(0, 127);
    EXPECT_EQ(parameter->convertToEditorValue(0), 0);
    EXPECT_EQ(parameter->convertToEditorValue(0.5), 64); // 63.5 + 0.5
    EXPECT_EQ(parameter->convertToEditorValue(1), 127);
    EXPECT_EQ(parameter->convertToEditorValue(0.003), 0); // 0.381 + 0.5
    EXPECT_EQ(parameter->convertToEditorValue(0.004), 1); // 0.508 + 0.5
    EXPECT_EQ(parameter->convertToEditorValue(1.5), 191); // 190.5 + 0.5
    EXPECT_EQ(parameter->convertToEditorValue(-1), -126); // -127 + 0.5, cut towards zero
    EXPECT_EQ(parameter->convertToEditorValue(-0.01), 0); // -1.27 + 0.5
}

TEST_F(EditorValues, ComeBackRoundedTowardsZeroBelowZero)
{
    const auto parameter = ranged(-64, 63);
    EXPECT_EQ(parameter->convertToEditorValue(0), -63);         // -64 + 0.5
    EXPECT_EQ(parameter->convertToEditorValue(1.0 / 127), -62); // -64 + 1.5
    EXPECT_EQ(parameter->convertToEditorValue(0.5), 0);         // -64 + 64
    EXPECT_EQ(parameter->convertToEditorValue(63.0 / 127), 0);  // -64 + 63.5
    EXPECT_EQ(parameter->convertToEditorValue(1), 63);          // -64 + 127.5
}

TEST_F(EditorValues, EveryStepOfAPositiveRangeSurvivesTheRoundTrip)
{
    const auto parameter = ranged(3, 16383);
    for (int32 value = 3; value <= 16383; ++value)
        ASSERT_EQ(parameter->convertToEditorValue(parameter->convertToVSTParameter(value)), value);
}

TEST_F(EditorValues, StayInsideTheIntegerRangeWhateverTheNumber)
{
    const auto parameter = ranged(0, 127);
    EXPECT_EQ(parameter->convertToEditorValue(kNaN), 0);
    EXPECT_EQ(parameter->convertToEditorValue(kInfinity), kLargest);
    EXPECT_EQ(parameter->convertToEditorValue(-kInfinity), kSmallest);
    EXPECT_EQ(parameter->convertToEditorValue(1e300), kLargest);
    EXPECT_EQ(parameter->convertToEditorValue(-1e300), kSmallest);
}

TEST_F(EditorValues, OfTheWidestRangeDoNotOverflow)
{
    CountingLibrary counting(trace);
    counting.setParameter(kID, {0, kSmallest, kLargest, 0, {}});
    const auto parameter = owned(new EditorParameter(&counting, 0, kID, 0, 0, "x"));
    EXPECT_EQ(parameter->convertToVSTParameter(kSmallest), 0);
    EXPECT_EQ(parameter->convertToVSTParameter(kLargest), 1);
    // 2147483648 of 4294967295 steps
    EXPECT_DOUBLE_EQ(parameter->convertToVSTParameter(0), 0.50000000011641532);
    EXPECT_EQ(parameter->convertToEditorValue(0), kSmallest + 1); // + 0.5, cut towards zero
    EXPECT_EQ(parameter->convertToEditorValue(1), kLargest);
}

// Texts -----------------------------------------------------------------------

TEST_F(EditorTexts, AreTheLibrarysAndFetchedOnce)
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

TEST_F(EditorTexts, OfANegativeMinimumFollowTheRounding)
{
    const auto parameter = ranged(-2, 2);
    // -2 + 0.5 is cut to -1: the lowest value's own text is never shown.
    EXPECT_EQ(textOf(*parameter, 0), u"-1");
    EXPECT_EQ(textOf(*parameter, 0.5), u"0");
    EXPECT_EQ(textOf(*parameter, 1), u"2");
}

TEST_F(EditorTexts, AreEmptyForAValueWithoutOne)
{
    const auto parameter = ranged(0, 2);
    for (const double value : {-1.0, 1.5, 1e300, -1e300, kInfinity, -kInfinity})
        EXPECT_EQ(textOf(*parameter, value), u"") << value;
    EXPECT_EQ(textOf(*parameter, kNaN), u"0");
    EXPECT_EQ(textOf(*ranged(7, 7), 0), u"");
    EXPECT_EQ(textOf(*ranged(9, 7), 0), u"");
}

TEST_F(EditorTexts, ThatAreNotSetAreTheNumberWithFourPlaces)
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

TEST_F(EditorTexts, AreReadAsUtf8AndCutToTheHostsBuffer)
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

TEST_F(EditorTexts, OfACallThatThrewAreEmpty)
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

TEST_F(EditorTexts, AtTheEndOfTheIntegerRangeAreWalkedOnce)
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
    EXPECT_EQ(textOf(*low, 0), u"-2147483647"); // the lowest and a half, cut towards zero
    EXPECT_EQ(textOf(*low, 1), u"");            // one above the range
}

TEST_F(EditorTexts, OfAnAbsurdRangeEndAfterAMillion)
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

// Parsing ---------------------------------------------------------------------

TEST_F(EditorTextParsing, NeedsAParser)
{
    const auto parameter = ranged(0, 127);
    EXPECT_TRUE(std::isnan(parsed(*parameter, u"5")));
}

TEST_F(EditorTextParsing, AddsTheOffsetAndTestsTheRange)
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

TEST_F(EditorTextParsing, OfPanPositions)
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

TEST_F(EditorTextParsing, LeavesTheValueAloneWhenItFails)
{
    const auto parameter = ranged(0, 127);
    parameter->setTextParser(parsePlusMinusValue, 0);
    double value = 0.375;
    EXPECT_FALSE(parameter->fromString(u"128", value));
    EXPECT_EQ(value, 0.375);
}

TEST_F(EditorTextParsing, OfASingleValueRangeAcceptsThatValueAsZero)
{
    const auto parameter = ranged(7, 7);
    parameter->setTextParser(parsePlusMinusValue, 0);
    EXPECT_EQ(parsed(*parameter, u"7"), 0);
    EXPECT_TRUE(std::isnan(parsed(*parameter, u"6")));
    EXPECT_TRUE(std::isnan(parsed(*parameter, u"8")));
}

TEST_F(EditorTextParsing, OfAReversedRangeAcceptsNothing)
{
    const auto parameter = ranged(10, 6);
    parameter->setTextParser(parsePlusMinusValue, 0);
    for (const char16* text : {u"6", u"8", u"10", u"0"})
        EXPECT_TRUE(std::isnan(parsed(*parameter, text)));
}

TEST_F(EditorTextParsing, DoesNotOverflowWithTheOffset)
{
    const auto parameter = ranged(kLargest - 1, kLargest);
    parameter->setTextParser(parsePlusMinusValue, 64);
    EXPECT_TRUE(std::isnan(parsed(*parameter, u"2147483647")));
    EXPECT_EQ(parsed(*parameter, u"2147483583"), 1);
    parameter->setTextParser(parsePlusMinusValue, -64);
    EXPECT_TRUE(std::isnan(parsed(*parameter, u"-2147483648")));
}

} // namespace
