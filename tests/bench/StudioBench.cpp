// The host's tracks and ports.
#include "support/Utf.h"
#include "tests/bench/Instance.h"
#include "tests/bench/LeanStudio.h"
#include "tests/bench/Lines.h"
#include "tests/bench/Table.h"

#include "pluginterfaces/base/iupdatehandler.h"

namespace bench {

namespace {

using namespace Steinberg;
using namespace Steinberg::Vst;

/** As many works as make up this many tracks or ports, so that the small ones can be timed. */
constexpr int kTogether = 10'000;

/** The calls that a host cannot be spared when it says its outputs in text. */
void searchBare(IDevice& mixer, IValue& selected)
{
    char16 text[256];
    int32 last = 0;
    for (int32 index = 0; index < mixer.countChildren(); ++index) {
        IDevice* track = mixer.getChild(index);
        keep(track->getDeviceType());
        IValue* output = track->getValue("output");
        int32 size = 256;
        output->getString(text, &size);
        keep(text);
        output->release();
        last = index;
    }
    IValue* channel = mixer.getChild(last)->getValue("channel");
    keep(channel->getInteger());
    channel->release();
    selected.setInteger(last, true);
}

void searchTracks(benchmark::State& state, int count)
{
    LeanLibrary library;
    LeanHost host(library, true);
    LeanMixer mixer(static_cast<size_t>(count));
    LeanDevices devices;
    devices.mixer = &mixer;
    host.add(IDeviceList::iid, &devices);
    Instance instance(host);
    VstIControllerInterface* controller = &instance.controller();
    IDevice* device = unknown<IDevice>(&mixer);
    IValue* selected = unknown<IValue>(&mixer.selected);
    const int searches = kTogether / count;
    controller->editorPartSyncMidiCh(LeanMixer::kChannel);
    if (mixer.selected.integer != count - 1)
        return fail(state, "the search did not find the last track");
    compare(state, kTogether, {[&] {
                for (int search = 0; search < searches; ++search)
                    controller->editorPartSyncMidiCh(LeanMixer::kChannel);
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
    LeanHost host(library, true);
    LeanPorts ports(static_cast<size_t>(count));
    host.add(IPortRegistry::iid, &ports);
    Instance instance(host);
    VstIControllerInterface* controller = &instance.controller();
    IPortRegistry* registry = unknown<IPortRegistry>(&ports);
    const int listings = kTogether / count;
    if (controller->getAudioPortList()->size() != ports.ports.size())
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
        addLine({"search in " + std::to_string(count) + " tracks, each", "the host's calls",
                 Unit::seconds, 1.1},
                [count](benchmark::State& state) { searchTracks(state, count); });
    for (const int count : {100, 1'000, 10'000})
        addLine({"list of " + std::to_string(count) + " ports, each",
                 "the host's calls, conversions", Unit::seconds, 0},
                [count](benchmark::State& state) { listPorts(state, count); });
}

} // namespace bench
