// The one function that the port module exports.
#include "simulator/port/PortWire.h"
#include "simulator/port/RtMidiDriver.h"
#include "simulator/PortModule.h"

using namespace Steinberg::Vst::simulator;

namespace {

/** A host may exit without having let its instruments go. The library itself lets them go at last,
   but the MIDI libraries, which were loaded after it, may have ended by then. This object is made
   after they were loaded, so that exit comes here before it ends them. */
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
