// Wakeup: lets a thread wait until another thread, which may be a real-time thread, wakes it.
#pragma once

#ifdef __APPLE__
#include <dispatch/dispatch.h>
#else
#include <cerrno>
#include <ctime>
#include <semaphore.h>
#endif

namespace Steinberg {
namespace Vst {
namespace simulator {

/** A semaphore, because posting it takes no lock. */
class Wakeup {
public:
    Wakeup(const Wakeup&) = delete;
    Wakeup& operator=(const Wakeup&) = delete;

#ifdef __APPLE__
    Wakeup()
    : semaphore(dispatch_semaphore_create(0))
    {
    }
    ~Wakeup()
    {
        dispatch_release(semaphore);
    }

    void wake()
    {
        dispatch_semaphore_signal(semaphore);
    }
    void wait(int milliseconds)
    {
        dispatch_semaphore_wait(
            semaphore, dispatch_time(DISPATCH_TIME_NOW, milliseconds * nanosecondsPerMillisecond));
    }

private:
    static constexpr long nanosecondsPerMillisecond = 1'000'000;
    dispatch_semaphore_t semaphore;
#else
    Wakeup()
    {
        sem_init(&semaphore, 0, 0);
    }
    ~Wakeup()
    {
        sem_destroy(&semaphore);
    }

    /** Ends the present or the next wait. [any thread, also a real-time thread] */
    void wake()
    {
        sem_post(&semaphore);
    }

    /** Waits for a wake, at most this long. Returns at once when one came since the last wait. */
    void wait(int milliseconds)
    {
        timespec end{};
        clock_gettime(CLOCK_REALTIME, &end);
        end.tv_nsec += milliseconds * nanosecondsPerMillisecond;
        end.tv_sec += end.tv_nsec / nanosecondsPerSecond;
        end.tv_nsec %= nanosecondsPerSecond;
        while (sem_timedwait(&semaphore, &end) != 0 && errno == EINTR) {
        }
    }

private:
    static constexpr long nanosecondsPerMillisecond = 1'000'000;
    static constexpr long nanosecondsPerSecond = 1'000'000'000;
    sem_t semaphore{};
#endif
};

} // namespace simulator
} // namespace Vst
} // namespace Steinberg
