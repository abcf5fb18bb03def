// IExtensionVSTServiceGetter and IExtensionVSTService: by them a host extension offers an editor
// library that it has loaded itself.
#pragma once

#include "hostapi/HostInterfaceIDs.h"

namespace Steinberg {

/** A component of the host's IComponentFactory. [host main thread, during initialize] */
class IExtensionVSTServiceGetter : public FUnknown {
public:
    /** The service, an IExtensionVSTService; borrowed, may be null. */
    virtual FUnknown* PLUGIN_API getService() = 0;

    static const FUID iid;
};

/** The service. It has no interface ID: what getService returns is cast to it. */
class IExtensionVSTService : public FUnknown {
public:
    /** Registers a plug-in instance; calls its setPluginInfo before it returns kResultOk.
        @param plugin borrowed until unregisterPlugin [host main thread, during initialize] */
    virtual tresult PLUGIN_API registerPlugin(IExternalPlugin* plugin) = 0;
    /** Unregisters the instance, which uses nothing of the service afterwards. [host main thread,
        during terminate] */
    virtual tresult PLUGIN_API unregisterPlugin(IExternalPlugin* plugin) = 0;
};

} // namespace Steinberg
