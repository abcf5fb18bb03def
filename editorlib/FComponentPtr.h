// FComponentPtr: holds one component that the host's component factory made for us.
#pragma once

#include "basics/CallGuard.h"
#include "hostapi/IComponentFactory.h"
#include "hostapi/IHostClasses.h"
#include "pluginterfaces/base/ipluginbase.h"
#include "pluginterfaces/base/smartpointer.h"

#include <utility>

namespace Steinberg {

/** Owns a host-made component and its interface T. The component goes back to the factory that made
    it, which is why a plain reference does not do. Destruction terminates with force.

    [host main thread] */
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

    /** Makes the component whose attribute key has the value and asks it for T.
        @param hostContext borrowed; may be null, or a host without component factory
        @return whether T is held now; false as well when something was held already */
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

    /** Ends and returns the component.
        @param force go on although the component's own terminate failed
        @return false when that failed without force; everything is still held then */
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

    // A component that throws has failed: it must not stay behind half started, nor keep its
    // reference from going back to the factory.
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
