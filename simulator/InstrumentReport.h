// InstrumentReport: what reached an instrument, as a file, for hosts whose process nobody can look
// into.
#pragma once

#include "simulator/SimulatorControl.h"

namespace Steinberg {
namespace Vst {
namespace simulator {

/** Adds lines to the file that the environment variable SIMULATOR_REPORT names; without it, and
   where the file cannot be written, nothing. [any thread]

    An instrument's begin gives "begin NUMBER", its end the rest, all at once:
        end NUMBER
        host-type TYPE
        note-ons CHANNEL COUNT       channel 0 to 15, those with any
        note-offs CHANNEL COUNT
        other-midi COUNT
        automation COUNT
        midi-port NAME               of the open port, or "none: REASON"; this and the next three
        midi-left COUNT              only where a port was asked for
        midi-lost COUNT
        midi-arrived COUNT
        parameter ID VALUE           editor value, every parameter
        call OPERATION(ARGUMENTS)    oldest first
    Numbers count from 1, since the library was loaded. */
class InstrumentReport {
public:
    /** @param number the instrument's */
    static void begin(int number);
    static void end(int number, SimulatorControl& instrument);
};

} // namespace simulator
} // namespace Vst
} // namespace Steinberg
