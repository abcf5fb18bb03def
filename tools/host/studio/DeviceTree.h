// DeviceTree: a project as the devices that play's host shows plug-ins.
#pragma once

#include "editorlib/ReservedSlots.h"
#include "tools/host/studio/HostDevice.h"
#include "tools/host/studio/Project.h"

namespace Steinberg {
namespace Vst {
namespace play {

/** The root: "Mixer" with the project's tracks, in order, and its value "selected", and
    "VST Mixer" with the instrument rack. [host main thread] */
class DeviceTree final : public U::Implements<U::Directly<ReservedSlots<IDeviceList>>> {
public:
    /** No track is selected at first.
        @param updateHandler told of changes; borrowed, outlives this object */
    DeviceTree(const Project& project, bool isUnicode, IUpdateHandler& updateHandler);

    /** What the host's user does.
        @param track index from 0, or -1 for none */
    void select(int32 track) { selected->setInteger(track, true); }

    int32 selectedTrack() const { return selected->getInteger(); }
    /** Selections so far, the user's and those that plug-ins asked for. */
    int64 selections() const { return selected->timesSet(); }

    IDevice* PLUGIN_API findDevice(const char* name, int32 flags) override;

private:
    IPtr<HostDevice> makeDevice(const std::string& type) const;
    IPtr<HostValue> makeValue(const std::string& text, int32 number) const;
    void addTrack(const Project::Track& track);
    void addInstrument(const Project::Instrument& instrument, HostDevice& folder);

    bool unicode;
    IUpdateHandler& updates;
    IPtr<HostDevice> mixer;
    IPtr<HostDevice> rackMixer;
    IPtr<HostValue> selected;
};

} // namespace play
} // namespace Vst
} // namespace Steinberg
