#include "hostapi/IDevice.h"
#include "tests/unit/TrackScene.h"

using doubles::HostFamily;
using namespace Steinberg;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

constexpr int32 kChanged = IDependent::kChanged;
constexpr int32 kDestroyed = IDependent::kDestroyed;

const std::string kSync3 = "library.syncPartToMidiChannel(3)";
const std::string kSync4 = "library.syncPartToMidiChannel(4)";

/** An older host with a routed track (index 0), one that is routed elsewhere (1) and an audio track
    (2); the first is selected. */
struct ProjectScene : TrackScene {
    explicit ProjectScene(const HostFamily& family = olderHost())
    : TrackScene(family)
    , piano(host.devices.addMidiTrack("Piano", kRoutedHere, 3))
    , organ(host.devices.addMidiTrack("Organ", kRoutedElsewhere, 4))
    , audio(host.devices.addAudioTrack("Audio"))
    {
        start();
        host.devices.select(0);
        host.devices.tellTracksChanged();
        trace.clear();
    }

    /** Names of the values that are observed beside the mixer and its selected value. */
    std::vector<std::string> observed() const
    {
        auto names = host.updates.observed();
        names.erase(names.begin(), names.begin() + 2);
        return names;
    }

    void tell(doubles::HostObject& object, int32 message) { host.devices.tell(object, message); }

    void setOutput(const char* text)
    {
        piano.value("output").text = text;
        tell(piano.value("output"), kChanged);
    }

    doubles::HostDeviceDouble& piano;
    doubles::HostDeviceDouble& organ;
    doubles::HostDeviceDouble& audio;
};

} // namespace

TEST(TrackSelection, OfARoutedTrackObservesItAndShowsItsPart)
{
    TrackScene scene(olderHost());
    scene.host.devices.addMidiTrack("Piano", kRoutedHere, 3);
    scene.start();
    scene.host.traceQueries();
    scene.host.devices.mixer().value("selected").integer = 0;
    scene.routing.update(scene.host.devices.mixer().value("selected").unknown(), kChanged);
    EXPECT_THAT(scene.trace.texts(),
                ElementsAre("query(value(Mixer.selected), IValue)",
                            "query(value(Mixer.selected), IDevice)", "query(context, IHostClasses)",
                            "value(Mixer.selected).getInteger()", "device(Mixer).getChild(0)",
                            "device(Piano).getDeviceType()", "device(Piano).getValue(output)",
                            "hostClasses.getHostInterface(IUpdateHandler)",
                            "updateHandler.addDependent(value(Piano.output))",
                            "value(Mixer.selected).getInteger()", "device(Mixer).getChild(0)",
                            "value(Piano.output).getString(256)",
                            "value(Mixer.selected).getInteger()", "device(Mixer).getChild(0)",
                            "device(Piano).getDeviceType()", "device(Piano).getValue(channel)",
                            "hostClasses.getHostInterface(IUpdateHandler)",
                            "updateHandler.addDependent(value(Piano.channel))",
                            "value(Piano.channel).getInteger()", kSync3));
}

TEST(TrackSelection, DropsTheTrackBeforeItFirst)
{
    ProjectScene scene;
    ASSERT_THAT(scene.observed(), ElementsAre("value(Piano.output)", "value(Piano.channel)"));
    scene.host.devices.select(1);
    EXPECT_THAT(scene.calls({"updateHandler.", "library."}),
                ElementsAre("updateHandler.removeDependent(value(Piano.output))",
                            "updateHandler.removeDependent(value(Piano.channel))",
                            "updateHandler.addDependent(value(Organ.output))"));
    EXPECT_EQ(scene.piano.value("output").getReferences(), 1);
    EXPECT_EQ(scene.piano.value("channel").getReferences(), 1);
}

TEST(TrackSelection, OfATrackThatIsNotFollowedObservesNothing)
{
    ProjectScene scene;
    scene.host.devices.select(2);
    EXPECT_THAT(scene.observed(), IsEmpty());
    scene.host.devices.select(0);
    scene.host.devices.select(-1);
    EXPECT_THAT(scene.observed(), IsEmpty());
    scene.host.devices.select(0);
    scene.host.devices.select(99);
    EXPECT_THAT(scene.observed(), IsEmpty());
}

TEST(TrackSelection, AgainOfTheSameTrackShowsItsPartAgain)
{
    ProjectScene scene;
    scene.host.devices.select(0);
    EXPECT_THAT(scene.synced(), ElementsAre(kSync3));
    EXPECT_THAT(scene.observed(), ElementsAre("value(Piano.output)", "value(Piano.channel)"));
}

TEST(TrackSelection, IgnoresInstrumentTracksInAnOlderHost)
{
    ProjectScene scene;
    auto& lead = scene.host.devices.addInstrumentTrack("Lead", kRoutedHere, 4);
    scene.host.devices.addInstrument("Synth 1", "RDL3/RDL5 VST", &lead);
    scene.host.devices.select(3);
    EXPECT_THAT(scene.observed(), IsEmpty());
    EXPECT_THAT(scene.synced(), IsEmpty());
}

TEST(TrackSelection, FollowsInstrumentTracksThroughTheRackInANewerHost)
{
    ProjectScene scene(newerHost());
    auto& lead = scene.host.devices.addInstrumentTrack("Lead", "", 4);
    scene.host.devices.addInstrument("Synth 1", "RDL3/RDL5 VST", &lead);
    scene.host.devices.select(3);
    EXPECT_THAT(scene.observed(), ElementsAre("value(Lead.output)", "value(Lead.channel)"));
    EXPECT_THAT(scene.synced(), ElementsAre(kSync4));
}

TEST(TrackSelection, DoesNotBelieveTheOutputTextOfANewerHost)
{
    ProjectScene scene(newerHost());
    EXPECT_THAT(scene.observed(), ElementsAre("value(Piano.output)"));
    auto& organ = scene.organ;
    scene.host.devices.addInstrument("Synth 2", "RDL3/RDL5 VST", &organ);
    scene.host.devices.select(1);
    EXPECT_THAT(scene.synced(), ElementsAre(kSync4));
}

TEST(TrackSelection, InANewerHostNeedsNoOutputValue)
{
    ProjectScene scene(newerHost());
    auto& lead = scene.host.devices.addInstrumentTrack("Lead", "", 4);
    lead.dropValue("output");
    scene.host.devices.addInstrument("Synth 1", "RDL3/RDL5 VST", &lead);
    scene.host.devices.select(3);
    EXPECT_THAT(scene.observed(), ElementsAre("value(Lead.channel)"));
    EXPECT_THAT(scene.synced(), ElementsAre(kSync4));
}

TEST(TrackSelection, OfATrackWithoutValuesShowsNothing)
{
    ProjectScene scene;
    scene.organ.value("output").text = kRoutedHere;
    scene.organ.dropValue("channel");
    scene.host.devices.select(1);
    EXPECT_THAT(scene.observed(), ElementsAre("value(Organ.output)"));
    EXPECT_THAT(scene.synced(), IsEmpty());
}

TEST(TrackSelection, IsFollowedInAHostWithoutUnicode)
{
    ProjectScene scene(HostFamily::withoutUnicode("Nuendo", "4.3.0"));
    scene.host.traceQueries();
    scene.organ.value("output").text = kRoutedHere;
    scene.host.devices.select(1);
    EXPECT_THAT(scene.synced(), ElementsAre(kSync4));
    EXPECT_THAT(scene.calls({"query(value"}),
                ElementsAre("query(value(Mixer.selected), IValueNotUnicodeID)",
                            "query(value(Mixer.selected), IDeviceNotUnicodeID)"));
}

TEST(TrackSelection, WorksWithoutALibraryAndWithOneThatThrows)
{
    ProjectScene scene;
    scene.context.library = nullptr;
    scene.host.devices.select(0);
    EXPECT_THAT(scene.observed(), ElementsAre("value(Piano.output)", "value(Piano.channel)"));
    EXPECT_THAT(scene.synced(), IsEmpty());
    scene.context.library = &scene.library;
    scene.library.throwAt("syncPartToMidiChannel");
    scene.host.devices.select(0);
    EXPECT_THAT(scene.observed(), ElementsAre("value(Piano.output)", "value(Piano.channel)"));
}

TEST(OutputChange, AwayFromThePlugInDropsTheChannel)
{
    ProjectScene scene;
    scene.setOutput(kRoutedElsewhere);
    EXPECT_THAT(scene.observed(), ElementsAre("value(Piano.output)"));
    EXPECT_THAT(scene.synced(), IsEmpty());
    scene.piano.value("channel").integer = 9;
    scene.tell(scene.piano.value("channel"), kChanged);
    EXPECT_THAT(scene.synced(), IsEmpty());
}

TEST(OutputChange, ToThePlugInObservesAndShowsTheChannel)
{
    ProjectScene scene;
    scene.setOutput(kRoutedElsewhere);
    scene.trace.clear();
    scene.setOutput(kRoutedHere);
    EXPECT_THAT(scene.observed(), ElementsAre("value(Piano.output)", "value(Piano.channel)"));
    EXPECT_THAT(scene.calls({"updateHandler.", "library."}),
                ElementsAre("updateHandler.addDependent(value(Piano.channel))", kSync3));
}

TEST(OutputChange, WithinThePlugInObservesTheChannelAnew)
{
    ProjectScene scene;
    scene.setOutput("Synth 9 - RDL3/RDL5 VST");
    EXPECT_THAT(scene.calls({"updateHandler.", "library."}),
                ElementsAre("updateHandler.removeDependent(value(Piano.channel))",
                            "updateHandler.addDependent(value(Piano.channel))", kSync3));
}

TEST(OutputChange, InANewerHostIsJudgedByTheRack)
{
    ProjectScene scene(newerHost());
    ASSERT_THAT(scene.observed(), ElementsAre("value(Piano.output)"));
    scene.setOutput(kRoutedHere);
    EXPECT_THAT(scene.observed(), ElementsAre("value(Piano.output)")) << "whatever its text says";
    auto& ours = scene.host.devices.addInstrument("Ours", "RDL3/RDL5 VST", &scene.piano);
    scene.setOutput(kRoutedElsewhere);
    EXPECT_THAT(scene.observed(), ElementsAre("value(Piano.output)", "value(Piano.channel)"));
    EXPECT_THAT(scene.synced(), ElementsAre(kSync3));
    ours.value("effectType").text = "Other VST";
    scene.setOutput(kRoutedHere);
    EXPECT_THAT(scene.observed(), ElementsAre("value(Piano.output)"));
}

TEST(OutputChange, IsFollowedInAHostWithoutUnicode)
{
    ProjectScene scene(HostFamily::withoutUnicode("Cubase", "5.0.0"));
    scene.setOutput(kRoutedElsewhere);
    EXPECT_THAT(scene.observed(), ElementsAre("value(Piano.output)"));
    scene.setOutput(kRoutedHere);
    scene.piano.value("channel").integer = 4;
    scene.tell(scene.piano.value("channel"), kChanged);
    EXPECT_THAT(scene.synced(), ElementsAre(kSync3, kSync4));
    scene.tell(scene.piano.value("output"), kDestroyed);
    EXPECT_THAT(scene.observed(), IsEmpty());
}

TEST(OutputChange, ToDestroyedDropsOutputAndChannel)
{
    ProjectScene scene;
    scene.tell(scene.piano.value("output"), kDestroyed);
    EXPECT_THAT(scene.calls({"updateHandler.", "library."}),
                ElementsAre("updateHandler.removeDependent(value(Piano.output))",
                            "updateHandler.removeDependent(value(Piano.channel))"));
    EXPECT_THAT(scene.observed(), IsEmpty());
}

TEST(ChannelChange, ShowsThePartOfTheNewChannel)
{
    ProjectScene scene;
    scene.piano.value("channel").integer = 15;
    scene.tell(scene.piano.value("channel"), kChanged);
    EXPECT_THAT(scene.synced(), ElementsAre("library.syncPartToMidiChannel(15)"));
    scene.context.library = nullptr;
    scene.tell(scene.piano.value("channel"), kChanged);
    EXPECT_EQ(scene.synced().size(), 1u);
}

TEST(ChannelChange, ToDestroyedChangesNothing)
{
    ProjectScene scene;
    scene.tell(scene.piano.value("channel"), kDestroyed);
    EXPECT_THAT(scene.calls({"updateHandler.", "library."}), IsEmpty());
    EXPECT_THAT(scene.observed(), ElementsAre("value(Piano.output)", "value(Piano.channel)"));
}

TEST(MixerChange, DropsTheTrackWhenTheMixerLostOne)
{
    ProjectScene scene;
    scene.host.devices.removeTrack(2);
    EXPECT_THAT(scene.calls({"device(Mixer)", "updateHandler.", "library."}),
                ElementsAre("device(Mixer).countChildren()",
                            "updateHandler.removeDependent(value(Piano.output))",
                            "updateHandler.removeDependent(value(Piano.channel))",
                            "device(Mixer).countChildren()"));
}

TEST(MixerChange, KeepsTheTrackWhenTheMixerGrewOrStayed)
{
    ProjectScene scene;
    scene.host.devices.addAudioTrack("More");
    scene.host.devices.tellTracksChanged();
    scene.host.devices.tellTracksChanged();
    EXPECT_THAT(scene.observed(), ElementsAre("value(Piano.output)", "value(Piano.channel)"));
    scene.host.devices.removeTrack(3); // back to as many as at the start, and fewer than last seen
    EXPECT_THAT(scene.observed(), IsEmpty());
}

TEST(MixerChange, IsHeardInAHostWithoutUnicode)
{
    ProjectScene scene(HostFamily::withoutUnicode("Cubase", "5.0.0"));
    scene.host.traceQueries();
    scene.host.devices.removeTrack(2);
    EXPECT_THAT(scene.calls({"query(device"}),
                ElementsAre("query(device(Mixer), IValueNotUnicodeID)",
                            "query(device(Mixer), IDeviceNotUnicodeID)"));
    EXPECT_THAT(scene.observed(), IsEmpty());
}

TEST(MixerChange, IsCountedWithoutAnUpdateHandlerAlthoughTheTrackStays)
{
    ProjectScene scene;
    scene.host.hide(IUpdateHandler::iid);
    scene.host.devices.removeTrack(2);
    scene.tell(scene.piano.value("output"), kDestroyed);
    EXPECT_THAT(scene.observed(), ElementsAre("value(Piano.output)", "value(Piano.channel)"));
    scene.host.show(IUpdateHandler::iid);
    scene.host.devices.tellTracksChanged();
    EXPECT_THAT(scene.observed(), ElementsAre("value(Piano.output)", "value(Piano.channel)"))
        << "the loss was counted once";
}

TEST(MixerChange, CountsFromNoneAtTheStart)
{
    TrackScene scene(olderHost());
    scene.host.devices.addMidiTrack("Piano", kRoutedHere, 3);
    scene.host.devices.addAudioTrack("Audio");
    scene.start();
    scene.host.devices.select(0);
    scene.host.devices.removeTrack(1);
    EXPECT_EQ(scene.host.updates.observed().size(), 4u) << "it had not been counted before";
}

TEST(Destroyed, OfTheSelectedValueOrTheMixerChangesNothing)
{
    ProjectScene scene;
    scene.host.devices.mixer().children.pop_back();
    scene.tell(scene.host.devices.mixer().value("selected"), kDestroyed);
    scene.tell(scene.host.devices.mixer(), kDestroyed);
    EXPECT_THAT(scene.calls({"updateHandler.", "library.", "device(", "value("}), IsEmpty());
    scene.host.devices.tellTracksChanged();
    EXPECT_THAT(scene.observed(), IsEmpty()) << "the loss was not counted before";
}

TEST(OtherMessages, AreChangesLikeAnyOther)
{
    for (const int32 message : {0, 1, 3, 4, 1000, -1}) {
        ProjectScene scene;
        scene.tell(scene.piano.value("channel"), message);
        EXPECT_THAT(scene.synced(), ElementsAre(kSync3)) << message;
    }
}

TEST(Notice, OfAnObjectThatIsNotObservedChangesNothing)
{
    ProjectScene scene;
    for (doubles::HostObject* object : std::initializer_list<doubles::HostObject*>{
             &scene.organ, &scene.organ.value("output"), &scene.organ.value("channel"),
             &scene.host.context})
        scene.routing.update(object->unknown(), kChanged);
    scene.routing.update(nullptr, kChanged);
    EXPECT_THAT(scene.trace.texts(), IsEmpty());
}

TEST(Notice, IsNeverTakenForAFieldThatIsEmpty)
{
    TrackScene scene(olderHost());
    auto& piano = scene.host.devices.addMidiTrack("Piano", kRoutedHere, 3);
    // Nothing is observed: no value and no device may be the same as nothing.
    for (doubles::HostObject* object : std::initializer_list<doubles::HostObject*>{
             &piano, &piano.value("output"), &scene.host.context, &scene.host.devices.mixer(),
             &scene.host.devices.mixer().value("selected")})
        for (const int32 message : {kChanged, kDestroyed})
            scene.routing.update(object->unknown(), message);
    EXPECT_THAT(scene.trace.texts(), IsEmpty());
}

TEST(Notice, ChangesNothingWithoutHostClasses)
{
    ProjectScene scene;
    scene.host.hide(IHostClasses::iid);
    scene.host.devices.select(1);
    scene.context.hostContext = nullptr;
    scene.host.devices.select(2);
    EXPECT_THAT(scene.calls({"updateHandler.", "library.", "device(", "value("}), IsEmpty());
    scene.context.hostContext = &scene.host.context;
}

TEST(Notice, OfAnObjectOfTheOtherCharacterSetChangesNothing)
{
    ProjectScene scene;
    scene.context.unicode = false; // asks for the flavour that this host does not have
    scene.host.devices.select(1);
    EXPECT_THAT(scene.calls({"updateHandler.", "library.", "device(", "value("}), IsEmpty());
}

TEST(Notice, WithoutUpdateHandlerKeepsTheValuesThatAreObserved)
{
    ProjectScene scene;
    scene.host.hide(IUpdateHandler::iid);
    scene.organ.value("output").text = kRoutedHere;
    scene.host.devices.select(1);
    EXPECT_THAT(scene.observed(), ElementsAre("value(Piano.output)", "value(Piano.channel)"));
    EXPECT_THAT(scene.synced(), ElementsAre(kSync3)) << "the old track's channel is still held";
}

TEST(Notice, ReleasesWhatItAskedFor)
{
    ProjectScene scene;
    scene.host.traceReferences();
    scene.routing.update(scene.organ.unknown(), kChanged);
    EXPECT_THAT(scene.trace.texts(),
                ElementsAre("device(Organ).addRef()", "hostClasses.addRef()",
                            "hostClasses.release()", "device(Organ).release()"));
}

TEST(Notice, WhicheverHostCallFailsTheReferencesComeBack)
{
    for (size_t call = 1;; ++call) {
        ProjectScene scene;
        scene.organ.value("output").text = kRoutedHere;
        scene.host.failAtCall(call);
        scene.host.devices.select(1);
        scene.host.devices.removeTrack(2);
        scene.host.devices.select(0);
        scene.tell(scene.piano.value("output"), kChanged);
        scene.tell(scene.piano.value("output"), kDestroyed);
        const bool failed = scene.host.callCount() >= call;
        scene.host.clearFaults();
        // A host that did not take a dependent off its list still has it there.
        for (auto* track : {&scene.piano, &scene.organ})
            for (const char* name : {"output", "channel"})
                scene.host.updates.removeDependent(&track->value(name),
                                                   scene.context.getDependent());
        if (!failed)
            break;
    }
}

TEST(Notice, WhicheverHostCallThrowsTheReferencesComeBack)
{
    for (size_t call = 1;; ++call) {
        ProjectScene scene;
        scene.organ.value("output").text = kRoutedHere;
        scene.host.devices.mixer().value("selected").integer = 1;
        scene.host.throwAtCall(call);
        try {
            scene.routing.update(scene.host.devices.mixer().value("selected").unknown(), kChanged);
        } catch (const doubles::ScriptedFailure&) {
            continue;
        }
        EXPECT_LT(scene.host.callCount(), call);
        break;
    }
}
