#include "tests/unit/PortScene.h"

using doubles::HostFamily;
using namespace Steinberg;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(HostReadyForSetPortConnections, RunsItsStepsInOrder)
{
    PortScene scene;
    scene.host.ports.midiInput("4", "Tavrin RDL3/RDL5 Port4");
    scene.host.ports.audioInput("A", "Mic");
    scene.library.firstStartState = 1;
    scene.library.displaysPort = [](const std::string&) { return true; };
    EXPECT_TRUE(scene.ports.hostReadyForSetPortConnections());
    EXPECT_THAT(scene.calls({"library.get", "library.is", "library.on", "portRegistry.remove",
                             "port(A).setDisplayed"}),
                ElementsAre("portRegistry.removeFromAllMidiInputs(port(4))",
                            "library.getFirstStartState()", "library.isDisplayAudioPort(Mic)",
                            "port(A).setDisplayed(true)", "library.onHostPortsReady(true)",
                            "library.onInitialStartFileLoad(false)"));
    EXPECT_TRUE(scene.ports.isHostReadyForSetPort());
}

TEST(HostReadyForSetPortConnections, TellsTheLibraryWhetherTheStartFileIsToBeLoaded)
{
    PortScene scene;
    scene.ports.setInitialStartFileLoad(true);
    scene.ports.hostReadyForSetPortConnections();
    EXPECT_THAT(scene.calls({"library.on"}), ElementsAre("library.onHostPortsReady(false)",
                                                         "library.onInitialStartFileLoad(true)"));
}

TEST(HostReadyForSetPortConnections, UsesTheFlagThatTheLibrarySetsMeanwhile)
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

TEST(HostReadyForSetPortConnections, SetsIsHostReadyForSetPortBetweenTheTwoNoticesToTheLibrary)
{
    PortScene scene;
    std::vector<bool> answers;
    scene.library.onCall = [&](const std::string&) {
        answers.push_back(scene.ports.isHostReadyForSetPort());
    };
    scene.ports.hostReadyForSetPortConnections();
    // At getFirstStartState, onHostPortsReady and onInitialStartFileLoad.
    EXPECT_THAT(answers, ElementsAre(false, false, true));
}

TEST(HostReadyForSetPortConnections, DoesNothingBeforeTheLibraryIsBound)
{
    PortScene scene;
    scene.host.ports.midiInput("4", "Tavrin RDL3/RDL5 Port4");
    scene.context.bind(nullptr);
    EXPECT_FALSE(scene.ports.hostReadyForSetPortConnections());
    EXPECT_FALSE(scene.ports.isHostReadyForSetPort());
    EXPECT_THAT(scene.trace.texts(), IsEmpty());
}

TEST(HostReadyForSetPortConnections, LeavesIsHostReadyForSetPortTrue)
{
    PortScene scene;
    EXPECT_FALSE(scene.ports.isHostReadyForSetPort());
    scene.ports.hostReadyForSetPortConnections();
    scene.context.bind(nullptr);
    scene.ports.hostReadyForSetPortConnections();
    EXPECT_TRUE(scene.ports.isHostReadyForSetPort());
}

TEST(HostReadyForSetPortConnections, GoesOnWhereTheLibraryThrows)
{
    for (const char* call : {"getFirstStartState", "onHostPortsReady", "onInitialStartFileLoad"}) {
        PortScene scene;
        scene.library.throwAt(call);
        EXPECT_TRUE(scene.ports.hostReadyForSetPortConnections());
        EXPECT_TRUE(scene.ports.isHostReadyForSetPort());
    }
}

TEST(HostReadyForSetPortConnections, GoesOnWhereTheHostThrows)
{
    for (const char* call : {"getPortCount", "getHostInterface", "isPortType"}) {
        PortScene scene;
        scene.host.ports.midiInput("4", "Tavrin RDL3/RDL5 Port4");
        scene.library.firstStartState = 1;
        scene.host.throwAt(call);
        EXPECT_TRUE(scene.ports.hostReadyForSetPortConnections());
        EXPECT_TRUE(scene.ports.isHostReadyForSetPort());
        EXPECT_THAT(scene.calls({"library."}),
                    ElementsAre("library.getFirstStartState()", "library.onHostPortsReady(true)",
                                "library.onInitialStartFileLoad(false)"))
            << call;
    }
}

TEST(HostReadyForSetPortConnections, WorksInAHostWithoutPorts)
{
    PortScene scene(HostFamily::plain());
    EXPECT_TRUE(scene.ports.hostReadyForSetPortConnections());
    EXPECT_TRUE(scene.ports.isHostReadyForSetPort());
    EXPECT_THAT(scene.calls({"library.on"}), ElementsAre("library.onHostPortsReady(true)",
                                                         "library.onInitialStartFileLoad(false)"));
}

TEST(FirstStartAudioportDisplayCompulsorily, ShowsTheAudioInputsThatTheLibraryPicks)
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

TEST(FirstStartAudioportDisplayCompulsorily, AsksEachPortNoMoreThanItNeeds)
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

TEST(FirstStartAudioportDisplayCompulsorily, DoesNothingAtAnyOtherStart)
{
    for (const int32 state : {0, 2, -1}) {
        PortScene scene;
        scene.host.ports.audioInput("A", "Mic");
        scene.library.firstStartState = state;
        scene.ports.firstStartAudioportDisplayCompulsorily();
        EXPECT_THAT(scene.trace.texts(), ElementsAre("library.getFirstStartState()"));
    }
}

TEST(FirstStartAudioportDisplayCompulsorily, DoesNothingWithoutLibraryOrPorts)
{
    PortScene scene;
    scene.host.ports.audioInput("A", "Mic");
    scene.library.firstStartState = 1;
    scene.library.displaysPort = [](const std::string&) { return true; };
    scene.context.bind(nullptr);
    scene.ports.firstStartAudioportDisplayCompulsorily();
    scene.context.bind(&scene.library);
    scene.withoutPorts([&] { scene.ports.firstStartAudioportDisplayCompulsorily(); });
    EXPECT_THAT(scene.calls({"port(", "library.is"}), IsEmpty());
}

TEST(FirstStartAudioportDisplayCompulsorily, DoesNotShowAPortForWhichTheLibraryThrows)
{
    PortScene scene;
    scene.host.ports.audioInput("A", "Mic");
    scene.library.firstStartState = 1;
    scene.library.throwAt("isDisplayAudioPort");
    scene.ports.firstStartAudioportDisplayCompulsorily();
    EXPECT_THAT(scene.calls({"port(A).setDisplayed"}), IsEmpty());
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
    scene.context.hostContext.set(nullptr);
    EXPECT_TRUE(scene.ports.isConnectAudioPortHost());
}
