#include "tests/doubles/Sanitized.h"
#include "tests/unit/BoundController.h"

using namespace Steinberg;
using namespace Steinberg::Vst;
using namespace doubles;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace {

class VstTimerTest : public testing::Test {
protected:
    VstTimerTest() { factory.setHostContext(&host.context); }
    ~VstTimerTest() override
    {
        factory.setHostContext(nullptr);
        EXPECT_THAT(host.ledger(), IsEmpty());
    }

    /** A controller without a library has no observers; its queue shows whether it was ticked. */
    bool ticked()
    {
        controller->notificationGuiEvent(VstK2xController::GuiEventBeginEdit, 1, 0);
        controller->setComponentHandler(&host.handler);
        trace.clear();
        host.runLoop.tick();
        controller->setComponentHandler(nullptr);
        return trace.count("host.beginEdit(1)") > 0;
    }

    Trace trace;
    ScriptedHost host{trace};
    CPluginFactory factory{PFactoryInfo()};
    IPtr<VstK2xController> controller = owned(new VstK2xController);
};

TEST_F(VstTimerTest, RunsAtTheIntervalThatItWasGiven)
{
    const auto timer = VSTGUI::makeOwned<VstTimer>(controller.get(), 50);
    EXPECT_THAT(host.runLoop.intervals(), IsEmpty());
    timer->timerStart();
    EXPECT_THAT(host.runLoop.intervals(), ElementsAre(50));
    EXPECT_TRUE(ticked());
}

TEST_F(VstTimerTest, StartsAndStopsAsOftenAsAsked)
{
    const auto timer = VSTGUI::makeOwned<VstTimer>(controller.get(), 50);
    timer->timerStop();
    timer->timerStart();
    timer->timerStart();
    EXPECT_THAT(host.runLoop.intervals(), ElementsAre(50));
    timer->timerStop();
    timer->timerStop();
    EXPECT_THAT(host.runLoop.intervals(), IsEmpty());
    EXPECT_FALSE(ticked());
    timer->timerStart();
    EXPECT_THAT(host.runLoop.intervals(), ElementsAre(50));
}

TEST_F(VstTimerTest, LeavesTheRunLoopWhenItIsDeletedWhileRunning)
{
    auto timer = VSTGUI::makeOwned<VstTimer>(controller.get(), 50);
    timer->timerStart();
    timer = nullptr;
    EXPECT_THAT(host.runLoop.intervals(), IsEmpty());
}

TEST_F(VstTimerTest, AnswersZeroToEveryMessageAndHeedsItsOwn)
{
    const auto timer = VSTGUI::makeOwned<VstTimer>(controller.get(), 50);
    controller->notificationGuiEvent(VstK2xController::GuiEventBeginEdit, 1, 0);
    controller->setComponentHandler(&host.handler);
    trace.clear();
    EXPECT_EQ(timer->notify(nullptr, "something else"), 0);
    EXPECT_EQ(timer->notify(nullptr, nullptr), 0);
    EXPECT_THAT(trace.texts(), IsEmpty());
    EXPECT_EQ(timer->notify(nullptr, VSTGUI::CVSTGUITimer::kMsgTimer), 0);
    EXPECT_THAT(trace.texts(), ElementsAre("host.beginEdit(1)"));
    controller->setComponentHandler(nullptr);
}

TEST_F(VstTimerTest, WithoutAControllerTicksNothing)
{
    const auto timer = VSTGUI::makeOwned<VstTimer>(nullptr, 50);
    timer->timerStart();
    host.runLoop.tick();
    EXPECT_EQ(timer->notify(nullptr, VSTGUI::CVSTGUITimer::kMsgTimer), 0);
}

TEST_F(VstTimerTest, WithoutARunLoopNeverTicksAndBreaksNothing)
{
    factory.setHostContext(nullptr);
    auto timer = VSTGUI::makeOwned<VstTimer>(controller.get(), 50);
    timer->timerStart();
    EXPECT_FALSE(ticked());
    timer->timerStop();
    timer->timerStart();
    timer = nullptr;
    EXPECT_THAT(trace.textsOf({"runLoop."}), IsEmpty());
}

TEST_F(VstTimerTest, OfARunLoopThatTakesNoTimerNeverTicks)
{
    host.runLoop.registerResult = kResultFalse;
    auto timer = VSTGUI::makeOwned<VstTimer>(controller.get(), 50);
    timer->timerStart();
    EXPECT_FALSE(ticked());
    timer = nullptr;
}

TEST_F(VstTimerTest, OfARunLoopThatDoesNotTakeItOutTicksNobodyAfterItsStop)
{
    auto timer = VSTGUI::makeOwned<VstTimer>(controller.get(), 50);
    timer->timerStart();
    host.failAt("unregisterTimer");
    timer->timerStop();
    ASSERT_THAT(host.runLoop.intervals(), ElementsAre(50));
    EXPECT_FALSE(ticked());
    timer = nullptr;
    EXPECT_FALSE(ticked());
    host.runLoop.forgetTimers();
}

TEST_F(VstTimerTest, OfARunLoopThatTheHostTookBackTicksNobodyAfterItsEnd)
{
    auto timer = VSTGUI::makeOwned<VstTimer>(controller.get(), 50);
    timer->timerStart();
    factory.setHostContext(nullptr);
    timer = nullptr;
    ASSERT_THAT(host.runLoop.intervals(), ElementsAre(50));
    EXPECT_FALSE(ticked());
    host.runLoop.forgetTimers();
}

TEST_F(VstTimerTest, TicksItsOwnControllerAlsoAfterOthersThatWereNotTakenOut)
{
    const auto other = owned(new VstK2xController);
    host.failAt("unregisterTimer");
    for (int round = 0; round < 3; ++round) {
        const auto stopped = VSTGUI::makeOwned<VstTimer>(other.get(), 50);
        stopped->timerStart();
    }
    const auto timer = VSTGUI::makeOwned<VstTimer>(controller.get(), 50);
    timer->timerStart();
    ASSERT_EQ(host.runLoop.intervals().size(), 4U);
    EXPECT_TRUE(ticked());
    host.clearFaults();
    timer->timerStop();
    EXPECT_FALSE(ticked());
    host.runLoop.forgetTimers();
}

#ifndef VSTK2X_SANITIZED // the SDK's timers that a run loop threw at are never freed
TEST_F(VstTimerTest, OfARunLoopThatThrowsNeverTicks)
{
    host.throwAt("registerTimer");
    auto timer = VSTGUI::makeOwned<VstTimer>(controller.get(), 50);
    EXPECT_NO_THROW(timer->timerStart());
    EXPECT_FALSE(ticked());
    timer = nullptr;
}

TEST_F(VstTimerTest, OfARunLoopThatThrowsWhenAskedToTakeItOutTicksNobodyAfterItsStop)
{
    auto timer = VSTGUI::makeOwned<VstTimer>(controller.get(), 50);
    timer->timerStart();
    host.throwAt("unregisterTimer");
    EXPECT_NO_THROW(timer->timerStop());
    EXPECT_FALSE(ticked());
    timer = nullptr;
    EXPECT_FALSE(ticked());
    host.runLoop.forgetTimers();
}
#endif

TEST(ControllersTimer, RunsEvery50MillisecondsFromInitializeToTerminate)
{
    BoundController bound;
    EXPECT_THAT(bound.host.runLoop.intervals(), IsEmpty());
    bound.initialize();
    EXPECT_THAT(bound.host.runLoop.intervals(), ElementsAre(50));
    bound.controller->terminate();
    EXPECT_THAT(bound.host.runLoop.intervals(), IsEmpty());
}

TEST(ControllersTimer, PollsEveryObserverOnceATickInOrder)
{
    BoundController bound;
    bound.initialize();
    std::vector<std::string> expected;
    for (const auto* observer : bound.library.liveObservers())
        expected.push_back("observer(" + std::to_string(observer->id()) + ").checkChange()");
    ASSERT_THAT(expected, SizeIs(kParameters));
    bound.tick();
    EXPECT_EQ(bound.trace.texts(), expected);
    bound.trace.clear();
    bound.tick();
    EXPECT_EQ(bound.trace.texts(), expected);
}

TEST(ControllersTimer, GoesOnPollingBehindAnObserverThatThrows)
{
    BoundController bound;
    bound.initialize();
    bound.library.throwAt("observer(37012000).checkChange");
    EXPECT_NO_THROW(bound.tick());
    EXPECT_THAT(bound.trace.textsOf({"observer("}), SizeIs(kParameters));
}

TEST(ControllersTimer, PollsNoObserverAgainThatTerminateDestroyed)
{
    BoundController bound;
    bound.initialize();
    bound.library.observer(kPan1)->atCheck = [&] { bound.controller->terminate(); };
    bound.tick();
    EXPECT_THAT(bound.library.complaints(), IsEmpty());
    EXPECT_EQ(bound.trace.count("observer(37013000).checkChange()"), 1u);
    EXPECT_EQ(bound.trace.count("observer(37053000).checkChange()"), 0u);
}

TEST(ControllersTimer, InAHostWithoutARunLoopIsMissedByNobody)
{
    BoundController bound;
    EXPECT_EQ(bound.controller->initialize(&bound.host.context), kResultOk);
    bound.controller->setComponentHandler(&bound.host.handler);
    bound.tick();
    EXPECT_THAT(bound.trace.textsOf({"observer("}), IsEmpty());
    bound.library.turn(kVolume1, 1);
    EXPECT_EQ(bound.edits().size(), 3u);
}

} // namespace
