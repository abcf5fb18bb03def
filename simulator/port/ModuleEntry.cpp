// The one function that the port module exports.
#include "simulator/port/PortWire.h"
#include "simulator/port/RtMidiDriver.h"
#include "simulator/PortModule.h"

using namespace Steinberg::Vst::simulator;

extern "C" __attribute__((visibility("default"))) MidiWire*
openSimulatorMidiPort(const char* which, MidiReceiver& receiver)
{
    return new PortWire(makeRtMidiDriver("RDL-simulator", Directions::both), which, receiver);
}
