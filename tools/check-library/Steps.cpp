#include "tools/check-library/Steps.h"

#include "tools/common/Failure.h"

#include <algorithm>
#include <iterator>

namespace Steinberg {
namespace Vst {
namespace checklibrary {

namespace {

constexpr const char* kPlugIn = "The plug-in";
constexpr const char* kLibrary = "The editor library";

constexpr Step kSteps[] = {
    {"plug-in-bundle", kPlugIn, kInstallPlugIn, loadBundle},
    {"library-load", kLibrary, kInstallEditor, loadFile},
    {"library-start", kLibrary, kTellMaker, startLibrary},
    {"parameters", kLibrary, kTellMaker, askParameters},
    {"voices", kLibrary, kTellMaker, askVoices},
    {"playing", kLibrary, kTellMaker, playNote},
    {"state", kLibrary, kTellMaker, saveState},
    {"callbacks", kLibrary, kTellMaker, tryCallbacks},
    {"threads", kLibrary, kTellMaker, tryThreads},
    {"lives", kLibrary, kTellMaker, tryLives},
    {"plug-in", "The plug-in with its editor library", kTellMaker, usePlugIn},
};

} // namespace

std::vector<std::string> stepNames()
{
    std::vector<std::string> names;
    for (const auto& step : kSteps)
        names.emplace_back(step.name);
    return names;
}

const Step& stepNamed(const std::string& name)
{
    const auto* found = std::find_if(std::begin(kSteps), std::end(kSteps),
                                     [&](const Step& step) { return step.name == name; });
    if (found == std::end(kSteps))
        throw tools::Failure("There is no step \"" + name + "\".");
    return *found;
}

} // namespace checklibrary
} // namespace Vst
} // namespace Steinberg
