// IPortRegistry: all audio and MIDI ports that the host knows. Obtained from
// IHostClasses::getHostInterface. Its ports are borrowed: they live as long as the host's own.
#pragma once

#include "hostapi/HostInterfaceIDs.h"

namespace Steinberg {

/** Threads as at IHostPort. */
class IPortRegistry : public FUnknown {
public:
    /** Number of ports now; it can change between two calls. */
    virtual int32 PLUGIN_API getPortCount() = 0;

    /** The port at an index from 0 to getPortCount() - 1, borrowed, or null. */
    virtual IHostPort* PLUGIN_API getPortByIndex(int32 index) = 0;

    /** The port with this ID (8-bit, zero-terminated), borrowed, or null. */
    virtual IHostPort* PLUGIN_API findPortById(const char* id) = 0;

    /** Removes a MIDI port from the host's "all MIDI inputs". @return the host's own result */
    virtual int32 PLUGIN_API removeFromAllMidiInputs(IHostPort* port) = 0;
    static const FUID iid;
};

} // namespace Steinberg
