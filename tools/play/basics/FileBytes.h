// FileBytes: reads a file that play's user named.
#pragma once

#include <string>
#include <vector>

namespace Steinberg {
namespace Vst {
namespace play {

/** All bytes of a file of at most 64 MiB.
    @param kind what the file should be, with its article: "a MIDI file"
    @throws Failure when it is missing, too large, no file or cannot be read */
std::vector<char> readFileBytes(const std::string& path, const std::string& kind);

} // namespace play
} // namespace Vst
} // namespace Steinberg
