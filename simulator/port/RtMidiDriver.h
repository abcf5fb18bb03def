// RtMidiDriver: a MIDI port of the system's by RtMidi.
#pragma once

#include "simulator/port/MidiDriver.h"

#include <memory>
#include <vector>

namespace Steinberg {
namespace Vst {
namespace simulator {

enum class Directions { both, in };

/** ALSA's sequencer and JACK on Linux, CoreMIDI on a Mac. A port of both directions waits, where
   the other end only takes or only gives, in the other direction for somebody to connect to it.
    @param program what the system shows as the ports' owner */
std::unique_ptr<MidiDriver> makeRtMidiDriver(const std::string& program, Directions directions);

/** A port of the system's that somebody else offers. */
struct SystemMidiPort {
    std::string name;
    bool takes; ///< takes messages, as a synthesizer does; else it gives them, as a keyboard does
};

/** All of them, those that take first. @throws NoMidiPort where the system has no MIDI service */
std::vector<SystemMidiPort> systemMidiPorts();

} // namespace simulator
} // namespace Vst
} // namespace Steinberg
