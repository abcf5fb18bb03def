// MidiOutQueue: the library's MIDI on its way to the host.
#pragma once

#include "pluginterfaces/base/ftypes.h"

#include <array>
#include <atomic>
#include <cstddef>

namespace Steinberg {
namespace Vst {

/** Three bytes of MIDI: status and two data bytes. */
using MidiBytes = std::array<uint8, 3>;

/** A queue of at most 100 messages in memory of its own. Any number of threads add at any time, one
    at a time takes out, and nobody ever waits: a thread that is stopped inside leaves the queue
    usable for all others.

    A message is one word, its number beside its bytes, so that it is there whole or not at all.
    Each has a fixed place by its number, and the hundredth message behind it has the same one.

    @tparam Word an atomic uint64; a test brings one that stops its user at each step */
template <class Word>
class BasicMidiOutQueue {
public:
    /** A host that stops processing must not make the queue grow without limit. */
    static constexpr size_t kCapacity = 100;

    /** @param number what the first message is counted as; any will do */
    explicit BasicMidiOutQueue(uint64 number = 1)
    : first(number)
    , next(number)
    {
        for (Word& place : places)
            place.store(wordOf(number - 1), std::memory_order_relaxed);
    }

    /** Messages that wait. One whose push has not returned yet may be missing. [any thread] */
    size_t size() const
    {
        const uint64 oldest = first.load(std::memory_order_relaxed);
        const uint64 end = next.load(std::memory_order_relaxed);
        if (!isBefore(oldest, end))
            return 0;
        return static_cast<size_t>((end - oldest - 1) % kCapacity) + 1;
    }

    /** Adds a message behind all whose push has returned. When 100 wait, it takes the oldest one's
        place, which drops them all. [any thread] */
    void push(const MidiBytes& midi)
    {
        uint64 number = next.load();
        while (!putAt(number, midi))
            ++number; // somebody else's already
        raiseNext(number + 1);
    }

    /** Takes the oldest message out. @return false when there is none [one thread at a time] */
    bool pop(MidiBytes& midi)
    {
        const uint64 oldest = first.load(std::memory_order_relaxed);
        const uint64 word = placeOf(oldest).load(std::memory_order_acquire);
        if (isBefore(word, wordOf(oldest)))
            return false;
        // One that came when 100 waited stands here with a higher number.
        first.store(oldest + ((word - wordOf(oldest)) >> kBits) + 1, std::memory_order_relaxed);
        midi = {static_cast<uint8>(word >> 16), static_cast<uint8>(word >> 8),
                static_cast<uint8>(word)};
        return true;
    }

private:
    static_assert(Word::is_always_lock_free);
    static constexpr int kBits = 24; ///< of the bytes in a word, below those of the number

    static uint64 wordOf(uint64 number, const MidiBytes& midi = {})
    {
        return number << kBits | static_cast<uint64>(midi[0] << 16 | midi[1] << 8 | midi[2]);
    }
    /** By the distance, since a word has not all of a number's bits. */
    static bool isBefore(uint64 one, uint64 other) { return static_cast<int64>(one - other) < 0; }

    Word& placeOf(uint64 number) { return places[number % kCapacity]; }

    /** @return false when a message with this number or a later one stands at its place */
    bool putAt(uint64 number, const MidiBytes& midi)
    {
        Word& place = placeOf(number);
        uint64 found = place.load();
        while (isBefore(found, wordOf(number)))
            if (place.compare_exchange_weak(found, wordOf(number, midi)))
                return true;
        return false;
    }

    void raiseNext(uint64 number)
    {
        uint64 known = next.load();
        while (isBefore(known, number) && !next.compare_exchange_weak(known, number))
            continue;
    }

    // The first and the last are apart in memory: the reader changes the one with every message,
    // the writers the other, and two cores would take each other's line of the cache.
    Word first; ///< number of the oldest message
    std::array<Word, kCapacity> places;
    Word next; ///< all below this number have been added
};

using MidiOutQueue = BasicMidiOutQueue<std::atomic<uint64>>;

} // namespace Vst
} // namespace Steinberg
