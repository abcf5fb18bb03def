// late-host [own | lent | refusing]: a host that ends its plug-in after main, in the destructor of
// a static object, when the statics of module and editor library have been destroyed. It gives the
// factory a run loop that
//   own        the host keeps
//   lent       the host releases in main, so that only the plug-in's references keep it alive
//   refusing   the host keeps, and that does not unregister timers
// or, without an argument, none. In main the user turns a knob, which the controller finds at the
// next tick. Prints what happens.
#include "tools/common/LoadedSimulator.h"

#include "pluginterfaces/base/funknownimpl.h"
#include "pluginterfaces/gui/iplugview.h"
#include "pluginterfaces/vst/ivstaudioprocessor.h"
#include "pluginterfaces/vst/ivstcomponent.h"
#include "pluginterfaces/vst/ivsteditcontroller.h"
#include "pluginterfaces/vst/ivstmessage.h"
#include "public.sdk/source/vst/hosting/hostclasses.h"
#include "public.sdk/source/vst/hosting/module.h"

#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

namespace {

using namespace Steinberg;
using namespace Steinberg::Vst;

constexpr ParamID kVolume1 = 37012000;

/** Holds a reference to each timer until the timer is unregistered. */
class RunLoop final : public U::Implements<U::Directly<Linux::IRunLoop>> {
public:
    explicit RunLoop(bool refusesToStop)
    : refuses(refusesToStop)
    {
    }
    ~RunLoop() noexcept override { std::puts("run loop deleted"); }

    tresult PLUGIN_API registerEventHandler(Linux::IEventHandler*, Linux::FileDescriptor) override
    {
        return kNotImplemented;
    }
    tresult PLUGIN_API unregisterEventHandler(Linux::IEventHandler*) override
    {
        return kNotImplemented;
    }
    tresult PLUGIN_API registerTimer(Linux::ITimerHandler* handler, Linux::TimerInterval) override
    {
        timers.push_back(shared(handler));
        return kResultOk;
    }
    tresult PLUGIN_API unregisterTimer(Linux::ITimerHandler* handler) override
    {
        if (refuses)
            return kResultFalse;
        std::puts("timer taken out");
        timers.erase(std::remove(timers.begin(), timers.end(), handler), timers.end());
        return kResultOk;
    }

    void tick() const
    {
        const auto now = timers;
        for (const auto& timer : now)
            timer->onTimer();
    }

private:
    const bool refuses;
    std::vector<IPtr<Linux::ITimerHandler>> timers;
};

/** Prints the edit of the knob. */
class Handler final : public U::Implements<U::Directly<IComponentHandler>> {
public:
    tresult PLUGIN_API beginEdit(ParamID) override { return kResultOk; }
    tresult PLUGIN_API performEdit(ParamID id, ParamValue) override
    {
        if (id == kVolume1)
            std::puts("knob turned");
        return kResultOk;
    }
    tresult PLUGIN_API endEdit(ParamID) override { return kResultOk; }
    tresult PLUGIN_API restartComponent(int32) override { return kResultOk; }
};

class Host {
public:
    Host() = default;
    Host(const Host&) = delete;
    Host& operator=(const Host&) = delete;

    bool start(const std::string& itsLoop)
    {
        std::string error;
        module = VST3::Hosting::Module::create(BUNDLE_FOLDER, error);
        if (!module)
            return false;
        if (!itsLoop.empty())
            loop = owned(new RunLoop(itsLoop == "refusing"));
        const auto& factory = module->getFactory();
        factory.setHostContext(loop ? loop->unknownCast() : nullptr);
        for (const auto& info : factory.classInfos()) {
            if (info.category() == kVstAudioEffectClass)
                component = factory.createInstance<IComponent>(info.ID());
            else
                controller = factory.createInstance<IEditController>(info.ID());
        }
        if (!component || component->initialize(&application) != kResultOk)
            return false;
        if (!controller || controller->initialize(&application) != kResultOk)
            return false;
        controller->setComponentHandler(&handler);
        FUnknownPtr<IConnectionPoint>(component)->connect(
            FUnknownPtr<IConnectionPoint>(controller));
        FUnknownPtr<IConnectionPoint>(controller)
            ->connect(FUnknownPtr<IConnectionPoint>(component));
        if (itsLoop == "lent")
            loop = nullptr;
        SimulatorControl* user = tools::findSimulator();
        return user && user->turnKnob(kVolume1, 1);
    }

    ~Host()
    {
        if (!controller)
            return;
        tick();
        std::puts("ending");
        FUnknownPtr<IConnectionPoint>(controller)
            ->disconnect(FUnknownPtr<IConnectionPoint>(component));
        FUnknownPtr<IConnectionPoint>(component)->disconnect(
            FUnknownPtr<IConnectionPoint>(controller));
        component->terminate();
        controller->terminate();
        tick();
        controller->setComponentHandler(nullptr);
        component = nullptr;
        controller = nullptr;
        tick();
        std::puts("ended");
    }

private:
    void tick() const
    {
        if (loop)
            loop->tick();
    }

    HostApplication application;
    Handler handler;
    VST3::Hosting::Module::Ptr module;
    IPtr<RunLoop> loop;
    IPtr<IComponent> component;
    IPtr<IEditController> controller;
};

} // namespace

int main(int count, char** arguments)
{
    // Constructed before the module is loaded, so that it is destroyed after the module's statics.
    static Host host;
    std::setvbuf(stdout, nullptr, _IOLBF, BUFSIZ); // so that a crash loses no line
    const bool started = host.start(count > 1 ? arguments[1] : "");
    std::puts(started ? "main ends" : "did not start");
    return started ? 0 : 1;
}
