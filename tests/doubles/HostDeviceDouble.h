// HostDeviceDouble: a node of the host's device tree. HostDevicesDouble builds the usual tree.
//
//   HostDeviceDouble& track = host.devices.addMidiTrack("Piano", "Synth 1 - RDL3/RDL5 VST", 3);
//   track.value("channel").integer = 4;      track.dropValue("output");     track.hasType = false;
//   output.connectTo(track);                 // gives this device an IConnector
//   trace: "device(Piano).getDeviceType()", "device(Mixer).getValue(selected)"
#pragma once

#include "hostapi/IConnector.h"
#include "hostapi/IDevice.h"
#include "tests/doubles/HostValueDouble.h"

#include <map>

namespace doubles {

class HostDeviceDouble final : public Counted<Steinberg::IDevice> {
public:
    HostDeviceDouble(HostBooks& host, const std::string& name, HostUpdatesDouble& notices);

    std::string type;
    bool hasType = true;                     ///< false: getDeviceType gives null
    std::vector<HostDeviceDouble*> children; ///< null for a null child

    HostDeviceDouble& addChild(const std::string& name, const std::string& type);

    /** The value with this name, made at first use. */
    HostValueDouble& value(const std::string& name);
    void dropValue(const std::string& name) { values.erase(name); }

    /** Offers IConnector, which says that this device feeds the track, too. */
    void connectTo(HostDeviceDouble& track);
    void offerConnector();

    const char* PLUGIN_API getDeviceType() override;
    Steinberg::IValue* PLUGIN_API getValue(const char* name) override;
    Steinberg::int32 PLUGIN_API countChildren() override;
    Steinberg::IDevice* PLUGIN_API getChild(Steinberg::int32 index) override;

protected:
    void* face(const Steinberg::TUID queried) override;

private:
    class Connector;

    HostUpdatesDouble& updates;
    const std::string label;
    std::map<std::string, HostValueDouble*> values;
    Connector* connector = nullptr;
    std::string toldType; ///< by the last getDeviceType; lives until the next
};

} // namespace doubles
