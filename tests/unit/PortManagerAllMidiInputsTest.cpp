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
    const auto removesNone = [&] { EXPECT_EQ(scene.ports.allMidiInputRemove("Port4"), 1); };
    EXPECT_EQ(scene.ports.allMidiInputRemove(""), 1);
    scene.withoutPortHandler(removesNone);
    EXPECT_THAT(scene.trace.texts(), IsEmpty()) << "the handler is asked for first";
    scene.withoutPorts(removesNone);
    scene.context.bind(nullptr);
    removesNone();
    EXPECT_THAT(scene.host.ports.removedFromAllMidiInputs, IsEmpty());
    scene.context.bind(&scene.library);
    EXPECT_EQ(scene.ports.allMidiInputRemove("Port4"), 0);
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
    PortScene used(HostFamily::withoutUnicode("Cubase LE", "4.0.1"));
    used.host.ports.midiInput("4", std::string("Tavrin RDL3/RDL5\0 Port4", 23));
    EXPECT_EQ(used.ports.allMidiInputRemove("Port4"), 1);

    PortScene hostile;
    hostile.host.ports.midiInput("null", nullptr);
    hostile.host.ports.midiInput("lone", HostText::raw({0xD800}));
    EXPECT_EQ(hostile.ports.allMidiInputRemove("Port4"), 1);
    EXPECT_EQ(hostile.trace.count(match(kOnce, "")), 1u);
    EXPECT_EQ(hostile.trace.count(match(kOnce, "?")), 1u);
}
