// The fake Core Foundation's run loops, one for each thread. Timers fire when a test says so. By
// Apple's reference of CFRunLoop a loop retains its timers until they are made invalid, and a timer
// fires only in its mode.
#include "tests/macos/fakes/FakeCoreFoundation.h"
#include "tests/macos/fakes/FakeObject.h"

#include <algorithm>
#include <vector>

namespace {

/** Stands for all modes in which a host waits for events, also while a menu is open or the mouse is
    tracked. Only its address is used. */
const char commonModes = 0;

} // namespace

const CFRunLoopMode kCFRunLoopCommonModes = reinterpret_cast<CFRunLoopMode>(&commonModes);

/** A run loop belongs to its thread; its references are not counted. */
struct __CFRunLoop {
    int unused = 0;
};

struct __CFRunLoopTimer : doubles::FakeObject {
    ~__CFRunLoopTimer() override;

    CFRunLoopTimerCallBack callback = nullptr;
    void* info = nullptr;
    CFRunLoopRef loop = nullptr;
    CFRunLoopMode mode = nullptr;
};

namespace {

constexpr CFAbsoluteTime kNow = 1000;

/** The timers on run loops, which hold one reference to each. Never destroyed: a module that is
    still loaded at exit uses it after the destructors of statics. */
std::vector<CFRunLoopTimerRef>& scheduled = *new std::vector<CFRunLoopTimerRef>;

} // namespace

__CFRunLoopTimer::~__CFRunLoopTimer()
{
    scheduled.erase(std::remove(scheduled.begin(), scheduled.end(), this), scheduled.end());
}

namespace doubles {

size_t FakeCoreFoundation::timers()
{
    const std::lock_guard guard(fakeObjectLock());
    return scheduled.size();
}

void FakeCoreFoundation::fireTimers()
{
    std::vector<CFRunLoopTimerRef> due;
    {
        const std::lock_guard guard(fakeObjectLock());
        for (auto* timer : scheduled)
            if (timer->loop == CFRunLoopGetCurrent() && timer->mode == kCFRunLoopCommonModes)
                due.push_back(timer);
    }
    for (auto* timer : due)
        timer->callback(timer, timer->info);
}

} // namespace doubles

using namespace doubles;

CFAbsoluteTime CFAbsoluteTimeGetCurrent(void)
{
    return kNow;
}

CFRunLoopRef CFRunLoopGetCurrent(void)
{
    thread_local __CFRunLoop loop;
    return &loop;
}

CFRunLoopTimerRef CFRunLoopTimerCreate(CFAllocatorRef, CFAbsoluteTime first,
                                       CFTimeInterval interval, CFOptionFlags, CFIndex,
                                       CFRunLoopTimerCallBack callback,
                                       CFRunLoopTimerContext* context)
{
    auto* timer = new __CFRunLoopTimer;
    timer->callback = callback;
    timer->info = context->info;
    FakeCoreFoundation::lastDelay = first - kNow;
    FakeCoreFoundation::lastInterval = interval;
    return timer;
}

void CFRunLoopTimerSetTolerance(CFRunLoopTimerRef, CFTimeInterval tolerance)
{
    FakeCoreFoundation::lastTolerance = tolerance;
}

void CFRunLoopAddTimer(CFRunLoopRef loop, CFRunLoopTimerRef timer, CFRunLoopMode mode)
{
    const std::lock_guard guard(fakeObjectLock());
    CFRetain(timer);
    timer->loop = loop;
    timer->mode = mode;
    scheduled.push_back(timer);
}

void CFRunLoopTimerInvalidate(CFRunLoopTimerRef timer)
{
    const std::lock_guard guard(fakeObjectLock());
    const auto found = std::find(scheduled.begin(), scheduled.end(), timer);
    if (found == scheduled.end())
        return;
    scheduled.erase(found);
    CFRelease(timer);
}
