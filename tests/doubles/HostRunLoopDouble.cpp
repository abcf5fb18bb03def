#include "tests/doubles/HostRunLoopDouble.h"

#include "tests/doubles/MacsCode.h"

#include <algorithm>
#include <cmath>

#if !SMTG_OS_LINUX
#include <CoreFoundation/CoreFoundation.h>
#endif

namespace doubles {

using namespace Steinberg;

HostRunLoopDouble::HostRunLoopDouble(HostBooks& host)
: Counted(host, "runLoop")
{
}

#if SMTG_OS_LINUX

/** A handler that is still registered may be destroyed already, so it is not released here. The
    ledger reports it. */
HostRunLoopDouble::~HostRunLoopDouble()
{
    for (auto& timer : timers)
        timer.handler.take();
}

bool HostRunLoopDouble::isRegistered(const Linux::ITimerHandler* handler) const
{
    return std::any_of(timers.begin(), timers.end(),
                       [&](const Timer& timer) { return timer.handler.get() == handler; });
}

void HostRunLoopDouble::tick()
{
    const auto now = timers;
    for (const auto& timer : now)
        if (isRegistered(timer.handler))
            timer.handler->onTimer();
    if (const auto* mac = macSystem())
        mac->fireTimers();
}

std::vector<uint64> HostRunLoopDouble::intervals() const
{
    std::vector<uint64> result;
    for (const auto& timer : timers)
        result.push_back(timer.interval);
    if (const auto* mac = macSystem())
        result.insert(result.end(), mac->timers(),
                      static_cast<uint64>(std::llround(mac->interval() * 1000)));
    return result;
}

std::vector<std::string> HostRunLoopDouble::unbalanced() const
{
    const size_t count = intervals().size();
    if (count == 0)
        return {};
    return {"timers: expected 0, is " + std::to_string(count)};
}

tresult HostRunLoopDouble::registerEventHandler(Linux::IEventHandler* handler,
                                                Linux::FileDescriptor fd)
{
    called("registerEventHandler", handler, fd);
    return kNotImplemented;
}

tresult HostRunLoopDouble::unregisterEventHandler(Linux::IEventHandler* handler)
{
    called("unregisterEventHandler", handler);
    return kNotImplemented;
}

tresult HostRunLoopDouble::registerTimer(Linux::ITimerHandler* handler,
                                         Linux::TimerInterval interval)
{
    if (!called("registerTimer", interval) || !handler)
        return kResultFalse;
    if (registerResult == kResultOk)
        timers.push_back({shared(handler), interval});
    return registerResult;
}

tresult HostRunLoopDouble::unregisterTimer(Linux::ITimerHandler* handler)
{
    if (!called("unregisterTimer"))
        return kResultFalse;
    const auto end = std::remove_if(timers.begin(), timers.end(), [&](const Timer& timer) {
        return timer.handler.get() == handler;
    });
    const bool known = end != timers.end();
    timers.erase(end, timers.end());
    return known ? kResultOk : kResultFalse;
}

#else

void HostRunLoopDouble::tick()
{
    constexpr double kPeriodAndALittle = 0.06; // seconds
    CFRunLoopRunInMode(kCFRunLoopDefaultMode, kPeriodAndALittle, false);
}

#endif

std::vector<std::string> onThisSystem(std::vector<std::string> calls)
{
    if (SMTG_OS_LINUX && !kIsMacsCode)
        return calls;
    const auto isAskedOnLinux = [](const auto& call) { return call.rfind("runLoop.", 0) == 0; };
    calls.erase(std::remove_if(calls.begin(), calls.end(), isAskedOnLinux), calls.end());
    return calls;
}

} // namespace doubles
