#include "pluginterfaces/base/keycodes.h"
#include "tests/simulator/SimulatorFixture.h"

namespace {

using namespace doubles;
using Texts = std::vector<std::string>;

class SimulatorUser : public SimulatorTest {
protected:
    SimulatorUser() { editor->setControllerInterface(&controller); }

    ListeningController controller;
};

TEST_F(SimulatorUser, ChoicesReachTheController)
{
    EXPECT_TRUE(user->choosePart(15));
    EXPECT_TRUE(user->chooseAudioPorts({"a", "b", "", "d"}));
    EXPECT_TRUE(user->chooseMidiPort("m"));
    EXPECT_TRUE(user->storeBank(VoiceBank::kUser4, 3));
    user->chooseLatencyMode(2);
    user->announceStartFile(true);
    EXPECT_EQ(
        (Texts{"editorPartSyncMidiCh(15)", "setAudioPortList(a, b, , d)", "setMidiOutPort(m)",
               "storeUserBank(14, 3)", "changeLatencyTrigger()", "setInitialStartFileLoad(true)"}),
        controller.trace.texts());
    EXPECT_EQ(15, user->shownPart());
    EXPECT_EQ(2, editor->getLatencyMode());
}

TEST_F(SimulatorUser, ChoosePartAndChooseAudioPortsRefuseImpossibleChoices)
{
    for (const int32 part : {-1, 16})
        EXPECT_FALSE(user->choosePart(part));
    EXPECT_FALSE(user->chooseAudioPorts({"a", "b", "c"}));
    EXPECT_FALSE(user->chooseAudioPorts({"a", "b", "c", "d", "e"}));
    EXPECT_EQ(0, user->shownPart());
    EXPECT_TRUE(controller.trace.texts().empty());
}

TEST_F(SimulatorUser, SetControllerInterfaceWithNullEndsAllCallsOfTheController)
{
    editor->setControllerInterface(nullptr);
    EXPECT_FALSE(user->choosePart(1));
    EXPECT_FALSE(user->chooseAudioPorts({"a", "b", "c", "d"}));
    EXPECT_FALSE(user->chooseMidiPort("m"));
    EXPECT_FALSE(user->storeBank(VoiceBank::kUser1, 0));
    user->chooseLatencyMode(2);
    EXPECT_TRUE(user->audioPorts().empty());
    EXPECT_TRUE(user->midiPorts().empty());
    controller.answer = true;
    EXPECT_FALSE(user->isHostReadyForSetPort());
    EXPECT_TRUE(controller.trace.texts().empty());
}

TEST_F(SimulatorUser, AudioPortsAndMidiPortsGiveTheControllersLists)
{
    EXPECT_TRUE(user->audioPorts().empty()); // a null list
    EXPECT_TRUE(user->midiPorts().empty());
    ListeningController::AudioPorts audio{{"Left", "in-1"}, {"Right", "in-2"}};
    ListeningController::MidiPorts midi{{"Port1", "out-1"}};
    controller.audioPorts = &audio;
    controller.midiPorts = &midi;
    ASSERT_EQ(2u, user->audioPorts().size());
    EXPECT_EQ("in-2", user->audioPorts()[1].portId);
    ASSERT_EQ(1u, user->midiPorts().size());
    EXPECT_EQ("Port1", user->midiPorts()[0].portName);
    EXPECT_FALSE(user->isConnectAudioPort());
    controller.answer = true;
    EXPECT_TRUE(user->isConnectAudioPort());
    EXPECT_TRUE(user->isConnectAudioPortHost());
    EXPECT_TRUE(user->isHostReadyForSetPort());
}

TEST_F(SimulatorUser, LogGivesTheLifeCycleInOrder)
{
    editor->setHostType(2);
    editor->start();
    editor->setEffectOption(false);
    editor->parametersReady();
    editor->onHostPortsReady(true);
    editor->onInitialStartFileLoad(false);
    editor->attachService();
    editor->detachService();
    EXPECT_EQ((Texts{"setControllerInterface(set)", "setHostType(2)", "start()",
                     "setEffectOption(false)", "parametersReady()", "onHostPortsReady(true)",
                     "onInitialStartFileLoad(false)", "attachService()", "detachService()"}),
              user->log());
    EXPECT_EQ(2, user->hostType());
}

TEST_F(SimulatorUser, SyncPartToMidiChannelChangesTheShownPart)
{
    EXPECT_EQ(0U, user->channelsTold());
    EXPECT_EQ(-1, user->lastChannelTold());
    editor->syncPartToMidiChannel(7);
    EXPECT_EQ(7, user->shownPart());
    EXPECT_EQ(7, user->lastChannelTold());
    for (const int32 channel : {-1, 16, INT32_MAX, INT32_MIN})
        editor->syncPartToMidiChannel(channel);
    EXPECT_EQ(7, user->shownPart());
    EXPECT_EQ(5U, user->channelsTold());
    EXPECT_EQ(INT32_MIN, user->lastChannelTold());
}

class SimulatorEditor : public SimulatorTest {
protected:
    int window = 0;
    Steinberg::ViewRect rect;
};

TEST_F(SimulatorEditor, OpenEditorOpensInAWindowAndCloseEditorClosesOnce)
{
    EXPECT_EQ(1, editor->editorOpened());
    EXPECT_EQ(0, editor->prepareEditor(&window, "NSView"));
    EXPECT_EQ(0, editor->getEditorRect(&rect));
    EXPECT_EQ(0, rect.left);
    EXPECT_EQ(0, rect.top);
    EXPECT_EQ(1016, rect.right);
    EXPECT_EQ(710, rect.bottom);
    EXPECT_EQ(0, editor->openEditor(&window, &rect));
    EXPECT_EQ(0, editor->editorOpened());
    EXPECT_TRUE(user->editorOpen());
    EXPECT_EQ(0, editor->closeEditor());
    EXPECT_EQ(1, editor->closeEditor());
    EXPECT_FALSE(user->editorOpen());
    EXPECT_EQ(1, editor->prepareEditor(nullptr, "NSView"));
    EXPECT_EQ(1, editor->prepareEditor(&window, nullptr));
    EXPECT_EQ(1, editor->getEditorRect(nullptr));
    EXPECT_EQ(1, editor->openEditor(nullptr, &rect));
    EXPECT_EQ(1, editor->openEditor(&window, nullptr));
}

TEST_F(SimulatorEditor, OnKeyDownStepsThroughThePartsWithTheArrowKeysOnly)
{
    using Steinberg::KEY_DOWN;
    using Steinberg::KEY_UP;
    EXPECT_FALSE(editor->onKeyDown(0, KEY_DOWN, 0)); // the editor is closed
    editor->openEditor(&window, &rect);
    EXPECT_EQ(0, editor->onFocus(true));
    EXPECT_TRUE(editor->onKeyDown(0, KEY_UP, 0)); // at the first part already
    EXPECT_EQ(0, user->shownPart());
    for (int round = 0; round < 20; ++round)
        EXPECT_TRUE(editor->onKeyDown(0, KEY_DOWN, 0));
    EXPECT_EQ(15, user->shownPart());
    EXPECT_TRUE(editor->onKeyUp(0, KEY_DOWN, 0));
    EXPECT_FALSE(editor->onKeyDown(' ', 0, 0));
    EXPECT_FALSE(editor->onKeyUp('a', -1, -1));
}

TEST_F(SimulatorEditor, MatchRegularExpressionMatchesPortNamesAndNothingMalformed)
{
    const char* ports = "^Tavrin RDL3/RDL5( [0-9]+)? Port[1-5]$";
    const std::string longPattern(1000000, '(');
    const std::string longText(100000, 'a');
    const struct {
        const char* pattern;
        const char* text;
        bool matches;
    } rows[] = {
        {ports, "Tavrin RDL3/RDL5 Port4", true},
        {ports, "Tavrin RDL3/RDL5 12 Port1", true},
        {ports, "Tavrin RDL3/RDL5 Port6", false},
        {ports, "Port4", false},
        {"Port4", "My Port4 here", true}, // anywhere, since it has no anchors
        {nullptr, "a", false},
        {"a", nullptr, false},
        {"(", "(", false},
        {"[", "[", false},
        {longPattern.c_str(), "a", false},
        {"^(a*)*b$", longText.c_str(), false},
    };
    for (const auto& row : rows)
        EXPECT_EQ(row.matches, editor->matchRegularExpression(row.pattern, row.text))
            << &row - rows;
}

TEST_F(SimulatorEditor, IsDisplayAudioPortIsTrueForTheInstrumentsPorts)
{
    EXPECT_EQ(0, editor->getFirstStartState());
    user->chooseFirstStart(1);
    EXPECT_EQ(1, editor->getFirstStartState());
    EXPECT_TRUE(editor->isDisplayAudioPort("Tavrin RDL3/RDL5 Main L"));
    EXPECT_FALSE(editor->isDisplayAudioPort("Built-in Microphone"));
    EXPECT_FALSE(editor->isDisplayAudioPort(""));
    EXPECT_FALSE(editor->isDisplayAudioPort(nullptr));
}

TEST_F(SimulatorEditor, AddObserverRefusesObserversOfOtherLibraries)
{
    int notAnObserver = 0;
    for (void* pointer : {static_cast<void*>(nullptr), static_cast<void*>(&notAnObserver)}) {
        EXPECT_EQ(1, editor->addObserver(static_cast<VstIObserver*>(pointer)));
        EXPECT_EQ(1, editor->removeObserver(static_cast<VstIObserver*>(pointer)));
    }
    auto* observer = observe(volume1, nullptr);
    EXPECT_EQ(1, editor->removeObserver(observer)); // not added yet
    EXPECT_EQ(0, editor->addObserver(observer));
    EXPECT_EQ(1, editor->addObserver(observer)); // added already
    observer->destroy();
}

} // namespace
