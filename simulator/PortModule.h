// PortModule: makes the wire that SIMULATOR_MIDI_PORT asks for.
#pragma once

#include "simulator/MidiWire.h"

#include <memory>

namespace Steinberg {
namespace Vst {
namespace simulator {

/** Makes the wire of a new instrument, as the environment variable SIMULATOR_MIDI_PORT says:
        not set, empty    a loop
        own               a new MIDI port, to which others can connect theirs
        first             the first port that another program or device offers
        TEXT              the first such port whose name contains the text, in upper or lower case
    "alsa:", "jack:" or "core:" before one of the last three chooses the MIDI service.

    The code for ports is in a module of its own, in a file beside this library, so that a host in
    which no port is asked for does not load RtMidi, ALSA or JACK. When the module is missing or the
    port cannot be opened, the wire drops everything, and MidiWire::port tells why.
    @param receiver must outlive the wire
    @return never null */
std::unique_ptr<MidiWire> connectWire(MidiReceiver& receiver);

/** The function that the module exports under the name openMidiPortName. The caller owns
    the result. */
using OpenMidiPort = MidiWire* (*)(const char* which, MidiReceiver& receiver);
constexpr const char* openMidiPortName = "openSimulatorMidiPort";

} // namespace simulator
} // namespace Vst
} // namespace Steinberg
