#include "tests/unit/PortScene.h"

using doubles::HostFamily;
using doubles::HostText;
using namespace Steinberg;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(GetAudioPortList, HoldsTheDisplayedAudioInputsInHostOrder)
{
    PortScene scene;
    scene.host.ports.audioInput("B", "Line \xC3\xB6");
    scene.host.ports.addNull();
    scene.host.ports.audioOutput("out", "Speaker");
    scene.host.ports.midiInput("midi", "Keys");
    scene.host.ports.audioInput("A", "Mic");
    EXPECT_THAT(scene.audioList(), ElementsAre("B=Line \xC3\xB6", "A=Mic"));
}

TEST(GetAudioPortList, KeepsPortsThatLookAlike)
{
    PortScene scene;
    scene.host.ports.audioInput("A", "Mic");
    scene.host.ports.audioInput("A", "Mic");
    EXPECT_THAT(scene.audioList(), ElementsAre("A=Mic", "A=Mic"));
}

TEST(GetAudioPortList, SkipsAPortWhoseIdCannotBeRead)
{
    PortScene scene;
    scene.host.ports.audioInput("A", "Mic").idReadable = false;
    scene.host.ports.audioInput("B", "Line");
    EXPECT_THAT(scene.audioList(), ElementsAre("B=Line"));
}

TEST(GetAudioPortList, HoldsAHiddenPortOnlyWhileWeAreTheOnesWhoHidIt)
{
    PortScene scene;
    auto& ours = scene.host.ports.audioInput("A", "Mic");
    scene.host.ports.audioInput("B", "Line").displayed = false;
    scene.setAudio("A", nullptr, nullptr, nullptr);
    ASSERT_FALSE(ours.displayed);
    EXPECT_THAT(scene.audioList(), ElementsAre("A=Mic"));

    scene.setAudio(nullptr, nullptr, nullptr, nullptr);
    ours.displayed = false; // now hidden by the user
    EXPECT_THAT(scene.audioList(), IsEmpty());
}

TEST(GetAudioPortList, IsOneListRebuiltByEachCall)
{
    PortScene scene;
    scene.host.ports.audioInput("A", "Mic");
    const auto* first = scene.ports.getAudioPortList();
    scene.host.ports.remove(0);
    scene.host.ports.audioInput("B", "Line");
    const auto* second = scene.ports.getAudioPortList();
    EXPECT_EQ(first, second);
    EXPECT_THAT(scene.audioList(), ElementsAre("B=Line"));
}

TEST(GetAudioPortList, IsEmptyInAHostWithoutPorts)
{
    PortScene scene;
    scene.host.ports.audioInput("A", "Mic");
    ASSERT_EQ(scene.audioList().size(), 1u);
    scene.withoutPorts([&] { EXPECT_THAT(scene.audioList(), IsEmpty()); });
}

TEST(GetAudioPortList, NeedsNoPortHandler)
{
    PortScene scene;
    scene.host.ports.audioInput("A", "Mic");
    scene.withoutPortHandler([&] { EXPECT_THAT(scene.audioList(), ElementsAre("A=Mic")); });
}

TEST(GetAudioPortList, AsksEachPortNoMoreThanItNeeds)
{
    PortScene scene;
    scene.host.ports.audioInput("A", "Mic");
    scene.host.ports.audioOutput("out", "Speaker");
    scene.host.ports.midiInput("midi", "Keys");
    scene.audioList();
    EXPECT_THAT(scene.trace.texts(),
                ElementsAre("hostClasses.getHostInterface(IPortRegistry)",
                            "hostApplicationW.getCharacterSet()", "portRegistry.getPortCount()",
                            "portRegistry.getPortByIndex(0)", "port(A).isPortType(audio)",
                            "port(A).isInputPort()", "port(A).getDisplayName()",
                            "port(A).getPortId()", "port(A).isDisplayed()",
                            "portRegistry.getPortCount()", "portRegistry.getPortByIndex(1)",
                            "port(out).isPortType(audio)", "port(out).isInputPort()",
                            "portRegistry.getPortCount()", "portRegistry.getPortByIndex(2)",
                            "port(midi).isPortType(audio)", "portRegistry.getPortCount()"));
}

TEST(GetAudioPortList, FollowsARegistryThatShrinksMeanwhile)
{
    PortScene scene;
    scene.host.ports.audioInput("A", "Mic");
    scene.host.ports.audioInput("B", "Line");
    scene.host.onCall = [&](const std::string& text) {
        if (text == "port(A).isDisplayed()")
            scene.host.ports.remove(1);
    };
    EXPECT_THAT(scene.audioList(), ElementsAre("A=Mic"));
}

TEST(GetAudioPortList, SurvivesAWrongPortCount)
{
    PortScene scene;
    scene.host.ports.audioInput("A", "Mic");
    scene.host.ports.portCount = 1000;
    EXPECT_THAT(scene.audioList(), ElementsAre("A=Mic"));
    scene.host.ports.portCount = -1;
    EXPECT_THAT(scene.audioList(), IsEmpty());
}

TEST(GetAudioPortList, ReadsThePackedTextsOfAHostWithoutUnicode)
{
    PortScene scene(HostFamily::withoutUnicode("Cubase LE", "4.0.1"));
    scene.host.ports.audioInput("in 1", "Mic 12");
    scene.host.ports.audioInput("in 22", "Odd");
    scene.host.ports.audioInput("in 3", std::string("Line\0 before", 12));
    EXPECT_THAT(scene.audioList(), ElementsAre("in 1=Mic 12", "in 22=Odd", "in 3=Line"));
}

TEST(GetAudioPortList, ReadsTextsThatAUnicodeHostSetsAs8BitText)
{
    PortScene scene;
    scene.host.ports.audioInput("in \xC3\xB6", "Mic").idAsEightBit = true;
    EXPECT_THAT(scene.audioList(), ElementsAre("in \xC3\xB6=Mic"));
}

TEST(GetAudioPortList, ReadsHostileTextsAsFarAsTheyGo)
{
    PortScene scene;
    scene.host.ports.audioInput("A", nullptr);
    scene.host.ports.audioInput("B", HostText::raw({0xD800, u'x', 0xDFFF}));
    scene.host.ports.audioInput(nullptr, "no ID");
    EXPECT_THAT(scene.audioList(), ElementsAre("A=", "B=?x?", "=no ID"));
}

TEST(GetMidiOutPortList, HoldsTheDisplayedRealMidiOutputsInHostOrder)
{
    PortScene scene;
    auto& ports = scene.host.ports;
    ports.midiOutput("B", "Synth \xC3\xB6");
    ports.addNull();
    ports.midiInput("in", "Keys");
    ports.audioOutput("audio", "Speaker");
    ports.midiOutput("virtual", "V").attributes = {"virtual"};
    ports.midiOutput("proxy", "P").attributes = {"proxy"};
    ports.midiOutput("other", "O").attributes = {"default"};
    ports.midiOutput("hidden", "H").displayed = false;
    ports.midiOutput("A", "Box");
    EXPECT_THAT(scene.midiList(), ElementsAre("B=Synth \xC3\xB6", "other=O", "A=Box"));
}

TEST(GetMidiOutPortList, ListsAPortWithoutReadableIdUnderTheIdBeforeIt)
{
    PortScene scene;
    auto& ports = scene.host.ports;
    ports.midiOutput("x", "First").idReadable = false;
    ports.midiOutput("A", "Second");
    ports.midiOutput("hidden", "H").displayed = false;
    ports.midiOutput("y", "Third").idReadable = false;
    ports.midiOutput("B", "Fourth");
    const auto expected = ElementsAre("=First", "A=Second", "A=Third", "B=Fourth");
    EXPECT_THAT(scene.midiList(), expected);
    EXPECT_THAT(scene.midiList(), expected) << "a second call starts without an ID again";
}

TEST(GetMidiOutPortList, IsEmptyWithoutAPortHandlerAndDoesNotAskForPorts)
{
    PortScene scene;
    scene.host.ports.midiOutput("A", "Box");
    ASSERT_EQ(scene.midiList().size(), 1u);
    scene.trace.clear();
    scene.withoutPortHandler([&] { EXPECT_THAT(scene.midiList(), IsEmpty()); });
    EXPECT_THAT(scene.trace.texts(), IsEmpty());
}

TEST(GetMidiOutPortList, IsEmptyInAHostWithoutPorts)
{
    PortScene scene;
    scene.host.ports.midiOutput("A", "Box");
    ASSERT_EQ(scene.midiList().size(), 1u);
    scene.withoutPorts([&] { EXPECT_THAT(scene.midiList(), IsEmpty()); });
}

TEST(GetMidiOutPortList, AsksEachPortNoMoreThanItNeeds)
{
    PortScene scene;
    scene.host.ports.midiOutput("A", "Box");
    scene.host.ports.midiInput("in", "Keys");
    scene.host.ports.midiOutput("H", "Hidden").displayed = false;
    scene.host.ports.midiOutput("V", "Virtual").attributes = {"virtual"};
    scene.midiList();
    EXPECT_THAT(
        scene.calls({"port("}),
        ElementsAre("port(A).isInputPort()", "port(A).isPortType(midi)",
                    "port(A).hasPortAttribute(virtual)", "port(A).hasPortAttribute(proxy)",
                    "port(A).getDisplayName()", "port(A).isDisplayed()", "port(A).getPortId()",
                    "port(in).isInputPort()", "port(H).isInputPort()", "port(H).isPortType(midi)",
                    "port(H).hasPortAttribute(virtual)", "port(H).hasPortAttribute(proxy)",
                    "port(H).getDisplayName()", "port(H).isDisplayed()", "port(V).isInputPort()",
                    "port(V).isPortType(midi)", "port(V).hasPortAttribute(virtual)"));
    EXPECT_EQ(scene.trace.count("portRegistry.getPortCount()"), 5u);
}

TEST(GetMidiOutPortList, ReadsThePackedTextsOfAHostWithoutUnicode)
{
    PortScene scene(HostFamily::withoutUnicode("Cubase LE", "4.0.1"));
    scene.host.ports.midiOutput("out 1", "Box");
    EXPECT_THAT(scene.midiList(), ElementsAre("out 1=Box"));
}

TEST(IsExistAudioPortIdList, IsTrueForAnIdThatIsNotThere)
{
    using Steinberg::Vst::PortManager;
    EXPECT_FALSE(PortManager::isExistAudioPortIdList("B", {"A", "B"}));
    EXPECT_TRUE(PortManager::isExistAudioPortIdList("C", {"A", "B"}));
    EXPECT_TRUE(PortManager::isExistAudioPortIdList("a", {"A", "B"}));
    EXPECT_TRUE(PortManager::isExistAudioPortIdList("A", {}));
    EXPECT_TRUE(PortManager::isExistAudioPortIdList("", {}));
    EXPECT_FALSE(PortManager::isExistAudioPortIdList("", {""}));
}
