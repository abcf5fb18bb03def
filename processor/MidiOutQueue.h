// MidiOutQueue: the library's notes on their way to the host.
#pragma once

#include "pluginterfaces/vst/ivstevents.h"

#include <array>
#include <atomic>

namespace Steinberg {
namespace Vst {

/** A queue of at most 100 events in memory of its own, so that neither the audio thread nor the
    library's threads wait for an allocator. Its user keeps a lock while calling it, but for
    size. */
class MidiOutQueue {
public:
    /** A host that stops processing must not make the queue grow without limit. */
    static constexpr size_t kCapacity = 100;

    /** [any thread, without the lock] */
    size_t size() const { return count.load(std::memory_order_relaxed); }

    /** Adds event behind the others. When the queue is full, all of them are dropped first. */
    void push(const Event& event)
    {
        const size_t kept = size() < kCapacity ? size() : 0;
        if (kept == 0)
            first = 0; // the same memory again and again is in the cache
        events[(first + kept) % kCapacity] = event;
        setSize(kept + 1);
    }

    /** Takes the oldest event out. @return false when there is none */
    bool pop(Event& event)
    {
        if (size() == 0)
            return false;
        event = events[first];
        first = (first + 1) % kCapacity;
        setSize(size() - 1);
        return true;
    }

private:
    /** Relaxed, since the lock orders everything but a look at the size. */
    void setSize(size_t size) { count.store(size, std::memory_order_relaxed); }

    std::array<Event, kCapacity> events = {};
    size_t first = 0;
    std::atomic<size_t> count{0}; ///< changed under the lock
};

} // namespace Vst
} // namespace Steinberg
