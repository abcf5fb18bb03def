// IExtensionVSTServiceGetter and the service behind it: the host extension's offer of an editor
// library that it keeps loaded itself.
#pragma once

#include "hostapi/HostInterfaceIDs.h"

namespace Steinberg {

/** A component of the host's IComponentFactory. [host main thread, during initialize] */
class IExtensionVSTServiceGetter : public FUnknown {
public:
    /** The service, an IExtensionVSTService, borrowed: the caller adds its own reference. May be
        null. */
    virtual FUnknown* PLUGIN_API getService() = 0;

    static const FUID iid;
};

/** The service object. It has no ID of its own: what getService returns is used as this
    directly. */
class IExtensionVSTService : public FUnknown {
public:
    /** Takes on a plug-in instance; calls its setPluginInfo before it returns kResultOk.
        @param plugin borrowed until unregisterPlugin
        [host main thread, during initialize] */
    virtual tresult PLUGIN_API registerPlugin(IExternalPlugin* plugin) = 0;
    /** Ends that; nothing of the service is used behind it. [host main thread, during terminate] */
    virtual tresult PLUGIN_API unregisterPlugin(IExternalPlugin* plugin) = 0;
};

} // namespace Steinberg
