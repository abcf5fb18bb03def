// The host's ports: listed, taken, connected and let go.
#include "editorlib/VstIControllerInterface.h"
#include "hostapi/IExternalEffectUsingSKI.h"
#include "tests/faults/Scenario.h"

namespace faults {
namespace {

using namespace Steinberg;
using namespace Steinberg::Vst;
using testing::ElementsAre;
using testing::IsEmpty;

class Ports : public Scenario {
public:
    void setUp() override
    {
        auto& ports = world.host.ports;
        ports.audioInput("A", "Tavrin 1");
        ports.addNull();
        ports.audioInput("B", "Tavrin 2");
        ports.midiOutput("M", "Port1");
        ports.midiInput("I", "Tavrin RDL3/RDL5 Port4");
        world.library.firstStartState = 1;
        world.library.displaysPort = [](const std::string& name) { return name == "Tavrin 2"; };
        Scenario::setUp();
        skiEffect = FUnknownPtr<IExternalEffectUsingSKI>(world.controller);
    }

    void tearDown() override
    {
        skiEffect = nullptr;
        Scenario::tearDown();
    }

    void act() override
    {
        world.host.ports.removedFromAllMidiInputs.clear();
        world.trace.clear();
        auto& plugIn = *world.library.controller;
        world.step("getAudioPortList", [&] { audio = textsOf(*plugIn.getAudioPortList()); });
        world.step("getMidiOutPortList", [&] { midi = textsOf(*plugIn.getMidiOutPortList()); });
        const char* taken[] = {"A", "B", nullptr, ""};
        world.step("setAudioPortList", [&] { plugIn.setAudioPortList(taken); });
        connected = world.host.ports.inputBuses;
        world.step("setMidiOutPort", [&] { plugIn.setMidiOutPort("M"); });
        world.step("isConnectAudioPortHost", [&] { plugIn.isConnectAudioPortHost(); });
        world.step("hostReadyForSetPortConnections",
                   [&] { readyResult = skiEffect->hostReadyForSetPortConnections(); });
        const char* none[] = {nullptr, nullptr, nullptr, nullptr};
        world.step("setAudioPortList", [&] { plugIn.setAudioPortList(none); });
    }

    void expectDone() override
    {
        if (isLeftHidden)
            return;
        EXPECT_THAT(audio, ElementsAre("A=Tavrin 1", "B=Tavrin 2"));
        EXPECT_THAT(midi, ElementsAre("M=Port1"));
        EXPECT_THAT(connected, ElementsAre("3: port(A) port(B)", "3: null null"));
        EXPECT_THAT(world.host.ports.inputBuses, ElementsAre("3: null null", "3: null null"));
        EXPECT_THAT(world.host.ports.midiPorts, ElementsAre("port(M)"));
        EXPECT_THAT(world.host.ports.removedFromAllMidiInputs, ElementsAre("port(I)"));
        EXPECT_EQ(world.trace.count("host.restartComponent(8)"), 1u);
    }

    /** The host is ready whatever fails, and lists hold only ports that are there. */
    void expectStated(const Fault& fault) override
    {
        EXPECT_EQ(readyResult, kResultOk);
        EXPECT_TRUE(world.library.controller->isHostReadyForSetPort());
        EXPECT_EQ(world.trace.count("library.onHostPortsReady(true)"), 1u);
        EXPECT_EQ(world.trace.count("library.onInitialStartFileLoad(false)"), 1u);
        EXPECT_LE(audio.size(), 2u);
        EXPECT_LE(midi.size(), fault.hit("port(I).isInputPort") ? 2u : 1u);
        const bool cannotLetGo = fault.kind == Kind::kNoMemory || fault.hit("IPortRegistry") ||
                                 fault.hit("IComponentPortHandler") || fault.hit("IHostClasses");
        EXPECT_TRUE(cannotLetGo || !world.library.controller->isConnectAudioPort());
        // Only the host can show a port again, and it did not.
        isLeftHidden = fault.hit("setDisplayed(true)") || fault.hit("findPortById");
    }

    void expectEnded(const Fault&) override
    {
        if (isLeftHidden)
            return;
        for (const auto* port : world.host.ports.list)
            EXPECT_TRUE(!port || port->displayed);
    }

private:
    template <class List>
    static std::vector<std::string> textsOf(const List& list)
    {
        std::vector<std::string> result;
        for (const auto& info : list)
            result.push_back(info.portId + "=" + info.portName);
        return result;
    }

    IPtr<IExternalEffectUsingSKI> skiEffect;
    std::vector<std::string> audio;
    std::vector<std::string> midi;
    std::vector<std::string> connected;
    int32 readyResult = -1;
    bool isLeftHidden = false;
};

TEST(Faults, Ports)
{
    injectFaults<Ports>("ports");
}

} // namespace
} // namespace faults
