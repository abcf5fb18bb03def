// StreamFaults: how the stream of an input misbehaves.
#pragma once

#include "tests/doubles/StreamDouble.h"
#include "tests/fuzz/FuzzInput.h"

namespace fuzz {

/** Bits of the first byte; the targets have the higher ones for options of their own. */
enum StreamOptions : uint8_t { kShortReads = 1, kFails = 2, kThrowsOnce = 4, kFailsFrom = 8 };

/** Three bytes of the input: options, the call that fails, bytes a read gives at most. */
struct StreamFaults {
    explicit StreamFaults(FuzzInput& input)
    : options(input.byte())
    , faultyCall(input.byte())
    , most(input.byte())
    {
    }

    void applyTo(doubles::StreamDouble& stream) const
    {
        if (options & kShortReads)
            stream.shortRead = most;
        if (options & kFails)
            stream.failAtCall = faultyCall;
        if (options & kThrowsOnce)
            stream.throwAtCall = faultyCall;
        if (options & kFailsFrom)
            stream.failFrom = faultyCall;
    }

    const uint8_t options;
    const size_t faultyCall;
    const size_t most;
};

} // namespace fuzz
