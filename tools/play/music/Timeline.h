// Timeline: what happened in the blocks of a song, in a picture's resolution.
#pragma once

#include "pluginterfaces/base/ftypes.h"

#include <vector>

namespace Steinberg {
namespace Vst {
namespace play {

/** Puts neighbouring blocks together, so that a song of any length and block size has at most
    kSpans spans. All memory is allocated in the constructor. */
class Timeline {
public:
    static constexpr int64 kSpans = 4000;

    struct Block {
        double seconds; ///< of process
        int64 sent;     ///< note events that went in
        int64 left;     ///< events that left through "Midi Out": so many waited in the queue
    };
    struct Span {
        int64 blocks = 0;
        double seconds = 0; ///< of all its blocks together
        double longest = 0; ///< of one block
        int64 sent = 0;
        int64 left = 0;
        int64 mostSent = 0; ///< in one block
        int64 mostLeft = 0; ///< in one block
    };

    Timeline() = default;

    /** @param blocks how many there will be, 0 and above */
    explicit Timeline(int64 blocks);

    /** Adds the next block. Blocks beyond those that were announced count to the last span. */
    void add(const Block& block);

    /** All but the last one have blocksInASpan() blocks. */
    const std::vector<Span>& spans() const { return all; }
    int64 blocksInASpan() const { return spanLength; }

    /** The most events that left in one block. */
    int64 longestQueue() const;

private:
    int64 spanLength = 1;
    std::vector<Span> all;
    size_t current = 0;
};

} // namespace play
} // namespace Vst
} // namespace Steinberg
