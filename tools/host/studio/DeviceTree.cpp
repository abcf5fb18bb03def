#include "tools/host/studio/DeviceTree.h"

#include <cstring>

namespace Steinberg {
namespace Vst {
namespace play {

namespace {

std::string deviceTypeOf(Project::TrackType type)
{
    switch (type) {
    case Project::TrackType::midi:
        return "MidiChannel";
    case Project::TrackType::instrument:
        return "Synth";
    case Project::TrackType::audio:
        return "AudioTrack";
    default:
        return "GroupTrack";
    }
}

} // namespace

DeviceTree::DeviceTree(const Project& project, bool isUnicode, IUpdateHandler& updateHandler)
: unicode(isUnicode)
, updates(updateHandler)
, mixer(makeDevice("Mixer"))
, rackMixer(makeDevice("VST Mixer"))
, selected(makeValue("", -1))
{
    mixer->add("selected", selected);
    for (const auto& track : project.tracks)
        addTrack(track);
    auto& folder = rackMixer->add(makeDevice("VST Project Instruments"));
    for (const auto& instrument : project.rack)
        addInstrument(instrument, folder);
}

IPtr<HostDevice> DeviceTree::makeDevice(const std::string& type) const
{
    return owned(new HostDevice(type, unicode));
}

IPtr<HostValue> DeviceTree::makeValue(const std::string& text, int32 number) const
{
    return owned(new HostValue(text, number, unicode, updates));
}

void DeviceTree::addTrack(const Project::Track& track)
{
    auto& device = mixer->add(makeDevice(deviceTypeOf(track.type)));
    device.add("output", makeValue(track.output, 0));
    device.add("channel", makeValue("", track.channel));
}

void DeviceTree::addInstrument(const Project::Instrument& instrument, HostDevice& folder)
{
    auto& device = folder.add(makeDevice("Instrument"));
    if (instrument.effectType)
        device.add("effectType", makeValue(*instrument.effectType, 0));
    const auto connector = owned(new Connector);
    for (const auto track : instrument.feeds)
        connector->feed(*mixer->getChild(static_cast<int32>(track)));
    device.add(makeDevice("Output")).offer(connector);
}

IDevice* PLUGIN_API DeviceTree::findDevice(const char* name, int32)
{
    if (!name)
        return nullptr;
    if (std::strcmp(name, "Mixer") == 0)
        return mixer;
    return std::strcmp(name, "VST Mixer") == 0 ? rackMixer.get() : nullptr;
}

} // namespace play
} // namespace Vst
} // namespace Steinberg
