// The host's tracks and ports.
#include "basics/Utf.h"
#include "tests/bench/BigStudio.h"
#include "tests/bench/LinkedInstance.h"
#include "tests/bench/Table.h"

#include <cstring>

namespace bench {

namespace {

using namespace Steinberg;
using namespace Steinberg::Vst;

/** Tracks or ports that are gone through in one timing: shorter lists several times. */
constexpr int kTogether = 10'000;

constexpr int32 kUnits = 256; ///< of an output's text

/** As UTF-8, without memory from the heap. Surrogates, which no output here has, are left out. */
void writeUtf8(const char16* text, char* out)
{
    for (; *text; ++text) {
        const unsigned unit = *text;
        if (unit < 0x80) {
            *out++ = static_cast<char>(unit);
            continue;
        }
        if (unit < 0x800) {
            *out++ = static_cast<char>(0xC0 | unit >> 6);
        } else {
            *out++ = static_cast<char>(0xE0 | unit >> 12);
            *out++ = static_cast<char>(0x80 | (unit >> 6 & 0x3F));
        }
        *out++ = static_cast<char>(0x80 | (unit & 0x3F));
    }
    *out = 0;
}

/** Whether a track's output, which a host without an instrument rack says in text, is this
    plug-in. */
bool isHere(IValue& output)
{
    char16 text[kUnits + 1] = {}; // the host need not end its text
    int32 size = kUnits;
    output.getString(text, &size);
    char narrow[3 * kUnits + 1];
    writeUtf8(text, narrow);
    return std::strstr(narrow, " - RDL3/RDL5 VST") != nullptr;
}

int32 channelOf(IDevice& track)
{
    const IPtr<IValue> channel = owned(track.getValue("channel"));
    return channel->getInteger();
}

/** The host's calls, and the search in the texts that it gives. */
void searchBare(IDevice& mixer, IValue& selected)
{
    for (int32 index = 0; index < mixer.countChildren(); ++index) {
        IDevice* track = mixer.getChild(index);
        if (std::strcmp(track->getDeviceType(), "MidiChannel") != 0)
            continue;
        const IPtr<IValue> output = owned(track->getValue("output"));
        if (isHere(*output) && channelOf(*track) == kOurChannel)
            return selected.setInteger(index, true);
    }
}

void searchTracks(benchmark::State& state, int count)
{
    LeanLibrary library;
    BenchHost host(library, true);
    const Tracks tracks(static_cast<size_t>(count));
    host.add(IDeviceList::iid, tracks.tree);
    LinkedInstance instance(host);
    VstIControllerInterface* controller = &instance.controller();
    IDevice* device = unknown<IDevice>(tracks.tree->findDevice("Mixer", 0));
    const IPtr<IValue> value = owned(device->getValue("selected"));
    IValue* selected = unknown<IValue>(value);
    const int searches = kTogether / count;
    for (const bool ours : {true, false}) {
        tracks.tree->select(-1);
        if (ours)
            controller->editorPartSyncMidiCh(kOurChannel);
        else
            searchBare(*device, *selected);
        if (tracks.tree->selectedTrack() != count - 1)
            return fail(state, "the search did not find the last track");
    }
    compare(state, kTogether, {[&] {
                for (int search = 0; search < searches; ++search)
                    controller->editorPartSyncMidiCh(kOurChannel);
            }},
            {[&] {
                for (int search = 0; search < searches; ++search)
                    searchBare(*device, *selected);
            }});
}

using PortInfo = VSTiAudioPort::AudioPortInfo;

void listBare(IPortRegistry& registry, std::vector<PortInfo>& list)
{
    list.clear();
    for (int32 index = 0; index < registry.getPortCount(); ++index) {
        IHostPort* port = registry.getPortByIndex(index);
        if (!port->isPortType("audio") || !port->isInputPort())
            continue;
        PortInfo info;
        info.portName = utf16ToUtf8(port->getDisplayName());
        StringObject id;
        port->getPortId(id);
        info.portId = utf16ToUtf8(id.text16());
        if (port->isDisplayed())
            list.push_back(std::move(info));
    }
}

void listPorts(benchmark::State& state, int count)
{
    LeanLibrary library;
    BenchHost host(library, true);
    const auto ports = audioInputs(count);
    host.add(IPortRegistry::iid, ports);
    LinkedInstance instance(host);
    VstIControllerInterface* controller = &instance.controller();
    IPortRegistry* registry = unknown<IPortRegistry>(ports);
    const int listings = kTogether / count;
    if (controller->getAudioPortList()->size() != ports->ports().size())
        return fail(state, "not every port was listed");
    std::vector<PortInfo> list;
    compare(state, kTogether, {[&] {
                for (int listing = 0; listing < listings; ++listing)
                    controller->getAudioPortList();
            }},
            {[&] {
                for (int listing = 0; listing < listings; ++listing)
                    listBare(*registry, list);
            }});
}

} // namespace

void addStudioLines()
{
    for (const int count : {100, 1'000, 10'000})
        addLine({"search in " + std::to_string(count) + " tracks, each",
                 "the host's calls, text search", Unit::seconds, 1.3},
                [count](benchmark::State& state) { searchTracks(state, count); });
    for (const int count : {100, 1'000, 10'000})
        addLine({"list of " + std::to_string(count) + " ports, each",
                 "the host's calls, conversions", Unit::seconds, 0},
                [count](benchmark::State& state) { listPorts(state, count); });
}

} // namespace bench
