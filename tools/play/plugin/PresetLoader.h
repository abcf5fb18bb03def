// PresetLoader: loads a .vstpreset file into an instance, as a host's preset browser does.
#pragma once

#include "tools/common/Instance.h"

#include <string>

namespace Steinberg {
namespace Vst {
namespace play {

/** @throws Failure for a file that is missing, is no preset of this plug-in, or is refused */
void loadPreset(const std::string& path, const tools::PlugIn& plugIn, tools::Instance& instance);

} // namespace play
} // namespace Vst
} // namespace Steinberg
