// PresetPlace: where the preset library stands, and what keeps it from being there.
#pragma once

#include "presets/VstK2xPresetCreater.h"

#include <string>

namespace Steinberg {
namespace Vst {
namespace tools {

/** The folder of preset files, which need not exist. @throws Failure for a user without a home */
std::string presetFolder(VstK2xPresetCreater::OutputDir dir);

/** Why a missing folder cannot be made, as far as the folders above it show: a clause with a full
    stop. */
std::string obstacleTo(const std::string& folder);

} // namespace tools
} // namespace Vst
} // namespace Steinberg
