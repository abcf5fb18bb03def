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

TEST_F(SimulatorUser, ReachesTheController)
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

TEST_F(SimulatorUser, MakesNoImpossibleChoice)
{
    EXPECT_FALSE(user->choosePart(-1));
    EXPECT_FALSE(user->choosePart(16));
    EXPECT_FALSE(user->chooseAudioPorts({"a", "b", "c"}));
    EXPECT_FALSE(user->chooseAudioPorts({"a", "b", "c", "d", "e"}));
    EXPECT_TRUE(controller.trace.texts().empty());
    EXPECT_EQ(0, user->shownPart());
}

TEST_F(SimulatorUser, ReachesNobodyOnceTheControllerIsTakenBack)
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

TEST_F(SimulatorUser, SeesThePortsAndStateOfTheController)
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

TEST_F(SimulatorUser, SeesTheLifeCycleInOrder)
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

TEST_F(SimulatorUser, SeesThePartThatTheHostShows)
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

using SimulatorEditor = SimulatorTest;

TEST_F(SimulatorEditor, OpensInAWindowAndClosesOnce)
{
    int window = 0;
    Steinberg::ViewRect rect;
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
}

TEST_F(SimulatorEditor, NeedsAWindowAndARectangle)
{
    int window = 0;
    Steinberg::ViewRect rect;
    EXPECT_EQ(1, editor->prepareEditor(nullptr, "NSView"));
    EXPECT_EQ(1, editor->prepareEditor(&window, nullptr));
    EXPECT_EQ(1, editor->getEditorRect(nullptr));
    EXPECT_EQ(1, editor->openEditor(nullptr, &rect));
    EXPECT_EQ(1, editor->openEditor(&window, nullptr));
    EXPECT_EQ(1, editor->editorOpened());
}

TEST_F(SimulatorEditor, StepsThroughThePartsWithTheArrowKeysOnly)
{
    using Steinberg::KEY_DOWN;
    using Steinberg::KEY_UP;
    int window = 0;
    Steinberg::ViewRect rect;
    EXPECT_FALSE(editor->onKeyDown(0, KEY_DOWN, 0)); // closed
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

TEST_F(SimulatorEditor, MatchesPortNames)
{
    const char* pattern = "^Tavrin RDL3/RDL5( [0-9]+)? Port[1-5]$";
    EXPECT_TRUE(editor->matchRegularExpression(pattern, "Tavrin RDL3/RDL5 Port4"));
    EXPECT_TRUE(editor->matchRegularExpression(pattern, "Tavrin RDL3/RDL5 12 Port1"));
    EXPECT_FALSE(editor->matchRegularExpression(pattern, "Tavrin RDL3/RDL5 Port6"));
    EXPECT_FALSE(editor->matchRegularExpression(pattern, "Port4"));
    EXPECT_TRUE(
        editor->matchRegularExpression("Port4", "My Port4 here")); // anywhere, unless anchored
}

TEST_F(SimulatorEditor, MatchesNothingThatIsNoPatternOrNoText)
{
    EXPECT_FALSE(editor->matchRegularExpression(nullptr, "a"));
    EXPECT_FALSE(editor->matchRegularExpression("a", nullptr));
    EXPECT_FALSE(editor->matchRegularExpression("(", "("));
    EXPECT_FALSE(editor->matchRegularExpression("[", "["));
    EXPECT_FALSE(editor->matchRegularExpression(std::string(1000000, '(').c_str(), "a"));
    EXPECT_FALSE(editor->matchRegularExpression("^(a*)*b$", std::string(100000, 'a').c_str()));
}

TEST_F(SimulatorEditor, ShowsTheInstrumentsOwnAudioPortsAtItsFirstStart)
{
    EXPECT_EQ(0, editor->getFirstStartState());
    user->chooseFirstStart(1);
    EXPECT_EQ(1, editor->getFirstStartState());
    EXPECT_TRUE(editor->isDisplayAudioPort("Tavrin RDL3/RDL5 Main L"));
    EXPECT_FALSE(editor->isDisplayAudioPort("Built-in Microphone"));
    EXPECT_FALSE(editor->isDisplayAudioPort(""));
    EXPECT_FALSE(editor->isDisplayAudioPort(nullptr));
}

TEST_F(SimulatorEditor, TakesObserversOfItsOwnLibraryOnly)
{
    int notAnObserver = 0;
    EXPECT_EQ(1, editor->addObserver(nullptr));
    EXPECT_EQ(1, editor->addObserver(reinterpret_cast<VstIObserver*>(&notAnObserver)));
    EXPECT_EQ(1, editor->removeObserver(nullptr));
    EXPECT_EQ(1, editor->removeObserver(reinterpret_cast<VstIObserver*>(&notAnObserver)));
    auto* observer = observe(volume1, nullptr);
    EXPECT_EQ(1, editor->removeObserver(observer)); // not added yet
    EXPECT_EQ(0, editor->addObserver(observer));
    EXPECT_EQ(1, editor->addObserver(observer)); // added already
    observer->destroy();
}

} // namespace
