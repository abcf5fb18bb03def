// A Core Foundation for Linux that counts: every object with its references, and every misuse. Who
// owns what is Apple's Memory Management Programming Guide for Core Foundation: Create and Copy
// give a reference to the caller, Get does not.
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

    /** A bundle with one reference, the caller's. Without a path it has no URL; that a Mac has such
        bundles is a belief. */
    static CFBundleRef makeBundle(std::optional<std::string> path);
    /** How the last path was asked for. Apple's reference of CFURL says that one that does not fit
        gives false. */
    static inline bool resolvedAgainstBase = false;
    static inline CFIndex pathBufferSize = 0;

    /** Where a Mac's module has its constant texts. */
    static inline const char* constantsBegin = nullptr;
    static inline const char* constantsEnd = nullptr;

    /** Makes every text conversion to 8-bit text fail. */
    static inline bool failConversions = false;

    /** Timers on a run loop that are still valid, of all threads. */
    static size_t timers();
    /** Seconds between two ticks of the timer that was made last. */
    static inline CFTimeInterval lastInterval = 0;
    static inline CFTimeInterval lastDelay = 0;
    static inline CFTimeInterval lastTolerance = 0;
    /** Fires each timer on the calling thread's run loop once, as long as it is in the common
       modes: one in the default mode alone would stand still while a menu is open. */
    static void fireTimers();
};

} // namespace doubles
