// editorPartSyncMidiCh in a newer host: each instrument of the rack is asked whether it feeds a
// track, and changes of the rack meanwhile are noticed.

#include "hostapi/IDevice.h"
#include "tests/unit/TrackScene.h"

using namespace Steinberg;
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

constexpr unsigned kChannel = 4;

/** Three tracks on the same channel, and a rack of three instruments that feed none of them. */
struct RackSearch : TrackScene {
    RackSearch()
    : TrackScene(newerHost())
    , tracks{&addTrack("T0"), &addTrack("T1"), &addTrack("T2")}
    , instruments{&addInstrument("A"), &addInstrument("B"), &addInstrument("C")}
    {
        start();
        context.onUpdate = nullptr;
    }

    doubles::HostDeviceDouble& addTrack(const std::string& name)
    {
        return host.devices.addInstrumentTrack(name, "", kChannel);
    }
    doubles::HostDeviceDouble& addInstrument(const std::string& name)
    {
        return host.devices.addInstrument(name, kPlugIn);
    }

    static void connect(doubles::HostDeviceDouble& instrument, doubles::HostDeviceDouble& track)
    {
        instrument.children.front()->connectTo(track);
    }

    /** Runs change when the search comes to that track. */
    void when(const std::string& track, std::function<void()> change)
    {
        host.onCall = [call = "device(" + track + ").getValue(output)",
                       change = std::move(change)](const std::string& text) {
            if (text == call)
                change();
        };
    }

    /** The index of the track that is selected, or -1. */
    int32 search()
    {
        auto& selected = host.devices.mixer().value("selected");
        selected.integer = -1;
        trace.clear();
        routing.editorPartSyncMidiCh(kChannel);
        return selected.integer;
    }

    std::vector<doubles::HostDeviceDouble*> tracks;
    std::vector<doubles::HostDeviceDouble*> instruments;
};

} // namespace

TEST(EditorPartSyncMidiChInANewerHost, AsksEachInstrumentForEachTrackInOrder)
{
    RackSearch scene;
    EXPECT_EQ(scene.search(), -1);
    std::vector<std::string> pairs;
    for (const char* track : {"T0", "T1", "T2"})
        for (const char* instrument : {"A", "B", "C"})
            pairs.push_back(std::string("connector(") + instrument + " out).isConnectedTo(device(" +
                            track + "))");
    EXPECT_EQ(scene.calls({"connector("}), pairs);
    // The connector is asked for once.
    EXPECT_THAT(scene.calls({"device(B)."}),
                ElementsAre("device(B).countChildren()", "device(B).getChild(0)"));
}

TEST(EditorPartSyncMidiChInANewerHost, WalksTheRackNoFurtherThanATrackNeedsAndGoesOnFromThere)
{
    RackSearch scene;
    scene.connect(*scene.instruments[1], *scene.tracks[0]);
    scene.tracks[0]->value("channel").integer = kChannel + 1;
    scene.connect(*scene.instruments[2], *scene.tracks[1]);
    EXPECT_EQ(scene.search(), 1);
    EXPECT_THAT(
        scene.calls(
            {"device(Rack).getChild", "connector(", "device(B).getValue", "device(C).getValue"}),
        ElementsAre("device(Rack).getChild(0)", "connector(A out).isConnectedTo(device(T0))",
                    "device(Rack).getChild(1)", "connector(B out).isConnectedTo(device(T0))",
                    "device(B).getValue(effectType)", "connector(A out).isConnectedTo(device(T1))",
                    "connector(B out).isConnectedTo(device(T1))", "device(Rack).getChild(2)",
                    "connector(C out).isConnectedTo(device(T1))",
                    "device(C).getValue(effectType)"));
}

TEST(EditorPartSyncMidiChInANewerHost, ReadsTheTypeOfTheConnectedInstrumentForEachTrackAgain)
{
    RackSearch scene;
    auto& instrument = *scene.instruments[1];
    for (auto* track : scene.tracks)
        scene.connect(instrument, *track);
    instrument.value("effectType").text = "Other VST";
    scene.when("T2", [&] { instrument.value("effectType").text = kPlugIn; });
    EXPECT_EQ(scene.search(), 2);
    EXPECT_THAT(scene.calls({"device(A).getValue", "device(B).getValue", "device(C).getValue"}),
                ElementsAre("device(B).getValue(effectType)", "device(B).getValue(effectType)",
                            "device(B).getValue(effectType)"));
}

TEST(EditorPartSyncMidiChInANewerHost, LeavesTheDecisionToTheNextInstrumentWhenOneHasNoType)
{
    RackSearch scene;
    for (auto* track : scene.tracks) {
        scene.connect(*scene.instruments[0], *track);
        scene.connect(*scene.instruments[2], *track);
    }
    scene.instruments[0]->dropValue("effectType");
    scene.instruments[2]->value("effectType").text = "Other VST";
    scene.when("T1", [&] { scene.instruments[2]->value("effectType").text = kPlugIn; });
    EXPECT_EQ(scene.search(), 1);
}

TEST(EditorPartSyncMidiChInANewerHost, FindsAConnectionThatIsMadeMeanwhile)
{
    RackSearch scene;
    scene.when("T1", [&] { scene.connect(*scene.instruments[1], *scene.tracks[1]); });
    EXPECT_EQ(scene.search(), 1);
}

TEST(EditorPartSyncMidiChInANewerHost, FindsAnInstrumentThatComesMeanwhileWhereverItStands)
{
    for (const bool atFront : {true, false}) {
        RackSearch scene;
        scene.when("T1", [&] {
            scene.connect(scene.addInstrument("New"), *scene.tracks[1]);
            auto& rack = scene.host.devices.rack().children;
            if (atFront)
                std::rotate(rack.begin(), rack.end() - 1, rack.end());
        });
        EXPECT_EQ(scene.search(), 1) << atFront;
    }
}

TEST(EditorPartSyncMidiChInANewerHost, StopsAskingAnInstrumentThatWentMeanwhile)
{
    RackSearch scene;
    auto& rack = scene.host.devices.rack().children;
    for (auto* track : {scene.tracks[1], scene.tracks[2]})
        scene.connect(*scene.instruments[0], *track);
    scene.when("T1", [&] { rack.erase(rack.begin()); });
    EXPECT_EQ(scene.search(), -1);
    EXPECT_THAT(scene.calls({"connector(A out)"}),
                ElementsAre("connector(A out).isConnectedTo(device(T0))"));
}

TEST(EditorPartSyncMidiChInANewerHost, WalksARackAgainThatChangedMeanwhile)
{
    RackSearch scene;
    auto& rack = scene.host.devices.rack().children;
    scene.connect(*scene.instruments[0], *scene.tracks[1]);
    scene.connect(scene.addInstrument("New"), *scene.tracks[2]);
    auto* added = rack.back();
    rack.pop_back();
    // While the first track is looked for, an instrument is inserted before all others.
    scene.host.onCall = [&](const std::string& text) {
        if (text == "connector(B out).isConnectedTo(device(T0))" && rack.front() != added)
            rack.insert(rack.begin(), added);
        if (text == "device(T1).getValue(output)")
            scene.tracks[1]->value("channel").integer = kChannel + 1;
    };
    EXPECT_EQ(scene.search(), 2);
}

TEST(EditorPartSyncMidiChInANewerHost, HoldsWhatItAskedUntilItEnds)
{
    RackSearch scene;
    std::vector<int> during;
    scene.when("T2", [&] {
        for (auto* instrument : scene.instruments)
            during.push_back(instrument->getReferences());
        // The host removes all of them; the search still has its references.
        scene.host.devices.rack().children.clear();
    });
    EXPECT_EQ(scene.search(), -1);
    EXPECT_THAT(during, Each(2)) << "a reference of the host's and one of the search's";
    EXPECT_EQ(during.size(), 3u);
    EXPECT_THAT(scene.calls({"connector(C out).isConnectedTo(device(T2))"}), IsEmpty());
}
