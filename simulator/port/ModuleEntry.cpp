// The one function that the port module exports.
#include "simulator/port/PortWire.h"
#include "simulator/port/RtMidiDriver.h"
#include "simulator/PortModule.h"

using namespace Steinberg::Vst::simulator;

namespace {

/** Closes the ports of a host that exits without having ended its plug-ins. The library itself
    would do so when it is unloaded, but the MIDI libraries, which were loaded later, may have ended
    by then. This object is made after they were loaded, so it is destroyed before they end. */
struct ClosesPortsAtExit {
    ClosesPortsAtExit() = default;
    ~ClosesPortsAtExit() { PortWire::closeAll(); }
    ClosesPortsAtExit(const ClosesPortsAtExit&) = delete;
    ClosesPortsAtExit& operator=(const ClosesPortsAtExit&) = delete;
};

} // namespace

extern "C" __attribute__((visibility("default"))) MidiWire*
openSimulatorMidiPort(const char* which, MidiReceiver& receiver)
{
    static const ClosesPortsAtExit atExit;
    return new PortWire(makeRtMidiDriver("RDL-simulator", Directions::both), which, receiver);
}
