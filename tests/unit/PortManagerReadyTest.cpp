#include "hostapi/IHostClasses.h"
#include "tests/unit/PortScene.h"

using doubles::HostFamily;
using doubles::HostText;
using namespace Steinberg;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

constexpr auto kOnce = "^Tavrin RDL3/RDL5( [0-9]+)? Port[1-5]$";
constexpr auto kTwice = "^Tavrin RDL3/RDL5( [0-9]+)? Tavrin RDL3/RDL5( [0-9]+)? Port[1-5]$";

std::string match(const std::string& pattern, const std::string& name)
{
    return "library.matchRegularExpression(" + pattern + ", " + name + ")";
}

} // namespace

TEST(HostReady, RunsItsStepsInOrder)
{
    PortScene scene;
    scene.host.ports.midiInput("4", "Tavrin RDL3/RDL5 Port4");
    scene.host.ports.audioInput("A", "Mic");
    scene.library.firstStartState = 1;
    scene.library.displaysPort = [](const std::string&) { return true; };
    EXPECT_EQ(scene.ports.hostReadyForSetPortConnections(), 0);
    EXPECT_THAT(scene.calls({"library.get", "library.is", "library.on", "portRegistry.remove",
                             "port(A).setDisplayed", "controller."}),
                ElementsAre("portRegistry.removeFromAllMidiInputs(port(4))",
                            "library.getFirstStartState()", "library.isDisplayAudioPort(Mic)",
                            "port(A).setDisplayed(true)", "library.onHostPortsReady(true)",
                            "library.onInitialStartFileLoad(false)",
                            "controller.changeLatencyTrigger()"));
    EXPECT_TRUE(scene.ports.isHostReadyForSetPort());
}

TEST(HostReady, TellsTheLibraryWhetherTheStartFileIsToBeLoaded)
{
    PortScene scene;
    scene.ports.setInitialStartFileLoad(true);
    scene.ports.hostReadyForSetPortConnections();
    EXPECT_THAT(scene.calls({"library.on"}), ElementsAre("library.onHostPortsReady(false)",
                                                         "library.onInitialStartFileLoad(true)"));
}

TEST(HostReady, UsesTheFlagThatTheLibrarySetsMeanwhile)
{
    PortScene scene;
    scene.library.onCall = [&](const std::string& text) {
        if (text == "library.onHostPortsReady(true)")
            scene.ports.setInitialStartFileLoad(true);
    };
    scene.ports.hostReadyForSetPortConnections();
    EXPECT_THAT(scene.calls({"library.on"}), ElementsAre("library.onHostPortsReady(true)",
                                                         "library.onInitialStartFileLoad(true)"));
}

TEST(HostReady, IsSaidBetweenTheTwoNoticesToTheLibrary)
{
    PortScene scene;
    std::vector<bool> answers;
    scene.library.onCall = [&](const std::string&) {
        answers.push_back(scene.ports.isHostReadyForSetPort());
    };
    scene.ports.hostReadyForSetPortConnections();
    EXPECT_THAT(answers, ElementsAre(false, false, true)); // first start, ports ready, start file
}

TEST(HostReady, DoesNothingBeforeTheLibraryIsBound)
{
    PortScene scene;
    scene.host.ports.midiInput("4", "Tavrin RDL3/RDL5 Port4");
    scene.context.library = nullptr;
    EXPECT_EQ(scene.ports.hostReadyForSetPortConnections(), 0);
    EXPECT_FALSE(scene.ports.isHostReadyForSetPort());
    EXPECT_THAT(scene.trace.texts(), IsEmpty());
}

TEST(HostReady, StaysTrueOnceItWas)
{
    PortScene scene;
    EXPECT_FALSE(scene.ports.isHostReadyForSetPort());
    scene.ports.hostReadyForSetPortConnections();
    scene.context.library = nullptr;
    scene.ports.hostReadyForSetPortConnections();
    EXPECT_TRUE(scene.ports.isHostReadyForSetPort());
}

TEST(HostReady, GoesOnWhereTheLibraryThrows)
{
    for (const char* call : {"getFirstStartState", "onHostPortsReady", "onInitialStartFileLoad"}) {
        PortScene scene;
        scene.library.throwAt(call);
        EXPECT_EQ(scene.ports.hostReadyForSetPortConnections(), 0);
        EXPECT_TRUE(scene.ports.isHostReadyForSetPort());
        EXPECT_EQ(scene.trace.count("controller.changeLatencyTrigger()"), 1u) << call;
    }
}

TEST(HostReady, GoesOnWhereTheHostThrows)
{
    for (const char* call : {"getPortCount", "getHostInterface", "isPortType"}) {
        PortScene scene;
        scene.host.ports.midiInput("4", "Tavrin RDL3/RDL5 Port4");
        scene.library.firstStartState = 1;
        scene.host.throwAt(call);
        EXPECT_EQ(scene.ports.hostReadyForSetPortConnections(), 0);
        EXPECT_TRUE(scene.ports.isHostReadyForSetPort());
        EXPECT_THAT(scene.calls({"library.", "controller."}),
                    ElementsAre("library.getFirstStartState()", "library.onHostPortsReady(true)",
                                "library.onInitialStartFileLoad(false)",
                                "controller.changeLatencyTrigger()"))
            << call;
    }
}

TEST(HostReady, WorksInAHostWithoutPorts)
{
    PortScene scene(HostFamily::plain());
    EXPECT_EQ(scene.ports.hostReadyForSetPortConnections(), 0);
    EXPECT_TRUE(scene.ports.isHostReadyForSetPort());
    EXPECT_THAT(scene.calls({"library.on", "controller."}),
                ElementsAre("library.onHostPortsReady(true)",
                            "library.onInitialStartFileLoad(false)",
                            "controller.changeLatencyTrigger()"));
}

TEST(AllMidiInputRemove, RemovesTheFourthPortOfEveryUnitAndNoOther)
{
    PortScene scene;
    auto& ports = scene.host.ports;
    ports.midiInput("1", "Tavrin RDL3/RDL5 Port4");
    ports.midiInput("2", "Tavrin RDL3/RDL5 2 Port4");
    ports.midiOutput("3", "Tavrin RDL3/RDL5 Tavrin RDL3/RDL5 Port4");
    ports.midiInput("4", "Tavrin RDL3/RDL5 12 Tavrin RDL3/RDL5 3 Port4");
    ports.midiInput("no", "Tavrin RDL3/RDL5 Port6");
    ports.midiInput("no", "Tavrin RDL3/RDL5 Port3");
    ports.midiInput("no", "Port4");
    ports.midiInput("no", "Tavrin RDL3/RDL5 Port44");
    ports.midiInput("no", "My Tavrin RDL3/RDL5 Port4");
    ports.midiInput("no", "Tavrin RDL3/RDL5 Port4").attributes = {"virtual"};
    ports.midiInput("no", "Tavrin RDL3/RDL5 Port4").attributes = {"proxy"};
    ports.addNull();
    ports.audioInput("no", "").systemName = "Tavrin RDL3/RDL5 Port4";
    scene.ports.hostReadyForSetPortConnections();
    EXPECT_THAT(ports.removedFromAllMidiInputs,
                ElementsAre("port(1)", "port(2)", "port(3)", "port(4)"));
}

TEST(AllMidiInputRemove, GoesByTheSystemNameWhateverTheUserSees)
{
    PortScene scene;
    auto& port = scene.host.ports.midiInput("4", "Tavrin RDL3/RDL5 Port4");
    port.displayName = "Knobs";
    port.displayed = false;
    EXPECT_EQ(scene.ports.allMidiInputRemove("Port4"), 0);
    EXPECT_THAT(scene.host.ports.removedFromAllMidiInputs, ElementsAre("port(4)"));
}

TEST(AllMidiInputRemove, AsksTheMatcherPatternByPatternBeforeTheText)
{
    PortScene scene;
    scene.host.ports.midiInput("4", "Tavrin RDL3/RDL5 Port4");
    scene.host.ports.midiInput("3", "Tavrin RDL3/RDL5 Port3");
    scene.ports.allMidiInputRemove("Port4");
    EXPECT_THAT(scene.calls({"library.", "portRegistry.remove"}),
                ElementsAre(match(kOnce, "Tavrin RDL3/RDL5 Port4"),
                            "portRegistry.removeFromAllMidiInputs(port(4))",
                            match(kOnce, "Tavrin RDL3/RDL5 Port3"),
                            match(kTwice, "Tavrin RDL3/RDL5 Port3")));
}

TEST(AllMidiInputRemove, AsksEachPortNoMoreThanItNeeds)
{
    PortScene scene;
    scene.host.ports.audioInput("A", "Mic");
    scene.host.ports.midiInput("V", "Virtual").attributes = {"virtual"};
    scene.host.ports.midiOutput("P", "Proxy").attributes = {"proxy"};
    scene.host.ports.midiInput("4", "Tavrin RDL3/RDL5 Port4");
    scene.ports.allMidiInputRemove("Port4");
    EXPECT_THAT(scene.calls({"port("}),
                ElementsAre("port(A).isPortType(midi)", "port(V).isPortType(midi)",
                            "port(V).hasPortAttribute(virtual)", "port(P).isPortType(midi)",
                            "port(P).hasPortAttribute(virtual)", "port(P).hasPortAttribute(proxy)",
                            "port(4).isPortType(midi)", "port(4).hasPortAttribute(virtual)",
                            "port(4).hasPortAttribute(proxy)", "port(4).getSystemName()"));
}

TEST(AllMidiInputRemove, RemovesAPortOnceWhenBothPatternsMatch)
{
    PortScene scene;
    scene.host.ports.midiInput("4", "Port4");
    scene.library.matches = [](const std::string&, const std::string&) { return true; };
    scene.ports.allMidiInputRemove("Port4");
    EXPECT_EQ(scene.host.ports.removedFromAllMidiInputs.size(), 1u);
}

TEST(AllMidiInputRemove, TriesTheSecondPatternWhenTheFirstDoesNotMatch)
{
    PortScene scene;
    scene.host.ports.midiInput("4", "Port4");
    scene.library.matches = [](const std::string& pattern, const std::string&) {
        return pattern == kTwice;
    };
    scene.ports.allMidiInputRemove("Port4");
    EXPECT_EQ(scene.host.ports.removedFromAllMidiInputs.size(), 1u);
}

TEST(AllMidiInputRemove, AnswersWhatTheHostAnsweredLast)
{
    PortScene scene;
    scene.host.ports.midiInput("a", "Tavrin RDL3/RDL5 Port4");
    scene.host.ports.midiInput("b", "Tavrin RDL3/RDL5 2 Port4");
    int32 next = 41;
    scene.host.onCall = [&](const std::string& text) {
        if (text.find("removeFromAllMidiInputs") != std::string::npos)
            scene.host.ports.removalResult = next++;
    };
    EXPECT_EQ(scene.ports.allMidiInputRemove("Port4"), 42);
    EXPECT_EQ(scene.ports.allMidiInputRemove("Port5"), 1) << "nothing removed";
}

TEST(AllMidiInputRemove, TakesTheNextIndexAfterARemoval)
{
    PortScene scene;
    scene.host.ports.midiInput("a", "Tavrin RDL3/RDL5 Port4");
    scene.host.ports.midiInput("b", "Tavrin RDL3/RDL5 2 Port4");
    scene.host.ports.midiInput("c", "Tavrin RDL3/RDL5 3 Port4");
    scene.host.onCall = [&](const std::string& text) {
        if (text == "portRegistry.removeFromAllMidiInputs(port(a))")
            scene.host.ports.remove(0); // the host takes it off its list, too
    };
    scene.ports.allMidiInputRemove("Port4");
    EXPECT_THAT(scene.host.ports.removedFromAllMidiInputs, ElementsAre("port(a)", "port(c)"));
}

TEST(AllMidiInputRemove, RemovesNothingWithoutWhatItNeeds)
{
    PortScene scene;
    scene.host.ports.midiInput("4", "Tavrin RDL3/RDL5 Port4");
    const auto result = [&] { return scene.ports.allMidiInputRemove("Port4"); };
    EXPECT_EQ(scene.ports.allMidiInputRemove(""), 1);
    scene.context.handler = nullptr;
    EXPECT_EQ(result(), 1);
    scene.context.handler = &scene.host.handler;
    scene.host.hide(IComponentPortHandler::iid);
    EXPECT_EQ(result(), 1);
    EXPECT_THAT(scene.trace.texts(), IsEmpty()) << "the handler is asked for first";
    scene.host.show(IComponentPortHandler::iid);
    scene.host.hide(IHostClasses::iid);
    EXPECT_EQ(result(), 1);
    scene.host.show(IHostClasses::iid);
    scene.host.hide(IPortRegistry::iid);
    EXPECT_EQ(result(), 1);
    scene.host.show(IPortRegistry::iid);
    scene.context.hostContext = nullptr;
    EXPECT_EQ(result(), 1);
    scene.context.hostContext = &scene.host.context;
    scene.context.library = nullptr;
    EXPECT_EQ(result(), 1);
    EXPECT_THAT(scene.host.ports.removedFromAllMidiInputs, IsEmpty());
    scene.context.library = &scene.library;
    EXPECT_EQ(result(), 0);
}

TEST(AllMidiInputRemove, AMatcherThatThrowsHasNotMatched)
{
    PortScene scene;
    scene.host.ports.midiInput("4", "Tavrin RDL3/RDL5 Port4");
    scene.library.throwAt("matchRegularExpression");
    EXPECT_EQ(scene.ports.allMidiInputRemove("Port4"), 1);
}

TEST(AllMidiInputRemove, ReadsPackedAndHostileNames)
{
    PortScene packed(HostFamily::withoutUnicode("Cubase LE", "4.0.1"));
    packed.host.ports.midiInput("4", "Tavrin RDL3/RDL5 2 Port4");
    EXPECT_EQ(packed.ports.allMidiInputRemove("Port4"), 0);

    PortScene hostile;
    hostile.host.ports.midiInput("null", nullptr);
    hostile.host.ports.midiInput("lone", HostText::raw({0xD800}));
    EXPECT_EQ(hostile.ports.allMidiInputRemove("Port4"), 1);
    EXPECT_EQ(hostile.trace.count(match(kOnce, "")), 1u);
    EXPECT_EQ(hostile.trace.count(match(kOnce, "?")), 1u);
}

TEST(FirstStart, ShowsTheAudioInputsThatTheLibraryPicks)
{
    PortScene scene;
    auto& ports = scene.host.ports;
    for (auto* port : {&ports.audioInput("A", "Tavrin 1"), &ports.audioInput("B", "Mic"),
                       &ports.audioOutput("C", "Tavrin 2"), &ports.midiInput("D", "Tavrin 3")})
        port->displayed = false;
    ports.addNull();
    scene.library.firstStartState = 1;
    scene.library.displaysPort = [](const std::string& name) { return name != "Mic"; };
    scene.ports.firstStartAudioportDisplayCompulsorily();
    EXPECT_THAT(scene.calls({"port(A).set", "port(B).set", "port(C).set", "port(D).set"}),
                ElementsAre("port(A).setDisplayed(true)"));
}

TEST(FirstStart, AsksEachPortNoMoreThanItNeeds)
{
    PortScene scene;
    scene.host.ports.midiInput("midi", "Keys");
    scene.host.ports.audioOutput("out", "Speaker");
    scene.host.ports.audioInput("A", "Mic");
    scene.library.firstStartState = 1;
    scene.library.displaysPort = [](const std::string&) { return true; };
    scene.ports.firstStartAudioportDisplayCompulsorily();
    EXPECT_THAT(scene.calls({"port(", "library.is"}),
                ElementsAre("port(midi).isPortType(audio)", "port(out).isPortType(audio)",
                            "port(out).isInputPort()", "port(A).isPortType(audio)",
                            "port(A).isInputPort()", "port(A).getDisplayName()",
                            "library.isDisplayAudioPort(Mic)", "port(A).setDisplayed(true)"));
}

TEST(FirstStart, DoesNothingAtAnyOtherStart)
{
    for (const int32 state : {0, 2, -1}) {
        PortScene scene;
        scene.host.ports.audioInput("A", "Mic");
        scene.library.firstStartState = state;
        scene.ports.firstStartAudioportDisplayCompulsorily();
        EXPECT_THAT(scene.trace.texts(), ElementsAre("library.getFirstStartState()"));
    }
}

TEST(FirstStart, DoesNothingWithoutLibraryOrPorts)
{
    PortScene scene;
    scene.host.ports.audioInput("A", "Mic");
    scene.library.firstStartState = 1;
    scene.library.displaysPort = [](const std::string&) { return true; };
    scene.context.library = nullptr;
    scene.ports.firstStartAudioportDisplayCompulsorily();
    scene.context.library = &scene.library;
    scene.host.hide(IPortRegistry::iid);
    scene.ports.firstStartAudioportDisplayCompulsorily();
    scene.host.show(IPortRegistry::iid);
    scene.host.hide(IHostClasses::iid);
    scene.ports.firstStartAudioportDisplayCompulsorily();
    EXPECT_THAT(scene.calls({"port(", "library.is"}), IsEmpty());
}

TEST(FirstStart, APortThatTheLibraryCannotJudgeIsNotShown)
{
    PortScene scene;
    scene.host.ports.audioInput("A", "Mic");
    scene.library.firstStartState = 1;
    scene.library.throwAt("isDisplayAudioPort");
    scene.ports.firstStartAudioportDisplayCompulsorily();
    EXPECT_THAT(scene.calls({"port(A).setDisplayed"}), IsEmpty());
}

TEST(HostReady, StaysBalancedWhicheverHostCallFails)
{
    for (size_t call = 1;; ++call) {
        PortScene scene;
        scene.host.ports.midiInput("4", "Tavrin RDL3/RDL5 Port4");
        scene.host.ports.audioInput("A", "Mic");
        scene.library.firstStartState = 1;
        scene.host.failAtCall(call);
        EXPECT_EQ(scene.ports.hostReadyForSetPortConnections(), 0);
        EXPECT_TRUE(scene.ports.isHostReadyForSetPort());
        if (scene.host.callCount() < call)
            break;
    }
}

TEST(IsConnectAudioPortHost, IsTrueForVersionsBeforeTheHostCouldConnectPorts)
{
    const auto answer = [](const HostFamily& family) {
        return PortScene(family).ports.isConnectAudioPortHost();
    };
    EXPECT_TRUE(answer(HostFamily::nuendo("4.3.0")));
    EXPECT_FALSE(answer(HostFamily::nuendo("5.0.0")));
    EXPECT_FALSE(answer(HostFamily::nuendo("6.5.0")));
    EXPECT_TRUE(answer(HostFamily::cubase("5.0.9")));
    EXPECT_FALSE(answer(HostFamily::cubase("5.1.0")));
    EXPECT_FALSE(answer(HostFamily::cubase("7.5.1")));
    EXPECT_TRUE(answer(HostFamily::cubaseLE("5.0.0")));
    EXPECT_FALSE(answer(HostFamily::cubaseLE("5.1.0")));
    EXPECT_TRUE(answer(HostFamily::cubase("5.1"))) << "its minor version stays unknown";
    EXPECT_TRUE(answer(HostFamily::withoutUnicode("Nuendo", "5.5.0"))) << "it has no version";
}

TEST(IsConnectAudioPortHost, IsFalseOfOtherHostsForTheStandAloneOneOnly)
{
    EXPECT_FALSE(PortScene(HostFamily::standalone()).ports.isConnectAudioPortHost());
    EXPECT_TRUE(PortScene(HostFamily::named("Some Host", "1.0.0")).ports.isConnectAudioPortHost());
}

TEST(IsConnectAudioPortHost, IsTrueForAHostThatDoesNotTellWhoItIs)
{
    EXPECT_TRUE(PortScene(HostFamily::plain()).ports.isConnectAudioPortHost());
    EXPECT_TRUE(PortScene(HostFamily::applicationAOnly()).ports.isConnectAudioPortHost());
    PortScene scene;
    scene.context.hostContext = nullptr;
    EXPECT_TRUE(scene.ports.isConnectAudioPortHost());
}
