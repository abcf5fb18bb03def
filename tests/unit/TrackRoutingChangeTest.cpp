#include "tests/unit/ProjectScene.h"

using doubles::HostFamily;
using namespace Steinberg;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(UpdateOfTheOutput, AwayFromThePlugInDropsTheChannel)
{
    ProjectScene scene;
    scene.setOutput(kRoutedElsewhere);
    EXPECT_THAT(scene.observed(), ElementsAre("value(Piano.output)"));
    EXPECT_THAT(scene.synced(), IsEmpty());
    scene.piano.value("channel").integer = 9;
    scene.tell(scene.piano.value("channel"), kChanged);
    EXPECT_THAT(scene.synced(), IsEmpty());
}

TEST(UpdateOfTheOutput, ToThePlugInObservesAndShowsTheChannel)
{
    ProjectScene scene;
    scene.setOutput(kRoutedElsewhere);
    scene.trace.clear();
    scene.setOutput(kRoutedHere);
    EXPECT_THAT(scene.observed(), ElementsAre("value(Piano.output)", "value(Piano.channel)"));
    EXPECT_THAT(scene.calls({"updateHandler.", "library."}),
                ElementsAre("updateHandler.addDependent(value(Piano.channel))", kSync3));
}

TEST(UpdateOfTheOutput, WithinThePlugInObservesTheChannelAgain)
{
    ProjectScene scene;
    scene.setOutput("Synth 9 - RDL3/RDL5 VST");
    EXPECT_THAT(scene.calls({"updateHandler.", "library."}),
                ElementsAre("updateHandler.removeDependent(value(Piano.channel))",
                            "updateHandler.addDependent(value(Piano.channel))", kSync3));
}

TEST(UpdateOfTheOutput, InANewerHostIsJudgedByTheRack)
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

TEST(UpdateOfTheOutput, WorksInAHostWithoutUnicode)
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

TEST(UpdateOfTheOutput, OfDestroyedDropsOutputAndChannel)
{
    ProjectScene scene;
    scene.tell(scene.piano.value("output"), kDestroyed);
    EXPECT_THAT(scene.calls({"updateHandler.", "library."}),
                ElementsAre("updateHandler.removeDependent(value(Piano.output))",
                            "updateHandler.removeDependent(value(Piano.channel))"));
    EXPECT_THAT(scene.observed(), IsEmpty());
}

TEST(UpdateOfTheChannel, ShowsThePartOfTheNewChannel)
{
    ProjectScene scene;
    scene.piano.value("channel").integer = 15;
    scene.tell(scene.piano.value("channel"), kChanged);
    EXPECT_THAT(scene.synced(), ElementsAre("library.syncPartToMidiChannel(15)"));
    scene.context.bind(nullptr);
    scene.tell(scene.piano.value("channel"), kChanged);
    EXPECT_EQ(scene.synced().size(), 1u);
}

TEST(UpdateOfTheChannel, OfDestroyedChangesNothing)
{
    ProjectScene scene;
    scene.tell(scene.piano.value("channel"), kDestroyed);
    EXPECT_THAT(scene.calls({"updateHandler.", "library."}), IsEmpty());
    EXPECT_THAT(scene.observed(), ElementsAre("value(Piano.output)", "value(Piano.channel)"));
}

TEST(UpdateOfTheMixer, DropsTheTrackWhenTheMixerLostOne)
{
    ProjectScene scene;
    scene.host.devices.removeTrack(2);
    EXPECT_THAT(scene.calls({"device(Mixer)", "updateHandler.", "library."}),
                ElementsAre("device(Mixer).countChildren()",
                            "updateHandler.removeDependent(value(Piano.output))",
                            "updateHandler.removeDependent(value(Piano.channel))",
                            "device(Mixer).countChildren()"));
}

TEST(UpdateOfTheMixer, KeepsTheTrackWhenTheMixerGrewOrStayed)
{
    ProjectScene scene;
    scene.host.devices.addAudioTrack("More");
    scene.host.devices.tellTracksChanged();
    scene.host.devices.tellTracksChanged();
    EXPECT_THAT(scene.observed(), ElementsAre("value(Piano.output)", "value(Piano.channel)"));
    scene.host.devices.removeTrack(3); // fewer than before, though as many as at the start
    EXPECT_THAT(scene.observed(), IsEmpty());
}

TEST(UpdateOfTheMixer, WorksInAHostWithoutUnicode)
{
    ProjectScene scene(HostFamily::withoutUnicode("Cubase", "5.0.0"));
    scene.host.traceQueries();
    scene.host.devices.removeTrack(2);
    EXPECT_THAT(scene.calls({"query(device"}),
                ElementsAre("query(device(Mixer), IValueNotUnicodeID)",
                            "query(device(Mixer), IDeviceNotUnicodeID)"));
    EXPECT_THAT(scene.observed(), IsEmpty());
}

TEST(UpdateOfTheMixer, CountsTheTracksWithoutAnUpdateHandlerToo)
{
    ProjectScene scene;
    scene.host.hide(IUpdateHandler::iid);
    scene.host.devices.removeTrack(2);
    scene.tell(scene.piano.value("output"), kDestroyed);
    EXPECT_THAT(scene.observed(), ElementsAre("value(Piano.output)", "value(Piano.channel)"));
    scene.host.show(IUpdateHandler::iid);
    scene.host.devices.tellTracksChanged();
    EXPECT_THAT(scene.observed(), ElementsAre("value(Piano.output)", "value(Piano.channel)"))
        << "the track that went was counted once";
}

TEST(UpdateOfTheMixer, CountsFromNoneAtTheStart)
{
    TrackScene scene(olderHost());
    scene.host.devices.addMidiTrack("Piano", kRoutedHere, 3);
    scene.host.devices.addAudioTrack("Audio");
    scene.start();
    scene.host.devices.select(0);
    scene.host.devices.removeTrack(1);
    EXPECT_EQ(scene.host.updates.observed().size(), 4u) << "the tracks had not been counted before";
}

TEST(UpdateOfTheMixer, OfDestroyedChangesNothing)
{
    ProjectScene scene;
    scene.host.devices.mixer().children.pop_back();
    scene.tell(scene.host.devices.mixer().value("selected"), kDestroyed);
    scene.tell(scene.host.devices.mixer(), kDestroyed);
    EXPECT_THAT(scene.calls({"updateHandler.", "library.", "device(", "value("}), IsEmpty());
    scene.host.devices.tellTracksChanged();
    EXPECT_THAT(scene.observed(), IsEmpty()) << "the track that went was not counted before";
}

TEST(UpdateOfTheChannel, TakesAnyOtherMessageForAChange)
{
    for (const int32 message : {0, 1, 3, 4, 1000, -1}) {
        ProjectScene scene;
        scene.tell(scene.piano.value("channel"), message);
        EXPECT_THAT(scene.synced(), ElementsAre(kSync3)) << message;
    }
}
