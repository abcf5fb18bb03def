// The class factory: GetPluginFactory and the two classes behind it.
#include "basics/CallGuard.h"
#include "basics/PlugInInfo.h"
#include "controller/VstK2xController.h"
#include "platform/Timers.h"
#include "processor/VstK2x.h"

#include "pluginterfaces/base/fplatform.h"
#include "pluginterfaces/vst/ivstaudioprocessor.h"
#include "pluginterfaces/vst/ivstcomponent.h"
#include "pluginterfaces/vst/ivsteditcontroller.h"
#include "public.sdk/source/main/pluginfactory.h"

namespace Steinberg {
namespace Vst {

namespace {

const PFactoryInfo& factoryInfo()
{
    // Flags 0: the constructor adds the Unicode flag.
    static const PFactoryInfo info(kPlugInVendor, "", "", 0);
    return info;
}

const PClassInfo2& processorInfo()
{
    TUID id;
    kProcessorUID.toTUID(id);
    // Without a vendor here, hosts take the factory's.
    static const PClassInfo2 info(id, PClassInfo::kManyInstances, kVstAudioEffectClass, kPlugInName,
                                  kSimpleModeSupported, kPlugInSubCategories, nullptr,
                                  kPlugInVersion, kPlugInSdkVersion);
    return info;
}

const PClassInfo2& controllerInfo()
{
    TUID id;
    kControllerUID.toTUID(id);
    static const PClassInfo2 info(id, PClassInfo::kManyInstances, kVstComponentControllerClass,
                                  kControllerName, 0, "", nullptr, kPlugInVersion,
                                  kPlugInSdkVersion);
    return info;
}

/** The SDK's factory, but no exception leaves it, whether a constructor or the host's context
    throws one. */
class GuardedFactory : public CPluginFactory {
public:
    using CPluginFactory::CPluginFactory;

    tresult PLUGIN_API createInstance(FIDString classID, FIDString interfaceID, void** obj) override
    {
        const auto result = guarded<tresult>(kOutOfMemory, [&] {
            return CPluginFactory::createInstance(classID, interfaceID, obj);
        });
        if (result != kResultOk && obj)
            *obj = nullptr;
        return result;
    }

    tresult PLUGIN_API setHostContext(FUnknown* context) override
    {
        guarded([] { platform::noteHostContext(nullptr); });
        const auto result =
            guarded<tresult>(kResultFalse, [&] { return CPluginFactory::setHostContext(context); });
        if (result == kResultOk)
            guarded([&] { platform::noteHostContext(context); });
        return result;
    }
};

IPluginFactory* makeFactory()
{
    // Made with one reference, which becomes the caller's.
    IPtr<CPluginFactory> factory = owned(new GuardedFactory(factoryInfo()));
    if (!factory->registerClass(&processorInfo(), &VstK2x::createInstance, nullptr) ||
        !factory->registerClass(&controllerInfo(), &VstK2xController::createInstance, nullptr))
        return nullptr;
    gPluginFactory = factory.take();
    return gPluginFactory;
}

} // namespace
} // namespace Vst
} // namespace Steinberg

/** The factory: made by the first call, and again by the first call after its last reference was
    released. Each call gives one reference, which the host releases; null only when memory ran out.
    [host main thread] */
SMTG_EXPORT_SYMBOL Steinberg::IPluginFactory* PLUGIN_API GetPluginFactory()
{
    using namespace Steinberg;
    if (gPluginFactory) {
        gPluginFactory->addRef();
        return gPluginFactory;
    }
    return Vst::guarded<IPluginFactory*>(nullptr, [] { return Vst::makeFactory(); });
}
