#include "simulator/MidiMapping.h"

#include "simulator/InstrumentParameters.h"

namespace Steinberg {
namespace Vst {
namespace simulator {

int32 MidiMapping::columnOf(uint8 controller)
{
    for (size_t column = 0; column < InstrumentParameters::partParameters; ++column)
        if (InstrumentParameters::controllerOf(column) == controller)
            return static_cast<int32>(column);
    return none;
}

MidiMessage MidiMapping::value(int32 part, size_t column, int32 value)
{
    return MidiMessage::controllerChange(
        part, static_cast<uint8>(InstrumentParameters::controllerOf(column)), value);
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
