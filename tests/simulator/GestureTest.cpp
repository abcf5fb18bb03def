#include "tests/simulator/SimulatorFixture.h"

#include <cmath>
#include <limits>

namespace {

using namespace doubles;
using Texts = std::vector<std::string>;

class SimulatorGestures : public SimulatorTest {
protected:
    ~SimulatorGestures() override { stopWatching(); }

    Trace trace;
};

TEST_F(SimulatorGestures, ArriveAtTheTickAsBeginValueEnd)
{
    watch(trace, {volume1});
    EXPECT_TRUE(user->turnKnob(volume1, 90));
    EXPECT_EQ(Texts{}, trace.texts());
    tick();
    EXPECT_EQ((Texts{"begin 37012000", "value 37012000 90", "end 37012000"}), trace.texts());
    EXPECT_EQ(90, editor->getParameterValue(volume1));
}

TEST_F(SimulatorGestures, ArriveOnce)
{
    watch(trace, {volume1});
    user->turnKnob(volume1, 90);
    tick();
    trace.clear();
    tick();
    EXPECT_EQ(Texts{}, trace.texts());
}

TEST_F(SimulatorGestures, CarryEveryValueOnTheWayClampedToTheRange)
{
    watch(trace, {volume1});
    EXPECT_TRUE(user->turnKnobThrough(volume1, {101, 120, 500, -3}));
    tick();
    EXPECT_EQ((Texts{"begin 37012000", "value 37012000 101", "value 37012000 120",
                     "value 37012000 127", "value 37012000 0", "end 37012000"}),
              trace.texts());
    EXPECT_EQ(0, user->parameterValue(volume1));
}

TEST_F(SimulatorGestures, OfOneKnobKeepTheirOrder)
{
    watch(trace, {volume1});
    user->turnKnob(volume1, 1);
    user->turnKnob(volume1, 2);
    tick();
    EXPECT_EQ((Texts{"begin 37012000", "value 37012000 1", "end 37012000", "begin 37012000",
                     "value 37012000 2", "end 37012000"}),
              trace.texts());
}

TEST_F(SimulatorGestures, ReachTheObserverOfTheirParameterOnly)
{
    watch(trace, {volume1, pan1});
    user->turnKnob(pan1, 1);
    observers[0]->checkChange();
    EXPECT_EQ(Texts{}, trace.texts());
    observers[1]->checkChange();
    EXPECT_EQ((Texts{"begin 37013000", "value 37013000 1", "end 37013000"}), trace.texts());
}

TEST_F(SimulatorGestures, RaiseTheEditFlagOnceUntilTheSoundIsStored)
{
    watch(trace, {editFlag});
    user->turnKnob(volume1, 1);
    user->turnKnob(volume1, 2);
    tick();
    EXPECT_EQ((Texts{"begin 201005000", "value 201005000 1", "end 201005000"}), trace.texts());
    EXPECT_TRUE(user->edited());

    trace.clear();
    editor->getStateChunk();
    tick();
    EXPECT_EQ(Texts{"value 201005000 0"}, trace.texts()); // nobody holds a knob here
    EXPECT_FALSE(user->edited());

    trace.clear();
    user->turnKnob(volume1, 3);
    tick();
    EXPECT_EQ((Texts{"begin 201005000", "value 201005000 1", "end 201005000"}), trace.texts());
}

TEST_F(SimulatorGestures, NeedAKnownParameterAndAValue)
{
    EXPECT_FALSE(user->turnKnob(12345, 1));
    EXPECT_FALSE(user->turnKnobThrough(volume1, {}));
    EXPECT_FALSE(user->edited());
}

TEST_F(SimulatorGestures, WithoutAnObserverStillTurnTheKnob)
{
    EXPECT_TRUE(user->turnKnob(volume1, 3));
    EXPECT_EQ(3, editor->getParameterValue(volume1));
    watch(trace, {volume1});
    tick();
    EXPECT_EQ(Texts{}, trace.texts()); // nobody watched at that time
}

TEST_F(SimulatorGestures, StopWhenAThousandWait)
{
    watch(trace, {volume1});
    for (int32 round = 0; round < 1000; ++round)
        ASSERT_TRUE(user->turnKnob(volume1, round % 128));
    EXPECT_FALSE(user->turnKnob(volume1, 5));
    EXPECT_EQ(999 % 128, user->parameterValue(volume1));
    tick();
    EXPECT_EQ(3000u, trace.texts().size());
    EXPECT_TRUE(user->turnKnob(volume1, 5));
}

TEST_F(SimulatorGestures, AreNotRaisedAfterRemoveObserver)
{
    watch(trace, {volume1});
    user->turnKnob(volume1, 3);
    EXPECT_EQ(0, editor->removeObserver(observers[0]));
    user->turnKnob(volume1, 4);
    tick();
    EXPECT_EQ(Texts{}, trace.texts());
    EXPECT_EQ(1, editor->removeObserver(observers[0]));
}

TEST_F(SimulatorGestures, AreNotRaisedAfterTheEditorIsDestroyed)
{
    watch(trace, {volume1});
    user->turnKnob(volume1, 3);
    editor->destroy();
    editor = nullptr;
    tick();
    EXPECT_EQ(Texts{}, trace.texts());
    observers[0]->destroy(); // outlived its editor
    observers.clear();
}

TEST_F(SimulatorGestures, AreNotRaisedForAnObserverDestroyedWhileInUse)
{
    watch(trace, {volume1});
    observers[0]->destroy();
    observers.clear();
    EXPECT_TRUE(user->turnKnob(volume1, 3));
    EXPECT_EQ(Texts{}, trace.texts());
}

TEST_F(SimulatorGestures, BelongToOneOfTwoEditors)
{
    VstIEditorConnect* other = nullptr;
    library.connect(&other);
    watch(trace, {volume1});
    EXPECT_EQ(1, other->addObserver(observers[0])); // taken
    EXPECT_EQ(1, other->removeObserver(observers[0]));
    library.control(1)->turnKnob(volume1, 3);
    tick();
    EXPECT_EQ(Texts{}, trace.texts());
    EXPECT_EQ(100, editor->getParameterValue(volume1));
    other->destroy();
}

struct Remover {
    VstIEditorConnect* editor;
    VstIObserver* observer;
    Trace trace;
};

TEST_F(SimulatorGestures, EndWithACallbackThatRemovesTheObserver)
{
    Remover remover{editor, nullptr, {}};
    library.observe(
        &remover.observer, &remover, volume1, 0, 0, 0,
        [](void* owner, unsigned, int) {
            auto* self = static_cast<Remover*>(owner);
            self->trace.add("value");
            self->editor->removeObserver(self->observer);
            self->observer->destroy();
        },
        VstIObserver::ParamModePart,
        [](void* owner, unsigned) { static_cast<Remover*>(owner)->trace.add("begin"); },
        [](void* owner, unsigned) { static_cast<Remover*>(owner)->trace.add("end"); });
    editor->addObserver(remover.observer);
    user->turnKnobThrough(volume1, {1, 2});
    remover.observer->checkChange();
    EXPECT_EQ((Texts{"begin", "value"}), remover.trace.texts());
}

TEST_F(SimulatorGestures, TakeAnObserverWithoutCallbacks)
{
    VstIObserver* observer = nullptr;
    library.observe(&observer, nullptr, volume1, 0, 0, 0, nullptr, VstIObserver::ParamModePart,
                    nullptr, nullptr);
    EXPECT_EQ(0, editor->addObserver(observer));
    user->turnKnob(volume1, 3);
    observer->checkChange();
    observer->destroy();
}

TEST_F(SimulatorGestures, AreTheWheelsOnTheKnobTouchedLast)
{
    int window = 0;
    Steinberg::ViewRect rect;
    EXPECT_FALSE(editor->onWheel(1.f)); // closed
    editor->openEditor(&window, &rect);
    EXPECT_FALSE(editor->onWheel(1.f)); // no knob yet
    user->turnKnob(volume1, 50);
    EXPECT_TRUE(editor->onWheel(-2.f));
    EXPECT_EQ(48, user->parameterValue(volume1));
    EXPECT_FALSE(editor->onWheel(std::numeric_limits<float>::quiet_NaN()));
    EXPECT_FALSE(editor->onWheel(std::numeric_limits<float>::infinity()));
    EXPECT_EQ(48, user->parameterValue(volume1));
}

using SimulatorAutomation = SimulatorGestures;

TEST_F(SimulatorAutomation, MovesTheValueAndAsksTheControllerAtTheTick)
{
    ListeningController controller;
    Trace asked;
    controller.setValue = [&](unsigned id, double value, int& out) {
        asked.add(std::to_string(id) + " " + std::to_string(value));
        out = 65;
        return true;
    };
    editor->setControllerInterface(&controller);
    watch(trace, {volume1});

    editor->hostParameterChanged(volume1, 0.25);
    editor->hostParameterChanged(volume1, 0.5);
    EXPECT_EQ(64, editor->getParameterValue(volume1)); // 63.5 + 0.5, truncated
    EXPECT_EQ(Texts{}, asked.texts());
    tick();
    tick();
    EXPECT_EQ(Texts{"37012000 0.500000"}, asked.texts()); // the last one, once
    EXPECT_EQ(65, editor->getParameterValue(volume1));    // the controller's reading counts
    EXPECT_EQ(Texts{}, trace.texts());                    // the host is not told what it said
    EXPECT_FALSE(user->edited());
}

TEST_F(SimulatorAutomation, GivesWayToAKnobTurnedAfterwards)
{
    ListeningController controller;
    controller.setValue = [](unsigned, double, int& out) {
        out = 64;
        return true;
    };
    editor->setControllerInterface(&controller);
    watch(trace, {volume1});
    editor->hostParameterChanged(volume1, 0.5);
    user->turnKnob(volume1, 3);
    tick();
    EXPECT_EQ(3, editor->getParameterValue(volume1));
}

TEST_F(SimulatorAutomation, TakesAnyNumberAndAnyParameter)
{
    const double none = std::numeric_limits<double>::quiet_NaN();
    const double infinite = std::numeric_limits<double>::infinity();
    for (const auto& [value, expected] : {std::pair{none, 0},
                                          {infinite, 127},
                                          {-infinite, 0},
                                          {1e300, 127},
                                          {-0.1, 0},
                                          {1., 127}}) {
        editor->hostParameterChanged(volume1, value);
        EXPECT_EQ(expected, editor->getParameterValue(volume1)) << value;
    }
    editor->hostParameterChanged(0xFFFFFFFF, 0.5);
    EXPECT_EQ(7u, user->automationReceived());
}

} // namespace
