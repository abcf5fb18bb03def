#include "simulator/NoteReturn.h"

#include "basics/CallGuard.h"

namespace Steinberg {
namespace Vst {
namespace simulator {

namespace {

constexpr uint8 noteOff = 0x80;
constexpr uint8 noteOn = 0x90;

bool isNote(const uint8* data)
{
    const uint8 kind = data[0] & 0xF0;
    return (kind == noteOff || kind == noteOn) && data[1] < 0x80 && data[2] < 0x80;
}

} // namespace

void NoteReturn::receive(const uint8* data, int32 length)
{
    if (!data || length != 3 || !isNote(data)) {
        ++other;
        return;
    }
    const bool starts = (data[0] & 0xF0) == noteOn && data[2] > 0;
    ++(starts ? on : off)[data[0] & 0x0F];
    if (auto* present = effect.load())
        guarded([&] { present->writeMidi(data, length); });
}

uint32 NoteReturn::countOf(const Counters& counters, int32 channel)
{
    return channel >= 0 && channel < channels ? counters[static_cast<size_t>(channel)].load() : 0;
}

} // namespace simulator
} // namespace Vst
} // namespace Steinberg
