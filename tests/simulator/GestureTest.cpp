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

TEST_F(SimulatorGestures, TurnKnobIsReportedOnceByTheParametersCheckChange)
{
    watch(trace, {volume1, pan1});
    EXPECT_TRUE(user->turnKnob(pan1, 90));
    EXPECT_EQ(90, editor->getParameterValue(pan1));
    observers[0]->checkChange();
    EXPECT_EQ(Texts{}, trace.texts());
    tick();
    tick();
    EXPECT_EQ((Texts{"begin 37013000", "value 37013000 90", "end 37013000"}), trace.texts());
}

TEST_F(SimulatorGestures, TurnKnobThroughReportsEachValueInOrderClampedToTheRange)
{
    watch(trace, {volume1});
    EXPECT_TRUE(user->turnKnobThrough(volume1, {101, 500, -3}));
    EXPECT_TRUE(user->turnKnob(volume1, 2));
    tick();
    EXPECT_EQ(
        (Texts{"begin 37012000", "value 37012000 101", "value 37012000 127", "value 37012000 0",
               "end 37012000", "begin 37012000", "value 37012000 2", "end 37012000"}),
        trace.texts());
}

TEST_F(SimulatorGestures, TurnKnobRaisesTheEditFlagOnceUntilTheSoundIsStored)
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
    EXPECT_EQ(Texts{"value 201005000 0"}, trace.texts()); // without begin and end: no knob is held
    EXPECT_FALSE(user->edited());

    trace.clear();
    user->turnKnob(volume1, 3);
    tick();
    EXPECT_EQ((Texts{"begin 201005000", "value 201005000 1", "end 201005000"}), trace.texts());
}

TEST_F(SimulatorGestures, TurnKnobFailsForAnUnknownParameterAndWithoutValues)
{
    EXPECT_FALSE(user->turnKnob(12345, 1));
    EXPECT_FALSE(user->turnKnobThrough(volume1, {}));
    EXPECT_FALSE(user->edited());
}

TEST_F(SimulatorGestures, TurnKnobWithoutAnObserverSetsTheValueAndReportsNothingLater)
{
    EXPECT_TRUE(user->turnKnob(volume1, 3));
    EXPECT_EQ(3, editor->getParameterValue(volume1));
    watch(trace, {volume1});
    tick();
    EXPECT_EQ(Texts{}, trace.texts());
}

TEST_F(SimulatorGestures, TurnKnobFailsWhenAThousandGesturesWait)
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

TEST_F(SimulatorGestures, CheckChangeReportsNothingAfterRemoveObserver)
{
    watch(trace, {volume1});
    user->turnKnob(volume1, 3);
    EXPECT_EQ(0, editor->removeObserver(observers[0]));
    EXPECT_EQ(1, editor->removeObserver(observers[0]));
    user->turnKnob(volume1, 4);
    tick();
    EXPECT_EQ(Texts{}, trace.texts());
}

TEST_F(SimulatorGestures, CheckChangeReportsNothingAfterTheEditorIsDestroyed)
{
    watch(trace, {volume1, pan1});
    user->turnKnob(volume1, 3);
    observers[1]->destroy(); // while it is in use
    observers.pop_back();
    EXPECT_TRUE(user->turnKnob(pan1, 3));
    editor->destroy();
    editor = nullptr;
    tick();
    EXPECT_EQ(Texts{}, trace.texts());
    observers[0]->destroy(); // after its editor
    observers.clear();
}

TEST_F(SimulatorGestures, AddObserverFailsForAnObserverOfAnotherEditor)
{
    VstIEditorConnect* other = nullptr;
    library.connect(&other);
    watch(trace, {volume1});
    EXPECT_EQ(1, other->addObserver(observers[0]));
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

TEST_F(SimulatorGestures, CheckChangeStopsWhenACallbackRemovesTheObserver)
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

TEST_F(SimulatorGestures, CheckChangeAcceptsAnObserverWithoutCallbacks)
{
    VstIObserver* observer = nullptr;
    library.observe(&observer, nullptr, volume1, 0, 0, 0, nullptr, VstIObserver::ParamModePart,
                    nullptr, nullptr);
    EXPECT_EQ(0, editor->addObserver(observer));
    user->turnKnob(volume1, 3);
    observer->checkChange();
    observer->destroy();
}

TEST_F(SimulatorGestures, OnWheelTurnsTheKnobThatWasTurnedLast)
{
    int window = 0;
    Steinberg::ViewRect rect;
    EXPECT_FALSE(editor->onWheel(1.f)); // the editor is closed
    editor->openEditor(&window, &rect);
    EXPECT_FALSE(editor->onWheel(1.f)); // no knob was turned yet
    user->turnKnob(volume1, 50);
    EXPECT_TRUE(editor->onWheel(-2.f));
    EXPECT_EQ(48, user->parameterValue(volume1));
    EXPECT_FALSE(editor->onWheel(std::numeric_limits<float>::quiet_NaN()));
    EXPECT_FALSE(editor->onWheel(std::numeric_limits<float>::infinity()));
    EXPECT_EQ(48, user->parameterValue(volume1));
}

using SimulatorAutomation = SimulatorGestures;

TEST_F(SimulatorAutomation, HostParameterChangedSetsTheValueAndCheckChangeAsksTheController)
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
    EXPECT_EQ(Texts{"37012000 0.500000"}, asked.texts()); // the last value, once
    EXPECT_EQ(65, editor->getParameterValue(volume1));    // the controller's result
    EXPECT_EQ(Texts{}, trace.texts());                    // the host is not told its own value
    EXPECT_FALSE(user->edited());
}

TEST_F(SimulatorAutomation, CheckChangeKeepsAKnobTurnedAfterHostParameterChanged)
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

TEST_F(SimulatorAutomation, HostParameterChangedAcceptsAnyNumberAndAnyParameter)
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
