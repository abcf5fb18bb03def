// SharedReference: a reference that the host's main thread replaces while other threads use it.
#pragma once

#include "pluginterfaces/base/smartpointer.h"

#include <mutex>
#include <utility>

namespace Steinberg {
namespace Vst {

/** Holds one reference, or null. The lock is held only while the reference is copied or
    exchanged: a user calls the object through a copy, and a replaced reference is released
    without the lock. */
template <class Interface>
class SharedReference {
public:
    /** @return a new reference. [any thread] */
    IPtr<Interface> get() const
    {
        const std::lock_guard<std::mutex> guard(lock);
        return object;
    }

    /** @param replacement may be null. [host main thread] */
    void set(Interface* replacement)
    {
        IPtr<Interface> exchanged(replacement);
        const std::lock_guard<std::mutex> guard(lock);
        exchanged = std::exchange(object, std::move(exchanged));
    }

private:
    mutable std::mutex lock;
    IPtr<Interface> object;
};

} // namespace Vst
} // namespace Steinberg
