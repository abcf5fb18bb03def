// The whole controller in a host with tracks: initialize observes the mixer, the host's updates and
// the library's requests reach TrackRouting, and after terminate nothing is observed.
#include "hostapi/IDevice.h"
#include "hostapi/IHostClasses.h"
#include "tests/unit/BoundController.h"
#include "tests/unit/ProjectScene.h"

#include <functional>

using namespace Steinberg;
using namespace Steinberg::Vst;
using namespace doubles;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

/** Two tracks that play the plug-in on channels 3 and 4, and one that plays another. */
class ControllerRouting : public testing::Test {
protected:
    explicit ControllerRouting(const HostFamily& family = HostFamily::cubase("7.4.0"))
    : bound(family)
    , piano(bound.host.devices.addMidiTrack("Piano", kRoutedHere, 3))
    , organ(bound.host.devices.addMidiTrack("Organ", kRoutedHere, 4))
    , other(bound.host.devices.addMidiTrack("Other", kRoutedElsewhere, 5))
    {
    }

    void SetUp() override { bound.initialize(); }

    std::vector<std::string> synced() { return bound.trace.textsOf({"library.sync"}); }
    int32 selected() { return bound.host.devices.mixer().value("selected").integer; }
    IPtr<IHostClasses> hostClasses() { return FUnknownPtr<IHostClasses>(&bound.host.context); }

    BoundController bound;
    HostDeviceDouble& piano;
    HostDeviceDouble& organ;
    HostDeviceDouble& other;
};

TEST_F(ControllerRouting, InitializeReleasesWhatItAskedOfTheHostForItsVersion)
{
    bound.controller->terminate();
    bound.host.traceReferences();
    bound.trace.clear();
    ASSERT_EQ(bound.controller->initialize(&bound.host.context), kResultOk);
    size_t taken = 0;
    size_t released = 0;
    for (const auto& text :
         bound.trace.textsOf({"hostApplicationW.", "deviceList.", "hostClasses."})) {
        taken += text.find(".addRef()") != std::string::npos;
        released += text.find(".release()") != std::string::npos;
    }
    EXPECT_GT(taken, 2u);
    EXPECT_EQ(taken, released);
}

TEST_F(ControllerRouting, UpdateAndEditorPartSyncMidiChDoNothingAfterTerminate)
{
    bound.host.devices.select(0);
    bound.controller->terminate();
    bound.trace.clear();
    for (HostObject* object : std::initializer_list<HostObject*>{
             &bound.host.devices.mixer(), &bound.host.devices.mixer().value("selected"),
             &piano.value("output"), &piano.value("channel")})
        for (const int32 message : {IDependent::kChanged, IDependent::kDestroyed})
            bound.controller->update(object->unknown(), message);
    bound.controller->editorPartSyncMidiCh(4);
    bound.controller->midiChSyncEditorPart();
    EXPECT_EQ(bound.controller->getSelectedTrackDevice(), nullptr);
    EXPECT_THAT(bound.trace.textsOf({"device(", "value(", "library.", "updateHandler."}),
                IsEmpty());
}

TEST_F(ControllerRouting, UpdateTellsTheLibraryOfTheSelectedTracksChannel)
{
    bound.host.devices.select(1);
    bound.host.devices.select(2);
    bound.host.devices.select(0);
    EXPECT_THAT(synced(), ElementsAre(kSync4, kSync3));
}

TEST_F(ControllerRouting, EditorPartSyncMidiChMakesTheHostSelectTheTrackOfThePart)
{
    bound.library.controller->editorPartSyncMidiCh(4);
    EXPECT_EQ(selected(), 1);
    EXPECT_THAT(synced(), ElementsAre(kSync4));
    bound.library.controller->editorPartSyncMidiCh(9);
    EXPECT_EQ(selected(), 1);
}

TEST_F(ControllerRouting, EditorPartSyncMidiChInsideSyncPartToMidiChannelSelectsNothingNew)
{
    // An editor that is told to show a part may ask for that part inside the same call.
    bound.library.onCall = [&](const std::string& text) {
        if (text == kSync3)
            bound.library.controller->editorPartSyncMidiCh(3);
    };
    bound.host.devices.select(0);
    EXPECT_THAT(synced(), ElementsAre(kSync3));
    EXPECT_EQ(bound.trace.textsOf({"value(Mixer.selected).setInteger"}).size(), 0u);
}

TEST_F(ControllerRouting, EditorPartSyncMidiChInsideSyncPartToMidiChannelSelectsAnotherPart)
{
    bool asked = false;
    bound.library.onCall = [&](const std::string& text) {
        if (text != kSync3 || asked)
            return;
        asked = true;
        bound.library.controller->editorPartSyncMidiCh(4);
    };
    bound.host.devices.select(0);
    EXPECT_EQ(selected(), 1);
    EXPECT_THAT(synced(), ElementsAre(kSync3, kSync4));
    EXPECT_THAT(bound.host.updates.observed(),
                ElementsAre("device(Mixer)", "value(Mixer.selected)", "value(Organ.output)",
                            "value(Organ.channel)"));
}

/** The library asks for part 4 whenever it is told to show part 3, and the other way round. */
class PartsThatAnswerEachOther : public ControllerRouting {
protected:
    void SetUp() override
    {
        ControllerRouting::SetUp();
        bound.library.onCall = [this](const std::string& text) {
            // Ends a recursion that nobody else ends before the stack is used up.
            if (synced().size() > 200)
                return;
            if (text == kSync3)
                bound.library.controller->editorPartSyncMidiCh(4);
            else if (text == kSync4)
                bound.library.controller->editorPartSyncMidiCh(3);
        };
    }

    /** Host, library and the observed values have the same track. */
    void expectThatAllAgreeOn(int32 index)
    {
        const std::string track = index == 0 ? "Piano" : "Organ";
        EXPECT_EQ(selected(), index);
        EXPECT_EQ(synced().back(), index == 0 ? kSync3 : kSync4);
        EXPECT_THAT(bound.host.updates.observed(),
                    ElementsAre("device(Mixer)", "value(Mixer.selected)",
                                "value(" + track + ".output)", "value(" + track + ".channel)"));
    }
};

TEST_F(PartsThatAnswerEachOther, UpdateFollowsThemSixteenTimes)
{
    bound.host.devices.select(0);
    EXPECT_EQ(synced().size(), 1u + 16u); // the host's selection, and sixteen requests
    expectThatAllAgreeOn(0);
    // The count starts again with the next selection.
    bound.trace.clear();
    bound.host.devices.select(1);
    EXPECT_EQ(synced().size(), 1u + 16u);
    expectThatAllAgreeOn(1);
}

TEST_F(PartsThatAnswerEachOther, EditorPartSyncMidiChFollowsThemSixteenTimes)
{
    bound.library.controller->editorPartSyncMidiCh(4);
    EXPECT_EQ(synced().size(), 16u);
    expectThatAllAgreeOn(0);
}

TEST_F(PartsThatAnswerEachOther, UpdateFollowsThemAgainAfterACallThatThrew)
{
    bound.host.throwAt("value(Mixer.selected).setInteger");
    bound.host.devices.select(0);
    EXPECT_EQ(synced().size(), 1u);
    bound.host.clearFaults();
    bound.trace.clear();
    bound.host.devices.select(1);
    EXPECT_EQ(synced().size(), 1u + 16u);
    expectThatAllAgreeOn(1);
}

TEST_F(ControllerRouting, UpdateMayComeLater)
{
    bound.host.updates.deferred = true;
    bound.library.controller->editorPartSyncMidiCh(4);
    EXPECT_EQ(selected(), 1);
    EXPECT_THAT(synced(), IsEmpty());
    bound.host.updates.deliver();
    EXPECT_THAT(synced(), ElementsAre(kSync4));
    organ.value("channel").integer = 3;
    bound.host.devices.tell(organ.value("channel"), IDependent::kChanged);
    bound.host.devices.select(2); // before the host delivers the change of the channel
    bound.host.updates.deliver();
    EXPECT_THAT(synced(), ElementsAre(kSync4, kSync3));
    EXPECT_THAT(bound.host.updates.observed(),
                ElementsAre("device(Mixer)", "value(Mixer.selected)", "value(Other.output)"));
}

TEST_F(ControllerRouting, OwnOperationsReachTheTracks)
{
    auto& controller = *bound.controller;
    bound.host.devices.mixer().value("selected").integer = 2;
    EXPECT_EQ(controller.getSelectedTrackDevice(), &other);
    EXPECT_TRUE(controller.CheckMIDIOutputRouting(&piano.value("output"), nullptr));
    EXPECT_FALSE(controller.CheckMIDIOutputRouting(&other.value("output"), &other));
    EXPECT_TRUE(controller.isSameIValueString(&other.value("output"), "Other"));
    EXPECT_FALSE(controller.isSameIValueString(&other.value("output"), "RDL3"));

    const auto classes = hostClasses();
    controller.AddDependent_MIDIOutput(classes, &piano);
    controller.AddDependent_MIDIChannel(classes, &organ);
    EXPECT_THAT(bound.host.updates.observed(),
                ElementsAre("device(Mixer)", "value(Mixer.selected)", "value(Piano.output)",
                            "value(Organ.channel)"));
    controller.midiChSyncEditorPart();
    EXPECT_THAT(synced(), ElementsAre(kSync4));
    controller.RemoveDependent_MIDIOutput(classes);
    EXPECT_THAT(bound.host.updates.observed(),
                ElementsAre("device(Mixer)", "value(Mixer.selected)", "value(Organ.channel)"));
    controller.RemoveDependent_MIDIChannel(classes);
    EXPECT_EQ(bound.host.updates.observed().size(), 2u);
}

class RoutingInANewerHost : public ControllerRouting {
protected:
    RoutingInANewerHost()
    : ControllerRouting(HostFamily::nuendo("6.5.0"))
    , lead(bound.host.devices.addInstrumentTrack("Lead", "", 4))
    {
        bound.host.devices.addInstrument("Ours", "RDL3/RDL5 VST", &lead);
    }

    HostDeviceDouble& lead;
};

TEST_F(RoutingInANewerHost, UpdateAndEditorPartSyncMidiChUseTheRack)
{
    bound.library.controller->editorPartSyncMidiCh(4);
    EXPECT_EQ(selected(), 3);
    bound.host.devices.select(0);
    bound.host.devices.select(3);
    EXPECT_THAT(synced(), ElementsAre(kSync4, kSync4));
    EXPECT_TRUE(bound.controller->CheckMIDIOutputRouting(nullptr, &lead));
}

class RoutingWithoutUnicode : public ControllerRouting {
protected:
    explicit RoutingWithoutUnicode(const HostFamily& family = BoundController::withoutUnicode())
    : ControllerRouting(family)
    {
    }

    void expectBothWays()
    {
        bound.host.devices.select(0);
        bound.library.controller->editorPartSyncMidiCh(4);
        EXPECT_EQ(selected(), 1);
        EXPECT_THAT(synced(), ElementsAre(kSync3, kSync4));
    }
};

class RoutingWithTheSmallerInterface : public RoutingWithoutUnicode {
protected:
    RoutingWithTheSmallerInterface()
    : RoutingWithoutUnicode(HostFamily::applicationAOnly())
    {
    }
};

TEST_F(RoutingWithoutUnicode, UpdateAndEditorPartSyncMidiChUseTheOtherIdsAndPackedTexts)
{
    expectBothWays();
}

TEST_F(RoutingWithTheSmallerInterface, UpdateAndEditorPartSyncMidiChUseTheOtherIdsAndPackedTexts)
{
    expectBothWays();
}

TEST_F(ControllerRouting, OwnOperationsLetNoExceptionOut)
{
    auto& controller = *bound.controller;
    const auto classes = hostClasses();
    const auto expectNone = [&](const std::string& hostCall,
                                const std::function<void()>& operation) {
        bound.host.throwAt(hostCall);
        EXPECT_NO_THROW(operation()) << hostCall;
        EXPECT_NE(bound.host.faultyText(), "") << hostCall << " was not reached";
        bound.host.clearFaults();
    };
    expectNone("getInteger", [&] { controller.getSelectedTrackDevice(); });
    expectNone("getString",
               [&] { controller.CheckMIDIOutputRouting(&piano.value("output"), &piano); });
    expectNone("getString", [&] { controller.isSameIValueString(&piano.value("output"), "x"); });
    expectNone("getDeviceType", [&] { controller.AddDependent_MIDIOutput(classes, &piano); });
    expectNone("getDeviceType", [&] { controller.AddDependent_MIDIChannel(classes, &piano); });
    controller.AddDependent_MIDIOutput(classes, &piano);
    controller.AddDependent_MIDIChannel(classes, &piano);
    expectNone("getInteger", [&] { controller.midiChSyncEditorPart(); });
    expectNone("getHostInterface", [&] { controller.RemoveDependent_MIDIOutput(classes); });
    expectNone("getHostInterface", [&] { controller.RemoveDependent_MIDIChannel(classes); });
}

} // namespace
