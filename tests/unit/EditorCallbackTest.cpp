#include "tests/unit/BoundController.h"

#include <cmath>
#include <limits>

using namespace Steinberg;
using namespace Steinberg::Vst;
using namespace doubles;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

constexpr int kLargestInt = std::numeric_limits<int>::max();
constexpr int kSmallestInt = std::numeric_limits<int>::min();

TEST(EditorCallbacks, EditorValueChangeSaysNothingOfARepeatedValue)
{
    BoundController bound;
    bound.initialize();
    editorValueChange(bound.controller, kVolume1, 2);
    EXPECT_THAT(bound.edits(), IsEmpty());
    editorValueChange(bound.controller, kVolume1, 1);
    editorValueChange(bound.controller, kVolume1, 1);
    EXPECT_THAT(bound.edits(), ElementsAre("host.performEdit(37012000, 0.25)"));
}

TEST(EditorCallbacks, EditorEditFlagChangeTellsTheHostOfNonZeroOnly)
{
    BoundController bound;
    bound.library.setParameter(kEditFlag, {0, 0, 4, 0, {}});
    bound.initialize();
    editorEditFlagChange(bound.controller, kEditFlag, 1);
    EXPECT_THAT(bound.edits(), ElementsAre("host.performEdit(201005000, 0.25)"));
    editorEditFlagChange(bound.controller, kEditFlag, 1);
    EXPECT_EQ(bound.edits().size(), 1u);
    editorEditFlagChange(bound.controller, kEditFlag, 0);
    EXPECT_EQ(bound.edits().size(), 1u);
    EXPECT_EQ(bound.parameter(kEditFlag)->getEditorParameter(), 0);
    EXPECT_EQ(bound.controller->getParamNormalized(kEditFlag), 0.25);
    editorEditFlagChange(bound.controller, kEditFlag, -1);
    EXPECT_EQ(bound.trace.count("host.performEdit(201005000, -0.25)"), 1u);
}

TEST(EditorCallbacks, EditorBeginEditAndEndEditTakeAnyID)
{
    BoundController bound;
    bound.initialize();
    editorBeginEditCallBack(bound.controller, 7);
    editorEndEditCallBack(bound.controller, 4294967295u);
    EXPECT_THAT(bound.edits(), ElementsAre("host.beginEdit(7)", "host.endEdit(4294967295)"));
}

TEST(EditorCallbacks, DoNothingForAnUnknownIDOrANullContext)
{
    BoundController bound;
    bound.initialize();
    for (const unsigned id : {0u, 7u, 37012016u, 4294967295u}) {
        editorValueChange(bound.controller, id, 5);
        editorEditFlagChange(bound.controller, id, 5);
    }
    editorValueChange(nullptr, kVolume1, 5);
    editorEditFlagChange(nullptr, kVolume1, 5);
    editorBeginEditCallBack(nullptr, kVolume1);
    editorEndEditCallBack(nullptr, kVolume1);
    bound.tick();
    EXPECT_THAT(bound.edits(), IsEmpty());
    EXPECT_EQ(bound.parameter(kVolume1)->getEditorParameter(), 2);
}

TEST(EditorCallbacks, EditorValueChangeTakesTheWholeRangeOfIntegers)
{
    BoundController bound;
    bound.initialize();
    editorValueChange(bound.controller, kVolume1, kLargestInt);
    editorValueChange(bound.controller, kVolume1, kSmallestInt);
    EXPECT_THAT(bound.edits(), ElementsAre("host.performEdit(37012000, 536870911.75)",
                                           "host.performEdit(37012000, -536870912)"));
}

TEST(EditorCallbacks, NotificationGuiEventIgnoresAnUnknownKind)
{
    for (const bool unicode : {true, false}) {
        BoundController bound(unicode ? HostFamily::cubase("7.5.1")
                                      : BoundController::withoutUnicode());
        bound.initialize();
        bound.controller->notificationGuiEvent(static_cast<VstK2xController::GuiEvent>(3), 1, 0.5);
        bound.controller->notificationGuiEvent(static_cast<VstK2xController::GuiEvent>(-1), 1, 1);
        bound.controller->notificationGuiEvent(VstK2xController::GuiEventEndEdit, 1, 0);
        bound.tick();
        EXPECT_THAT(bound.edits(), ElementsAre("host.endEdit(1)"));
    }
}

TEST(EditorCallbacks, NotificationGuiEventKeepsTheNumbersOfItsKinds)
{
    EXPECT_EQ(static_cast<int>(VstK2xController::GuiEventBeginEdit), 0);
    EXPECT_EQ(static_cast<int>(VstK2xController::GuiEventEndEdit), 1);
    EXPECT_EQ(static_cast<int>(VstK2xController::GuiEventValueChange), 2);
}

TEST(EditorCallbacks, SetParameterToVSTNeedsAParameterAndALibrary)
{
    BoundController bound;
    bound.initialize();
    bound.controller->setParameterToVST(nullptr, kVolume1, 1);
    EXPECT_THAT(bound.edits(), IsEmpty());
    bound.controller->setParameterToVST(bound.parameter(kVolume1), kPan1, 1);
    EXPECT_THAT(bound.edits(), ElementsAre("host.performEdit(37013000, 0.25)"));
    bound.controller->setPluginInfo(nullptr, nullptr);
    bound.controller->setParameterToVST(bound.parameter(kVolume1), kVolume1, 1);
    EXPECT_EQ(bound.edits().size(), 1u);
    bound.controller->setPluginInfo(&bound.library, bound.library.handle());
}

TEST(EditorCallbacks, DoNothingWithoutALibrary)
{
    const auto controller = owned(new VstK2xController);
    editorValueChange(controller, kVolume1, 1);
    editorEditFlagChange(controller, kEditFlag, 1);
    editorBeginEditCallBack(controller, kVolume1);
    editorEndEditCallBack(controller, kVolume1);
    controller->notificationEvent();
    int value = 5;
    EXPECT_FALSE(controller->isSetVSTValue(kVolume1, 1, value));
    EXPECT_EQ(value, 0);
    controller->setVSTManageParameter(kVolume1, 1);
    controller->changeLatencyTrigger();
}

/** The library calls back inside each of its calls whose text begins so. */
void callBackDuring(BoundController& bound, const std::string& beginning)
{
    bound.library.onCall = [&bound, beginning, busy = false](const std::string& text) mutable {
        if (busy || text.rfind(beginning, 0) != 0)
            return;
        busy = true;
        void* context = bound.controller.get();
        editorBeginEditCallBack(context, kVolume1);
        editorValueChange(context, kVolume1, 1);
        editorValueChange(context, kVolume1, 3);
        editorEndEditCallBack(context, kVolume1);
        int value = 0;
        bound.controller->isSetVSTValue(kVolume1, 0.5, value);
        bound.controller->setVSTManageParameter(kVolume1, 2);
        bound.controller->changeLatencyTrigger();
        bound.tick();
        busy = false;
    };
}

TEST(EditorCallbacks, AreSafeAtAnyMomentOfTheControllersLife)
{
    const char* const moments[] = {
        "library.attachService",         "library.setControllerInterface",
        "library.setHostType",           "library.start",
        "library.getVSTObserverObject",  "library.addObserver",
        "library.getParameterMax",       "library.getParameterValue",
        "library.getParameterStepCount", "library.parametersReady",
        "library.detachService",         "library.removeObserver",
        "observer(37012000).destroy",    "observer(201005000).destroy",
    };
    for (const bool unicode : {true, false})
        for (const char* moment : moments) {
            BoundController bound(unicode ? HostFamily::cubase("7.5.1")
                                          : BoundController::withoutUnicode());
            callBackDuring(bound, moment);
            bound.initialize();
            bound.controller->connect(&bound.host.peer);
            bound.controller->disconnect(&bound.host.peer);
            EXPECT_EQ(bound.controller->terminate(), kResultOk) << moment;
        }
}

TEST(EditorCallbacks, DoNothingAfterTerminate)
{
    for (const bool unicode : {true, false}) {
        BoundController bound(unicode ? HostFamily::cubase("7.5.1")
                                      : BoundController::withoutUnicode());
        bound.initialize();
        void* context = bound.controller.get();
        bound.controller->terminate();
        bound.trace.clear();
        editorBeginEditCallBack(context, kVolume1);
        editorValueChange(context, kVolume1, 1);
        editorEditFlagChange(context, kEditFlag, 1);
        editorEndEditCallBack(context, kVolume1);
        int value = 5;
        EXPECT_FALSE(bound.controller->isSetVSTValue(kVolume1, 1, value));
        EXPECT_EQ(value, 0);
        bound.controller->setVSTManageParameter(kVolume1, 1);
        bound.controller->changeLatencyTrigger();
        bound.controller->notificationEvent();
        EXPECT_THAT(bound.trace.texts(), IsEmpty());
    }
}

TEST(EditorCallbacks, EditorBeginEditAfterTerminateIsNotToldToTheNextHost)
{
    BoundController bound(BoundController::withoutUnicode());
    bound.initialize();
    bound.controller->terminate();
    editorBeginEditCallBack(bound.controller, kVolume1);
    bound.initialize();
    bound.tick();
    EXPECT_THAT(bound.edits(), IsEmpty());
}

TEST(IsSetVSTValue, StoresAndGivesAValueThatDiffers)
{
    BoundController bound;
    bound.library.setParameter(kVolume1, {5, 0, 127, 0, {}});
    bound.initialize();
    int value = -1;
    EXPECT_TRUE(bound.controller->isSetVSTValue(kVolume1, 0.5, value));
    EXPECT_EQ(value, 64);
    EXPECT_EQ(bound.parameter(kVolume1)->getEditorParameter(), 64);
    EXPECT_FALSE(bound.controller->isSetVSTValue(kVolume1, 0.5, value));
    EXPECT_EQ(value, 0);
    EXPECT_TRUE(bound.controller->isSetVSTValue(kVolume1, 0, value));
    EXPECT_EQ(value, 0);
    EXPECT_THAT(bound.edits(), IsEmpty());
    EXPECT_EQ(bound.controller->getParamNormalized(kVolume1), 5.0 / 127);
}

TEST(IsSetVSTValue, GivesZeroForAnUnknownParameter)
{
    BoundController bound;
    bound.initialize();
    for (const unsigned id : {0u, 37012016u, 4294967295u}) {
        int value = 5;
        EXPECT_FALSE(bound.controller->isSetVSTValue(id, 0.5, value));
        EXPECT_EQ(value, 0);
    }
}

TEST(IsSetVSTValue, CutsAValueOutsideTheRangeToAnInteger)
{
    BoundController bound;
    bound.library.setParameter(kVolume1, {5, 0, 127, 0, {}});
    bound.initialize();
    int value = 0;
    EXPECT_TRUE(bound.controller->isSetVSTValue(kVolume1, 2, value));
    EXPECT_EQ(value, 254);
    EXPECT_TRUE(bound.controller->isSetVSTValue(kVolume1, 1e300, value));
    EXPECT_EQ(value, kLargestInt);
    EXPECT_TRUE(bound.controller->isSetVSTValue(kVolume1, -1e300, value));
    EXPECT_EQ(value, kSmallestInt);
    EXPECT_TRUE(bound.controller->isSetVSTValue(kVolume1, std::nan(""), value));
    EXPECT_EQ(value, 0);
}

TEST(IsSetVSTValue, SetVSTManageParameterStoresTheValueAndTellsNobody)
{
    for (const bool unicode : {true, false}) {
        BoundController bound(unicode ? HostFamily::cubase("7.5.1")
                                      : BoundController::withoutUnicode());
        bound.initialize();
        bound.library.controller->setVSTManageParameter(kVolume1, 4);
        bound.library.controller->setVSTManageParameter(7, 4);
        bound.tick();
        EXPECT_EQ(bound.parameter(kVolume1)->getEditorParameter(), 4);
        EXPECT_EQ(bound.controller->getParamNormalized(kVolume1), 0.5);
        EXPECT_THAT(bound.edits(), IsEmpty());
        // A callback of the editor with the same value is no change.
        editorValueChange(bound.controller, kVolume1, 4);
        bound.tick();
        EXPECT_THAT(bound.edits(), IsEmpty());
    }
}

TEST(ChangeLatencyTrigger, AsksTheHostToReadTheLatencyAgain)
{
    BoundController bound;
    bound.initialize();
    bound.library.controller->changeLatencyTrigger();
    EXPECT_THAT(bound.edits(), ElementsAre("host.restartComponent(8)"));
    bound.host.throwAt("restartComponent");
    EXPECT_NO_THROW(bound.library.controller->changeLatencyTrigger());
    bound.controller->setComponentHandler(nullptr);
    bound.trace.clear();
    bound.library.controller->changeLatencyTrigger();
    EXPECT_THAT(bound.edits(), IsEmpty());
}

} // namespace
