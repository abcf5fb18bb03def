#include "tests/unit/ProjectScene.h"

using doubles::HostFamily;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(UpdateOfTheSelection, ObservesARoutedTrackAndShowsItsPart)
{
    TrackScene scene(olderHost());
    scene.host.devices.addMidiTrack("Piano", kRoutedHere, 3);
    scene.start();
    scene.host.traceQueries();
    scene.host.devices.mixer().value("selected").integer = 0;
    scene.routing.update(scene.host.devices.mixer().value("selected").unknown(), kChanged);
    EXPECT_THAT(
        scene.trace.texts(),
        ElementsAre(
            "query(context, IHostApplicationW)", "hostApplicationW.getCharacterSet()",
            "query(value(Mixer.selected), IValue)", "query(value(Mixer.selected), IDevice)",
            "query(context, IHostClasses)", "value(Mixer.selected).getInteger()",
            "device(Mixer).getChild(0)", "device(Piano).getDeviceType()",
            "device(Piano).getValue(output)", "hostClasses.getHostInterface(IUpdateHandler)",
            "updateHandler.addDependent(value(Piano.output))", "value(Mixer.selected).getInteger()",
            "device(Mixer).getChild(0)", "value(Piano.output).getString(256)",
            "value(Mixer.selected).getInteger()", "device(Mixer).getChild(0)",
            "device(Piano).getDeviceType()", "device(Piano).getValue(channel)",
            "hostClasses.getHostInterface(IUpdateHandler)",
            "updateHandler.addDependent(value(Piano.channel))", "value(Piano.channel).getInteger()",
            kSync3));
}

TEST(UpdateOfTheSelection, DropsTheTrackBeforeItFirst)
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

TEST(UpdateOfTheSelection, ObservesNothingOfATrackThatIsNotFollowed)
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

TEST(UpdateOfTheSelection, ShowsThePartOfTheSameTrackAgain)
{
    ProjectScene scene;
    scene.host.devices.select(0);
    EXPECT_THAT(scene.synced(), ElementsAre(kSync3));
    EXPECT_THAT(scene.observed(), ElementsAre("value(Piano.output)", "value(Piano.channel)"));
}

TEST(UpdateOfTheSelection, IgnoresInstrumentTracksInAnOlderHost)
{
    ProjectScene scene;
    auto& lead = scene.host.devices.addInstrumentTrack("Lead", kRoutedHere, 4);
    scene.host.devices.addInstrument("Synth 1", "RDL3/RDL5 VST", &lead);
    scene.host.devices.select(3);
    EXPECT_THAT(scene.observed(), IsEmpty());
    EXPECT_THAT(scene.synced(), IsEmpty());
}

TEST(UpdateOfTheSelection, FollowsInstrumentTracksThroughTheRackInANewerHost)
{
    ProjectScene scene(newerHost());
    auto& lead = scene.host.devices.addInstrumentTrack("Lead", "", 4);
    scene.host.devices.addInstrument("Synth 1", "RDL3/RDL5 VST", &lead);
    scene.host.devices.select(3);
    EXPECT_THAT(scene.observed(), ElementsAre("value(Lead.output)", "value(Lead.channel)"));
    EXPECT_THAT(scene.synced(), ElementsAre(kSync4));
}

TEST(UpdateOfTheSelection, DoesNotBelieveTheOutputTextOfANewerHost)
{
    ProjectScene scene(newerHost());
    EXPECT_THAT(scene.observed(), ElementsAre("value(Piano.output)"));
    auto& organ = scene.organ;
    scene.host.devices.addInstrument("Synth 2", "RDL3/RDL5 VST", &organ);
    scene.host.devices.select(1);
    EXPECT_THAT(scene.synced(), ElementsAre(kSync4));
}

TEST(UpdateOfTheSelection, NeedsNoOutputValueInANewerHost)
{
    ProjectScene scene(newerHost());
    auto& lead = scene.host.devices.addInstrumentTrack("Lead", "", 4);
    lead.dropValue("output");
    scene.host.devices.addInstrument("Synth 1", "RDL3/RDL5 VST", &lead);
    scene.host.devices.select(3);
    EXPECT_THAT(scene.observed(), ElementsAre("value(Lead.channel)"));
    EXPECT_THAT(scene.synced(), ElementsAre(kSync4));
}

TEST(UpdateOfTheSelection, ShowsNothingOfATrackWithoutValues)
{
    ProjectScene scene;
    scene.organ.value("output").text = kRoutedHere;
    scene.organ.dropValue("channel");
    scene.host.devices.select(1);
    EXPECT_THAT(scene.observed(), ElementsAre("value(Organ.output)"));
    EXPECT_THAT(scene.synced(), IsEmpty());
}

TEST(UpdateOfTheSelection, WorksInAHostWithoutUnicode)
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

TEST(UpdateOfTheSelection, WorksWithoutALibraryAndWithOneThatThrows)
{
    ProjectScene scene;
    scene.context.bind(nullptr);
    scene.host.devices.select(0);
    EXPECT_THAT(scene.observed(), ElementsAre("value(Piano.output)", "value(Piano.channel)"));
    EXPECT_THAT(scene.synced(), IsEmpty());
    scene.context.bind(&scene.library);
    scene.library.throwAt("syncPartToMidiChannel");
    scene.host.devices.select(0);
    EXPECT_THAT(scene.observed(), ElementsAre("value(Piano.output)", "value(Piano.channel)"));
}
