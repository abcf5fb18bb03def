// IConnector: tells which tracks an instrument's output is connected to. queryInterface gives it on
// the device of that output.
#pragma once

#include "hostapi/HostInterfaceIDs.h"

namespace Steinberg {

/** Threads as at IDevice. */
class IConnector : public FUnknown {
public:
    virtual void PLUGIN_API reserved3() = 0;

    /** Whether the connector leads to this track, which is borrowed for the call. */
    virtual bool PLUGIN_API isConnectedTo(IDevice* device) = 0;
    static const FUID iid;
};

} // namespace Steinberg
