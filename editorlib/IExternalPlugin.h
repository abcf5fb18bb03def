// IExternalPlugin: what the host-side service calls in the controller.
#pragma once

#include "hostapi/HostInterfaceIDs.h"

namespace Steinberg {

namespace Vst {
class VstIEditorConnect;
}

class IExternalPlugin : public FUnknown {
public:
    /** Hands over the editor connection and its library's handle, from inside registerPlugin. The
        service keeps owning both. Always kResultOk. [host main thread] */
    virtual tresult PLUGIN_API setPluginInfo(Vst::VstIEditorConnect* connect,
                                             void* libraryHandle) = 0;

    static const FUID iid;
};

} // namespace Steinberg
