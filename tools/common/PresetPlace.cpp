#include "tools/common/PresetPlace.h"

#include "tools/common/Failure.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <unistd.h>

namespace Steinberg {
namespace Vst {
namespace tools {

namespace fs = std::filesystem;

std::string presetFolder(VstK2xPresetCreater::OutputDir dir)
{
    std::string path;
    if (VstK2xPresetCreater::outputPath(path, dir) != 0)
        throw Failure("The environment variable HOME names no folder to hold the user's presets.");
    return path;
}

std::string obstacleTo(const std::string& folder)
{
    fs::path missing;
    fs::path standing = folder;
    std::error_code error;
    while (standing.has_relative_path() && !fs::exists(standing, error)) {
        missing = standing;
        standing = standing.parent_path();
    }
    if (!fs::is_directory(standing, error))
        return "'" + standing.string() + "' is not a folder.";
    // A folder at the top of the file system is not ours to make.
    if (!standing.has_relative_path())
        return "there is no folder '" + missing.string() + "'.";
    if (access(standing.c_str(), W_OK) != 0)
        return "'" + standing.string() + "' cannot be written to: " + std::strerror(errno) + ".";
    return "'" + missing.string() + "' cannot be made in it.";
}

} // namespace tools
} // namespace Vst
} // namespace Steinberg
