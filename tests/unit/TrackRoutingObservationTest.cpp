#include "hostapi/IDevice.h"
#include "hostapi/IDeviceList.h"
#include "tests/unit/TrackScene.h"

using namespace Steinberg;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(StartObserving, ObservesTheMixerAndThenItsSelectedValue)
{
    TrackScene scene(newerHost());
    scene.routing.startObserving();
    EXPECT_THAT(scene.trace.texts(),
                ElementsAre("hostClasses.getHostInterface(IDeviceList)",
                            "deviceList.findDevice(Mixer, 0)", "device(Mixer).getValue(selected)",
                            "hostClasses.getHostInterface(IUpdateHandler)",
                            "updateHandler.addDependent(device(Mixer))",
                            "updateHandler.addDependent(value(Mixer.selected))"));
}

TEST(StartObserving, GoesOnAfterAddDependentThrew)
{
    TrackScene scene(newerHost());
    scene.host.throwAt("updateHandler.addDependent(device(Mixer))");
    EXPECT_NO_THROW(scene.routing.startObserving());
    EXPECT_THAT(scene.host.updates.observed(), ElementsAre("value(Mixer.selected)"));
}

TEST(StartObserving, EndsAtTheFirstObjectThatIsMissing)
{
    const auto observed = [](const std::function<void(TrackScene&)>& take) {
        TrackScene scene(newerHost());
        take(scene);
        scene.routing.startObserving();
        return scene.host.updates.observed();
    };
    EXPECT_EQ(observed([](TrackScene&) {}).size(), 2u);
    EXPECT_THAT(observed([](TrackScene& s) { s.context.hostContext.set(nullptr); }), IsEmpty());
    EXPECT_THAT(observed([](TrackScene& s) { s.host.hide(IHostClasses::iid); }), IsEmpty());
    EXPECT_THAT(observed([](TrackScene& s) { s.host.hide(IDeviceList::iid); }), IsEmpty());
    EXPECT_THAT(observed([](TrackScene& s) { s.host.devices.removeDevice("Mixer"); }), IsEmpty());
    EXPECT_THAT(observed([](TrackScene& s) { s.host.devices.mixer().dropValue("selected"); }),
                IsEmpty());
    EXPECT_THAT(observed([](TrackScene& s) { s.host.hide(IUpdateHandler::iid); }), IsEmpty());
}

TEST(StartObserving, KnowsTheTracksWithoutAnUpdateHandlerToo)
{
    TrackScene scene(olderHost());
    auto& piano = scene.host.devices.addMidiTrack("Piano", kRoutedHere, 3);
    scene.host.hide(IUpdateHandler::iid);
    scene.start();
    scene.host.devices.mixer().value("selected").integer = 0;
    EXPECT_EQ(scene.routing.getSelectedTrackDevice(), &piano);
    scene.routing.editorPartSyncMidiCh(3);
    EXPECT_THAT(scene.calls({"value(Mixer.selected).set"}),
                ElementsAre("value(Mixer.selected).setInteger(0, true)"));
}

TEST(StopObserving, LetsGoOfEachObjectInOrder)
{
    TrackScene scene(olderHost());
    scene.host.devices.addMidiTrack("Piano", kRoutedHere, 3);
    scene.start();
    scene.host.devices.select(0);
    scene.trace.clear();
    scene.host.traceReferences();
    scene.routing.stopObserving(&scene.host.updates);
    EXPECT_THAT(scene.trace.texts(),
                ElementsAre("updateHandler.removeDependent(value(Mixer.selected))",
                            "value(Mixer.selected).release()",
                            "updateHandler.removeDependent(device(Mixer))",
                            "updateHandler.removeDependent(value(Piano.output))",
                            "value(Piano.output).release()",
                            "updateHandler.removeDependent(value(Piano.channel))",
                            "value(Piano.channel).release()"));
}

TEST(StopObserving, LetsGoOfTheValuesWithoutUpdateHandlerToo)
{
    TrackScene scene(olderHost());
    auto& piano = scene.host.devices.addMidiTrack("Piano", kRoutedHere, 3);
    scene.start();
    scene.host.devices.select(0);
    ASSERT_EQ(piano.value("channel").getReferences(), 2);
    scene.trace.clear();
    scene.routing.stopObserving(nullptr);
    EXPECT_EQ(piano.value("channel").getReferences(), 1);
    EXPECT_EQ(piano.value("output").getReferences(), 1);
    EXPECT_EQ(scene.host.devices.mixer().value("selected").getReferences(), 1);
    EXPECT_THAT(scene.trace.texts(), IsEmpty());
    // A host without an update handler keeps the dependents.
    for (auto* object : {&piano.value("output"), &piano.value("channel"),
                         &scene.host.devices.mixer().value("selected")})
        scene.host.updates.removeDependent(object, &scene.context.dependent);
    scene.host.updates.removeDependent(&scene.host.devices.mixer(), &scene.context.dependent);
}

TEST(StopObserving, NeverReleasesTheMixerThatItWasLent)
{
    TrackScene scene(newerHost());
    scene.host.traceReferences();
    scene.routing.startObserving();
    scene.routing.stopObserving(&scene.host.updates);
    EXPECT_THAT(scene.calls({"device(Mixer).addRef", "device(Mixer).release"}), IsEmpty());
}

TEST(StopObserving, AsksNothingMoreOfTheHostAfterwards)
{
    TrackScene scene(olderHost());
    scene.host.devices.addMidiTrack("Piano", kRoutedHere, 3);
    scene.start();
    scene.host.devices.select(0);
    scene.routing.stopObserving(&scene.host.updates);
    scene.trace.clear();
    scene.routing.stopObserving(&scene.host.updates);
    scene.routing.editorPartSyncMidiCh(3);
    scene.routing.midiChSyncEditorPart();
    EXPECT_EQ(scene.routing.getSelectedTrackDevice(), nullptr);
    EXPECT_THAT(scene.trace.texts(), IsEmpty());
}

TEST(StopObserving, CanBeFollowedByAnotherStart)
{
    TrackScene scene(olderHost());
    scene.host.devices.addMidiTrack("Piano", kRoutedHere, 3);
    scene.host.devices.addAudioTrack("Audio");
    scene.start();
    scene.host.devices.tellTracksChanged();
    scene.routing.stopObserving(&scene.host.updates);
    scene.host.devices.mixer().children.pop_back();
    scene.start();
    scene.host.devices.select(0);
    EXPECT_THAT(scene.synced(), ElementsAre("library.syncPartToMidiChannel(3)"));
    scene.host.devices.tellTracksChanged();
    EXPECT_EQ(scene.host.updates.observed().size(), 4u)
        << "the tracks of the life before do not count";
}

TEST(TrackRouting, DestructorReleasesTheValues)
{
    doubles::Trace trace;
    doubles::ScriptedHost host(trace, olderHost());
    {
        doubles::HostAndLibraryDouble context(host, nullptr);
        Vst::TrackRouting routing(context, context.dependent);
        routing.startObserving();
        ASSERT_EQ(host.updates.observed().size(), 2u);
        ASSERT_EQ(host.devices.mixer().value("selected").getReferences(), 2);
    }
    EXPECT_EQ(host.devices.mixer().value("selected").getReferences(), 1);
}

TEST(GetSelectedTrackDevice, GivesTheMixersChildAtTheSelectedIndex)
{
    TrackScene scene(newerHost());
    auto& first = scene.host.devices.addAudioTrack("First");
    auto& second = scene.host.devices.addAudioTrack("Second");
    auto& selected = scene.host.devices.mixer().value("selected");
    EXPECT_EQ(scene.routing.getSelectedTrackDevice(), nullptr) << "nothing is observed yet";
    scene.start();
    selected.integer = 1;
    EXPECT_EQ(scene.routing.getSelectedTrackDevice(), &second);
    selected.integer = 0;
    EXPECT_EQ(scene.routing.getSelectedTrackDevice(), &first);
    selected.integer = 2;
    EXPECT_EQ(scene.routing.getSelectedTrackDevice(), nullptr);
    scene.trace.clear();
    selected.integer = -1;
    EXPECT_EQ(scene.routing.getSelectedTrackDevice(), nullptr);
    EXPECT_EQ(scene.calls({"device(Mixer)"}).size(), 0u) << "no child is asked for";
}

TEST(AddDependent, ObservesTheValueOfTheGivenTrack)
{
    TrackScene scene(newerHost());
    auto& midi = scene.host.devices.addMidiTrack("Piano", "", 3);
    auto& instrument = scene.host.devices.addInstrumentTrack("Lead", "", 4);
    scene.start();
    scene.routing.AddDependent_MIDIOutput(scene.hostClasses(), &midi);
    scene.routing.AddDependent_MIDIChannel(scene.hostClasses(), &instrument);
    EXPECT_THAT(scene.trace.texts(),
                ElementsAre("device(Piano).getDeviceType()", "device(Piano).getValue(output)",
                            "hostClasses.getHostInterface(IUpdateHandler)",
                            "updateHandler.addDependent(value(Piano.output))",
                            "device(Lead).getDeviceType()", "device(Lead).getValue(channel)",
                            "hostClasses.getHostInterface(IUpdateHandler)",
                            "updateHandler.addDependent(value(Lead.channel))"));
}

TEST(AddDependent, ObservesTheSelectedTrackWhenNoneIsGiven)
{
    TrackScene scene(newerHost());
    scene.host.devices.addMidiTrack("Piano", "", 3);
    scene.start();
    scene.routing.AddDependent_MIDIOutput(scene.hostClasses(), nullptr);
    EXPECT_EQ(scene.host.updates.observed().size(), 2u) << "no track is selected";
    scene.host.devices.mixer().value("selected").integer = 0;
    scene.routing.AddDependent_MIDIOutput(scene.hostClasses(), nullptr);
    EXPECT_THAT(scene.host.updates.observed(),
                ElementsAre("device(Mixer)", "value(Mixer.selected)", "value(Piano.output)"));
}

TEST(AddDependent, KeepsWhatItObservesAlready)
{
    TrackScene scene(newerHost());
    auto& piano = scene.host.devices.addMidiTrack("Piano", "", 3);
    auto& organ = scene.host.devices.addMidiTrack("Organ", "", 4);
    scene.routing.AddDependent_MIDIChannel(scene.hostClasses(), &piano);
    scene.trace.clear();
    scene.routing.AddDependent_MIDIChannel(scene.hostClasses(), &organ);
    scene.routing.AddDependent_MIDIChannel(nullptr, &organ);
    EXPECT_THAT(scene.trace.texts(), IsEmpty());
}

TEST(AddDependent, IgnoresTracksThatAreNotFollowed)
{
    TrackScene scene(olderHost());
    scene.start();
    auto& devices = scene.host.devices;
    auto& nameless = devices.addMidiTrack("Nameless", "", 0);
    nameless.hasType = false;
    auto& close = devices.addMidiTrack("Close", "", 0);
    close.type = "MidiChannel ";
    for (auto* track : {&devices.addAudioTrack("Audio"), &devices.addGroupTrack("Group"),
                        &devices.addInstrumentTrack("Lead", "", 0), &nameless, &close})
        scene.routing.AddDependent_MIDIOutput(scene.hostClasses(), track);
    EXPECT_THAT(scene.calls({"updateHandler."}), IsEmpty());
}

TEST(AddDependent, DoesNothingWithoutTheTracksValueOrHostClasses)
{
    TrackScene scene(newerHost());
    auto& piano = scene.host.devices.addMidiTrack("Piano", "", 3);
    piano.dropValue("output");
    scene.routing.AddDependent_MIDIOutput(nullptr, &piano);
    EXPECT_THAT(scene.trace.texts(), IsEmpty());
    scene.routing.AddDependent_MIDIOutput(scene.hostClasses(), &piano);
    EXPECT_THAT(scene.calls({"updateHandler.", "hostClasses."}), IsEmpty());
}

TEST(AddDependent, HoldsTheValueWithoutAnUpdateHandler)
{
    TrackScene scene(newerHost());
    auto& piano = scene.host.devices.addMidiTrack("Piano", "", 3);
    scene.host.hide(IUpdateHandler::iid);
    scene.routing.AddDependent_MIDIChannel(scene.hostClasses(), &piano);
    EXPECT_EQ(piano.value("channel").getReferences(), 2);
    scene.routing.midiChSyncEditorPart();
    EXPECT_THAT(scene.synced(), ElementsAre("library.syncPartToMidiChannel(3)"));
}

TEST(RemoveDependent, EndsTheObservationAndLetsTheValueGo)
{
    TrackScene scene(newerHost());
    auto& piano = scene.host.devices.addMidiTrack("Piano", "", 3);
    scene.routing.AddDependent_MIDIOutput(scene.hostClasses(), &piano);
    scene.routing.AddDependent_MIDIChannel(scene.hostClasses(), &piano);
    scene.trace.clear();
    scene.routing.RemoveDependent_MIDIOutput(scene.hostClasses());
    scene.routing.RemoveDependent_MIDIChannel(scene.hostClasses());
    scene.routing.RemoveDependent_MIDIChannel(scene.hostClasses());
    EXPECT_THAT(scene.trace.texts(),
                ElementsAre("hostClasses.getHostInterface(IUpdateHandler)",
                            "updateHandler.removeDependent(value(Piano.output))",
                            "hostClasses.getHostInterface(IUpdateHandler)",
                            "updateHandler.removeDependent(value(Piano.channel))"));
    EXPECT_EQ(piano.value("output").getReferences(), 1);
    EXPECT_EQ(piano.value("channel").getReferences(), 1);
}

TEST(RemoveDependent, KeepsTheValueWithoutHostClassesOrUpdateHandler)
{
    TrackScene scene(newerHost());
    auto& piano = scene.host.devices.addMidiTrack("Piano", "", 3);
    scene.routing.AddDependent_MIDIOutput(scene.hostClasses(), &piano);
    scene.routing.RemoveDependent_MIDIOutput(nullptr);
    scene.host.hide(IUpdateHandler::iid);
    scene.routing.RemoveDependent_MIDIOutput(scene.hostClasses());
    EXPECT_THAT(scene.host.updates.observed(), ElementsAre("value(Piano.output)"));
    EXPECT_EQ(piano.value("output").getReferences(), 2);
}
