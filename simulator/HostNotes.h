// HostNotes: counts the MIDI that the host sends.
#pragma once

#include "simulator/MidiMessage.h"

#include <atomic>

namespace Steinberg {
namespace Vst {
namespace simulator {

/** Lock-free: count runs on the audio thread, inside the processor's process. */
class HostNotes {
public:
    static constexpr int32 channels = 16;

    /** Counts a message. @return the message, if it is a note: three bytes, data bytes below 128 */
    std::optional<MidiMessage> count(const uint8* data, int32 length);

    /** 0 for a channel outside 0 to 15. */
    uint32 noteOns(int32 channel) const { return countOf(on, channel); }
    uint32 noteOffs(int32 channel) const { return countOf(off, channel); }
    uint32 others() const { return other.load(); }

private:
    using Counters = std::array<std::atomic<uint32>, channels>;

    static uint32 countOf(const Counters& counters, int32 channel);

    Counters on{};
    Counters off{};
    std::atomic<uint32> other{0};
};

} // namespace simulator
} // namespace Vst
} // namespace Steinberg
