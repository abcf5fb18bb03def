#include "tools/host/RunLoop.h"

#include <algorithm>

namespace Steinberg {
namespace Vst {
namespace play {

namespace {
constexpr double kSecondsPerMillisecond = 0.001;
/** Sums of periods and of block lengths differ in their last digits. */
constexpr double kTolerance = 1e-9;
} // namespace

tresult PLUGIN_API RunLoop::registerEventHandler(Linux::IEventHandler*, Linux::FileDescriptor)
{
    return kNotImplemented; // play opens no view, and nothing else waits for descriptors
}

tresult PLUGIN_API RunLoop::unregisterEventHandler(Linux::IEventHandler*)
{
    return kNotImplemented;
}

tresult PLUGIN_API RunLoop::registerTimer(Linux::ITimerHandler* handler,
                                          Linux::TimerInterval milliseconds)
{
    if (!handler || milliseconds == 0)
        return kInvalidArgument;
    const auto period = static_cast<double>(milliseconds) * kSecondsPerMillisecond;
    timers.push_back({handler, period, now + period});
    return kResultOk;
}

tresult PLUGIN_API RunLoop::unregisterTimer(Linux::ITimerHandler* handler)
{
    const auto first = std::remove_if(timers.begin(), timers.end(),
                                      [&](const Timer& timer) { return timer.handler == handler; });
    if (first == timers.end())
        return kResultFalse;
    timers.erase(first, timers.end());
    return kResultOk;
}

RunLoop::Timer* RunLoop::nextDue()
{
    const auto first = std::min_element(
        timers.begin(), timers.end(), [](const Timer& a, const Timer& b) { return a.due < b.due; });
    return first != timers.end() && first->due <= now + kTolerance ? &*first : nullptr;
}

void RunLoop::fireAll()
{
    const auto all = timers;
    for (const auto& timer : all)
        if (std::any_of(timers.begin(), timers.end(),
                        [&](const Timer& left) { return left.handler == timer.handler; }))
            timer.handler->onTimer();
}

void RunLoop::advance(double seconds)
{
    now += seconds;
    while (auto* timer = nextDue()) {
        timer->due += timer->period;
        ++tickCount;
        timer->handler->onTimer(); // may change the list: timer is not touched afterwards
    }
}

} // namespace play
} // namespace Vst
} // namespace Steinberg
