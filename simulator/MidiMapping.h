// MidiMapping: which MIDI messages stand for the simulated instrument's parameters and voices.
#pragma once

#include "simulator/MidiMessage.h"

namespace Steinberg {
namespace Vst {
namespace simulator {

/** The controllers are those of General MIDI 2; part n is on channel n. Values are editor values, 0
    to 127; a value that the editor shows as signed has its middle at 64 on both sides. Sustain
    level, assignable functions and assignable knobs have no controller. */
class MidiMapping {
public:
    static constexpr uint8 bankSelect = 0;
    static constexpr uint8 bankSelectFine = 32;
    static constexpr uint8 allNotesOff = 123;
    static constexpr int32 none = -1;

    /** The column of the parameter that a controller sets, or none. */
    static int32 columnOf(uint8 controller);

    /** The message that sets a parameter, which must have a controller. @param value 0 to 127 */
    static MidiMessage value(int32 part, size_t column, int32 value);

    /** The messages that select a voice: bank select, coarse and fine, then the program. The
        bank is in the fine one, so that a synthesizer without such banks plays the program of
        its own bank.
        @param bank, number 0 to 127 */
    static std::array<MidiMessage, 3> voice(int32 part, int32 bank, int32 number);
};

} // namespace simulator
} // namespace Vst
} // namespace Steinberg
