// PortHandler: connects a plug-in to the ports of play's host.
#pragma once

#include "hostapi/IComponentPortHandler.h"
#include "tools/host/studio/BusDescriptor.h"
#include "tools/host/studio/PortRegistry.h"

#include <array>
#include <string>

namespace Steinberg {
namespace Vst {
namespace play {

/** Holds the connections that plug-ins asked for last. [host main thread] */
class PortHandler final : public U::Implements<U::Directly<IComponentPortHandler>> {
public:
    static constexpr size_t kBuses = 2;
    static constexpr size_t kChannels = 2 * kBuses;

    explicit PortHandler(const IPtr<PortRegistry>& portRegistry);

    /** IDs of the ports of bus 1 left, bus 1 right, bus 2 left and bus 2 right; empty for a channel
        without a port. */
    const std::array<std::string, kChannels>& audioInputs() const { return audio; }

    /** How often the audio inputs were set, whether or not ports were among them. */
    int64 connections() const { return timesSet; }

    /** The MIDI output port's ID; empty for none. */
    const std::string& midiOutput() const { return midi; }

    /** Takes over one reference of each descriptor, whatever it answers. */
    tresult PLUGIN_API setAudioInputBuses(int32 first, int32 second, IBusDescriptor** buses,
                                          int32 count) override;
    tresult PLUGIN_API setMidiOutputPorts(IHostPort** ports, int32 count, IHostPort** ports2,
                                          int32 count2) override;

private:
    std::string idOf(const IHostPort* port) const;

    IPtr<PortRegistry> registry;
    std::array<std::string, kChannels> audio;
    std::string midi;
    int64 timesSet = 0;
};

} // namespace play
} // namespace Vst
} // namespace Steinberg
