#include "tools/common/PlugInPlaces.h"

#include "public.sdk/source/vst/hosting/module.h"
#include "tools/common/platform/ProgramFile.h"

#include <algorithm>
#include <filesystem>
#include <iterator>

namespace Steinberg {
namespace Vst {
namespace tools {

namespace {

namespace fs = std::filesystem;

constexpr const char* kBundleName = "RDL3_RDL5 VST.vst3";

} // namespace

std::vector<std::string> installedPlugIns()
{
    const auto all = VST3::Hosting::Module::getModulePaths();
    std::vector<std::string> ours;
    std::copy_if(all.begin(), all.end(), std::back_inserter(ours),
                 [](const fs::path& path) { return path.filename() == kBundleName; });
    return ours;
}

std::string usualPlugIn()
{
    const auto beside = fs::path(programFile()).parent_path() / kBundleName;
    std::error_code error;
    if (fs::is_directory(beside, error))
        return beside.string();
    const auto installed = installedPlugIns();
    return installed.empty() ? beside.string() : installed.front();
}

} // namespace tools
} // namespace Vst
} // namespace Steinberg
