// Selected tracks and channel changes reach the library's parts, in newer and older hosts.
#include "editorlib/VstIControllerInterface.h"
#include "tests/faults/Scenario.h"

namespace faults {
namespace {

using doubles::HostDevicesDouble;
using doubles::HostFamily;
using testing::ElementsAre;

/** Tracks 0 and 1 play the plug-in on channels 3 and 4. Track 2 plays another plug-in. */
class Routing : public Scenario {
public:
    Routing(const HostFamily& family, void (*addTracks)(HostDevicesDouble&))
    : Scenario(family)
    {
        addTracks(world.host.devices);
    }

    void act() override
    {
        auto& devices = world.host.devices;
        world.trace.clear();
        devices.mixer().children[0]->value("channel").integer = 3;
        world.step("select another", [&] { devices.select(2); });
        world.step("select", [&] { devices.select(0); });
        auto& channel = devices.mixer().children[0]->value("channel");
        channel.integer = 5;
        world.step("channel", [&] { devices.tell(channel, Steinberg::IDependent::kChanged); });
        auto& output = devices.mixer().children[0]->value("output");
        world.step("output", [&] { devices.tell(output, Steinberg::IDependent::kChanged); });
        world.step("tracks", [&] { devices.tellTracksChanged(); });
        world.step("editorPartSyncMidiCh",
                   [&] { world.library.controller->editorPartSyncMidiCh(4); });
        selected = devices.mixer().value("selected").integer;
    }

    void expectDone() override
    {
        if (isBroken)
            return;
        EXPECT_THAT(world.calls({"library."}), ElementsAre("library.syncPartToMidiChannel(3)",
                                                           "library.syncPartToMidiChannel(5)",
                                                           "library.syncPartToMidiChannel(5)",
                                                           "library.syncPartToMidiChannel(4)"));
        EXPECT_EQ(selected, 1);
    }

    void expectStated(const Fault& fault) override
    {
        const auto told = world.calls({"library."});
        for (const auto& text : told)
            EXPECT_THAT(text, testing::HasSubstr("library.syncPartToMidiChannel("));
        expectToldBefore(fault, told);
        if (fault.isLibraryFailure()) { // does not affect host or later notices
            EXPECT_EQ(told.size(), 4u);
            EXPECT_EQ(selected, 1);
        }
        // When the host failed to add or remove a dependent, its later notices differ.
        isBroken = fault.hit("addDependent") || fault.hit("removeDependent") ||
                   fault.hit("IUpdateHandler");
        if (isBroken)
            world.host.updates.forgetDependents();
    }

    void expectBelieved(const Fault& fault) override
    {
        expectToldBefore(fault, world.calls({"library."}));
        isBroken = fault.hit("IUpdateHandler");
        if (isBroken)
            world.host.updates.forgetDependents();
    }

private:
    /** What came before the fault is as without it. */
    static void expectToldBefore(const Fault& fault, const std::vector<std::string>& told)
    {
        size_t count = 0;
        if (fault.in("channel"))
            count = 1;
        else if (fault.in("output"))
            count = 2;
        else if (fault.in("tracks") || fault.in("editorPartSyncMidiCh"))
            count = 3;
        ASSERT_GE(told.size(), count);
        const char* const expected[] = {"library.syncPartToMidiChannel(3)",
                                        "library.syncPartToMidiChannel(5)",
                                        "library.syncPartToMidiChannel(5)"};
        for (size_t index = 0; index < count; ++index)
            EXPECT_EQ(told[index], expected[index]);
    }

    int selected = -1;
    bool isBroken = false;
};

/** A newer host connects its MIDI and instrument tracks to the instruments that they play. */
void addRack(HostDevicesDouble& devices)
{
    auto& first = devices.addMidiTrack("Piano", "elsewhere", 3);
    auto& second = devices.addInstrumentTrack("Lead", "elsewhere", 4);
    devices.addMidiTrack("Other", kRoutedHere, 4);
    devices.addInstrument("Synth 2", "Other VST");
    auto& instrument = devices.addInstrument("Synth 1", "RDL3/RDL5 VST", &first);
    instrument.children[0]->connectTo(second);
}

/** An older host gives only the names of the tracks' outputs. */
void addOutputNames(HostDevicesDouble& devices)
{
    devices.addMidiTrack("Piano", kRoutedHere, 3);
    devices.addMidiTrack("Lead", kRoutedHere, 4);
    devices.addMidiTrack("Other", "Synth 2 - Other VST", 4);
}

TEST(Faults, TrackRoutingInOtherHosts)
{
    // Such a host has other interface IDs, 8-bit texts and no version.
    injectFaults("track routing, host without Unicode",
                 scenario<Routing>(HostFamily::withoutUnicode("Cubase", "7.5.1"), &addOutputNames),
                 hostKinds());
    // Another product, which is a newer host from version 6.5 on.
    injectFaults("track routing, other product",
                 scenario<Routing>(HostFamily::nuendo("6.5.0"), &addRack),
                 {Kind::kHostAnswers, Kind::kHostThrows});
}

TEST(Faults, TrackRoutingInANewerHost)
{
    injectFaults("track routing, newer host",
                 scenario<Routing>(HostFamily::cubase("7.5.1"), &addRack));
}

TEST(Faults, TrackRoutingInAnOlderHost)
{
    injectFaults("track routing, older host",
                 scenario<Routing>(HostFamily::cubase("7.4.0"), &addOutputNames));
}

} // namespace
} // namespace faults
