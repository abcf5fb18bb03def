// How many calls a project of 2,000 tracks and 200 instruments costs.

#include "controller/PortManager.h"
#include "hostapi/IDevice.h"
#include "tests/unit/TrackScene.h"

using namespace Steinberg;
using testing::Pair;
using testing::UnorderedElementsAre;

namespace {

constexpr int kTracks = 2000;
constexpr int kInstruments = 200;
constexpr int kFollowed = 500; ///< every fourth track, and so the last
constexpr int kLast = kTracks - 1;

/** The call without arguments, with the object's kind in place of its name. Mixers and rack keep
    their names. */
std::string kindOf(const std::string& text)
{
    const auto open = text.find('(');
    const auto operation = text.substr(text.find('.', text.rfind(").")) + 1);
    const auto plain = operation.substr(0, operation.find('('));
    if (text.find(").") == std::string::npos)
        return text.substr(0, text.find('(')); // an object without a name of its own
    const auto name = text.substr(open + 1, text.rfind(").") - open - 1);
    const bool known =
        name == "Mixer" || name == "VST Mixer" || name == "Rack" || name == "Mixer.selected";
    const auto value = name.find('.');
    const auto suffix = value == std::string::npos ? "" : name.substr(value);
    return (known ? name : text.substr(0, open) + suffix) + "." + plain;
}

/** Only the last track plays the plug-in: its output's text says so in an older host, the last
    instrument in a newer one. Calls are counted by kind and not recorded. */
struct LargeProject {
    explicit LargeProject(const doubles::HostFamily& family)
    : host(trace, family)
    , library(trace)
    , context(host, &library)
    , routing(context, context.dependent)
    {
        auto& devices = host.devices;
        for (int i = 0; i < kTracks; ++i) {
            const auto name = "T" + std::to_string(i);
            if (i % 4 == 3)
                devices.addMidiTrack(name, i == kLast ? kRoutedHere : kRoutedElsewhere, 5);
            else
                devices.addAudioTrack(name);
        }
        for (int i = 0; i < kInstruments; ++i)
            devices.addInstrument("I" + std::to_string(i), "RDL3/RDL5 VST",
                                  i == kInstruments - 1 ? devices.mixer().children.back()
                                                        : nullptr);
        routing.readHostVersion();
        routing.startObserving();
        host.onCall = [this](const std::string& text) {
            ++calls[kindOf(text)];
            trace.clear();
        };
    }
    LargeProject(const LargeProject&) = delete;
    LargeProject& operator=(const LargeProject&) = delete;
    ~LargeProject()
    {
        host.onCall = nullptr;
        routing.stopObserving(&host.updates);
        context.release();
        EXPECT_THAT(host.ledger(), testing::IsEmpty());
    }

    /** The host's user selects the last track. */
    void selectLast()
    {
        auto& selected = host.devices.mixer().value("selected");
        selected.integer = kLast;
        routing.update(selected.unknown(), IDependent::kChanged);
    }

    doubles::Trace trace;
    doubles::ScriptedHost host;
    doubles::ScriptedLibrary library;
    doubles::HostAndLibraryDouble context;
    Vst::TrackRouting routing;
    std::map<std::string, int> calls;
};

const auto kCharacterSet = Pair("hostApplicationW.getCharacterSet", 1);
constexpr auto kQuery = "query";              ///< each queryInterface of any object
constexpr auto kNotice = "controller.update"; ///< that the selection changed

} // namespace

TEST(LargeProject, EditorPartSyncMidiChReadsOneTextOfEachTrackInAnOlderHost)
{
    LargeProject project(olderHost());
    project.routing.editorPartSyncMidiCh(5);
    EXPECT_THAT(project.calls,
                UnorderedElementsAre(
                    kCharacterSet, Pair(kQuery, 1), Pair("Mixer.countChildren", 1 + kTracks),
                    Pair("Mixer.getChild", kTracks), Pair("device.getDeviceType", kTracks),
                    Pair("device.getValue", kFollowed + 1), // the outputs, and one channel
                    Pair("value.output.getString", kFollowed), Pair("value.channel.getInteger", 1),
                    Pair("Mixer.selected.setInteger", 1), Pair(kNotice, 1)));
}

TEST(LargeProject, EditorPartSyncMidiChLooksTheRackUpOnceInANewerHost)
{
    LargeProject project(newerHost());
    project.routing.editorPartSyncMidiCh(5);
    EXPECT_THAT(
        project.calls,
        UnorderedElementsAre(
            kCharacterSet, Pair("Mixer.countChildren", 1 + kTracks),
            Pair("Mixer.getChild", kTracks), Pair("device.getDeviceType", kTracks),
            // The outputs of the followed tracks, one channel, one instrument's type.
            Pair("device.getValue", kFollowed + 2),
            // The rack is looked up once.
            Pair("hostClasses.getHostInterface", 1), Pair("deviceList.findDevice", 1),
            Pair("VST Mixer.countChildren", 1), Pair("VST Mixer.getChild", 1),
            Pair("Rack.getDeviceType", 1),
            // For the first followed track before each instrument and at the end. For each further
            // one before the first instrument, and at the end unless the track is found.
            Pair("Rack.countChildren", kInstruments + 1 + 2 * (kFollowed - 1) - 1),
            Pair("Rack.getChild", kInstruments), Pair("device.countChildren", kInstruments),
            Pair("device.getChild", kInstruments), Pair(kQuery, 2 + kInstruments),
            Pair("connector.isConnectedTo", kFollowed * kInstruments),
            Pair("value.effectType.getString", 1), Pair("value.channel.getInteger", 1),
            Pair("Mixer.selected.setInteger", 1), Pair(kNotice, 1)));
}

TEST(LargeProject, UpdateOfTheSelectionCostsTheSameHoweverManyTracksThereAre)
{
    LargeProject project(olderHost());
    project.selectLast();
    EXPECT_THAT(project.calls,
                UnorderedElementsAre(
                    kCharacterSet,
                    Pair(kQuery, 4), // a value, a device, the host's classes and application
                    Pair("Mixer.selected.getInteger", 3), Pair("Mixer.getChild", 3),
                    Pair("device.getDeviceType", 2), Pair("device.getValue", 2),
                    Pair("hostClasses.getHostInterface", 2), Pair("updateHandler.addDependent", 2),
                    Pair("value.output.getString", 1), Pair("value.channel.getInteger", 1)));
}

TEST(LargeProject, UpdateOfTheSelectionWalksTheRackOnceInANewerHost)
{
    LargeProject project(newerHost());
    project.selectLast();
    EXPECT_THAT(
        project.calls,
        UnorderedElementsAre(
            kCharacterSet, Pair(kQuery, 5 + kInstruments), Pair("Mixer.selected.getInteger", 3),
            Pair("Mixer.getChild", 3), Pair("device.getDeviceType", 2), Pair("device.getValue", 3),
            Pair("hostClasses.getHostInterface", 3), Pair("updateHandler.addDependent", 2),
            Pair("deviceList.findDevice", 1), Pair("VST Mixer.countChildren", 1),
            Pair("VST Mixer.getChild", 1), Pair("Rack.getDeviceType", 1),
            Pair("Rack.countChildren", kInstruments), Pair("Rack.getChild", kInstruments),
            Pair("device.countChildren", kInstruments), Pair("device.getChild", kInstruments),
            Pair("connector.isConnectedTo", kInstruments), Pair("value.effectType.getString", 1),
            Pair("value.channel.getInteger", 1)));
}

TEST(LargeProject, PortOperationsAskForTheCharacterSetOnce)
{
    doubles::Trace trace;
    doubles::ScriptedHost host(trace, newerHost());
    doubles::ScriptedLibrary library(trace);
    doubles::HostAndLibraryDouble context(host, &library);
    Vst::PortManager ports(context);
    for (int i = 0; i < 500; ++i) {
        host.ports.audioInput("A" + std::to_string(i), "Line");
        host.ports.midiOutput("M" + std::to_string(i), "Tavrin RDL3/RDL5 Port4");
    }
    library.firstStartState = 1;
    const char* ids[] = {"A0", "A100", "A200", "none"};
    const std::vector<std::function<void()>> operations = {
        [&] { EXPECT_EQ(ports.getAudioPortList()->size(), 500u); },
        [&] { EXPECT_EQ(ports.getMidiOutPortList()->size(), 500u); },
        [&] { ports.setAudioPortList(ids); },
        [&] { ports.setMidiOutPort("M499"); },
        [&] { ports.allMidiInputRemove("Port4"); },
        [&] { ports.firstStartAudioportDisplayCompulsorily(); },
    };
    for (const auto& operation : operations) {
        trace.clear();
        operation();
        EXPECT_EQ(trace.count("hostApplicationW.getCharacterSet()"), 1u);
        EXPECT_EQ(trace.count("hostClasses.getHostInterface(IPortRegistry)"), 1u);
    }
}
