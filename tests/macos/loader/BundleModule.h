// What a test can ask of the Linux module that is the Mac's bundle, beside the plug-in's own
// entries: the fake system that the machine code runs on. Whoever has loaded the module finds it
// with dlsym by the name "getMachoSystem".
#pragma once

#include <cstddef>

extern "C" {

/** Valid while the module is loaded. */
struct MachoSystem {
    /** Fires the timers of the calling thread's run loop once. */
    void (*fireTimers)();
    /** Timers on any run loop. Of the one that was made last: seconds to its first tick and between
        two of them, and those that it may be late. */
    size_t (*timers)();
    double (*delay)();
    double (*interval)();
    double (*tolerance)();
    /** Objects of Core Foundation that somebody holds, the bundle itself left out. */
    size_t (*objects)();
    /** References to what was no object of Core Foundation. */
    size_t (*misuses)();
    /** The event that the application handles, without and with a Carbon event behind it. At first
        it handles none. */
    void (*handleEventWithoutReference)();
    void (*handleEventOfKind)(unsigned kind);
    /** The copy constructor of std::string as the machine code calls it; for arm64 alone. */
    using CopyText = void*(void* made, const void* original);
    CopyText* copyText;
};

using GetMachoSystem = const MachoSystem* (*)();
}
