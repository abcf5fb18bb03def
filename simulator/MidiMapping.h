// MidiMapping: which MIDI messages carry the simulated instrument's parameters and voices.
#pragma once

#include "simulator/MidiMessage.h"

namespace Steinberg {
namespace Vst {
namespace simulator {

/** As General MIDI 2 has it, a part on the channel of its number. Values are the editor's, 0 to
   127; where the editor shows them as signed, both sides have their middle at 64. Sustain level,
   functions and assignable knobs have no controller. */
class MidiMapping {
public:
    static constexpr uint8 bankSelect = 0;
    static constexpr uint8 bankSelectFine = 32;
    static constexpr uint8 allNotesOff = 123;
    static constexpr int32 none = -1;

    /** The controller of a parameter, by its column in the editor; none where there is none. */
    static int32 controllerOf(size_t column);
    /** The column of a controller; none for one that carries no parameter. */
    static int32 columnOf(uint8 controller);

    /** What sets a parameter that has a controller.
        @param value 0 to 127 */
    static MidiMessage value(int32 part, size_t column, int32 value);

    /** What selects a voice: both halves of the bank select, then the program. The bank is in the
        fine half, so that a synthesizer that has no such bank plays the program of its own bank.
        @param bank, number 0 to 127 */
    static std::array<MidiMessage, 3> voice(int32 part, int32 bank, int32 number);
};

} // namespace simulator
} // namespace Vst
} // namespace Steinberg
