// update() with notices of the host: an observed object ends, tracks are removed, and notices of
// objects that the plug-in does not observe.
#include "tests/faults/Scenario.h"

namespace faults {
namespace {

using namespace Steinberg;
using doubles::HostFamily;
using testing::ElementsAre;

const std::string kSync = "library.syncPartToMidiChannel(3)";
/** When the host does not give the channel. */
const std::string kSyncWithoutChannel = "library.syncPartToMidiChannel(0)";
const std::vector<std::string> kOfMixer = {"device(Mixer)", "value(Mixer.selected)"};
const std::vector<std::string> kOfTrack = {"device(Mixer)", "value(Mixer.selected)",
                                           "value(Piano.output)", "value(Piano.channel)"};

class Notices : public Scenario {
public:
    explicit Notices(const HostFamily& family)
    : Scenario(family)
    {
        auto& devices = world.host.devices;
        devices.addMidiTrack("Piano", kRoutedHere, 3);
        last = &devices.addMidiTrack("Other", "elsewhere", 4);
    }

    void act() override
    {
        auto& devices = world.host.devices;
        auto& updates = world.host.updates;
        auto& track = *devices.mixer().children.front();
        FUnknownPtr<IDependent> dependent(world.controller);
        world.trace.clear();
        world.step("follow", [&] { devices.select(0); });
        world.step("of no matter", [&] {
            devices.tell(devices.mixer().value("selected"), IDependent::kDestroyed);
            devices.tell(devices.mixer(), IDependent::kDestroyed);
            devices.tell(track.value("channel"), IDependent::kDestroyed);
        });
        world.step("strangers", [&] {
            dependent->update(nullptr, IDependent::kChanged);
            dependent->update(&world.host.handler, IDependent::kChanged);
            dependent->update(world.component, IDependent::kChanged);
        });
        followed = updates.observed();
        world.step("output ends",
                   [&] { devices.tell(track.value("output"), IDependent::kDestroyed); });
        ended = updates.observed();
        world.step("follow again", [&] { devices.select(0); });
        world.step("as many tracks", [&] { devices.tellTracksChanged(); });
        devices.mixer().children.pop_back();
        world.step("fewer tracks", [&] { devices.tellTracksChanged(); });
        fewer = updates.observed();
        devices.mixer().children.push_back(last);
        dependent = nullptr;
    }

    void expectDone() override
    {
        if (isBroken)
            return;
        EXPECT_THAT(world.calls({"library."}), ElementsAre(kSync, kSync));
        EXPECT_EQ(followed, kOfTrack);
        EXPECT_EQ(ended, kOfMixer);
        EXPECT_EQ(fewer, kOfMixer);
    }

    /** The library is told of the selected track only. A fault does not change what came before. */
    void expectStated(const Fault& fault) override
    {
        const std::string other = fault.hit("getInteger") ? kSyncWithoutChannel : kSync;
        EXPECT_THAT(world.calls({"library."}), testing::Each(testing::AnyOf(kSync, other)));
        EXPECT_LE(world.calls({"library."}).size(), 2u);
        if (!fault.in("follow") && !fault.in("of no matter")) {
            EXPECT_EQ(followed, kOfTrack);
        }
        if (fault.in("strangers") || fault.in("of no matter") || fault.isLibraryFailure()) {
            EXPECT_EQ(world.calls({"library."}).size(), 2u);
            EXPECT_EQ(ended, kOfMixer);
            EXPECT_EQ(fewer, kOfMixer);
        }
        isBroken = fault.hit("addDependent") || fault.hit("removeDependent") ||
                   fault.hit("IUpdateHandler");
        if (isBroken)
            world.host.updates.forgetDependents();
    }

    void expectBelieved(const Fault& fault) override
    {
        EXPECT_LE(world.calls({"library."}).size(), 2u);
        if (!fault.in("follow") && !fault.in("of no matter")) {
            EXPECT_EQ(followed, kOfTrack);
        }
        isBroken = fault.hit("IUpdateHandler");
        if (isBroken)
            world.host.updates.forgetDependents();
    }

private:
    doubles::HostDeviceDouble* last = nullptr;
    std::vector<std::string> followed;
    std::vector<std::string> ended;
    std::vector<std::string> fewer;
    bool isBroken = false;
};

TEST(Faults, UpdateWithNoticesOfTheHost)
{
    injectFaults("notices", scenario<Notices>(HostFamily::cubase("7.4.0")));
    injectFaults("notices, host without Unicode",
                 scenario<Notices>(HostFamily::withoutUnicode("Cubase", "7.4.0")), hostKinds());
}

} // namespace
} // namespace faults
