// LoadedSimulator: the built simulator, loaded as the plug-in loads the editor library.
#pragma once

#include "editorlib/VstIEditorConnect.h"
#include "simulator/SimulatorControl.h"

#include <dlfcn.h>
#include <stdexcept>
#include <string>

namespace doubles {

using Steinberg::Vst::SimulatorControl;
using Steinberg::Vst::VstIEditorConnect;
using Steinberg::Vst::VstIObserver;

/** The library's file, loaded with every symbol bound. */
class LoadedSimulator {
public:
    explicit LoadedSimulator(const std::string& file = SIMULATOR_FILE)
    : handle(dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL))
    {
        if (!handle)
            throw std::runtime_error(dlerror());
        find(connect, "getVSTEditorConnectObject");
        find(observe, "getVSTObserverObject");
        find(control, Steinberg::Vst::getSimulatorControlName);
    }
    ~LoadedSimulator() { dlclose(handle); }
    LoadedSimulator(const LoadedSimulator&) = delete;
    LoadedSimulator& operator=(const LoadedSimulator&) = delete;

    void (*connect)(VstIEditorConnect**) = nullptr;
    void (*observe)(VstIObserver**, void*, int, int, int, int, void (*)(void*, unsigned, int),
                    VstIObserver::ParamModeType, void (*)(void*, unsigned),
                    void (*)(void*, unsigned)) = nullptr;
    Steinberg::Vst::GetSimulatorControl control = nullptr;

private:
    template <typename Function>
    void find(Function& function, const char* name)
    {
        function = reinterpret_cast<Function>(dlsym(handle, name));
        if (!function)
            throw std::runtime_error(std::string("not exported: ") + name);
    }

    void* handle;
};

} // namespace doubles
