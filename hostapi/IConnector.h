// IConnector: the routing end of an instrument's output. Asked for by queryInterface on a device.
#pragma once

#include "hostapi/HostInterfaceIDs.h"

namespace Steinberg {

class IDevice;

/** Threads as at IDevice. */
class IConnector : public FUnknown {
public:
    virtual void PLUGIN_API reserved3() = 0;

    /** Whether the connector feeds this track, which is borrowed for the call. */
    virtual bool PLUGIN_API isConnectedTo(IDevice* device) = 0;
    static const FUID iid;
};

} // namespace Steinberg
