// LoadedSimulator: the built simulator, loaded as the plug-in loads the editor library.
#pragma once

#include "editorlib/VstIEditorConnect.h"
#include "simulator/SimulatorControl.h"
#include "tools/common/LibraryHandle.h"

#include <stdexcept>

namespace doubles {

using Steinberg::Vst::SimulatorControl;
using Steinberg::Vst::VstIEditorConnect;
using Steinberg::Vst::VstIObserver;

/** The library's file, loaded with every symbol bound. */
class LoadedSimulator {
public:
    explicit LoadedSimulator(const std::string& path = SIMULATOR_FILE)
    : file(path, RTLD_NOW)
    {
        if (!file)
            throw std::runtime_error(file.refusal());
        if (!connect || !observe || !control)
            throw std::runtime_error(path + " lacks an entry point");
    }

private:
    const Steinberg::Vst::tools::LibraryHandle file;

public:
    const Steinberg::Vst::GetEditorConnect connect = file.connectEntry();
    const Steinberg::Vst::GetObserver observe = file.observerEntry();
    const Steinberg::Vst::GetSimulatorControl control =
        file.find<Steinberg::Vst::GetSimulatorControl>(Steinberg::Vst::getSimulatorControlName);
};

} // namespace doubles
