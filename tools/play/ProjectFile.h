// ProjectFile: reads the host's project from a small JSON file.
//
//   {"tracks": [{"type": "midi", "name": "Drums", "output": "RDL 1 - RDL3/RDL5 VST",
//                "channel": 10},
//               {"type": "audio", "name": "Vocals"}],
//    "rack": [{"name": "RDL 1", "plugIn": "RDL3/RDL5 VST", "feeds": ["Drums"]}]}
#pragma once

#include "tools/host/studio/Project.h"

#include <string>

namespace Steinberg {
namespace Vst {
namespace play {

/** Types are "midi", "instrument", "audio" and "group". Names of tracks are unique, as the rack
    refers to tracks by them. A track's output is empty and its channel (1 to 16) is 1 unless they
    are given; "rack", an instrument's "plugIn" and its "feeds" may be left out. Entries that are
    not listed here are refused.
    @throws Failure for a file that is missing, no JSON or not such a project */
Project readProject(const std::string& path);

/** The project that is there without a file: tracks of every type, played through the plug-in in
    ways that newer and older hosts tell in different places. */
Project demoProject();

} // namespace play
} // namespace Vst
} // namespace Steinberg
