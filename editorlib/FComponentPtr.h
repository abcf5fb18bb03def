// FComponentPtr: holds one component that the host's component factory made for us.
#pragma once

#include "basics/CallGuard.h"
#include "hostapi/IComponentFactory.h"
#include "hostapi/IHostClasses.h"
#include "pluginterfaces/base/ipluginbase.h"
#include "pluginterfaces/base/smartpointer.h"

#include <utility>

namespace Steinberg {

/** Owns a component of the host and its interface T. The component must be given back to the
    factory that made it, so a plain reference does not do. The destructor calls terminate with
    force. [host main thread] */
template <class T>
class FComponentPtr {
public:
    FComponentPtr() = default;
    FComponentPtr(const FComponentPtr&) = delete;
    FComponentPtr& operator=(const FComponentPtr&) = delete;
    ~FComponentPtr()
    {
        Vst::guarded([this] { terminate(true); });
    }

    /** Makes the component that has this value of the attribute key, queries it for T, and calls
        its IPluginBase::initialize if it has one.
        @param hostContext borrowed; may be null, and may have no component factory
        @return whether T is held now; false when one was held before the call */
    bool initialize(FUnknown* hostContext, const char* key, const char* value)
    {
        if (object)
            return false;
        findFactory(hostContext);
        if (!factory)
            return false;
        component = factory->createComponent(key, value);
        if (!component)
            return false;
        object = FUnknownPtr<T>(component);
        if (object && !startObject(hostContext))
            object = nullptr;
        if (!object)
            giveBack();
        return object != nullptr;
    }

    /** Calls the component's IPluginBase::terminate if it has one, and gives the component back.
        @param force give it back even when its own terminate failed
        @return false when that failed without force: everything is then still held */
    bool terminate(bool force)
    {
        if (!stopObject() && !force)
            return false;
        object = nullptr;
        giveBack();
        factory = nullptr;
        return true;
    }

    T* get() const { return object; }
    T* operator->() const { return object; }
    explicit operator bool() const { return object != nullptr; }

private:
    void findFactory(FUnknown* hostContext)
    {
        if (factory)
            return;
        FUnknownPtr<IHostClasses> hostClasses(hostContext);
        if (!hostClasses)
            return;
        IComponentFactory* found = nullptr;
        if (hostClasses->getHostInterface(IComponentFactory::iid,
                                          reinterpret_cast<void**>(&found)) == kResultOk)
            factory = owned(found);
    }

    // An exception counts as failure, so that the component is given back in any case.
    bool startObject(FUnknown* hostContext)
    {
        return Vst::guarded(false, [&] {
            FUnknownPtr<IPluginBase> base(object);
            return !base || base->initialize(hostContext) == kResultOk;
        });
    }

    bool stopObject()
    {
        return Vst::guarded(false, [&] {
            FUnknownPtr<IPluginBase> base(object);
            return !base || base->terminate() == kResultOk;
        });
    }

    void giveBack()
    {
        if (component)
            factory->destroyComponent(std::exchange(component, nullptr));
    }

    IPtr<IComponentFactory> factory;
    FUnknown* component = nullptr; ///< the reference that destroyComponent takes over
    IPtr<T> object;
};

} // namespace Steinberg
