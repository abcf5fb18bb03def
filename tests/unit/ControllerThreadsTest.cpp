// Library threads, the timer and the host's parameter calls at the same time. The thread sanitizer
// finds most of what may go wrong here; with locks in the wrong order a test hangs.
#include "tests/unit/BoundController.h"

#include <atomic>
#include <chrono>
#include <thread>

using namespace Steinberg;
using namespace Steinberg::Vst;
using namespace doubles;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

constexpr int kTurns = 300;
constexpr unsigned kKnobs[] = {37012000, 37012001, 37012002};

class ControllerThreads : public testing::TestWithParam<bool> {
protected:
    ControllerThreads()
    {
        for (const unsigned id : kKnobs)
            bound.library.setParameter(id, {0, 0, 512, 0, {}});
        bound.initialize();
    }

    /** A user's hand on one knob: each turn has a value of its own, in rising order. */
    void turnKnob(unsigned id)
    {
        const auto* observer = bound.library.observer(id);
        for (int value = 1; value <= kTurns; ++value) {
            observer->beginEdit();
            observer->changeValue(value);
            observer->endEdit();
        }
    }

    void useHostInterface()
    {
        auto& controller = *bound.controller;
        for (const unsigned id : kKnobs) {
            ParameterInfo info = {};
            controller.getParameterInfo(0, info);
            String128 text = {};
            controller.getParamStringByValue(id, 0.5, text);
            double value = 0;
            controller.getParamValueByString(id, text, value);
            controller.getParamNormalized(id);
            controller.normalizedParamToPlain(id, 0.5);
            UnitInfo unit = {};
            controller.getUnitInfo(1, unit);
        }
    }

    /** What the host saw of one knob, in the host's order. */
    std::vector<std::string> editsOf(unsigned id) const
    {
        std::vector<std::string> result;
        for (const auto& text : bound.edits())
            if (text.find("(" + std::to_string(id)) != std::string::npos)
                result.push_back(text);
        return result;
    }

    BoundController bound{GetParam() ? HostFamily::cubase("7.5.1")
                                     : BoundController::withoutUnicode()};
};

INSTANTIATE_TEST_SUITE_P(DirectAndQueued, ControllerThreads, testing::Bool(),
                         [](const auto& tested) {
                             return tested.param ? "InAUnicodeHost" : "InAnyOtherHost";
                         });

std::vector<std::string> everyTurnOf(unsigned id)
{
    const std::string name = "(" + std::to_string(id);
    std::vector<std::string> result;
    for (int value = 1; value <= kTurns; ++value) {
        result.push_back("host.beginEdit" + name + ")");
        result.push_back("host.performEdit" + name + ", " + argumentText(value / 512.0) + ")");
        result.push_back("host.endEdit" + name + ")");
    }
    return result;
}

TEST_P(ControllerThreads, EditorCallbacksLoseNoGestureAndKeepEachKnobsOrder)
{
    std::atomic<int> running{3};
    std::vector<std::thread> hands;
    for (const unsigned id : kKnobs)
        hands.emplace_back([this, id, &running] {
            turnKnob(id);
            --running;
        });
    while (running > 0) {
        bound.host.runLoop.tick();
        useHostInterface();
    }
    for (auto& hand : hands)
        hand.join();
    bound.tick();
    for (const unsigned id : kKnobs) {
        EXPECT_EQ(editsOf(id), everyTurnOf(id));
        EXPECT_EQ(bound.parameter(id)->getEditorParameter(), kTurns);
        EXPECT_EQ(bound.controller->getParamNormalized(id), kTurns / 512.0);
    }
    EXPECT_THAT(bound.host.handler.unpairedEdits(), IsEmpty());
}

/** The host asks for an editor value while it is told of an edit: the queue's lock is held, and the
    parameter's is taken. */
TEST(ControllerLocks, IsSetVSTValueMayBeCalledWhileTheQueueIsDrained)
{
    BoundController bound(BoundController::withoutUnicode());
    bound.initialize();
    std::thread hand;
    std::atomic<bool> reached{false};
    bound.host.onCall = [&](const std::string& text) {
        if (text != "host.beginEdit(1)")
            return;
        // The callback stores its value under the parameter's lock, and then waits for the queue's
        // lock, which this thread holds. Did it keep the first lock, isSetVSTValue would never end.
        hand = std::thread([&] { editorValueChange(bound.controller, kVolume1, 4); });
        while (bound.parameter(kVolume1)->getEditorParameter() != 4)
            std::this_thread::yield();
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
        int value = 0;
        reached = bound.library.controller->isSetVSTValue(kVolume1, 0, value);
    };
    bound.controller->editorBeginEdit(1);
    bound.tick();
    hand.join();
    EXPECT_TRUE(reached);
    EXPECT_EQ(bound.parameter(kVolume1)->getEditorParameter(), 0);
    bound.tick();
    EXPECT_THAT(bound.edits(), ElementsAre("host.beginEdit(1)", "host.performEdit(37012000, 1)"));
}

TEST(ControllerLocks, NotificationEventHoldsTheQueueWhileTheHostIsCalledAndNotWhilePolling)
{
    BoundController bound(BoundController::withoutUnicode());
    bound.initialize();
    std::thread hand;
    std::atomic<bool> queued{false};
    bound.host.onCall = [&](const std::string& text) {
        if (text != "host.beginEdit(1)")
            return;
        hand = std::thread([&] {
            bound.controller->editorEndEdit(2);
            queued = true;
        });
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
        EXPECT_FALSE(queued);
    };
    // An observer may wait for another thread of the library on which an event is raised.
    bound.library.observer(kVolume1)->atCheck = [&] {
        std::thread([&] { bound.controller->editorBeginEdit(1); }).join();
    };
    bound.tick();
    hand.join();
    bound.library.observer(kVolume1)->atCheck = nullptr;
    bound.tick();
    EXPECT_THAT(bound.edits(), ElementsAre("host.beginEdit(1)", "host.endEdit(2)"));
}

TEST(ControllerLocks, EditorValueChangeHoldsNoneWhileTheHostIsCalled)
{
    BoundController bound;
    bound.initialize();
    // The host's main thread works with the same parameter while the library's thread is inside it.
    bound.host.onCall = [&](const std::string& text) {
        if (text.rfind("host.performEdit(37012000", 0) == 0)
            std::thread([&] {
                int value = 0;
                bound.library.controller->isSetVSTValue(kVolume1, 0, value);
                EXPECT_EQ(bound.controller->getParamNormalized(kVolume1), 1);
                EXPECT_EQ(bound.controller->setComponentHandler(&bound.host.handler), kResultOk);
                bound.controller->notificationGuiEvent(VstK2xController::GuiEventEndEdit, 9, 0);
            }).join();
    };
    bound.library.turn(kVolume1, 4);
    EXPECT_EQ(bound.trace.count("host.endEdit(9)"), 1u);
}

} // namespace
