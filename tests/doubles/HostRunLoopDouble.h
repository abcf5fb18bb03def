// HostRunLoopDouble: the host's run loop on Linux. Its timers tick when the test says so, and with
// them those on the fake Mac's run loop, where the plug-in is the Mac's code. On a Mac it has no
// timers: the plug-in uses the system's own loop.
//
//   host.runLoop.tick();                              // every timer once, in registration order
//   host.runLoop.intervals() == {50}
//   trace: "runLoop.registerTimer(50)", "runLoop.unregisterTimer()"
#pragma once

#include "pluginterfaces/gui/iplugview.h"
#include "tests/doubles/Counted.h"

namespace doubles {

#if SMTG_OS_LINUX

/** Holds a reference to each handler while it is registered. [host main thread] */
class HostRunLoopDouble final : public Counted<Steinberg::Linux::IRunLoop> {
public:
    explicit HostRunLoopDouble(HostBooks& host);
    ~HostRunLoopDouble() override;

    Steinberg::tresult registerResult = Steinberg::kResultOk; ///< anything else takes no timer

    void tick();
    std::vector<Steinberg::uint64> intervals() const;

    /** Drops every timer, also one that was not unregistered because the call failed. */
    void forgetTimers() { timers.clear(); }

    /** "timers: expected 0, is 1" while any is registered. */
    std::vector<std::string> unbalanced() const;

    Steinberg::tresult PLUGIN_API registerEventHandler(
        Steinberg::Linux::IEventHandler* handler, Steinberg::Linux::FileDescriptor fd) override;
    Steinberg::tresult PLUGIN_API
    unregisterEventHandler(Steinberg::Linux::IEventHandler* handler) override;
    Steinberg::tresult PLUGIN_API registerTimer(Steinberg::Linux::ITimerHandler* handler,
                                                Steinberg::Linux::TimerInterval interval) override;
    Steinberg::tresult PLUGIN_API
    unregisterTimer(Steinberg::Linux::ITimerHandler* handler) override;

private:
    struct Timer {
        Steinberg::IPtr<Steinberg::Linux::ITimerHandler> handler;
        Steinberg::uint64 interval;
    };
    bool isRegistered(const Steinberg::Linux::ITimerHandler* handler) const;

    std::vector<Timer> timers;
};

#else

/** Holds no timer. [host main thread] */
class HostRunLoopDouble final : public Counted<Steinberg::FUnknown> {
public:
    explicit HostRunLoopDouble(HostBooks& host);

    /** Runs the system's loop for a little longer than the plug-in's period. */
    void tick();
    std::vector<Steinberg::uint64> intervals() const { return {}; }
    void forgetTimers() {}
    std::vector<std::string> unbalanced() const { return {}; }
};

#endif

/** Leaves out the calls of a run loop on a system whose plug-in does not use the host's. */
std::vector<std::string> onThisSystem(std::vector<std::string> calls);

} // namespace doubles
