#include "hostapi/IDevice.h"
#include "hostapi/IDeviceList.h"
#include "tests/unit/TrackScene.h"

using doubles::HostFamily;
using namespace Steinberg;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

/** The calls by which the host was made to select a track. */
std::vector<std::string> selections(const TrackScene& scene)
{
    return scene.calls({"value(Mixer.selected).setInteger"});
}

std::string selection(int32 index)
{
    return "value(Mixer.selected).setInteger(" + std::to_string(index) + ", true)";
}

} // namespace

TEST(EditorPartSyncMidiCh, SelectsTheFirstTrackThatPlaysItsChannel)
{
    TrackScene scene(olderHost());
    auto& devices = scene.host.devices;
    devices.addAudioTrack("Audio");
    devices.addMidiTrack("Elsewhere", kRoutedElsewhere, 4);
    devices.addMidiTrack("Piano", kRoutedHere, 3);
    devices.addMidiTrack("First", kRoutedHere, 4);
    devices.addMidiTrack("Second", kRoutedHere, 4);
    scene.start();
    scene.routing.editorPartSyncMidiCh(4);
    EXPECT_THAT(selections(scene), ElementsAre(selection(3)));
    EXPECT_THAT(scene.calls({"device(Second)"}), IsEmpty());
}

TEST(EditorPartSyncMidiCh, SelectsATrackOfTheExactChannel)
{
    TrackScene scene(olderHost());
    scene.host.devices.addMidiTrack("Above", kRoutedHere, 5);
    scene.host.devices.addMidiTrack("Below", kRoutedHere, 3);
    scene.host.devices.addMidiTrack("Piano", kRoutedHere, 4);
    scene.start();
    scene.routing.editorPartSyncMidiCh(4);
    EXPECT_THAT(selections(scene), ElementsAre(selection(2)));
}

TEST(EditorPartSyncMidiCh, ShowsThePartThroughTheHostsUpdate)
{
    TrackScene scene(olderHost());
    scene.host.devices.addMidiTrack("Piano", kRoutedHere, 3);
    scene.host.devices.addMidiTrack("Organ", kRoutedHere, 4);
    scene.start();
    scene.routing.editorPartSyncMidiCh(4);
    EXPECT_THAT(scene.synced(), ElementsAre("library.syncPartToMidiChannel(4)"));
    scene.trace.clear();
    scene.routing.editorPartSyncMidiCh(3);
    EXPECT_THAT(scene.synced(), ElementsAre("library.syncPartToMidiChannel(3)"));
    EXPECT_EQ(scene.host.devices.mixer().value("selected").integer, 0);
}

TEST(EditorPartSyncMidiCh, DoesNothingForTheSelectedTracksChannel)
{
    TrackScene scene(olderHost());
    scene.host.devices.addMidiTrack("Other", kRoutedHere, 3);
    scene.host.devices.addMidiTrack("Piano", kRoutedHere, 3);
    scene.start();
    scene.host.devices.select(1);
    scene.trace.clear();
    scene.routing.editorPartSyncMidiCh(3);
    EXPECT_THAT(scene.trace.texts(), ElementsAre("value(Piano.channel).getInteger()"));
}

TEST(EditorPartSyncMidiCh, DoesNothingBeyondTheLastChannel)
{
    TrackScene scene(olderHost());
    auto& track = scene.host.devices.addMidiTrack("Piano", kRoutedHere, 16);
    scene.start();
    for (const unsigned channel : {16u, 17u, 255u, 0x80000000u, 0xFFFFFFFFu}) {
        track.value("channel").integer = static_cast<int32>(channel);
        scene.routing.editorPartSyncMidiCh(channel);
    }
    EXPECT_THAT(scene.trace.texts(), IsEmpty());
    track.value("channel").integer = 15;
    scene.routing.editorPartSyncMidiCh(15);
    EXPECT_THAT(selections(scene), ElementsAre(selection(0)));
}

TEST(EditorPartSyncMidiCh, LeavesTheSelectionWithoutATrackForThePart)
{
    TrackScene scene(olderHost());
    scene.host.devices.addMidiTrack("Piano", kRoutedHere, 3);
    scene.host.devices.addMidiTrack("Mute", kRoutedHere, 4).dropValue("channel");
    scene.host.devices.addMidiTrack("Loose", kRoutedHere, 4).dropValue("output");
    scene.host.devices.mixer().children.push_back(nullptr);
    scene.start();
    scene.routing.editorPartSyncMidiCh(4);
    EXPECT_THAT(selections(scene), IsEmpty());
}

TEST(EditorPartSyncMidiCh, NeedsAMixerWithTracks)
{
    TrackScene empty(olderHost());
    empty.start();
    empty.routing.editorPartSyncMidiCh(3);
    EXPECT_THAT(empty.trace.texts(), ElementsAre("device(Mixer).countChildren()"));

    TrackScene without(olderHost());
    without.host.devices.addMidiTrack("Piano", kRoutedHere, 3);
    without.host.devices.removeDevice("Mixer");
    without.start();
    without.routing.editorPartSyncMidiCh(3);
    EXPECT_THAT(without.trace.texts(), IsEmpty());
}

TEST(EditorPartSyncMidiCh, SelectsNothingInAHostWithoutSelection)
{
    TrackScene scene(olderHost());
    scene.host.devices.addMidiTrack("Piano", kRoutedHere, 3);
    scene.host.devices.mixer().dropValue("selected");
    scene.start();
    scene.routing.editorPartSyncMidiCh(3);
    EXPECT_THAT(selections(scene), IsEmpty());
}

TEST(EditorPartSyncMidiCh, AsksEachTrackNoMoreThanItNeeds)
{
    TrackScene scene(olderHost());
    scene.host.devices.addAudioTrack("Audio");
    scene.host.devices.addInstrumentTrack("Lead", kRoutedHere, 3);
    scene.host.devices.addMidiTrack("Elsewhere", kRoutedElsewhere, 3);
    scene.host.devices.addMidiTrack("Piano", kRoutedHere, 3);
    scene.start();
    scene.context.onUpdate = nullptr;
    scene.routing.editorPartSyncMidiCh(3);
    EXPECT_THAT(scene.calls({"device(", "value(", "host", "updateHandler"}),
                ElementsAre("device(Mixer).countChildren()", "device(Mixer).countChildren()",
                            "device(Mixer).getChild(0)", "device(Audio).getDeviceType()",
                            "device(Mixer).countChildren()", "device(Mixer).getChild(1)",
                            "device(Lead).getDeviceType()", "device(Mixer).countChildren()",
                            "device(Mixer).getChild(2)", "device(Elsewhere).getDeviceType()",
                            "device(Elsewhere).getValue(output)",
                            "value(Elsewhere.output).getString(256)",
                            "hostApplicationW.getCharacterSet()", "device(Mixer).countChildren()",
                            "device(Mixer).getChild(3)", "device(Piano).getDeviceType()",
                            "device(Piano).getValue(output)", "value(Piano.output).getString(256)",
                            "device(Piano).getValue(channel)", "value(Piano.channel).getInteger()",
                            selection(3)));
}

TEST(EditorPartSyncMidiCh, FollowsAMixerThatShrinksMeanwhile)
{
    TrackScene scene(olderHost());
    scene.host.devices.addMidiTrack("Piano", kRoutedHere, 3);
    scene.host.devices.addMidiTrack("Organ", kRoutedHere, 4);
    scene.start();
    scene.host.onCall = [&](const std::string& text) {
        if (text == "value(Piano.channel).getInteger()")
            scene.host.devices.mixer().children.pop_back();
    };
    scene.routing.editorPartSyncMidiCh(4);
    EXPECT_THAT(selections(scene), IsEmpty());
}

TEST(EditorPartSyncMidiCh, SelectsInstrumentTracksThroughTheRackInANewerHost)
{
    TrackScene scene(newerHost());
    auto& devices = scene.host.devices;
    devices.addMidiTrack("Piano", kRoutedHere, 4); // a newer host is not asked for the text
    auto& lead = devices.addInstrumentTrack("Lead", "", 4);
    auto& bass = devices.addMidiTrack("Bass", "", 5);
    devices.addInstrument("Other", "Other VST");
    auto& ours = devices.addInstrument("Ours", "RDL3/RDL5 VST", &lead);
    ours.children.front()->connectTo(bass);
    scene.start();
    scene.routing.editorPartSyncMidiCh(4);
    scene.routing.editorPartSyncMidiCh(5);
    EXPECT_THAT(selections(scene), ElementsAre(selection(1), selection(2)));
}

TEST(EditorPartSyncMidiCh, SelectsTracksInAHostWithoutUnicode)
{
    TrackScene scene(HostFamily::withoutUnicode("Cubase LE", "4.0.1"));
    scene.host.devices.addMidiTrack("Elsewhere", kRoutedElsewhere, 4);
    scene.host.devices.addMidiTrack("Piano", kRoutedHere, 4);
    scene.start();
    scene.routing.editorPartSyncMidiCh(4);
    EXPECT_THAT(selections(scene), ElementsAre(selection(1)));
    EXPECT_THAT(scene.synced(), ElementsAre("library.syncPartToMidiChannel(4)"));
}

TEST(EditorPartSyncMidiCh, LetsGoOfEveryValueBeforeTheHostSelects)
{
    TrackScene scene(olderHost());
    auto& piano = scene.host.devices.addMidiTrack("Piano", kRoutedHere, 3);
    scene.start();
    int references = 0;
    scene.host.onCall = [&](const std::string& text) {
        if (text == selection(0))
            references =
                piano.value("output").getReferences() + piano.value("channel").getReferences();
    };
    scene.routing.editorPartSyncMidiCh(3);
    EXPECT_EQ(references, 2) << "one of the host's for each value";
}
