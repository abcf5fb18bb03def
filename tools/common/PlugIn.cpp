#include "tools/common/PlugIn.h"

#include "pluginterfaces/vst/ivstaudioprocessor.h"
#include "tools/common/Failure.h"

#include <algorithm>
#include <filesystem>

namespace Steinberg {
namespace Vst {
namespace tools {

namespace {

VST3::Hosting::Module::Ptr load(const std::string& bundlePath)
{
    std::error_code error;
    if (!std::filesystem::is_directory(bundlePath, error))
        throw Failure("There is no plug-in bundle \"" + bundlePath + "\".");
    std::string reason;
    auto module = VST3::Hosting::Module::create(bundlePath, reason);
    if (module)
        return module;
    std::replace(reason.begin(), reason.end(), '\n', ' ');
    throw Failure("The plug-in \"" + bundlePath + "\" cannot be loaded: " + reason + ".");
}

} // namespace

PlugIn::PlugIn(const std::string& bundlePath, FUnknown& hostContext)
: module(load(bundlePath))
{
    factory().setHostContext(&hostContext);
    const auto classes = factory().classInfos();
    const auto found = std::find_if(classes.begin(), classes.end(), [](const auto& info) {
        return info.category() == kVstAudioEffectClass;
    });
    if (found == classes.end())
        throw Failure("\"" + bundlePath + "\" has no audio class.");
    audioClass = *found;
}

PlugIn::~PlugIn()
{
    factory().setHostContext(nullptr); // the module keeps its reference to the run loop otherwise
}

std::string PlugIn::vendor() const
{
    return audioClass.vendor().empty() ? factory().info().vendor() : audioClass.vendor();
}

} // namespace tools
} // namespace Vst
} // namespace Steinberg
