// RtMidiDriver: one of the system's MIDI ports, through RtMidi.
#pragma once

#include "simulator/port/MidiDriver.h"

#include <memory>
#include <vector>

namespace Steinberg {
namespace Vst {
namespace simulator {

enum class Directions { both, in };

/** Uses ALSA's sequencer or JACK on Linux, CoreMIDI on a Mac. When the other end has one direction
    only, a port of both directions offers the other one for others to connect to.
    @param program the name that the system shows as the ports' owner */
std::unique_ptr<MidiDriver> makeRtMidiDriver(const std::string& program, Directions directions);

/** A MIDI port that another program or a device offers. */
struct SystemMidiPort {
    std::string name;
    bool takes; ///< true: it receives, as a synthesizer does; false: it sends, as a keyboard does
};

/** All such ports, first those that receive. @throws NoMidiPort without a MIDI service */
std::vector<SystemMidiPort> systemMidiPorts();

} // namespace simulator
} // namespace Vst
} // namespace Steinberg
