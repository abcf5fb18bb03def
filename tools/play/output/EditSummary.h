// EditSummary: one parameter's edits as the host saw them.
#pragma once

#include "tools/host/ComponentHandler.h"

#include <string>
#include <vector>

namespace Steinberg {
namespace Vst {
namespace play {

struct EditSummary {
    std::string title;
    int64 gestures = 0; ///< that the user made
    int64 begins = 0;
    int64 performs = 0;
    int64 ends = 0;
    /** Each gesture was a begin, at least one perform and an end, and nothing stood outside. */
    bool inOrder = true;
};

/** Counts the edits of one parameter; title and gestures are the caller's to set. */
EditSummary summarizeEdits(const std::vector<ComponentHandler::Edit>& edits, ParamID id);

} // namespace play
} // namespace Vst
} // namespace Steinberg
