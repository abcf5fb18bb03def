// TempoMap: from a MIDI file's pulses to samples, without rounding on the way.
#pragma once

#include "pluginterfaces/base/ftypes.h"

#include <vector>

namespace Steinberg {
namespace Vst {
namespace play {

/** Times are summed up as whole microseconds times pulses per quarter note, so that a sample
    position is rounded once, however many tempo changes lie before it. */
class TempoMap {
public:
    /** The tempo is 120 until it is changed.
        @param pulsesPerQuarterNote from 1 to 32,767 */
    explicit TempoMap(int32 pulsesPerQuarterNote);

    /** Sets the tempo from pulse on; changes come in ascending order of their pulses.
        @param microsecondsPerQuarterNote from 1 to 16,777,215 */
    void change(int64 pulse, int32 microsecondsPerQuarterNote);

    /** The sample nearest to a pulse, a half rounded up.
        @param sampleRate in Hz, from 1 to 384,000 */
    int64 sampleAt(int64 pulse, int32 sampleRate) const;

    /** The time of a pulse in whole seconds, rounded down. */
    int64 secondsAt(int64 pulse) const;

private:
    struct Change {
        int64 pulse;
        int32 microsecondsPerQuarterNote;
        int64 time; ///< of the pulse, in microseconds * pulsesPerQuarterNote
    };
    const Change& changeBefore(int64 pulse) const;
    int64 timeOf(int64 pulse) const;

    int64 unitsPerSecond;
    std::vector<Change> changes;
};

} // namespace play
} // namespace Vst
} // namespace Steinberg
