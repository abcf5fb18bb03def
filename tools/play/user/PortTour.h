// PortTour: the editor's user looks at the host's ports and connects some.
#pragma once

#include "simulator/SimulatorControl.h"
#include "tools/host/studio/Studio.h"
#include "tools/play/output/StudioReport.h"

namespace Steinberg {
namespace Vst {
namespace play {

/** [host main thread] */
class PortTour {
public:
    /** @param hostStudio, simulator borrowed; outlive this object */
    PortTour(Studio* hostStudio, SimulatorControl& simulator)
    : studio(hostStudio)
    , control(simulator)
    {
    }

    /** Looks at the ports, then connects, and looks again after each.
        @param audioPorts lists of four IDs with commas between them, of which each may be empty
        @param midiPorts IDs
        @throws Failure for a list that has other than four IDs */
    PortsReport run(const std::vector<std::string>& audioPorts,
                    const std::vector<std::string>& midiPorts);

    /** The audio inputs as an editor library lists them. */
    static std::vector<PortsReport::Entry> audioInputsOf(SimulatorControl& simulator);

private:
    void look(PortsReport& report, const std::string& deed);

    Studio* studio; ///< null in a host without such objects
    SimulatorControl& control;
};

} // namespace play
} // namespace Vst
} // namespace Steinberg
