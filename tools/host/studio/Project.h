// Project: the tracks and instruments of the host's project.
#pragma once

#include "pluginterfaces/base/ftypes.h"

#include <optional>
#include <string>
#include <vector>

namespace Steinberg {
namespace Vst {
namespace play {

struct Project {
    enum class TrackType { midi, instrument, audio, group };

    struct Track {
        TrackType type = TrackType::midi;
        std::string name;
        std::string output; ///< as the host shows it: "RDL 1 - RDL3/RDL5 VST"
        int32 channel = 0;  ///< MIDI channel, 0 to 15
    };

    /** One entry of the instrument rack. */
    struct Instrument {
        std::string name;
        std::optional<std::string> effectType; ///< the plug-in's name; not every entry has one
        std::vector<size_t> feeds;             ///< indices of the tracks that play through it
    };

    std::vector<Track> tracks;
    std::vector<Instrument> rack;
};

/** "MIDI", "instrument", "audio", "group" */
std::string nameOf(Project::TrackType type);

} // namespace play
} // namespace Vst
} // namespace Steinberg
