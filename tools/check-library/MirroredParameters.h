// MirroredParameters: the editor's parameters that the plug-in shows its host.
#pragma once

#include "editorlib/VstIObserver.h"

#include <string>
#include <vector>

namespace Steinberg {
namespace Vst {
namespace checklibrary {

struct MirroredParameter {
    unsigned id;       ///< VST parameter ID
    std::string title; ///< for people
    int block;
    int number; ///< within the block
    int part;   ///< 0 to 15
    VstIObserver::ParamModeType mode;
    bool asksForStepCount;
    bool hasValueTexts;
};

/** All of them, in the order in which the plug-in makes them: part by part, the edit flag last. */
std::vector<MirroredParameter> mirroredParameters();

} // namespace checklibrary
} // namespace Vst
} // namespace Steinberg
