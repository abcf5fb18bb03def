// NoteReturn: hands the host's notes back to the processor, as the instrument's driver would send
// them on to the hardware.
#pragma once

#include "editorlib/VstIEffectInterface.h"
#include "pluginterfaces/base/ftypes.h"

#include <array>
#include <atomic>

namespace Steinberg {
namespace Vst {
namespace simulator {

/** Lock-free: receive runs on the audio thread, inside the processor's process, and calls writeMidi
    from there. */
class NoteReturn {
public:
    static constexpr int32 channels = 16;

    void setEffect(VstIEffectInterface* newEffect) { effect.store(newEffect); }

    /** Anything but a three-byte note with data bytes below 128 is counted and dropped. */
    void receive(const uint8* data, int32 length);

    /** 0 for a channel outside 0 to 15. */
    uint32 noteOns(int32 channel) const { return countOf(on, channel); }
    uint32 noteOffs(int32 channel) const { return countOf(off, channel); }
    uint32 others() const { return other.load(); }

private:
    using Counters = std::array<std::atomic<uint32>, channels>;

    static uint32 countOf(const Counters& counters, int32 channel);

    std::atomic<VstIEffectInterface*> effect{nullptr};
    Counters on{};
    Counters off{};
    std::atomic<uint32> other{0};
};

} // namespace simulator
} // namespace Vst
} // namespace Steinberg
