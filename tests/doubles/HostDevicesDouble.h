// HostDevicesDouble: the host's device list, with "Mixer" (the tracks) and "VST Mixer" (with the
// folder "VST Project Instruments", the rack). Both are there from the start, without tracks.
//
//   auto& piano = host.devices.addMidiTrack("Piano", "Synth 1 - RDL3/RDL5 VST", 3);
//   auto& lead = host.devices.addInstrumentTrack("Lead", "Synth 2", 4);
//   host.devices.addInstrument("Synth 2", "RDL3/RDL5 VST", &lead);
//   host.devices.select(0);            // the user's click; tells the dependents
//   trace: "deviceList.findDevice(Mixer, 0)"
#pragma once

#include "hostapi/IDeviceList.h"
#include "tests/doubles/HostDeviceDouble.h"

namespace doubles {

class HostDevicesDouble {
public:
    HostDevicesDouble(HostBooks& host, HostUpdatesDouble& notices);

    HostDeviceDouble& mixer() const { return *mixerDevice; }
    HostDeviceDouble& vstMixer() const { return *vstMixerDevice; }
    HostDeviceDouble& rack() const { return *rackFolder; }

    /** Tracks have the values "output" and "channel"; the types are the host's names for them. */
    HostDeviceDouble& addMidiTrack(const std::string& name, const HostText& output,
                                   Steinberg::int32 channel);
    HostDeviceDouble& addInstrumentTrack(const std::string& name, const HostText& output,
                                         Steinberg::int32 channel);
    HostDeviceDouble& addAudioTrack(const std::string& name);
    HostDeviceDouble& addGroupTrack(const std::string& name);

    /** An instrument of the rack with one output, which feeds the track, if any. */
    HostDeviceDouble& addInstrument(const std::string& name, const HostText& effectType,
                                    HostDeviceDouble* feeds = nullptr);

    /** What a user does: select a track (-1 for none), delete one. Dependents are told. */
    void select(Steinberg::int32 index);
    void removeTrack(size_t index);
    void tellTracksChanged() { updates.tell(mixerDevice, Steinberg::IDependent::kChanged); }

    /** Tells the dependents kDestroyed and the like; nothing else changes. */
    void tell(HostObject& object, Steinberg::int32 message);

    /** findDevice does not find it any more. The object stays. */
    void removeDevice(const std::string& name) { found.erase(name); }

private:
    class List;

    HostDeviceDouble& addDevice(const std::string& name);
    HostDeviceDouble& addTrack(const std::string& name, const std::string& type,
                               const HostText& output, Steinberg::int32 channel);

    HostBooks& books;
    HostUpdatesDouble& updates;
    std::map<std::string, HostDeviceDouble*> found;
    HostDeviceDouble* mixerDevice;
    HostDeviceDouble* vstMixerDevice;
    HostDeviceDouble* rackFolder;
};

} // namespace doubles
