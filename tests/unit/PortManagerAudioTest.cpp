#include "tests/unit/PortScene.h"

using doubles::HostFamily;
using namespace Steinberg;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(SetAudioPortList, ConnectsFourPortsToTwoStereoBuses)
{
    PortScene scene;
    for (const char* id : {"D", "C", "B", "A"})
        scene.host.ports.audioInput(id, id);
    scene.setAudio("A", "B", "C", "D");
    EXPECT_THAT(scene.host.ports.inputBuses,
                ElementsAre("3: port(A) port(B)", "3: port(C) port(D)"));
    EXPECT_TRUE(scene.ports.isConnectAudioPort());
    for (const auto* port : scene.host.ports.list)
        EXPECT_FALSE(port->displayed) << port->getName();
}

TEST(SetAudioPortList, AsksForThePortsBeforeTheHandler)
{
    PortScene scene;
    scene.host.traceQueries();
    scene.setAudio(nullptr, nullptr, nullptr, nullptr);
    EXPECT_THAT(
        scene.calls({"query", "hostClasses"}),
        ElementsAre("query(context, IHostClasses)", "hostClasses.getHostInterface(IPortRegistry)",
                    "query(host, IComponentPortHandler)", "query(context, IHostApplicationW)",
                    "hostClasses.getHostInterface(IBusDescriptor)",
                    "hostClasses.getHostInterface(IBusDescriptor)"));
}

TEST(SetAudioPortList, AsksEachPortNoMoreThanItNeeds)
{
    PortScene scene;
    scene.host.ports.midiInput("midi", "Keys");
    scene.host.ports.audioOutput("out", "Speaker");
    scene.host.ports.audioInput("B", "Line");
    scene.host.ports.audioInput("A", "Mic");
    scene.host.ports.audioInput("C", "Phono");
    scene.setAudio("A", nullptr, nullptr, nullptr);
    EXPECT_THAT(
        scene.calls({"port("}),
        ElementsAre("port(midi).isPortType(audio)", "port(out).isPortType(audio)",
                    "port(out).isInputPort()", "port(B).isPortType(audio)", "port(B).isInputPort()",
                    "port(B).getPortId()", "port(A).isPortType(audio)", "port(A).isInputPort()",
                    "port(A).getPortId()", "port(A).isDisplayed()", "port(A).setDisplayed(false)"));
    EXPECT_EQ(scene.trace.count("portRegistry.getPortCount()"), 4u);
}

TEST(SetAudioPortList, MakesOneBusAfterTheOther)
{
    PortScene scene;
    scene.host.ports.audioInput("A", "Mic");
    scene.setAudio(nullptr, "A", "", "none");
    EXPECT_THAT(scene.calls({"hostClasses.getHostInterface(IBusDescriptor)", "bus(",
                             "port(A).setDisplayed", "portHandler."}),
                ElementsAre("hostClasses.getHostInterface(IBusDescriptor)",
                            "bus(1).setArrangement(3)", "bus(1).setChannelPort(0, null)",
                            "port(A).setDisplayed(false)", "bus(1).setChannelPort(1, port(A))",
                            "hostClasses.getHostInterface(IBusDescriptor)",
                            "bus(2).setArrangement(3)", "bus(2).setChannelPort(0, null)",
                            "bus(2).setChannelPort(1, null)",
                            "portHandler.setAudioInputBuses(0, 0, [ bus(1) bus(2) ], 2)"));
}

TEST(SetAudioPortList, StopsItsWalkAtTheFirstPortWithTheId)
{
    PortScene scene;
    scene.host.ports.audioInput("A", "foreign").displayed = false;
    scene.host.ports.audioInput("A", "visible");
    scene.setAudio("A", nullptr, nullptr, nullptr);
    EXPECT_THAT(scene.host.ports.inputBuses, ElementsAre("3: null null", "3: null null"));
    EXPECT_TRUE(scene.host.ports.list[1]->displayed);
    EXPECT_EQ(scene.trace.count("portRegistry.getPortByIndex(1)"), 0u);
    EXPECT_FALSE(scene.ports.isConnectAudioPort());
}

TEST(SetAudioPortList, LeavesTheChannelOfAForeignHiddenPortUnconnected)
{
    PortScene scene;
    auto& port = scene.host.ports.audioInput("A", "Mic");
    port.displayed = false;
    scene.setAudio("A", nullptr, nullptr, nullptr);
    EXPECT_THAT(scene.host.ports.inputBuses, ElementsAre("3: null null", "3: null null"));
    EXPECT_THAT(scene.calls({"port(A).setDisplayed"}), IsEmpty());
}

TEST(SetAudioPortList, SkipsPortsThatAreNoAudioInputsWithAnId)
{
    PortScene scene;
    scene.host.ports.addNull();
    scene.host.ports.audioOutput("A", "Speaker");
    scene.host.ports.midiInput("A", "Keys");
    scene.host.ports.audioInput("A", "unreadable").idReadable = false;
    auto& port = scene.host.ports.audioInput("A", "Mic");
    scene.setAudio("A", nullptr, nullptr, nullptr);
    EXPECT_FALSE(port.displayed);
    EXPECT_THAT(scene.host.ports.inputBuses, ElementsAre("3: port(A) null", "3: null null"));
}

TEST(SetAudioPortList, FourNullEntriesSendEmptyBusesAndLetEveryPortGo)
{
    PortScene scene;
    auto& a = scene.host.ports.audioInput("A", "Mic");
    auto& b = scene.host.ports.audioInput("B", "Line");
    scene.setAudio("A", nullptr, nullptr, "B");
    scene.setAudio(nullptr, nullptr, nullptr, nullptr);
    EXPECT_THAT(scene.host.ports.inputBuses, ElementsAre("3: null null", "3: null null"));
    EXPECT_TRUE(a.displayed);
    EXPECT_TRUE(b.displayed);
    EXPECT_FALSE(scene.ports.isConnectAudioPort());
}

TEST(SetAudioPortList, ShowsThePortsThatAreNoLongerUsedAfterTheBusesAreSent)
{
    PortScene scene;
    scene.host.ports.audioInput("A", "Mic");
    scene.host.ports.audioInput("B", "Line");
    scene.host.ports.audioInput("C", "Phono");
    scene.setAudio("A", "B", nullptr, nullptr);
    scene.trace.clear();
    scene.setAudio("B", "C", nullptr, nullptr);
    EXPECT_THAT(scene.calls({"port(A).setDisplayed", "port(B).setDisplayed", "port(C).setDisplayed",
                             "portHandler.", "portRegistry.findPortById"}),
                ElementsAre("port(B).setDisplayed(false)", "port(C).setDisplayed(false)",
                            "portHandler.setAudioInputBuses(0, 0, [ bus(3) bus(4) ], 2)",
                            "portRegistry.findPortById(A)", "port(A).setDisplayed(true)"));
}

TEST(SetAudioPortList, APortThatIsGoneIsForgotten)
{
    PortScene scene;
    scene.host.ports.audioInput("A", "Mic");
    scene.setAudio("A", nullptr, nullptr, nullptr);
    scene.host.ports.remove(0);
    scene.setAudio(nullptr, nullptr, nullptr, nullptr);
    EXPECT_EQ(scene.trace.count("portRegistry.findPortById(A)"), 1u);
    EXPECT_FALSE(scene.ports.isConnectAudioPort());
}

TEST(SetAudioPortList, ASecondChannelGetsThePortOnlyIfItWasHeldBefore)
{
    PortScene scene;
    scene.host.ports.audioInput("A", "Mic");
    scene.setAudio("A", "A", nullptr, nullptr);
    EXPECT_THAT(scene.host.ports.inputBuses, ElementsAre("3: port(A) null", "3: null null"));
    scene.setAudio("A", "A", nullptr, nullptr);
    EXPECT_THAT(scene.host.ports.inputBuses, ElementsAre("3: port(A) port(A)", "3: null null"));
    scene.trace.clear();
    scene.setAudio(nullptr, nullptr, nullptr, nullptr);
    EXPECT_EQ(scene.trace.count("port(A).setDisplayed(true)"), 2u) << "it was taken twice";
}

TEST(SetAudioPortList, DoesNothingForANullArray)
{
    PortScene scene;
    scene.host.ports.audioInput("A", "Mic");
    scene.setAudio("A", nullptr, nullptr, nullptr);
    scene.trace.clear();
    scene.ports.setAudioPortList(nullptr);
    EXPECT_THAT(scene.trace.texts(), IsEmpty());
    EXPECT_TRUE(scene.ports.isConnectAudioPort());
}

TEST(SetAudioPortList, DoesNothingWithoutHandlerOrPorts)
{
    PortScene scene;
    auto& port = scene.host.ports.audioInput("A", "Mic");
    const auto connect = [&] { scene.setAudio("A", nullptr, nullptr, nullptr); };
    scene.withoutPortHandler(connect);
    scene.withoutPorts(connect);
    EXPECT_THAT(scene.calls({"portHandler.", "port(", "bus("}), IsEmpty());
    EXPECT_TRUE(port.displayed);
    EXPECT_FALSE(scene.ports.isConnectAudioPort());
}

TEST(SetAudioPortList, TakesThePortsAlthoughTheHostMakesNoBuses)
{
    PortScene scene;
    auto& port = scene.host.ports.audioInput("A", "Mic");
    scene.host.ports.refusesBuses = true;
    scene.setAudio("A", nullptr, nullptr, nullptr);
    EXPECT_THAT(scene.host.ports.inputBuses, ElementsAre("null", "null"));
    EXPECT_FALSE(port.displayed);
    EXPECT_TRUE(scene.ports.isConnectAudioPort());
}

TEST(SetAudioPortList, HoldsThePortsWhateverTheHandlerAnswers)
{
    PortScene scene;
    scene.host.ports.audioInput("A", "Mic");
    scene.host.ports.handlerResult = kResultFalse;
    scene.setAudio("A", nullptr, nullptr, nullptr);
    EXPECT_TRUE(scene.ports.isConnectAudioPort());
}

TEST(SetAudioPortList, ComparesThePackedIdsOfAHostWithoutUnicode)
{
    PortScene scene(HostFamily::withoutUnicode("Cubase LE", "4.0.1"));
    scene.host.ports.audioInput("in 1", "Mic");
    scene.setAudio(nullptr, nullptr, nullptr, "in 1");
    EXPECT_THAT(scene.host.ports.inputBuses, ElementsAre("3: null null", "3: null port(in 1)"));
}

TEST(SetAudioPortList, GoesOnWhereAPortOrABusThrows)
{
    for (const char* call : {"port(A).setDisplayed", "port(A).getPortId", "setArrangement",
                             "setChannelPort", "getHostInterface(IBusDescriptor)"}) {
        PortScene scene;
        scene.host.ports.audioInput("B", "Line");
        scene.host.ports.audioInput("A", "Mic");
        scene.host.throwAt(call);
        scene.setAudio("A", "B", nullptr, nullptr);
        EXPECT_EQ(scene.calls({"portHandler.setAudioInputBuses"}).size(), 1u) << call;
        EXPECT_TRUE(scene.ports.isConnectAudioPort()) << call;
    }
}

TEST(ReleasePorts, ShowsEveryHeldPortAndForgetsIt)
{
    PortScene scene;
    auto& a = scene.host.ports.audioInput("A", "Mic");
    auto& b = scene.host.ports.audioInput("B", "Line");
    auto& foreign = scene.host.ports.audioInput("F", "Foreign");
    foreign.displayed = false;
    scene.setAudio("A", nullptr, "B", nullptr);
    scene.trace.clear();
    scene.ports.releasePorts(&scene.host.ports.getRegistry());
    EXPECT_THAT(scene.trace.texts(),
                ElementsAre("portRegistry.findPortById(A)", "port(A).setDisplayed(true)",
                            "portRegistry.findPortById(B)", "port(B).setDisplayed(true)"));
    EXPECT_TRUE(a.displayed && b.displayed);
    EXPECT_FALSE(foreign.displayed);
    EXPECT_FALSE(scene.ports.isConnectAudioPort());
}

TEST(ReleasePorts, SkipsAPortThatIsGone)
{
    PortScene scene;
    scene.host.ports.audioInput("A", "Mic");
    scene.setAudio("A", nullptr, nullptr, nullptr);
    scene.host.ports.remove(0);
    scene.ports.releasePorts(&scene.host.ports.getRegistry());
    EXPECT_FALSE(scene.ports.isConnectAudioPort());
}

TEST(ReleasePorts, ShowsTheOthersWhereOneThrows)
{
    PortScene scene;
    scene.host.ports.audioInput("A", "Mic");
    auto& b = scene.host.ports.audioInput("B", "Line");
    scene.setAudio("A", "B", nullptr, nullptr);
    scene.host.throwAt("port(A).setDisplayed");
    scene.ports.releasePorts(&scene.host.ports.getRegistry());
    EXPECT_TRUE(b.displayed);
    EXPECT_FALSE(scene.ports.isConnectAudioPort());
}

TEST(ReleasePorts, OnlyForgetsThePortsWithoutARegistry)
{
    PortScene scene;
    auto& port = scene.host.ports.audioInput("A", "Mic");
    scene.setAudio("A", nullptr, nullptr, nullptr);
    scene.ports.releasePorts(nullptr);
    EXPECT_FALSE(scene.ports.isConnectAudioPort());
    EXPECT_FALSE(port.displayed);
}
