// InstrumentReport: writes what reached an instrument into a file, for tests in hosts whose process
// cannot be looked into.
#pragma once

#include "simulator/SimulatorControl.h"

namespace Steinberg {
namespace Vst {
namespace simulator {

/** Adds lines to the file that the environment variable SIMULATOR_REPORT names. Does nothing
    without it, and when the file cannot be written. [any thread]

    The line "begin NUMBER" is written when an instrument is made, the rest when it ends:
        end NUMBER
        host-type TYPE
        note-ons CHANNEL COUNT       channel 0 to 15; only for channels that had notes
        note-offs CHANNEL COUNT
        other-midi COUNT
        automation COUNT
        midi-port NAME               of the open port, or "none: REASON"; this line and the next
        midi-left COUNT              three only when a port was asked for
        midi-lost COUNT
        midi-arrived COUNT
        parameter ID VALUE           editor value, every parameter
        call OPERATION(ARGUMENTS)    oldest first
    Instruments are numbered from 1 since the library was loaded. */
class InstrumentReport {
public:
    /** @param number the instrument's */
    static void begin(int number);
    static void end(int number, SimulatorControl& instrument);
};

} // namespace simulator
} // namespace Vst
} // namespace Steinberg
