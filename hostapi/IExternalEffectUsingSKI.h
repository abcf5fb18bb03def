// IExternalEffectUsingSKI: what a host of the Cubase family asks of a plug-in that uses its
// extension objects. The controller implements it; a host that finds it offers those objects.
#pragma once

#include "hostapi/HostInterfaceIDs.h"

namespace Steinberg {
namespace Vst {

/** Obtained from the controller by queryInterface, as a new reference. Neither operation throws. */
class IExternalEffectUsingSKI : public FUnknown {
public:
    /** The host's ports can be connected from now on. Always 0; before initialize and after
        terminate nothing else happens. [host main thread] */
    virtual int32 PLUGIN_API hostReadyForSetPortConnections() = 0;

    /** The linear gain with which the host is to mix the returned audio. Always 0. [any thread, any
        time] */
    virtual tresult PLUGIN_API getReturnGain(float& gain) = 0;
    static const FUID iid;
};

} // namespace Vst
} // namespace Steinberg
