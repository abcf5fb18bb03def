// HostThread: in a build with VSTK2X_HOST_THREAD_GUARD, ends the program where an operation of the
// host's main thread comes on another thread. In every other build it is empty.
#pragma once

#ifdef VSTK2X_HOST_THREAD_GUARD
#include "public.sdk/source/common/threadchecker.h"

#include <cstdio>
#include <cstdlib>
#include <memory>
#endif

namespace Steinberg {
namespace Vst {

/** An object's knowledge of the host's main thread: the one that initialized it. */
class HostThread {
public:
#ifdef VSTK2X_HOST_THREAD_GUARD
    /** The calling thread is the host's main thread from here on. */
    void begin()
    {
        thread = ThreadChecker::create();
    }

    /** Aborts with a line on stderr on any other thread. Before begin every thread will do.
        @param operation the operation's name, for that line */
    void check(const char* operation) const
    {
        if (!thread || thread->test())
            return;
        std::fprintf(stderr, "%s on another thread than the host's main thread\n", operation);
        std::abort();
    }

private:
    std::unique_ptr<ThreadChecker> thread;
#else
    void begin() {}
    void check(const char* /*operation*/) const {}
#endif
};

} // namespace Vst
} // namespace Steinberg
