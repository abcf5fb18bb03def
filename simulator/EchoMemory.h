// EchoMemory: the values of a parameter that a host may still send back.
#pragma once

#include "pluginterfaces/base/ftypes.h"

#include <array>
#include <atomic>
#include <chrono>

namespace Steinberg {
namespace Vst {
namespace simulator {

/** A host that is told of a value sends it back as automation, a timer tick and a block later.
    While the user turns a knob, the parameter has its next value by then, and sending the former
    one to the instrument would turn the knob back. [any thread; waits for nothing] */
class EchoMemory {
public:
    using Time = std::chrono::steady_clock::time_point;

    /** How late an echo may come: several times a tick and a block of 8,192 samples. */
    static constexpr std::chrono::milliseconds longest{500};

    /** The host is told of a value. @param value 0 to 127 */
    void add(int32 value, Time now)
    {
        if (!isRecent(last.exchange(now.time_since_epoch()), now))
            for (auto& word : values)
                word = 0;
        values[wordOf(value)] |= bitOf(value);
    }

    /** @return whether a value that the host sends may be an echo */
    bool contains(int32 value, Time now) const
    {
        return isRecent(last, now) && (values[wordOf(value)] & bitOf(value)) != 0;
    }

private:
    static bool isRecent(Time::duration time, Time now)
    {
        return now.time_since_epoch() - time <= longest;
    }
    static size_t wordOf(int32 value) { return static_cast<size_t>(value & 127) / 64; }
    static uint64 bitOf(int32 value) { return uint64{1} << (static_cast<uint32>(value) % 64); }

    std::array<std::atomic<uint64>, 2> values{};
    std::atomic<Time::duration> last{-2 * longest}; ///< when a value was added
};

} // namespace simulator
} // namespace Vst
} // namespace Steinberg
