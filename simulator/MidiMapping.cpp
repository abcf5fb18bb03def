#include "simulator/MidiMapping.h"

#include "simulator/InstrumentParameters.h"

#include <algorithm>

namespace Steinberg {
namespace Vst {
namespace simulator {

namespace {

constexpr std::array<int32, InstrumentParameters::partParameters> controllers{
    7,                 // volume
    10,                // pan
    74,                // cutoff
    71,                // resonance
    73,                // attack
    75,                // decay
    MidiMapping::none, // sustain
    72,                // release
    93,                // chorus send
    91,                // reverb send
    MidiMapping::none, // assignable functions
    MidiMapping::none,
    MidiMapping::none, // assignable knobs
    MidiMapping::none};

} // namespace

int32 MidiMapping::controllerOf(size_t column)
{
    return column < controllers.size() ? controllers[column] : none;
}

int32 MidiMapping::columnOf(uint8 controller)
{
    const auto found =
        std::find(controllers.begin(), controllers.end(), static_cast<int32>(controller));
    return found != controllers.end() ? static_cast<int32>(found - controllers.begin()) : none;
}

MidiMessage MidiMapping::value(int32 part, size_t column, int32 value)
{
    return MidiMessage::controllerChange(part, static_cast<uint8>(controllerOf(column)), value);
}

std::array<MidiMessage, 3> MidiMapping::voice(int32 part, int32 bank, int32 number)
{
    return {MidiMessage::controllerChange(part, bankSelect, 0),
            MidiMessage::controllerChange(part, bankSelectFine, bank),
            MidiMessage::programChange(part, number)};
}

} // namespace simulator
} // namespace Vst
} // namespace Steinberg
