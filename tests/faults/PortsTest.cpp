// The host's audio and MIDI ports: listed, connected and given back.
#include "editorlib/VstIControllerInterface.h"
#include "hostapi/IExternalEffectUsingSKI.h"
#include "hostapi/IHostClasses.h"
#include "tests/doubles/NonsenseText.h"
#include "tests/faults/Scenario.h"

#include <algorithm>

namespace faults {
namespace {

using namespace Steinberg;
using namespace Steinberg::Vst;
using doubles::HostFamily;
using testing::ElementsAre;
using testing::IsEmpty;

const std::vector<std::string> kTaken = {"3: port(A) port(B)", "3: null null"};
const std::vector<std::string> kNoneTaken = {"3: null null", "3: null null"};

/** @return the entries, in order, without those of one port */
std::vector<std::string> without(std::vector<std::string> entries, const std::string& id)
{
    entries.erase(std::remove_if(entries.begin(), entries.end(),
                                 [&](const std::string& entry) {
                                     return entry.compare(0, id.size() + 1, id + "=") == 0;
                                 }),
                  entries.end());
    return entries;
}

class Ports : public Scenario {
public:
    explicit Ports(const doubles::HostFamily& family, bool connectsInHost = false)
    : Scenario(family)
    , expectedConnectHost(connectsInHost)
    {
        world.host.ports.removalResult = 0;
    }

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
    }

    void act() override
    {
        const FUnknownPtr<IExternalEffectUsingSKI> skiEffect(world.controller);
        world.host.ports.removedFromAllMidiInputs.clear();
        world.trace.clear();
        auto& plugIn = *world.library.controller;
        audio = midi = {};
        world.step("list audio", [&] { audio = textsOf(*plugIn.getAudioPortList()); });
        world.step("list MIDI", [&] { midi = textsOf(*plugIn.getMidiOutPortList()); });
        const char* taken[] = {"A", "B", nullptr, ""};
        world.host.ports.inputBuses.clear();
        world.step("take", [&] { plugIn.setAudioPortList(taken); });
        connected = world.host.ports.inputBuses;
        world.host.ports.midiPorts.clear();
        world.step("setMidiOutPort", [&] { plugIn.setMidiOutPort("M"); });
        world.step("isConnectAudioPortHost",
                   [&] { connectHost = plugIn.isConnectAudioPortHost(); });
        world.step("ready", [&] { readyResult = skiEffect->hostReadyForSetPortConnections(); });
        const char* none[] = {nullptr, nullptr, nullptr, nullptr};
        world.step("let go", [&] { plugIn.setAudioPortList(none); });
    }

    void expectDone() override
    {
        if (isLeftHidden)
            return;
        EXPECT_EQ(connectHost, expectedConnectHost);
        if (!hasPorts()) {
            expectNoPorts();
            return;
        }
        EXPECT_THAT(audio, ElementsAre("A=Tavrin 1", "B=Tavrin 2"));
        EXPECT_THAT(midi, ElementsAre("M=Port1"));
        EXPECT_EQ(connected, kTaken);
        EXPECT_EQ(world.host.ports.inputBuses, kNoneTaken);
        EXPECT_THAT(world.host.ports.midiPorts, ElementsAre("port(M)"));
        EXPECT_THAT(world.host.ports.removedFromAllMidiInputs, ElementsAre("port(I)"));
        EXPECT_EQ(world.trace.count("host.restartComponent(8)"), 1u);
    }

    /** A fault affects only its operation. hostReadyForSetPortConnections always succeeds. */
    void expectStated(const Fault& fault) override
    {
        // The host failed when it was to show the port again.
        isLeftHidden = fault.hit("setDisplayed(true)") || fault.hit("findPortById");
        expectReady();
        if (!hasPorts()) {
            expectNoPorts();
            return;
        }
        if (fault.is(Kind::kNoMoreMemory)) {
            EXPECT_LE(audio.size(), 2u);
            EXPECT_LE(midi.size(), 1u);
            return;
        }
        if (fault.in("list audio"))
            expectLessAudio(fault);
        else
            EXPECT_THAT(audio, ElementsAre("A=Tavrin 1", "B=Tavrin 2"));
        if (fault.in("list MIDI"))
            expectLessMidi(fault);
        else
            EXPECT_THAT(midi, ElementsAre("M=Port1"));
        if (fault.in("take"))
            expectLessTaken(fault);
        else
            EXPECT_EQ(connected, kTaken);
        if (!fault.in("setMidiOutPort")) {
            EXPECT_THAT(world.host.ports.midiPorts, ElementsAre("port(M)"));
        } else if (!isEnding(fault) && !fault.hit("setMidiOutputPorts") &&
                   !fault.is(Kind::kHostThrows) && !fault.isOutOfMemory()) {
            EXPECT_EQ(world.calls({"portHandler.setMidiOutputPorts"}).size(), 1u);
        }
        if (!fault.in("isConnectAudioPortHost")) {
            EXPECT_EQ(connectHost, expectedConnectHost);
        }
        if (!fault.in("ready")) {
            EXPECT_THAT(world.host.ports.removedFromAllMidiInputs, ElementsAre("port(I)"));
            EXPECT_EQ(world.trace.count("host.restartComponent(8)"), 1u);
        }
        const bool cannotLetGo = fault.in("let go") && (isEnding(fault) || fault.isOutOfMemory());
        const bool isHeld = world.library.controller->isConnectAudioPort();
        EXPECT_EQ(isHeld, cannotLetGo);
    }

    /** Nonsense in one operation does not affect another. */
    void expectBelieved(const Fault& fault) override
    {
        expectReady();
        if (!hasPorts())
            return;
        if (!fault.in("list audio")) {
            EXPECT_THAT(audio, ElementsAre("A=Tavrin 1", "B=Tavrin 2"));
        }
        if (!fault.in("list MIDI")) {
            EXPECT_THAT(midi, ElementsAre("M=Port1"));
        }
        if (fault.hit("getDisplayName"))
            expectNonsenseName(fault);
        if (!fault.in("take")) {
            EXPECT_EQ(connected, kTaken);
        }
        if (!fault.in("setMidiOutPort")) {
            EXPECT_THAT(world.host.ports.midiPorts, ElementsAre("port(M)"));
        }
        if (!fault.in("let go")) {
            EXPECT_FALSE(world.library.controller->isConnectAudioPort());
        }
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

    bool hasPorts() { return !world.host.getBooks().isHidden(IHostClasses::iid); }

    void expectReady() const
    {
        EXPECT_EQ(readyResult, kResultOk);
        EXPECT_TRUE(world.library.controller->isHostReadyForSetPort());
        EXPECT_EQ(world.trace.count("library.onHostPortsReady(true)"), 1u);
        EXPECT_EQ(world.trace.count("library.onInitialStartFileLoad(false)"), 1u);
    }

    void expectNoPorts() const
    {
        EXPECT_THAT(audio, IsEmpty());
        EXPECT_THAT(midi, IsEmpty());
        EXPECT_THAT(connected, IsEmpty());
        EXPECT_THAT(world.host.ports.midiPorts, IsEmpty());
        EXPECT_FALSE(world.library.controller->isConnectAudioPort());
    }

    /** Without these objects of the host an operation ends at once. */
    static bool isEnding(const Fault& fault)
    {
        return fault.hit("IPortRegistry") || fault.hit("IComponentPortHandler") ||
               fault.hit("IHostClasses");
    }

    /** After these faults UTF-16 is taken for 8-bit text, which ends after one character. */
    static bool isAboutCharacters(const Fault& fault)
    {
        return fault.hit("IHostApplicationW") || fault.hit("getCharacterSet");
    }

    /** A port that cannot be read is not listed. The others are, unless the host threw. */
    void expectLessAudio(const Fault& fault)
    {
        const std::vector<std::string> all = {"A=Tavrin 1", "B=Tavrin 2"};
        if (isEnding(fault)) {
            EXPECT_THAT(audio, IsEmpty());
        } else if (isAboutCharacters(fault)) {
            EXPECT_EQ(audio, world.host.getBooks().unicode
                                 ? std::vector<std::string>({"A=T", "B=T"})
                                 : all);
        } else if (fault.is(Kind::kHostThrows) || fault.isOutOfMemory()) {
            EXPECT_LE(audio.size(), 2u);
            EXPECT_TRUE(std::equal(audio.begin(), audio.end(), all.begin()));
        } else if (fault.hit("getDisplayName")) {
            EXPECT_EQ(audio.size(), 2u);
        } else if (fault.hit("port(A)") || fault.hit("getPortByIndex(0)")) {
            EXPECT_EQ(audio, without(all, "A"));
        } else if (fault.hit("port(B)") || fault.hit("getPortByIndex(2)")) {
            EXPECT_EQ(audio, without(all, "B"));
        }
    }

    /** A port whose ID or name cannot be read is still listed. */
    void expectLessMidi(const Fault& fault) const
    {
        if (fault.hit("port(M).getPortId") && !fault.is(Kind::kHostThrows)) {
            EXPECT_THAT(midi, ElementsAre("=Port1"));
        } else if (fault.hit("port(M).getDisplayName") && !fault.is(Kind::kHostThrows)) {
            EXPECT_THAT(midi, ElementsAre("M="));
        } else if (isEnding(fault) || fault.hit("port(M).isPortType") ||
                   fault.hit("port(M).isDisplayed")) {
            EXPECT_THAT(midi, IsEmpty());
        } else if (fault.hit("port(M).isInputPort") && !fault.is(Kind::kHostThrows)) {
            EXPECT_THAT(midi, ElementsAre("M=Port1"));
        } else if (fault.hit("port(I).isInputPort") && !fault.is(Kind::kHostThrows)) {
            EXPECT_EQ(midi.size(), 2u); // the host said that it is an output
        } else {
            EXPECT_LE(midi.size(), 1u);
        }
    }

    /** The host is given both buses, without the port that could not be used. */
    void expectLessTaken(const Fault& fault) const
    {
        if (isEnding(fault) || fault.hit("setAudioInputBuses") || fault.isOutOfMemory()) {
            EXPECT_THAT(connected, testing::AnyOf(IsEmpty(), testing::SizeIs(2)));
            return;
        }
        ASSERT_EQ(connected.size(), 2u);
        if (fault.hit("port(A)") && !fault.is(Kind::kHostThrows)) {
            EXPECT_THAT(connected[0], testing::HasSubstr("port(B)"));
        }
        if (fault.hit("port(B)")) {
            EXPECT_THAT(connected[0], testing::HasSubstr("port(A)"));
        }
    }

    /** Each lone surrogate becomes a question mark. A text is as long as the host says. */
    void expectNonsenseName(const Fault& fault)
    {
        const auto& list = fault.in("list audio") ? audio : midi;
        if (fault.is(Kind::kHostEmptyText) && !fault.in("ready")) {
            EXPECT_THAT(list, testing::Contains(testing::EndsWith("=")));
        }
        if (fault.is(Kind::kHostBrokenText) && !fault.in("ready") &&
            world.host.getBooks().unicode) {
            EXPECT_THAT(list, testing::Contains(testing::EndsWith("=? ?")));
        }
        if (fault.is(Kind::kHostEndlessText) && !fault.in("ready")) {
            EXPECT_THAT(list, testing::Contains(testing::SizeIs(2 + doubles::kEndlessText)));
        }
    }

    const bool expectedConnectHost;
    bool connectHost = false;
    std::vector<std::string> audio;
    std::vector<std::string> midi;
    std::vector<std::string> connected;
    int32 readyResult = -1;
    bool isLeftHidden = false;
};

TEST(Faults, PortListsAndConnections)
{
    injectFaults("ports", scenario<Ports>(HostFamily::cubase("7.5.1"), false));
}

TEST(Faults, PortListsAndConnectionsInOtherHosts)
{
    injectFaults("ports, host without Unicode",
                 scenario<Ports>(HostFamily::withoutUnicode("Cubase", "7.5.1"), true), hostKinds());
    injectFaults("ports, stand-alone host", scenario<Ports>(HostFamily::standalone(), false),
                 {Kind::kHostAnswers, Kind::kHostThrows});
    injectFaults("ports, plain host", scenario<Ports>(HostFamily::plain(), true), hostKinds());
}

} // namespace
} // namespace faults
