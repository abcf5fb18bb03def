// IBusDescriptor: describes one audio bus for IComponentPortHandler::setAudioInputBuses.
// Each call of IHostClasses::getHostInterface makes a new one.
#pragma once

#include "hostapi/HostInterfaceIDs.h"

namespace Steinberg {

/** [the thread of setAudioPortList, between initialize and terminate] */
class IBusDescriptor : public FUnknown {
public:
    /** Sets the speaker arrangement, an SDK SpeakerArrangement value (3 = left and right). */
    virtual void PLUGIN_API setArrangement(int64 arrangement) = 0;

    virtual void PLUGIN_API reserved4() = 0;
    virtual void PLUGIN_API reserved5() = 0;

    /** Connects a channel (0 = left, 1 = right) to a borrowed port; null leaves it unconnected. */
    virtual void PLUGIN_API setChannelPort(int32 channel, IHostPort* port) = 0;
    static const FUID iid;
};

} // namespace Steinberg
