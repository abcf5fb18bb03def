// IComponentPortHandler: connects a plug-in instance to the host's ports. queryInterface gives it
// on the component handler that the host set on the controller.
#pragma once

#include "hostapi/HostInterfaceIDs.h"

namespace Steinberg {

/** [host main thread, or the library's thread in a port operation; from setComponentHandler
    to terminate] */
class IComponentPortHandler : public FUnknown {
public:
    /** Connects audio input buses of this instance.
        @param first, second always 0
        @param buses count descriptors, each of which may be null; the host owns them from now on
        @return the host's own result */
    virtual tresult PLUGIN_API setAudioInputBuses(int32 first, int32 second, IBusDescriptor** buses,
                                                  int32 count) = 0;

    /** Connects this instance's MIDI output.
        @param ports count borrowed ports, or null with count 0 to disconnect
        @param ports2, count2 the same array and count again
        @return the host's own result */
    virtual tresult PLUGIN_API setMidiOutputPorts(IHostPort** ports, int32 count,
                                                  IHostPort** ports2, int32 count2) = 0;
    static const FUID iid;
};

} // namespace Steinberg
