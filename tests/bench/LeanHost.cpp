#include "tests/bench/LeanHost.h"

#include "pluginterfaces/vst/ivstmessage.h"
#include "public.sdk/source/vst/hosting/hostclasses.h"

namespace bench {

using namespace Steinberg;

LeanHost::LeanHost(LeanLibrary& library, bool unicode)
: isUnicode(unicode)
{
    components.getter.service.library = &library;
    add(IComponentFactory::iid, &components);
}

tresult PLUGIN_API LeanHost::queryInterface(const TUID _iid, void** obj)
{
    QUERY_INTERFACE(_iid, obj, IHostClasses::iid, IHostClasses)
    QUERY_INTERFACE(_iid, obj, FUnknown::iid, Vst::IHostApplication)
    QUERY_INTERFACE(_iid, obj, Vst::IHostApplication::iid, Vst::IHostApplication)
    if (isUnicode)
        return application.queryInterface(_iid, obj);
    *obj = nullptr;
    return kNoInterface;
}

tresult PLUGIN_API LeanHost::getName(Vst::String128 name)
{
    name[0] = 0;
    return kResultOk;
}

tresult PLUGIN_API LeanHost::createInstance(TUID, TUID, void** obj)
{
    *obj = new Vst::HostMessage;
    return kResultOk;
}

tresult PLUGIN_API LeanHost::getHostInterface(const TUID wanted, void** obj)
{
    for (const Object& offered : objects)
        if (FUnknownPrivate::iidEqual(wanted, offered.id)) {
            offered.object->addRef();
            *obj = offered.object;
            return kResultOk;
        }
    return kNoInterface;
}

} // namespace bench
