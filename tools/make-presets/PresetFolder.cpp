#include "tools/make-presets/PresetFolder.h"

#include "pluginterfaces/base/smartpointer.h"
#include "public.sdk/source/vst/vstpresetfile.h"
#include "tools/common/Failure.h"
#include "tools/common/PresetPlace.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <unistd.h>

namespace Steinberg {
namespace Vst {
namespace makepresets {

namespace {

namespace fs = std::filesystem;

constexpr const char* kExtension = ".vstpreset";
/** Component state, controller state and meta information. */
constexpr int32 kChunks = 3;

std::string fileIn(const std::string& folder, const std::string& fileName)
{
    return folder + PathSlash + fileName + kExtension;
}

} // namespace

PresetFolder::PresetFolder(VstK2xPresetCreater::OutputDir dir, bool make)
: folder(tools::presetFolder(dir))
{
    if (!make)
        return;
    std::error_code error;
    if (VstK2xPresetCreater::createOutputPath(folder, dir) != 0 || !fs::is_directory(folder, error))
        throw tools::Failure("The preset folder '" + folder +
                             "' cannot be made: " + tools::obstacleTo(folder));
    auto pattern = folder + PathSlash + ".make-presets-XXXXXX";
    if (!mkdtemp(pattern.data()))
        throw tools::Failure("The preset folder '" + folder +
                             "' cannot be written to: " + std::strerror(errno) + ".");
    stagingFolder = pattern;
}

PresetFolder::~PresetFolder()
{
    std::error_code ignored;
    if (!stagingFolder.empty())
        fs::remove_all(stagingFolder, ignored);
}

bool PresetFolder::has(const std::string& fileName) const
{
    return platform::findInFolder(folder, fileName + kExtension) == platform::InFolder::exists;
}

bool PresetFolder::isWhole(const std::string& fileName) const
{
    const auto stream = owned(FileStream::open(fileIn(stagingFolder, fileName).c_str(), "rb"));
    if (!stream)
        return false;
    PresetFile file(stream);
    return file.readChunkList() && file.getEntryCount() == kChunks;
}

int PresetFolder::publish(const std::string& fileName) const
{
    const auto from = fileIn(stagingFolder, fileName);
    const auto to = fileIn(folder, fileName);
    return std::rename(from.c_str(), to.c_str()) == 0 ? 0 : errno;
}

void PresetFolder::discard(const std::string& fileName) const
{
    std::error_code ignored;
    fs::remove(fileIn(stagingFolder, fileName), ignored);
}

} // namespace makepresets
} // namespace Vst
} // namespace Steinberg
