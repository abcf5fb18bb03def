// PortRegistry: all ports of the machine, as play's host has them.
#pragma once

#include "hostapi/IPortRegistry.h"
#include "tools/host/studio/HostPort.h"

#include <set>
#include <vector>

namespace Steinberg {
namespace Vst {
namespace play {

/** [host main thread] */
class PortRegistry final : public U::Implements<U::Directly<IPortRegistry>> {
public:
    PortRegistry(const std::vector<PortDescription>& descriptions, bool isUnicode);

    const std::vector<IPtr<HostPort>>& ports() const { return list; }

    /** Whether a track that listens to all MIDI inputs hears the port. */
    bool isInAllMidiInputs(const HostPort& port) const;

    int32 PLUGIN_API getPortCount() override { return static_cast<int32>(list.size()); }
    IHostPort* PLUGIN_API getPortByIndex(int32 index) override;
    IHostPort* PLUGIN_API findPortById(const char* id) override;
    int32 PLUGIN_API removeFromAllMidiInputs(IHostPort* port) override;

private:
    std::vector<IPtr<HostPort>> list;
    std::set<const IHostPort*> removed; ///< from all MIDI inputs
};

/** The ports of a machine with one instrument attached, a microphone, a keyboard, ports that its
    user hid and ports of software. */
std::vector<PortDescription> usualPorts();

} // namespace play
} // namespace Vst
} // namespace Steinberg
