// SharedReference: a host object that the host's main thread replaces while other threads use it.
#pragma once

#include "pluginterfaces/base/smartpointer.h"

#include <mutex>
#include <utility>

namespace Steinberg {
namespace Vst {

/** Holds one reference, or null. The lock is held for a reference's count alone: who uses the
    object does so with a reference of its own, and the one that is replaced is released after the
    lock. */
template <class Interface>
class SharedReference {
public:
    /** @return a reference of the caller's own. [any thread] */
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
