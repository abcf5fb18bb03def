// PresetPlace: where the preset library stands, and what keeps it from being there.
#pragma once

#include "presets/VstK2xPresetCreater.h"

#include <string>

namespace Steinberg {
namespace Vst {
namespace tools {

/** The folder of preset files, which need not exist. @throws Failure for a user without a home */
std::string presetFolder(VstK2xPresetCreater::OutputDir dir);

/** What keeps a missing folder from being made, as far as it can be seen from outside: one clause
    with a full stop. */
std::string obstacleTo(const std::string& folder);

} // namespace tools
} // namespace Vst
} // namespace Steinberg
