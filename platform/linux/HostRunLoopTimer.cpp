// VSTGUI timers on the run loop that the host handed to the plug-in factory.
#include "platform/TimerPlatformFactory.h"

#include "base/source/timer.h"
#include "pluginterfaces/base/smartpointer.h"

#include <memory>

namespace Steinberg {
namespace Vst {
namespace platform {

namespace {

class HostRunLoopTimer : public VSTGUI::IPlatformTimer, public ITimerCallback {
public:
    explicit HostRunLoopTimer(VSTGUI::IPlatformTimerCallback* listener)
    : callback(listener)
    {
    }
    ~HostRunLoopTimer() noexcept override { stop(); }

    bool start(uint32_t fireTime) override
    {
        if (timer)
            return false;
        // Null when the host has no run loop; the timer then never fires.
        timer = owned(Timer::create(this, fireTime));
        return timer != nullptr;
    }

    bool stop() override
    {
        if (!timer)
            return false;
        timer->stop();
        timer = nullptr;
        return true;
    }

    void onTimer(Timer*) override { callback->fire(); }

private:
    VSTGUI::IPlatformTimerCallback* callback;
    IPtr<Timer> timer;
};

class LinuxTimerFactory : public TimerPlatformFactory {
public:
    VSTGUI::PlatformTimerPtr
    createTimer(VSTGUI::IPlatformTimerCallback* callback) const noexcept override
    {
        return VSTGUI::makeOwned<HostRunLoopTimer>(callback);
    }
};

} // namespace

VSTGUI::PlatformFactoryPtr makeTimerPlatformFactory()
{
    return std::make_unique<LinuxTimerFactory>();
}

} // namespace platform
} // namespace Vst
} // namespace Steinberg
