#include "tests/unit/PortScene.h"

using doubles::HostFamily;
using namespace Steinberg;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

const std::string kConnectNone = "portHandler.setMidiOutputPorts(null, 0, same)";

} // namespace

TEST(SetMidiOutPort, ConnectsThePortWithTheId)
{
    PortScene scene;
    scene.host.ports.midiOutput("A", "Box");
    scene.host.ports.midiOutput("B", "Synth");
    scene.host.ports.midiOutput("C", "Other");
    scene.ports.setMidiOutPort("B");
    EXPECT_THAT(scene.calls({"portHandler."}),
                ElementsAre("portHandler.setMidiOutputPorts([ port(B) ], 1, same)"));
    EXPECT_THAT(scene.calls({"port(C)"}), IsEmpty()) << "the walk stops at the port";
}

TEST(SetMidiOutPort, ConnectsNoneWhenNoPortHasTheId)
{
    PortScene scene;
    scene.host.ports.midiOutput("A", "Box");
    scene.ports.setMidiOutPort("a");
    EXPECT_THAT(scene.calls({"portHandler."}), ElementsAre(kConnectNone));
}

TEST(SetMidiOutPort, ConnectsNoneForANullId)
{
    PortScene scene;
    scene.host.ports.midiOutput("", "Box");
    scene.ports.setMidiOutPort(nullptr);
    EXPECT_THAT(scene.calls({"portHandler."}), ElementsAre(kConnectNone));
}

TEST(SetMidiOutPort, SkipsPortsThatAreNoRealMidiOutputs)
{
    PortScene scene;
    scene.host.ports.addNull();
    scene.host.ports.midiInput("A", "Keys");
    scene.host.ports.audioOutput("A", "Speaker");
    scene.host.ports.midiOutput("A", "V").attributes = {"virtual"};
    scene.host.ports.midiOutput("A", "U").idReadable = false;
    scene.ports.setMidiOutPort("A");
    EXPECT_THAT(scene.host.ports.midiPorts, IsEmpty());
    EXPECT_THAT(scene.calls({"portHandler."}), ElementsAre(kConnectNone));
}

TEST(SetMidiOutPort, TakesAProxyAndAHiddenPort)
{
    PortScene scene;
    scene.host.ports.midiOutput("P", "Proxy").attributes = {"proxy"};
    scene.host.ports.midiOutput("H", "Hidden").displayed = false;
    scene.ports.setMidiOutPort("P");
    EXPECT_THAT(scene.host.ports.midiPorts, ElementsAre("port(P)"));
    scene.ports.setMidiOutPort("H");
    EXPECT_THAT(scene.host.ports.midiPorts, ElementsAre("port(H)"));
    EXPECT_THAT(scene.calls({"port(P).hasPortAttribute(proxy)", "port(H).isDisplayed"}), IsEmpty());
}

TEST(SetMidiOutPort, DoesNothingWithoutHandlerOrPorts)
{
    PortScene scene;
    scene.host.ports.midiOutput("A", "Box");
    const auto connect = [&] { scene.ports.setMidiOutPort("A"); };
    scene.withoutPortHandler(connect);
    scene.withoutPorts(connect);
    EXPECT_THAT(scene.calls({"portHandler.", "port("}), IsEmpty());
}

TEST(SetMidiOutPort, AsksForThePortsBeforeTheHandler)
{
    PortScene scene;
    scene.host.traceQueries();
    scene.ports.setMidiOutPort("A");
    EXPECT_THAT(
        scene.calls({"query", "hostClasses"}),
        ElementsAre("query(context, IHostClasses)", "hostClasses.getHostInterface(IPortRegistry)",
                    "query(host, IComponentPortHandler)", "query(context, IHostApplicationW)"));
}

TEST(SetMidiOutPort, AsksEachPortNoMoreThanItNeeds)
{
    PortScene scene;
    scene.host.ports.midiInput("in", "Keys");
    scene.host.ports.audioOutput("audio", "Speaker");
    scene.host.ports.midiOutput("V", "Virtual").attributes = {"virtual"};
    scene.host.ports.midiOutput("A", "Box");
    scene.ports.setMidiOutPort("A");
    EXPECT_THAT(scene.calls({"port("}),
                ElementsAre("port(in).isInputPort()", "port(audio).isInputPort()",
                            "port(audio).isPortType(midi)", "port(V).isInputPort()",
                            "port(V).isPortType(midi)", "port(V).hasPortAttribute(virtual)",
                            "port(A).isInputPort()", "port(A).isPortType(midi)",
                            "port(A).hasPortAttribute(virtual)", "port(A).getPortId()"));
}

TEST(SetMidiOutPort, ComparesThePackedIdsOfAHostWithoutUnicode)
{
    PortScene scene(HostFamily::withoutUnicode("Cubase LE", "4.0.1"));
    scene.host.ports.midiOutput("out 1", "Box");
    scene.ports.setMidiOutPort("out 1");
    EXPECT_THAT(scene.host.ports.midiPorts, ElementsAre("port(out 1)"));
}
