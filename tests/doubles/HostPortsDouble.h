// HostPortsDouble: the host's port registry and what the plug-in connected.
//
//   auto& a = host.ports.audioInput("A", "Tavrin 1");
//   host.ports.midiOutput("M", "Port1");    host.ports.addNull();
//   plug-in: setAudioPortList({"A", "B", null, null})
//   host.ports.inputBuses == {"3: port(A) port(B)", "3: null null"}
//   trace: "portRegistry.getPortByIndex(0)", "portHandler.setMidiOutputPorts([ port(M) ], 1, same)"
//          "bus(1).setArrangement(3)", "bus(1).setChannelPort(0, port(A))"
#pragma once

#include "hostapi/IComponentPortHandler.h"
#include "hostapi/IPortRegistry.h"
#include "tests/doubles/HostPortDouble.h"

#include <optional>

namespace doubles {

/** Ports stay in memory when they are removed from the registry. The host makes a new bus at each
    request and takes it over in setAudioInputBuses: from then on the plug-in must not release it.
    One that was never handed over must be released. */
class HostPortsDouble {
public:
    explicit HostPortsDouble(HostBooks& host);

    HostPortDouble& audioInput(const HostText& id, const HostText& displayName);
    HostPortDouble& audioOutput(const HostText& id, const HostText& displayName);
    HostPortDouble& midiInput(const HostText& id, const HostText& systemName);
    HostPortDouble& midiOutput(const HostText& id, const HostText& displayName);
    HostPortDouble& add(const HostText& id, const std::string& type, bool input);
    void addNull() { list.push_back(nullptr); }
    void remove(size_t index) { list.erase(list.begin() + static_cast<std::ptrdiff_t>(index)); }

    std::vector<HostPortDouble*> list; ///< the registry in its order; null for a null port

    // The host's answers.
    Steinberg::int32 removalResult = 0; ///< removeFromAllMidiInputs
    Steinberg::tresult handlerResult = Steinberg::kResultOk;
    bool refusesBuses = false;                 ///< no bus descriptor is made
    std::optional<Steinberg::int32> portCount; ///< a count that is not the list's

    // What the plug-in did last.
    std::vector<std::string> inputBuses; ///< "arrangement: left right" or "null", of the last call
    std::vector<std::string> midiPorts;  ///< of the last call
    std::vector<std::string> removedFromAllMidiInputs;

    Steinberg::IPortRegistry& getRegistry() { return registry; }

    /** The port handler of a component handler. */
    Steinberg::IComponentPortHandler& makeHandler(HostObject& componentHandler);

private:
    class Bus;
    class Handler;
    class Registry;

    HostBooks& books;
    Steinberg::IPortRegistry& registry;
};

} // namespace doubles
