// IComponentFactory: makes host-side components by an attribute of theirs.
// Obtained from IHostClasses::getHostInterface.
#pragma once

#include "hostapi/HostInterfaceIDs.h"

namespace Steinberg {

/** [host main thread, during initialize] */
class IComponentFactory : public FUnknown {
public:
    /** Makes the component whose attribute key has the value.
        @param key, value zero-terminated 8-bit texts
        @return a new reference, or null; it ends with destroyComponent, not with release */
    virtual FUnknown* PLUGIN_API createComponent(const char* key, const char* value) = 0;

    /** Takes back a component of createComponent together with the reference that it handed out. */
    virtual void PLUGIN_API destroyComponent(FUnknown* component) = 0;
    static const FUID iid;
};

} // namespace Steinberg
