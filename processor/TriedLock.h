// TriedLock: a lock that is tried and never waited for.
#pragma once

#include "base/thread/include/flock.h"

namespace Steinberg {
namespace Vst {

/** Tells the processor that the thread is about to look again. Not the system: nobody else runs. */
inline void pauseBetweenTries()
{
#if defined(__x86_64__) || defined(__i386__)
    __builtin_ia32_pause();
#elif defined(__aarch64__)
    __asm__ volatile("isb");
#endif
}

/** Holds a lock for as long as it lives if one of its tries got it. As long as nobody waits for a
    lock but only tries it, giving it back wakes nobody, and so makes no system call either. */
class TriedLock {
public:
    /** @param tries at most, with a pause of some nanoseconds after each that was in vain */
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
