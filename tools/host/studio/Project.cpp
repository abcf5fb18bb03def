#include "tools/host/studio/Project.h"

namespace Steinberg {
namespace Vst {
namespace play {

std::string nameOf(Project::TrackType type)
{
    switch (type) {
    case Project::TrackType::midi:
        return "MIDI";
    case Project::TrackType::instrument:
        return "instrument";
    case Project::TrackType::audio:
        return "audio";
    default:
        return "group";
    }
}

} // namespace play
} // namespace Vst
} // namespace Steinberg
