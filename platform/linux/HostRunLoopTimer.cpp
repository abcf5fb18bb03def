// VSTGUI timers on the run loop that the host handed to the plug-in factory.
#include "basics/CallGuard.h"
#include "platform/TimerPlatformFactory.h"
#include "platform/Timers.h"

#include "base/source/timer.h"
#include "pluginterfaces/base/smartpointer.h"
#include "pluginterfaces/gui/iplugview.h"

#include <memory>
#include <mutex>
#include <utility>

namespace Steinberg {
namespace Vst {
namespace platform {

namespace {

/** The run loop of the SDK's factory, which holds a reference to it while it makes timers. */
Linux::IRunLoop* factorysRunLoop = nullptr;

/** What the SDK's timer calls in our timer's place, as long as somebody holds that timer. */
struct TickReceiver final : ITimerCallback {
    explicit TickReceiver(VSTGUI::IPlatformTimerCallback* itsListener)
    : listener(itsListener)
    {
    }

    void onTimer(Timer*) override
    {
        if (listener)
            listener->fire();
    }

    bool isTimerHeldByHost() const
    {
        timer->addRef();
        return timer->release() > 1;
    }

    VSTGUI::IPlatformTimerCallback* listener; ///< null when it has stopped: ticks end here
    IPtr<Timer> timer;
    std::unique_ptr<TickReceiver> next;
};

/** Receivers of stopped timers that a host may call still: it refused to take the timer out, took
    its run loop back first, or is in the middle of a tick.

    A host may stop its plug-ins, and tick once more, in a static destructor that runs after this
    module's. So nothing here is destroyed at exit; what is left goes with the process. */
class StoppedTimers {
public:
    static void add(std::unique_ptr<TickReceiver> stopped) noexcept
    {
        const std::lock_guard<std::mutex> guard(mutex);
        stopped->next.reset(first);
        first = stopped.release();
        freeUnheld();
    }

    /** Frees those that no host holds any more. */
    static void clean() noexcept
    {
        const std::lock_guard<std::mutex> guard(mutex);
        freeUnheld();
    }

private:
    static void freeUnheld() noexcept
    {
        std::unique_ptr<TickReceiver> list(first);
        auto* link = &list;
        while (*link) {
            if ((*link)->isTimerHeldByHost())
                link = &(*link)->next;
            else
                *link = std::move((*link)->next);
        }
        first = list.release();
    }

    // Instances may end on several threads.
    static inline std::mutex mutex;
    static inline TickReceiver* first = nullptr;
};

// Called when the module is unloaded; at exit that is after every static destructor.
[[gnu::destructor]] void cleanStoppedTimers()
{
    StoppedTimers::clean();
}

class HostRunLoopTimer : public VSTGUI::IPlatformTimer {
public:
    explicit HostRunLoopTimer(VSTGUI::IPlatformTimerCallback* callback)
    : listener(callback)
    {
    }
    ~HostRunLoopTimer() noexcept override { stop(); }

    bool start(uint32_t fireTime) override
    {
        if (receiver)
            return false;
        return guarded(false, [&] {
            auto started = std::make_unique<TickReceiver>(listener);
            // Null when the host has no run loop; the timer then never fires.
            started->timer = owned(Timer::create(started.get(), fireTime));
            if (!started->timer)
                return false;
            runLoop = factorysRunLoop;
            receiver = std::move(started);
            return true;
        });
    }

    bool stop() override
    {
        if (!receiver)
            return false;
        receiver->listener = nullptr;
        guarded([this] {
            receiver->timer->stop();
            StoppedTimers::add(std::move(receiver));
        });
        // Left where stopping threw. At its end the SDK's timer would ask the run loop again, where
        // an exception ends the host. So neither it nor what it calls has an end.
        static_cast<void>(receiver.release());
        runLoop = nullptr;
        return true;
    }

private:
    VSTGUI::IPlatformTimerCallback* listener;
    std::unique_ptr<TickReceiver> receiver; ///< set while this runs
    /** The SDK's timer asks it to take it out, also when the factory has given back its reference,
        which it does at exit. */
    IPtr<Linux::IRunLoop> runLoop;
};

class LinuxTimerFactory : public TimerPlatformFactory {
public:
    /** Null when memory ran out, which VSTGUI's timer takes for one that never ticks. */
    VSTGUI::PlatformTimerPtr
    createTimer(VSTGUI::IPlatformTimerCallback* callback) const noexcept override
    {
        return guarded(VSTGUI::PlatformTimerPtr(),
                       [=] { return VSTGUI::makeOwned<HostRunLoopTimer>(callback); });
    }
};

} // namespace

void noteHostContext(FUnknown* context)
{
    factorysRunLoop = nullptr;
    factorysRunLoop = FUnknownPtr<Linux::IRunLoop>(context);
}

VSTGUI::PlatformFactoryPtr makeTimerPlatformFactory()
{
    return std::make_unique<LinuxTimerFactory>();
}

} // namespace platform
} // namespace Vst
} // namespace Steinberg
