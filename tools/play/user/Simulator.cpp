#include "tools/play/user/Simulator.h"

#include <dlfcn.h>

namespace Steinberg {
namespace Vst {
namespace play {

SimulatorControl* findSimulator(const std::string& path)
{
    auto* library = dlopen(path.c_str(), RTLD_LAZY | RTLD_NOLOAD);
    if (!library)
        return nullptr;
    const auto get = reinterpret_cast<GetSimulatorControl>(dlsym(library, getSimulatorControlName));
    auto* control = get ? get(-1) : nullptr;
    dlclose(library); // whoever loaded it keeps it loaded
    return control;
}

} // namespace play
} // namespace Vst
} // namespace Steinberg
