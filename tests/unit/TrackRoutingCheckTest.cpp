#include "hostapi/IConnector.h"
#include "hostapi/IDevice.h"
#include "hostapi/IDeviceList.h"
#include "tests/unit/TrackScene.h"

using doubles::HostFamily;
using doubles::HostText;
using namespace Steinberg;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

/** A newer host with an instrument track. */
struct RackScene : TrackScene {
    RackScene()
    : TrackScene(newerHost())
    , lead(host.devices.addInstrumentTrack("Lead", "", 4))
    {
        start();
    }

    bool isRouted() { return routing.CheckMIDIOutputRouting(nullptr, &lead); }

    doubles::HostDeviceDouble& lead;
};

} // namespace

TEST(IsSameIValueString, FindsTheTextAnywhere)
{
    TrackScene scene(newerHost());
    auto& value = scene.host.devices.mixer().value("text");
    const auto contains = [&](const HostText& text, const std::string& needle) {
        value.text = text;
        return scene.routing.isSameIValueString(&value, needle);
    };
    EXPECT_TRUE(contains("RDL3/RDL5 VST", kPlugIn));
    EXPECT_TRUE(contains("My RDL3/RDL5 VST 2", kPlugIn));
    EXPECT_FALSE(contains("RDL3/RDL5 vst", kPlugIn));
    EXPECT_FALSE(contains("", kPlugIn));
    EXPECT_TRUE(contains("", ""));
    EXPECT_TRUE(contains("Gr\xC3\xB6\xC3\x9F"
                         "e",
                         "\xC3\xB6"));
    EXPECT_TRUE(contains(HostText::raw({0xD800, u'V', u'S', u'T'}), "?VST"));
    EXPECT_FALSE(scene.routing.isSameIValueString(nullptr, ""));
}

TEST(IsSameIValueString, AsksFor256Units)
{
    TrackScene scene(newerHost());
    auto& value = scene.host.devices.mixer().value("text");
    scene.routing.isSameIValueString(&value, kPlugIn);
    EXPECT_THAT(scene.trace.texts(), ElementsAre("value(Mixer.text).getString(256)",
                                                 "hostApplicationW.getCharacterSet()"));
}

TEST(IsSameIValueString, ReadsABufferWithoutTerminatorToItsEnd)
{
    TrackScene scene(newerHost());
    auto& value = scene.host.devices.mixer().value("text");
    value.terminates = false;
    value.text = std::string(256 - kPlugIn.size(), 'x') + kPlugIn;
    EXPECT_TRUE(scene.routing.isSameIValueString(&value, kPlugIn));
    value.text = std::string(257 - kPlugIn.size(), 'x') + kPlugIn;
    EXPECT_FALSE(scene.routing.isSameIValueString(&value, kPlugIn))
        << "the text's last unit did not fit";
}

TEST(IsSameIValueString, ReadsPackedBytesInAHostWithoutUnicode)
{
    TrackScene scene(HostFamily::withoutUnicode("Cubase LE", "4.0.1"));
    auto& value = scene.host.devices.mixer().value("text");
    value.text = kRoutedHere;
    EXPECT_TRUE(scene.routing.isSameIValueString(&value, kPlugIn));
    value.text = std::string("None") + '\0' + kRoutedHere; // a longer text stood there before
    EXPECT_FALSE(scene.routing.isSameIValueString(&value, kPlugIn));
    value.terminates = false;
    value.text = std::string(512 - kPlugIn.size(), 'x') + kPlugIn; // 256 units of two bytes
    EXPECT_TRUE(scene.routing.isSameIValueString(&value, kPlugIn));
}

TEST(CheckMIDIOutputRoutingInAnOlderHost, ReadsTheTextOfTheOutput)
{
    TrackScene scene(olderHost());
    auto& track = scene.host.devices.addMidiTrack("Piano", "", 3);
    auto& output = track.value("output");
    scene.start();
    const auto isRouted = [&](const char* text) {
        output.text = text;
        return scene.routing.CheckMIDIOutputRouting(&output, &track);
    };
    EXPECT_TRUE(isRouted("Synth 1 - RDL3/RDL5 VST"));
    EXPECT_TRUE(isRouted(" - RDL3/RDL5 VST (2)"));
    EXPECT_FALSE(isRouted("RDL3/RDL5 VST"));
    EXPECT_FALSE(isRouted("Synth 1-RDL3/RDL5 VST"));
    EXPECT_FALSE(isRouted("Synth 1 - RDL3 VST"));
    EXPECT_FALSE(isRouted("Not Connected"));
}

TEST(CheckMIDIOutputRoutingInAnOlderHost, NeedsAnOutputAndNoTrack)
{
    TrackScene scene(olderHost());
    auto& track = scene.host.devices.addMidiTrack("Piano", kRoutedHere, 3);
    scene.start();
    EXPECT_FALSE(scene.routing.CheckMIDIOutputRouting(nullptr, &track));
    EXPECT_THAT(scene.trace.texts(), IsEmpty());
    EXPECT_TRUE(scene.routing.CheckMIDIOutputRouting(&track.value("output"), nullptr));
}

TEST(CheckMIDIOutputRoutingInANewerHost, ReadsTheInstrumentThatFeedsTheTrack)
{
    RackScene scene;
    EXPECT_FALSE(scene.isRouted()) << "no instrument yet";
    scene.host.devices.addInstrument("Other", "Other VST");
    EXPECT_FALSE(scene.isRouted()) << "it feeds nothing";
    scene.host.devices.addInstrument("Ours", "Tavrin RDL3/RDL5 VST", &scene.lead);
    EXPECT_TRUE(scene.isRouted());
}

TEST(CheckMIDIOutputRoutingInANewerHost, DoesNotReadTheOutput)
{
    RackScene scene;
    auto& midi = scene.host.devices.addMidiTrack("Piano", kRoutedHere, 3);
    EXPECT_FALSE(scene.routing.CheckMIDIOutputRouting(&midi.value("output"), &midi));
    EXPECT_FALSE(scene.routing.CheckMIDIOutputRouting(&midi.value("output"), nullptr));
    EXPECT_THAT(scene.calls({"value("}), IsEmpty());
}

TEST(CheckMIDIOutputRoutingInANewerHost, AsksNothingForANullTrack)
{
    RackScene scene;
    EXPECT_FALSE(scene.routing.CheckMIDIOutputRouting(nullptr, nullptr));
    EXPECT_THAT(scene.trace.texts(), IsEmpty());
}

TEST(CheckMIDIOutputRoutingInANewerHost, WalksTheRackInOrderAndStopsAtTheFirstThatDecides)
{
    RackScene scene;
    auto& devices = scene.host.devices;
    devices.vstMixer().children.insert(devices.vstMixer().children.begin(), nullptr);
    devices.rack().children.push_back(nullptr);
    devices.rack().addChild("Empty", "Instrument");
    devices.rack().addChild("Deaf", "Instrument").addChild("Deaf out", "Output");
    devices.addInstrument("Free", kPlugIn);
    devices.addInstrument("Mute", kPlugIn, &scene.lead).dropValue("effectType");
    devices.addInstrument("First", "Other VST", &scene.lead);
    devices.addInstrument("Second", kPlugIn, &scene.lead);
    EXPECT_FALSE(scene.isRouted()) << "the first that feeds the track and has a type decides";
    EXPECT_THAT(
        scene.trace.texts(),
        ElementsAre(
            "hostClasses.getHostInterface(IDeviceList)", "deviceList.findDevice(VST Mixer, 0)",
            "device(VST Mixer).countChildren()", "device(VST Mixer).getChild(0)",
            "device(VST Mixer).countChildren()", "device(VST Mixer).getChild(1)",
            "device(Rack).getDeviceType()", "device(Rack).countChildren()",
            "device(Rack).getChild(0)", "device(Rack).countChildren()", "device(Rack).getChild(1)",
            "device(Empty).countChildren()", "device(Rack).countChildren()",
            "device(Rack).getChild(2)", "device(Deaf).countChildren()", "device(Deaf).getChild(0)",
            "device(Rack).countChildren()", "device(Rack).getChild(3)",
            "device(Free).countChildren()", "device(Free).getChild(0)",
            "connector(Free out).isConnectedTo(device(Lead))", "device(Rack).countChildren()",
            "device(Rack).getChild(4)", "device(Mute).countChildren()", "device(Mute).getChild(0)",
            "connector(Mute out).isConnectedTo(device(Lead))", "device(Mute).getValue(effectType)",
            "device(Rack).countChildren()", "device(Rack).getChild(5)",
            "device(First).countChildren()", "device(First).getChild(0)",
            "connector(First out).isConnectedTo(device(Lead))",
            "device(First).getValue(effectType)", "value(First.effectType).getString(256)",
            "hostApplicationW.getCharacterSet()"));
}

TEST(CheckMIDIOutputRoutingInANewerHost, LooksAtTheFirstOutputOfAnInstrumentOnly)
{
    RackScene scene;
    auto& ours = scene.host.devices.addInstrument("Ours", kPlugIn);
    ours.addChild("Second out", "Output").connectTo(scene.lead);
    EXPECT_FALSE(scene.isRouted());
    ours.children.front()->connectTo(scene.lead);
    EXPECT_TRUE(scene.isRouted());
}

TEST(CheckMIDIOutputRoutingInANewerHost, LooksAtTheFirstFolderOfInstrumentsOnly)
{
    RackScene scene;
    auto& devices = scene.host.devices;
    devices.addInstrument("Ours", kPlugIn, &scene.lead);
    ASSERT_TRUE(scene.isRouted());
    devices.rack().type = "VST Effects";
    EXPECT_FALSE(scene.isRouted());
    devices.rack().type = "VST Project Instruments";
    devices.rack().hasType = false;
    EXPECT_FALSE(scene.isRouted());
    devices.rack().hasType = true;
    auto& before = devices.vstMixer().addChild("Before", "VST Project Instruments");
    devices.vstMixer().children = {&before, &devices.rack()};
    EXPECT_FALSE(scene.isRouted());
}

TEST(CheckMIDIOutputRoutingInANewerHost, IsFalseWhereAnObjectIsMissing)
{
    RackScene scene;
    auto& ours = scene.host.devices.addInstrument("Ours", kPlugIn, &scene.lead);
    ASSERT_TRUE(scene.isRouted());
    for (const FUID& iid : {IHostClasses::iid, IDeviceList::iid, IConnector::iid}) {
        scene.host.hide(iid);
        EXPECT_FALSE(scene.isRouted());
        scene.host.show(iid);
    }
    ours.dropValue("effectType");
    EXPECT_FALSE(scene.isRouted());
    ours.value("effectType").text = kPlugIn;
    ASSERT_TRUE(scene.isRouted());
    ours.children = {nullptr};
    EXPECT_FALSE(scene.isRouted());
    scene.host.devices.removeDevice("VST Mixer");
    EXPECT_FALSE(scene.isRouted());
    scene.context.hostContext.set(nullptr);
    EXPECT_FALSE(scene.isRouted());
}
