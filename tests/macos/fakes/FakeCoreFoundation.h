// A Core Foundation for Linux that counts: every object with its references, and every misuse.
#pragma once

#include <CoreFoundation/CoreFoundation.h>

#include <optional>
#include <string>

namespace doubles {

/** One state for the process; each test begins with reset. */
class FakeCoreFoundation {
public:
    /** Forgets what went wrong so far, and the objects that are left. */
    static void reset();

    /** Objects that somebody still holds. */
    static size_t liveObjects();
    /** References of objects that are gone or never were: of null, too. */
    static size_t misuses();
    /** 0 when the object is gone. */
    static CFIndex references(CFTypeRef object);

    /** A bundle with one reference, the caller's. Without a path it has no URL. */
    static CFBundleRef makeBundle(std::optional<std::string> path);
    /** How the last path was asked for. */
    static inline bool resolvedAgainstBase = false;
    static inline CFIndex pathBufferSize = 0;

    /** Makes every text conversion to 8-bit text fail. */
    static inline bool failConversions = false;

    /** Timers on a run loop that are still valid, of all threads. */
    static size_t timers();
    /** Seconds between two ticks of the timer that was made last. */
    static inline CFTimeInterval lastInterval = 0;
    static inline CFTimeInterval lastDelay = 0;
    /** Fires each timer on the calling thread's run loop once. */
    static void fireTimers();
};

} // namespace doubles
