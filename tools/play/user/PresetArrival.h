// PresetArrival: what of a loaded preset reached the simulated editor library.
#pragma once

#include "simulator/SimulatorControl.h"
#include "tools/play/output/Report.h"

#include <string>

namespace Steinberg {
namespace Vst {
namespace play {

/** Make it before the preset is loaded and ask it afterwards. */
class PresetArrival {
public:
    /** @param simulator borrowed; null for a library that does not tell */
    explicit PresetArrival(SimulatorControl* simulator);

    /** What came of the preset in a file. */
    Report::LoadedPreset of(const std::string& file) const;

private:
    SimulatorControl* const control;
    size_t presets = 0;
    size_t banks = 0;
};

} // namespace play
} // namespace Vst
} // namespace Steinberg
