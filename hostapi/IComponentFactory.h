// IComponentFactory: makes the host's components, which are chosen by one of their attributes.
// Obtained from IHostClasses::getHostInterface.
#pragma once

#include "hostapi/HostInterfaceIDs.h"

namespace Steinberg {

/** [host main thread, during initialize] */
class IComponentFactory : public FUnknown {
public:
    /** Makes the component that has this value of the attribute key.
        @param key, value zero-terminated 8-bit texts
        @return a new reference, or null. Give it back with destroyComponent, not with release */
    virtual FUnknown* PLUGIN_API createComponent(const char* key, const char* value) = 0;

    /** Takes back a component, and with it the reference that createComponent returned. */
    virtual void PLUGIN_API destroyComponent(FUnknown* component) = 0;
    static const FUID iid;
};

} // namespace Steinberg
