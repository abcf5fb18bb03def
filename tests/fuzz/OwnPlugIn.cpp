#include "processor/VstK2x.h"
#include "tests/fuzz/HostCallsPlugIn.h"

using namespace Steinberg;
using namespace Steinberg::Vst;

FUnknown* fuzz::newController()
{
    return VstK2xController::createInstance(nullptr);
}

FUnknown* fuzz::newProcessor()
{
    return VstK2x::createInstance(nullptr);
}

bool fuzz::isConnection(const VstK2xController& controller, bool expected)
{
    return (controller.getEditorConnection() != nullptr) == expected;
}
