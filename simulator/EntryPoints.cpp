// The three functions that the simulated editor library exports.
#include "basics/CallGuard.h"
#include "simulator/EditorObserver.h"
#include "simulator/InstanceList.h"

using namespace Steinberg::Vst;

#define SIMULATOR_EXPORT extern "C" __attribute__((visibility("default")))

SIMULATOR_EXPORT void getVSTEditorConnectObject(VstIEditorConnect** out)
{
    if (!out)
        return;
    *out = guarded<VstIEditorConnect*>(nullptr,
                                       [] { return simulator::InstanceList::get().create(); });
}

// Only the ID is used: it contains the parameter's block, number and part.
SIMULATOR_EXPORT void getVSTObserverObject(VstIObserver** out, void* owner, int vstParamId, int,
                                           int, int, void (*valueChanged)(void*, unsigned, int),
                                           VstIObserver::ParamModeType,
                                           void (*beginEdit)(void*, unsigned),
                                           void (*endEdit)(void*, unsigned))
{
    if (!out)
        return;
    const simulator::ObserverCallbacks callbacks{owner, static_cast<Steinberg::uint32>(vstParamId),
                                                 valueChanged, beginEdit, endEdit};
    *out =
        guarded<VstIObserver*>(nullptr, [&] { return new simulator::EditorObserver(callbacks); });
}

SIMULATOR_EXPORT SimulatorControl* getSimulatorControl(int index)
{
    return simulator::InstanceList::get().control(index);
}
