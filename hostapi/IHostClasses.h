// IHostClasses: gives the host's extension objects. queryInterface gives it on the host context; a
// host without extensions does not have it.
#pragma once

#include "hostapi/HostInterfaceIDs.h"

namespace Steinberg {

class IHostClasses : public FUnknown {
public:
    /** Hands out one of the host's objects by its interface ID.
        @param iid an ID of HostInterfaceIDs.h, or the SDK's IUpdateHandler
        @param[out] obj a new reference, which the caller releases; not changed on failure
        @return kResultOk when obj was set
        The host has one object of each interface, unless the interface says that each call makes a
        new one. [host main thread, the thread of the update handler's notice,
        or the library's thread in a port or routing operation; from initialize to terminate] */
    virtual tresult PLUGIN_API getHostInterface(const TUID iid, void** obj) = 0;
    static const FUID iid;
};

} // namespace Steinberg
