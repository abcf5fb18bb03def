// RunLoop: the host's timers. On Linux they run on the time of the song.
#pragma once

#include "base/source/fobject.h"
#include "pluginterfaces/base/funknownimpl.h"
#include "pluginterfaces/gui/iplugview.h"

#include <vector>

namespace Steinberg {
namespace Vst {
namespace play {

#if SMTG_OS_LINUX

/** Timers fire when the play head passes their time, not when the clock on the wall does: a song
    that is played as fast as possible sees as many ticks as one in real time.

    [host main thread] only. */
class RunLoop final : public U::Implements<U::Directly<Linux::IRunLoop>> {
public:
    tresult PLUGIN_API registerEventHandler(Linux::IEventHandler* handler,
                                            Linux::FileDescriptor descriptor) override;
    tresult PLUGIN_API unregisterEventHandler(Linux::IEventHandler* handler) override;

    /** The handler is borrowed until it is unregistered, which it may do from inside its tick. */
    tresult PLUGIN_API registerTimer(Linux::ITimerHandler* handler,
                                     Linux::TimerInterval milliseconds) override;
    tresult PLUGIN_API unregisterTimer(Linux::ITimerHandler* handler) override;

    /** Moves the time on and fires what has become due, once for each period that has passed. */
    void advance(double seconds);

    /** Fires every timer once, due or not. A timer that one of them ends is left out. */
    void fireAll();

    size_t timerCount() const { return timers.size(); }

    int64 ticks() const { return tickCount; }

private:
    struct Timer {
        Linux::ITimerHandler* handler;
        double period; ///< seconds
        double due;    ///< seconds
    };
    Timer* nextDue();

    std::vector<Timer> timers;
    double now = 0;
    int64 tickCount = 0;
};

#else

/** A plug-in's timers are on the system's own loop and run by the clock on the wall: a song that is
    played faster than that sees fewer of their ticks.

    [host main thread] only. */
class RunLoop final : public FObject {
public:
    /** Lets the system fire what has become due since the last time. Waits for nothing. */
    void advance(double seconds);

    /** None: the system counts them for nobody. */
    int64 ticks() const { return 0; }
};

#endif

} // namespace play
} // namespace Vst
} // namespace Steinberg
