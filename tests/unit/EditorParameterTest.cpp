#include "tests/unit/EditorParameterFixture.h"

#include <atomic>
#include <chrono>
#include <functional>
#include <future>
#include <thread>

using namespace Steinberg;
using namespace Steinberg::Vst;
using namespace doubles;
using testing::ElementsAre;

namespace {

using EditorParameterTest = EditorParameterFixture;
using EditorValues = EditorParameterFixture;

TEST_F(EditorParameterTest, ConstructorDescribesTheParameterToTheHost)
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

TEST_F(EditorParameterTest, ConstructorAsksForRangeThenValueThenEveryText)
{
    make({-1, -1, 1, 0, {}});
    EXPECT_THAT(trace.texts(),
                ElementsAre("library.getParameterMax(5)", "library.getParameterMin(5)",
                            "library.getParameterValue(5)",
                            "library.getParameterValueString(5, -1)",
                            "library.getParameterValueString(5, 0)",
                            "library.getParameterValueString(5, 1)"));
}

TEST_F(EditorParameterTest, ConstructorWithoutALibraryGivesASingleValueAndNoTexts)
{
    const auto parameter = owned(new EditorParameter(nullptr, 0, kID, -1, 0, nullptr));
    parameter->setHasValueTexts(true);
    parameter->updateParemeterInfo();
    EXPECT_EQ(std::u16string(parameter->getInfo().title), u"");
    EXPECT_EQ(parameter->convertToVSTParameter(5), 0);
    EXPECT_EQ(parameter->convertToEditorValue(0), 0);
    EXPECT_EQ(textOf(*parameter, 0), u"");
}

TEST_F(EditorParameterTest, ConstructorCutsATitleToTheHostsBuffer)
{
    const auto parameter =
        owned(new EditorParameter(nullptr, 0, kID, 0, 0, std::string(500, 'x').c_str()));
    EXPECT_EQ(std::u16string(parameter->getInfo().title), std::u16string(127, u'x'));
}

TEST_F(EditorParameterTest, UpdateParemeterInfoMakesTheEditorsValueTheHostsDefault)
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

TEST_F(EditorParameterTest, UpdateParemeterInfoKeepsOthersFromTheValueUntilItIsTheLibrarys)
{
    const auto parameter = make({1, 0, 4, 0, {}});
    library.setParameterValue(kID, 3);
    const std::function<void()> stores[] = {[&] { parameter->setEditorParameter(2); },
                                            [&] { parameter->changeEditorParameter(2); }};
    for (const auto& store : stores) {
        std::thread other;
        std::atomic<bool> started{false};
        std::atomic<bool> stored{false};
        library.onCall = [&](const std::string&) {
            other = std::thread([&] {
                started = true;
                store();
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
}

TEST_F(EditorParameterTest, UpdateParemeterInfoHoldsNoLockWhileItTellsOfTheChange)
{
    class Watched : public EditorParameter {
    public:
        using EditorParameter::EditorParameter;
        void updateDone(int32 /*message*/) override
        {
            if (atChange)
                atChange();
        }
        std::function<void()> atChange;
    };
    library.setParameter(kID, {1, 0, 4, 0, {}});
    const auto parameter = owned(new Watched(&library, 0, kID, 0, 0, "x"));
    library.setParameterValue(kID, 3);
    std::future<void> other;
    bool cameIn = false;
    parameter->atChange = [&] {
        other = std::async(std::launch::async, [&] { parameter->setEditorParameter(2); });
        cameIn = other.wait_for(std::chrono::seconds(5)) == std::future_status::ready;
    };
    parameter->updateParemeterInfo();
    EXPECT_TRUE(cameIn);
}

TEST_F(EditorParameterTest, ConstructorKeepsADefaultOutOfRangeAndClampsTheHostsValue)
{
    const auto parameter = make({6, 0, 4, 0, {}});
    EXPECT_EQ(parameter->getInfo().defaultNormalizedValue, 1.5);
    EXPECT_EQ(parameter->getNormalized(), 1);
}

TEST_F(EditorParameterTest, ConstructorAndUpdateParemeterInfoSurviveALibraryThatThrows)
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

TEST_F(EditorParameterTest, ChangeEditorParameterTellsWhetherTheValueIsAnotherOne)
{
    const auto parameter = make({1, 0, 4, 0, {}});
    EXPECT_FALSE(parameter->changeEditorParameter(1));
    EXPECT_TRUE(parameter->changeEditorParameter(2));
    EXPECT_FALSE(parameter->changeEditorParameter(2));
    EXPECT_EQ(parameter->getEditorParameter(), 2);
    parameter->setEditorParameter(kSmallest);
    EXPECT_EQ(parameter->getEditorParameter(), kSmallest);
}

TEST_F(EditorValues, ConvertToVSTParameterDoesNotClampAndIsZeroInASingleValueRange)
{
    const auto parameter = ranged(-10, 10);
    EXPECT_EQ(parameter->convertToVSTParameter(-10), 0);
    EXPECT_EQ(parameter->convertToVSTParameter(0), 0.5);
    EXPECT_EQ(parameter->convertToVSTParameter(10), 1);
    EXPECT_EQ(parameter->convertToVSTParameter(-15), -0.25);
    EXPECT_EQ(parameter->convertToVSTParameter(20), 1.5);
    const auto single = ranged(7, 7);
    for (const int value : {7, 0, 8, kLargest, kSmallest})
        EXPECT_EQ(single->convertToVSTParameter(value), 0);
    EXPECT_EQ(single->convertToEditorValue(0), 7); // 7 + 0.5, cut
    EXPECT_EQ(single->convertToEditorValue(1), 7);
}

TEST_F(EditorValues, ConvertOfAReversedRangeUsesTheSameFormula)
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

TEST_F(EditorValues, ConvertToEditorValueRoundsInAPositiveRangeAndStaysInsideTheIntegers)
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
    EXPECT_EQ(parameter->convertToEditorValue(kNaN), 0);
    EXPECT_EQ(parameter->convertToEditorValue(kInfinity), kLargest);
    EXPECT_EQ(parameter->convertToEditorValue(-kInfinity), kSmallest);
    EXPECT_EQ(parameter->convertToEditorValue(1e300), kLargest);
    EXPECT_EQ(parameter->convertToEditorValue(-1e300), kSmallest);
}

TEST_F(EditorValues, ConvertToEditorValueRoundsTowardsZeroBelowZero)
{
    const auto parameter = ranged(-64, 63);
    EXPECT_EQ(parameter->convertToEditorValue(0), -63);         // -64 + 0.5
    EXPECT_EQ(parameter->convertToEditorValue(1.0 / 127), -62); // -64 + 1.5
    EXPECT_EQ(parameter->convertToEditorValue(0.5), 0);         // -64 + 64
    EXPECT_EQ(parameter->convertToEditorValue(63.0 / 127), 0);  // -64 + 63.5
    EXPECT_EQ(parameter->convertToEditorValue(1), 63);          // -64 + 127.5
}

TEST_F(EditorValues, ConvertToVSTParameterAndBackKeepsEveryStepOfAPositiveRange)
{
    const auto parameter = ranged(3, 16383);
    for (int32 value = 3; value <= 16383; ++value)
        ASSERT_EQ(parameter->convertToEditorValue(parameter->convertToVSTParameter(value)), value);
}

TEST_F(EditorValues, ConvertOfTheWidestRangeDoesNotOverflow)
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

} // namespace
