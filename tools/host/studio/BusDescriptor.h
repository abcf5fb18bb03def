// BusDescriptor: one audio bus that a plug-in describes to play's host.
#pragma once

#include "editorlib/ReservedSlots.h"
#include "pluginterfaces/base/funknownimpl.h"

#include <array>

namespace Steinberg {
namespace Vst {
namespace play {

/** [host main thread] */
class BusDescriptor final : public U::Implements<U::Directly<ReservedSlots<IBusDescriptor>>> {
public:
    /** Borrowed from the port registry; null for a channel without a port. */
    const std::array<IHostPort*, 2>& channels() const { return ports; }
    int64 speakers() const { return arrangement; }

    void PLUGIN_API setArrangement(int64 wanted) override { arrangement = wanted; }
    void PLUGIN_API setChannelPort(int32 channel, IHostPort* port) override
    {
        if (channel == 0 || channel == 1)
            ports[static_cast<size_t>(channel)] = port;
    }

private:
    int64 arrangement = 0;
    std::array<IHostPort*, 2> ports{};
};

} // namespace play
} // namespace Vst
} // namespace Steinberg
