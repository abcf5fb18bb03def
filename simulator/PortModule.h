// PortModule: the wire that the environment asks for.
#pragma once

#include "simulator/MidiWire.h"

#include <memory>

namespace Steinberg {
namespace Vst {
namespace simulator {

/** The wire of a new instrument, by the environment variable SIMULATOR_MIDI_PORT:
        not set, empty    a loop
        own               a MIDI port of the system's, for others to connect theirs to
        first             the first port there is of others, whatever its name
        TEXT              the first port whose name contains the text, in upper or lower case
    In front of the last three "alsa:", "jack:" or "core:" may say whose ports are meant.

    Ports are the matter of a module of its own, in a file beside this library: a host in which
   nobody asks for a port has nothing to do with RtMidi, ALSA or JACK. Where the module is missing,
   or its port cannot be opened, the wire ends nowhere and tells why (MidiWire::port).
    @param receiver outlives the wire
    @return never null */
std::unique_ptr<MidiWire> connectWire(MidiReceiver& receiver);

/** What the module exports, under the name openMidiPortName. A new object for the caller. */
using OpenMidiPort = MidiWire* (*)(const char* which, MidiReceiver& receiver);
constexpr const char* openMidiPortName = "openSimulatorMidiPort";

} // namespace simulator
} // namespace Vst
} // namespace Steinberg
