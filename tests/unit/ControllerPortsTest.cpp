// The whole controller and the host's ports: what library and host ask of it reaches PortManager,
// and terminate shows the ports again.
#include "hostapi/IExternalEffectUsingSKI.h"
#include "hostapi/IHostClasses.h"
#include "tests/unit/BoundController.h"

using namespace Steinberg;
using namespace Steinberg::Vst;
using namespace doubles;
using testing::AllOf;
using testing::ElementsAre;
using testing::Field;
using testing::IsEmpty;
using testing::Pointee;

namespace {

class ControllerPorts : public testing::Test {
protected:
    void SetUp() override
    {
        bound.host.ports.audioInput("A", "Mic");
        bound.host.ports.audioInput("B", "Line");
        bound.host.ports.midiOutput("M", "Box");
        bound.initialize();
    }

    /** As the library does, through the interface that it was given. */
    void setAudio(const char* first, const char* second, const char* third, const char* fourth)
    {
        const char* ids[] = {first, second, third, fourth};
        bound.library.controller->setAudioPortList(ids);
    }

    BoundController bound;
};

TEST_F(ControllerPorts, PortListsReachTheLibrary)
{
    VstIControllerInterface* controller = bound.library.controller;
    using Audio = VSTiAudioPort::AudioPortInfo;
    using Midi = VSTiMidiPort::MidiOutPortInfo;
    EXPECT_THAT(controller->getAudioPortList(),
                Pointee(ElementsAre(AllOf(Field(&Audio::portName, "Mic"), //
                                          Field(&Audio::portId, "A")),
                                    AllOf(Field(&Audio::portName, "Line"), //
                                          Field(&Audio::portId, "B")))));
    EXPECT_THAT(controller->getMidiOutPortList(),
                Pointee(ElementsAre(AllOf(Field(&Midi::portName, "Box"), //
                                          Field(&Midi::portId, "M")))));
}

TEST_F(ControllerPorts, SetAudioPortListAndSetMidiOutPortReachTheHost)
{
    EXPECT_FALSE(bound.library.controller->isConnectAudioPort());
    setAudio("A", nullptr, nullptr, "B");
    EXPECT_THAT(bound.host.ports.inputBuses, ElementsAre("3: port(A) null", "3: null port(B)"));
    EXPECT_TRUE(bound.library.controller->isConnectAudioPort());
    bound.library.controller->setMidiOutPort("M");
    EXPECT_THAT(bound.host.ports.midiPorts, ElementsAre("port(M)"));
}

TEST_F(ControllerPorts, IsConnectAudioPortHostIsTrueInOlderHosts)
{
    EXPECT_FALSE(bound.library.controller->isConnectAudioPortHost());
    bound.host.context.versionText = "Version 5.0.9";
    EXPECT_TRUE(bound.library.controller->isConnectAudioPortHost());
    bound.host.context.name = "Standalone";
    EXPECT_FALSE(bound.library.controller->isConnectAudioPortHost());
}

TEST_F(ControllerPorts, IsExistAudioPortIdListIsTrueForAnIdThatIsNotThere)
{
    EXPECT_FALSE(VstK2xController::isExistAudioPortIdList("B", {"A", "B"}));
    EXPECT_TRUE(VstK2xController::isExistAudioPortIdList("C", {"A", "B"}));
}

TEST_F(ControllerPorts, AllMidiInputRemoveAndFirstStartReachThePorts)
{
    bound.host.ports.midiInput("4", "Tavrin RDL3/RDL5 Port4");
    bound.host.ports.removalResult = 7;
    EXPECT_EQ(bound.controller->allMidiInputRemove("Port3"), 1);
    EXPECT_EQ(bound.controller->allMidiInputRemove("Port4"), 7);
    bound.library.firstStartState = 1;
    bound.library.displaysPort = [](const std::string& name) { return name == "Line"; };
    bound.trace.clear();
    bound.controller->firstStartAudioportDisplayCompulsorily();
    EXPECT_THAT(bound.trace.textsOf({"port(A).set", "port(B).set"}),
                ElementsAre("port(B).setDisplayed(true)"));
}

TEST_F(ControllerPorts, HostReadyForSetPortConnectionsTellsLibraryAndHost)
{
    EXPECT_FALSE(bound.library.controller->isHostReadyForSetPort());
    bound.library.controller->setInitialStartFileLoad(true);
    bound.trace.clear();
    const FUnknownPtr<IExternalEffectUsingSKI> face(
        static_cast<IEditController*>(bound.controller));
    ASSERT_TRUE(face);
    EXPECT_EQ(face->hostReadyForSetPortConnections(), 0);
    EXPECT_THAT(bound.trace.textsOf({"library.get", "library.on", "host."}),
                ElementsAre("library.getFirstStartState()", "library.onHostPortsReady(false)",
                            "library.onInitialStartFileLoad(true)", "host.restartComponent(8)"));
    EXPECT_TRUE(bound.library.controller->isHostReadyForSetPort());
    bound.controller->terminate();
    EXPECT_TRUE(bound.controller->isHostReadyForSetPort()) << "for the rest of its life";
}

TEST(UnboundControllerPorts, OperationsDoNothingWithoutALibrary)
{
    const auto controller = owned(new VstK2xController);
    EXPECT_EQ(controller->hostReadyForSetPortConnections(), 0);
    EXPECT_FALSE(controller->isHostReadyForSetPort());
    EXPECT_THAT(controller->getAudioPortList(), Pointee(IsEmpty()));
    EXPECT_THAT(controller->getMidiOutPortList(), Pointee(IsEmpty()));
    const char* ids[] = {"A", "B", "C", "D"};
    controller->setAudioPortList(ids);
    controller->setMidiOutPort("M");
    EXPECT_FALSE(controller->isConnectAudioPort());
    EXPECT_TRUE(controller->isConnectAudioPortHost());
    EXPECT_EQ(controller->allMidiInputRemove("Port4"), 1);
}

/** A controller that overrides changeLatencyTrigger. */
class OwnTrigger : public VstK2xController {
public:
    int triggers = 0;
    void changeLatencyTrigger() override { ++triggers; }
};

TEST(HostReadyForPorts, HostReadyForSetPortConnectionsCallsAnOverriddenChangeLatencyTrigger)
{
    BoundController bound;
    auto own = owned(new OwnTrigger);
    bound.controller = own;
    bound.initialize();
    EXPECT_EQ(own->hostReadyForSetPortConnections(), 0);
    EXPECT_EQ(own->triggers, 1);
    EXPECT_THAT(bound.edits(), IsEmpty());
    own = nullptr;
}

TEST_F(ControllerPorts, TerminateForgetsThePortsWithoutARegistryToo)
{
    setAudio("A", nullptr, nullptr, nullptr);
    bound.host.hide(IPortRegistry::iid);
    EXPECT_EQ(bound.controller->terminate(), kResultOk);
    EXPECT_FALSE(bound.controller->isConnectAudioPort());
    bound.host.show(IPortRegistry::iid);
}

TEST_F(ControllerPorts, AllMidiInputRemoveAndFirstStartLetNoExceptionOut)
{
    bound.library.firstStartState = 1;
    bound.host.throwAt("getPortCount");
    EXPECT_NO_THROW(EXPECT_EQ(bound.controller->allMidiInputRemove("Port4"), 1));
    EXPECT_NO_THROW(bound.controller->firstStartAudioportDisplayCompulsorily());
}

} // namespace
