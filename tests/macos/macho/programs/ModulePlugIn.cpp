// The plug-in that the fuzz target host-calls tries: made by the module of the Mac's machine code.
#include "tests/fuzz/FuzzInput.h"
#include "tests/fuzz/HostCallsPlugIn.h"

#include "pluginterfaces/vst/ivstaudioprocessor.h"
#include "public.sdk/source/vst/hosting/module.h"

using namespace Steinberg;
using namespace Steinberg::Vst;

namespace {

const VST3::Hosting::PluginFactory& factory()
{
    static std::string error;
    static const auto module = VST3::Hosting::Module::create(BUNDLE_FOLDER, error);
    FUZZ_CHECK(module);
    return module->getFactory();
}

template <typename Face>
FUnknown* newObject(const char* category)
{
    for (const auto& info : factory().classInfos())
        if (info.category() == category)
            return factory().createInstance<Face>(info.ID()).take();
    return nullptr;
}

} // namespace

FUnknown* fuzz::newController()
{
    return newObject<IEditController>(kVstComponentControllerClass);
}

FUnknown* fuzz::newProcessor()
{
    return newObject<IAudioProcessor>(kVstAudioEffectClass);
}

bool fuzz::isConnection(const VstK2xController& /*controller*/, bool /*expected*/)
{
    return true;
}
