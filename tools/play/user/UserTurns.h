// UserTurns: a simulated user who turns a knob in the editor while the song plays.
#pragma once

#include "pluginterfaces/vst/vsttypes.h"
#include "simulator/SimulatorControl.h"

namespace Steinberg {
namespace Vst {
namespace play {

/** One gesture every two seconds of the song, the first after one second; each goes to another
    value. */
class UserTurns {
public:
    /** @param simulator borrowed; outlives this object */
    UserTurns(SimulatorControl& simulator, ParamID parameter)
    : control(simulator)
    , id(parameter)
    {
    }

    /** Turns the knob when its time has come. [host main thread]
        @param seconds the play head, which only grows */
    void play(double seconds);

    ParamID parameter() const { return id; }
    int64 gestures() const { return count; }

private:
    SimulatorControl& control;
    ParamID id;
    double due = 1;
    int64 count = 0;
};

} // namespace play
} // namespace Vst
} // namespace Steinberg
