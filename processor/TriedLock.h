// TriedLock: a lock that is tried and never waited for.
#pragma once

#include "base/thread/include/flock.h"

namespace Steinberg {
namespace Vst {

/** Pauses the CPU for some nanoseconds before the next try. The thread goes on running: no call of
    the system. */
inline void pauseBetweenTries()
{
#if defined(__x86_64__) || defined(__i386__)
    __builtin_ia32_pause();
#elif defined(__aarch64__)
    __asm__ volatile("isb");
#endif
}

/** Tries to take a lock, and if it succeeds holds it until it is destroyed. If all threads only try
    a lock and none waits for it, unlocking wakes no thread and makes no system call. */
class TriedLock {
public:
    /** @param tries how often to try at most, with a pause of some nanoseconds after each */
    TriedLock(Base::Thread::FLock& tried, int tries)
    : lock(tried)
    , isHeld(take(tries))
    {
    }
    ~TriedLock()
    {
        if (isHeld)
            lock.unlock();
    }
    TriedLock(const TriedLock&) = delete;
    TriedLock& operator=(const TriedLock&) = delete;

    explicit operator bool() const { return isHeld; }

private:
    bool take(int tries)
    {
        for (; tries > 0; --tries) {
            if (lock.trylock())
                return true;
            pauseBetweenTries();
        }
        return false;
    }

    Base::Thread::FLock& lock;
    const bool isHeld;
};

} // namespace Vst
} // namespace Steinberg
