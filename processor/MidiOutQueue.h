// MidiOutQueue: MIDI that the library sends, until the next block hands it to the host.
#pragma once

#include "pluginterfaces/base/ftypes.h"

#include <array>
#include <atomic>
#include <cstddef>

namespace Steinberg {
namespace Vst {

/** Three bytes of MIDI: status and two data bytes. */
using MidiBytes = std::array<uint8, 3>;

/** A queue of at most 100 messages that never allocates. Any number of threads may push at any
    time, and one thread at a time may pop. No thread waits for another: when the system stops a
    thread inside a call, all others can still use the queue.

    Messages are numbered. A message and its number are one atomic word, so that it is either wholly
    there or not at all. Its place in the array is its number modulo 100.

    @tparam Word an atomic uint64; a test uses one that can stop a thread at each step */
template <class Word>
class BasicMidiOutQueue {
public:
    /** Limited, because a host may stop processing while the library goes on sending. */
    static constexpr size_t kCapacity = 100;

    /** @param number the first message's number; any number will do */
    explicit BasicMidiOutQueue(uint64 number = 1)
    : first(number)
    , next(number)
    {
        for (Word& place : places)
            place.store(wordOf(number - 1), std::memory_order_relaxed);
    }

    /** Number of messages that wait; one whose push has not yet returned may not be counted.
        [any thread] */
    size_t size() const
    {
        const uint64 oldest = first.load(std::memory_order_relaxed);
        const uint64 end = next.load(std::memory_order_relaxed);
        if (!isBefore(oldest, end))
            return 0;
        return static_cast<size_t>((end - oldest - 1) % kCapacity) + 1;
    }

    /** Adds a message after all whose push has returned. When 100 wait, drops those and keeps only
        the new one, which takes the place of the oldest. [any thread] */
    void push(const MidiBytes& midi)
    {
        uint64 number = next.load();
        while (!putAt(number, midi))
            ++number; // another thread has taken this number
        raiseNext(number + 1);
    }

    /** Takes the oldest message out. @return false when there is none [one thread at a time] */
    bool pop(MidiBytes& midi)
    {
        const uint64 oldest = first.load(std::memory_order_relaxed);
        const uint64 word = placeOf(oldest).load(std::memory_order_acquire);
        if (isBefore(word, wordOf(oldest)))
            return false;
        // A message that was added when 100 waited is here too, with a higher number.
        first.store(oldest + ((word - wordOf(oldest)) >> kBits) + 1, std::memory_order_relaxed);
        midi = {static_cast<uint8>(word >> 16), static_cast<uint8>(word >> 8),
                static_cast<uint8>(word)};
        return true;
    }

private:
    static_assert(Word::is_always_lock_free);
    static constexpr int kBits = 24; ///< of a word hold the bytes; those above hold the number

    static uint64 wordOf(uint64 number, const MidiBytes& midi = {})
    {
        return number << kBits | static_cast<uint64>(midi[0] << 16 | midi[1] << 8 | midi[2]);
    }
    /** Compares by the difference, because the numbers in the words wrap round. */
    static bool isBefore(uint64 one, uint64 other) { return static_cast<int64>(one - other) < 0; }

    Word& placeOf(uint64 number) { return places[number % kCapacity]; }

    /** @return false when its place holds a message with this number or a later one */
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

    // The array is between first and next to keep them on different cache lines: the reader changes
    // first with every message, and the writers change next.
    Word first; ///< number of the oldest message
    std::array<Word, kCapacity> places;
    Word next; ///< all messages with lower numbers have been added
};

using MidiOutQueue = BasicMidiOutQueue<std::atomic<uint64>>;

} // namespace Vst
} // namespace Steinberg
