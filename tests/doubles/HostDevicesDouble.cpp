#include "tests/doubles/HostDevicesDouble.h"

namespace doubles {

using namespace Steinberg;

class HostDevicesDouble::List final : public Counted<IDeviceList> {
public:
    List(HostBooks& host, HostDevicesDouble& owner)
    : Counted(host, "deviceList")
    , devices(owner)
    {
    }

    IDevice* PLUGIN_API findDevice(const char* name, int32 flags) override
    {
        if (!called("findDevice", name, flags) || !name)
            return nullptr;
        const auto entry = devices.found.find(name);
        return entry == devices.found.end() ? nullptr : entry->second;
    }

private:
    HostDevicesDouble& devices;
};

HostDevicesDouble::HostDevicesDouble(HostBooks& host, HostUpdatesDouble& notices)
: books(host)
, updates(notices)
, mixerDevice(&addDevice("Mixer"))
, vstMixerDevice(&addDevice("VST Mixer"))
, rackFolder(&vstMixerDevice->addChild("Rack", "VST Project Instruments"))
{
    mixerDevice->value("selected").integer = -1;
    auto& list = host.make<List>(*this);
    host.offer(IDeviceList::iid, [&list] { return newReference(&list); });
}

HostDeviceDouble& HostDevicesDouble::addDevice(const std::string& name)
{
    auto& device = books.make<HostDeviceDouble>(name, updates);
    device.type = name;
    found[name] = &device;
    return device;
}

HostDeviceDouble& HostDevicesDouble::addTrack(const std::string& name, const std::string& type,
                                              const HostText& output, int32 channel)
{
    auto& track = mixerDevice->addChild(name, type);
    track.value("output").text = output;
    track.value("channel").integer = channel;
    return track;
}

HostDeviceDouble& HostDevicesDouble::addMidiTrack(const std::string& name, const HostText& output,
                                                  int32 channel)
{
    return addTrack(name, "MidiChannel", output, channel);
}

HostDeviceDouble& HostDevicesDouble::addInstrumentTrack(const std::string& name,
                                                        const HostText& output, int32 channel)
{
    return addTrack(name, "Synth", output, channel);
}

HostDeviceDouble& HostDevicesDouble::addAudioTrack(const std::string& name)
{
    return addTrack(name, "AudioTrack", "Stereo Out", 0);
}

HostDeviceDouble& HostDevicesDouble::addGroupTrack(const std::string& name)
{
    return addTrack(name, "Group", "Stereo Out", 0);
}

HostDeviceDouble& HostDevicesDouble::addInstrument(const std::string& name,
                                                   const HostText& effectType,
                                                   HostDeviceDouble* feeds)
{
    auto& instrument = rackFolder->addChild(name, "Instrument");
    instrument.value("effectType").text = effectType;
    auto& output = instrument.addChild(name + " out", "Output");
    output.offerConnector();
    if (feeds)
        output.connectTo(*feeds);
    return instrument;
}

void HostDevicesDouble::select(int32 index)
{
    auto& selected = mixerDevice->value("selected");
    selected.integer = index;
    updates.tell(&selected, IDependent::kChanged);
}

void HostDevicesDouble::removeTrack(size_t index)
{
    mixerDevice->children.erase(mixerDevice->children.begin() + static_cast<std::ptrdiff_t>(index));
    tellTracksChanged();
}

void HostDevicesDouble::tell(HostObject& object, int32 message)
{
    updates.tell(object.unknown(), message);
}

} // namespace doubles
