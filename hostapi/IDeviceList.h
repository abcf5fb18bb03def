// IDeviceList: the root of the host's device tree. Obtained from IHostClasses::getHostInterface.
#pragma once

#include "hostapi/HostInterfaceIDs.h"

namespace Steinberg {

/** Threads as at IDevice. */
class IDeviceList : public FUnknown {
public:
    virtual void PLUGIN_API reserved3() = 0;
    virtual void PLUGIN_API reserved4() = 0;
    virtual void PLUGIN_API reserved5() = 0;

    /** Finds a device by name.
        @param name zero-terminated 8-bit text: "Mixer" or "VST Mixer"
        @param flags always 0
        @return the device, borrowed, or null */
    virtual IDevice* PLUGIN_API findDevice(const char* name, int32 flags) = 0;
    static const FUID iid;
};

} // namespace Steinberg
