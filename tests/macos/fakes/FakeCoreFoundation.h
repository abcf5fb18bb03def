// A Core Foundation for Linux that counts objects, references and misuses. Ownership is as in
// Apple's Memory Management Programming Guide for Core Foundation: Create and Copy give a reference
// to the caller, Get does not.
#pragma once

#include <CoreFoundation/CoreFoundation.h>

#include <optional>
#include <string>

namespace doubles {

/** One state for the process; each test begins with reset. */
class FakeCoreFoundation {
public:
    /** Deletes the objects that are left, and sets all counts and settings back. */
    static void reset();

    /** Objects that somebody still holds. */
    static size_t liveObjects();
    /** How often something was retained or released that is no object, null included. */
    static size_t misuses();
    /** 0 when the object is gone. */
    static CFIndex references(CFTypeRef object);

    /** A bundle with one reference, the caller's. Without a path it has no URL; that such bundles
        exist on a Mac is a belief. */
    static CFBundleRef makeBundle(std::optional<std::string> path);
    /** The arguments of the last CFURLGetFileSystemRepresentation. By Apple's reference of CFURL it
        returns false when the path does not fit. */
    static inline bool resolvedAgainstBase = false;
    static inline CFIndex pathBufferSize = 0;

    /** The constant strings of a Mac's module. */
    static inline const char* constantsBegin = nullptr;
    static inline const char* constantsEnd = nullptr;

    /** Makes every text conversion to 8-bit text fail. */
    static inline bool failConversions = false;

    /** Valid timers on the run loops of all threads. */
    static size_t timers();
    /** Of the newest timer, in seconds. */
    static inline CFTimeInterval lastInterval = 0;
    static inline CFTimeInterval lastDelay = 0;
    static inline CFTimeInterval lastTolerance = 0;
    /** Fires each timer on the calling thread's run loop once if it is in the common modes. A timer
        in the default mode alone would not tick while a menu is open. */
    static void fireTimers();
};

} // namespace doubles
