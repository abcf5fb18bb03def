// HostThread: in a build with VSTK2X_HOST_THREAD_GUARD, ends the program when an operation that
// belongs on the host's main thread is called on another thread. Empty in every other build.
#pragma once

#ifdef VSTK2X_HOST_THREAD_GUARD
#include "public.sdk/source/common/threadchecker.h"

#include <cstdio>
#include <cstdlib>
#include <memory>
#endif

namespace Steinberg {
namespace Vst {

/** Remembers which thread initialized an object, and checks later calls against it. */
class HostThread {
public:
#ifdef VSTK2X_HOST_THREAD_GUARD
    /** Takes the calling thread for the host's main thread from now on. */
    void begin()
    {
        thread = ThreadChecker::create();
    }

    /** Aborts on any other thread, with a line on stderr. Before begin it accepts every thread.
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
