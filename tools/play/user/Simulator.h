// Simulator: the stand-in editor library's control surface, where that library is what is loaded.
#pragma once

#include "simulator/SimulatorControl.h"

#include <string>

namespace Steinberg {
namespace Vst {
namespace play {

/** The newest connection of the loaded library; null when the library at path is not loaded, or is
    one that offers no control. Valid until that connection's end. */
SimulatorControl* findSimulator(const std::string& path);

} // namespace play
} // namespace Vst
} // namespace Steinberg
