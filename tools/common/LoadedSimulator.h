// The simulated editor library's user, where that library is what is loaded.
#pragma once

#include "simulator/SimulatorControl.h"
#include "tools/common/LibraryHandle.h"

namespace Steinberg::Vst::tools {

/** The control of a connection of the loaded library: 0 is the oldest, -1 the newest. Null when the
    file is not loaded, offers no control or has no such connection. Valid until that connection's
    end. */
inline SimulatorControl* findSimulator(const std::string& file = editorLibraryPath(),
                                       int index = -1)
{
    const LibraryHandle library(file, RTLD_LAZY | RTLD_NOLOAD);
    const auto get = library.find<GetSimulatorControl>(getSimulatorControlName);
    return get ? get(index) : nullptr; // whoever loaded the library keeps it loaded
}

} // namespace Steinberg::Vst::tools
