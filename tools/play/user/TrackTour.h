// TrackTour: the host's user selects tracks, then the editor's user picks parts.
#pragma once

#include "simulator/SimulatorControl.h"
#include "tools/host/studio/Studio.h"
#include "tools/play/output/StudioReport.h"

namespace Steinberg {
namespace Vst {
namespace play {

/** [host main thread] */
class TrackTour {
public:
    /** @param hostStudio, simulator borrowed; outlive this object */
    TrackTour(Studio& hostStudio, SimulatorControl& simulator)
    : studio(hostStudio)
    , control(simulator)
    {
    }

    /** Selects the tracks in order, then picks every part in order.
        @param tracks counted from 1; every track in order when there is none
        @throws Failure for a number that is no track's */
    TracksReport run(std::vector<int> tracks);

private:
    void select(int32 track, TracksReport& report);
    void choose(int32 part, TracksReport& report);

    Studio& studio;
    SimulatorControl& control;
};

} // namespace play
} // namespace Vst
} // namespace Steinberg
