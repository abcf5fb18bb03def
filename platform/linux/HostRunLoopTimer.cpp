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

/** The host's run loop. Borrowed: the SDK's factory holds a reference while timers are made. */
Linux::IRunLoop* factorysRunLoop = nullptr;

/** What the SDK's timer calls. It outlives our timer when the host still holds the SDK's one. */
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

    VSTGUI::IPlatformTimerCallback* listener; ///< null once our timer has stopped
    IPtr<Timer> timer;
    std::unique_ptr<TickReceiver> next;
};

/** Receivers of stopped timers that the host may still call, because it did not unregister the
    timer, released its run loop before, or is in the middle of a tick.

    A host may stop its plug-ins, and tick once more, in a static destructor that runs after
    those of this module. So nothing here is destroyed at exit: the end of the process frees what
    is left. */
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

// Runs when the module is unloaded; at exit after all static destructors.
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
        // Still here when stopping threw. The SDK's timer would ask the run loop again in its
        // destructor, where an exception ends the host, so both are leaked on purpose.
        static_cast<void>(receiver.release());
        runLoop = nullptr;
        return true;
    }

private:
    VSTGUI::IPlatformTimerCallback* listener;
    std::unique_ptr<TickReceiver> receiver; ///< set while this runs
    /** Needed to unregister the SDK's timer: the factory releases its own reference at exit. */
    IPtr<Linux::IRunLoop> runLoop;
};

class LinuxTimerFactory : public TimerPlatformFactory {
public:
    /** Null when memory ran out: VSTGUI's timer then never ticks. */
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
