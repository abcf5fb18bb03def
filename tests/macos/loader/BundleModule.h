// The fake system that the Mac's machine code runs on, for tests. The Linux module that contains
// the code exports "getMachoSystem", which tests find with dlsym.
#pragma once

#include <cstddef>

extern "C" {

/** Valid while the module is loaded. */
struct MachoSystem {
    /** Fires the timers of the calling thread's run loop once. */
    void (*fireTimers)();
    /** The number of timers on all run loops. Of the newest timer, in seconds: the time to its
        first tick, its interval, and how late it may tick. */
    size_t (*timers)();
    double (*delay)();
    double (*interval)();
    double (*tolerance)();
    /** Objects of Core Foundation that somebody holds, without the bundle. */
    size_t (*objects)();
    /** How often something was retained or released that is no Core Foundation object. */
    size_t (*misuses)();
    /** Sets the application's current event: one without a Carbon event, or with one of this kind.
        At first there is no current event. */
    void (*handleEventWithoutReference)();
    void (*handleEventOfKind)(unsigned kind);
    /** The copy constructor of std::string as the machine code calls it; null but for arm64. */
    using CopyText = void*(void* made, const void* original);
    CopyText* copyText;
};

using GetMachoSystem = const MachoSystem* (*)();
}
