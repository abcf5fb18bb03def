// VSTGUI timers on the run loop that the host handed to the plug-in factory.
#include "platform/TimerPlatformFactory.h"

#include "base/source/timer.h"
#include "pluginterfaces/base/smartpointer.h"

#include <memory>
#include <mutex>
#include <vector>

namespace Steinberg {
namespace Vst {
namespace platform {

namespace {

/** What the SDK's timer calls in our timer's place. A host may tick once more after it was asked to
    stop: it refused, or it took its run loop back first. The SDK's timer then lives on with the
    host, and calls an object of ours of which nobody says when it may go. So none goes before the
    module does: one that is free is used again, where a late tick is just one tick more. */
class TickReceiver : public ITimerCallback {
public:
    /** A free receiver that passes ticks on to listener from now on. Throws std::bad_alloc. */
    static TickReceiver* take(VSTGUI::IPlatformTimerCallback* listener)
    {
        static std::vector<std::unique_ptr<TickReceiver>> all;
        const std::lock_guard<std::mutex> guard(lock());
        for (const auto& receiver : all) {
            if (receiver->callback)
                continue;
            receiver->callback = listener;
            return receiver.get();
        }
        all.push_back(std::make_unique<TickReceiver>());
        all.back()->callback = listener;
        return all.back().get();
    }

    /** From now on ticks end here. */
    void giveBack() noexcept
    {
        const std::lock_guard<std::mutex> guard(lock());
        callback = nullptr;
    }

    void onTimer(Timer*) override
    {
        if (callback)
            callback->fire();
    }

private:
    // Instances may be made on several threads; ticks come on the thread of the one that stops
    // them.
    static std::mutex& lock()
    {
        static std::mutex mutex;
        return mutex;
    }

    VSTGUI::IPlatformTimerCallback* callback = nullptr; ///< null while nobody uses this
};

class HostRunLoopTimer : public VSTGUI::IPlatformTimer {
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
        try {
            receiver = TickReceiver::take(callback);
            // Null when the host has no run loop; the timer then never fires.
            timer = owned(Timer::create(receiver, fireTime));
        } catch (...) {
            timer = nullptr;
        }
        if (!timer)
            forgetReceiver();
        return timer != nullptr;
    }

    bool stop() override
    {
        if (!timer)
            return false;
        forgetReceiver();
        Timer* ended = timer.take();
        try {
            ended->stop();
        } catch (...) {
            // At its end the SDK's timer would ask the run loop again, where an exception ends the
            // host. So it has no end.
            return true;
        }
        ended->release();
        return true;
    }

private:
    void forgetReceiver() noexcept
    {
        if (receiver)
            receiver->giveBack();
        receiver = nullptr;
    }

    VSTGUI::IPlatformTimerCallback* callback;
    TickReceiver* receiver = nullptr; ///< set while timer is
    IPtr<Timer> timer;
};

class LinuxTimerFactory : public TimerPlatformFactory {
public:
    /** Null when memory ran out, which VSTGUI's timer takes for one that never ticks. */
    VSTGUI::PlatformTimerPtr
    createTimer(VSTGUI::IPlatformTimerCallback* callback) const noexcept override
    {
        try {
            return VSTGUI::makeOwned<HostRunLoopTimer>(callback);
        } catch (...) {
            return nullptr;
        }
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
