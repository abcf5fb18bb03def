// BusDescriptorDouble: one audio bus on its way to the port handler. The host makes a new one at
// each request and takes it over in setAudioInputBuses: from then on the plug-in must not release
// it, and one that was never handed over must be released.
//
//   trace: "bus(1).setArrangement(3)", "bus(1).setChannelPort(0, port(A))"
#pragma once

#include "hostapi/IBusDescriptor.h"
#include "tests/doubles/Counted.h"

namespace doubles {

class BusDescriptorDouble final : public Counted<Steinberg::IBusDescriptor> {
public:
    using Counted::Counted;

    Steinberg::int64 arrangement = -1;                     ///< -1: never set
    std::array<std::string, 2> channels{"unset", "unset"}; ///< "port(A)", or "null"

    void PLUGIN_API setArrangement(Steinberg::int64 value) override
    {
        if (called("setArrangement", value))
            arrangement = value;
    }
    void PLUGIN_API setChannelPort(Steinberg::int32 channel, Steinberg::IHostPort* port) override;
};

} // namespace doubles
