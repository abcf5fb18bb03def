#include "simulator/HostNotes.h"

namespace Steinberg {
namespace Vst {
namespace simulator {

std::optional<MidiMessage> HostNotes::count(const uint8* data, int32 length)
{
    const auto message = MidiMessage::parse(data, length > 0 ? static_cast<size_t>(length) : 0);
    if (!message || !message->isNote()) {
        ++other;
        return {};
    }
    ++(message->startsNote() ? on : off)[static_cast<size_t>(message->channel())];
    return message;
}

uint32 HostNotes::countOf(const Counters& counters, int32 channel)
{
    return channel >= 0 && channel < channels ? counters[static_cast<size_t>(channel)].load() : 0;
}

} // namespace simulator
} // namespace Vst
} // namespace Steinberg
