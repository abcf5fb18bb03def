// IExternalEffectUsingSKI: tells a host of the Cubase family that the plug-in uses its extension
// objects, and answers its questions. The controller implements it.
#pragma once

#include "hostapi/HostInterfaceIDs.h"

namespace Steinberg {
namespace Vst {

/** Obtained from the controller by queryInterface, as a new reference. Neither operation throws. */
class IExternalEffectUsingSKI : public FUnknown {
public:
    /** The host says that its ports can be connected from now on. Always 0. Does nothing before
        initialize and after terminate. [host main thread] */
    virtual int32 PLUGIN_API hostReadyForSetPortConnections() = 0;

    /** The linear gain with which the host is to mix the returned audio. Always 0. [any thread,
        any time] */
    virtual tresult PLUGIN_API getReturnGain(float& gain) = 0;
    static const FUID iid;
};

} // namespace Vst
} // namespace Steinberg
