#include "simulator/InstrumentParameters.h"

#include <algorithm>

namespace Steinberg {
namespace Vst {
namespace simulator {

namespace {

struct PartParameter {
    uint32 block;
    uint32 number;
    ValueText text;
    int32 initialValue;
    int32 controller;
};

constexpr int32 kNoController = InstrumentParameters::noController;

// In the order of the editor's columns.
constexpr std::array<PartParameter, InstrumentParameters::partParameters> partTable{{
    {37, 12, ValueText::Plain, 100, 7},               // volume
    {37, 13, ValueText::Pan, 64, 10},                 // pan
    {37, 53, ValueText::Signed64, 64, 74},            // cutoff
    {37, 54, ValueText::Signed64, 64, 71},            // resonance
    {37, 44, ValueText::Signed64, 64, 73},            // attack
    {37, 45, ValueText::Signed64, 64, 75},            // decay
    {37, 46, ValueText::Signed64, 64, kNoController}, // sustain
    {37, 47, ValueText::Signed64, 64, 72},            // release
    {37, 16, ValueText::Plain, 0, 93},                // chorus send
    {37, 15, ValueText::Plain, 40, 91},               // reverb send
    {19, 1, ValueText::Function, 0, kNoController},   // assignable functions
    {19, 2, ValueText::Function, 0, kNoController},
    {37, 56, ValueText::Signed64, 64, kNoController}, // assignable knobs
    {37, 57, ValueText::Signed64, 64, kNoController},
}};

constexpr std::array<const char*, 12> functionNames{
    {"Off", "Arpeggio Hold", "Part Mute", "Rotary Speed", "Glide Time", "Bend Range", "Drive",
     "Tape Wobble", "Octave Up", "Octave Down", "Layer Blend", "Freeze"}};

uint32 partId(const PartParameter& parameter, int32 part)
{
    return parameter.block * 1000000 + parameter.number * 1000 + static_cast<uint32>(part);
}

std::string functionText(int32 value)
{
    const auto index = static_cast<size_t>(value);
    return index < functionNames.size() ? functionNames[index]
                                        : "Controller " + std::to_string(value);
}

std::string signedText(int32 value)
{
    return (value < 0 ? "" : "+") + std::to_string(value);
}

std::string panText(int32 value)
{
    if (value == 0)
        return "C";
    return value < 0 ? "L" + std::to_string(-value) : "R" + std::to_string(value);
}

} // namespace

InstrumentParameters::InstrumentParameters()
{
    std::array<const PartParameter*, partParameters> ascending{};
    std::transform(partTable.begin(), partTable.end(), ascending.begin(),
                   [](const PartParameter& parameter) { return &parameter; });
    std::sort(ascending.begin(), ascending.end(),
              [](auto* left, auto* right) { return partId(*left, 0) < partId(*right, 0); });
    size_t index = 0;
    for (const auto* parameter : ascending)
        for (int32 part = 0; part < parts; ++part, ++index) {
            rows[index].id = partId(*parameter, part);
            rows[index].column = static_cast<size_t>(parameter - partTable.data());
            rows[index].text = parameter->text;
            rows[index].stepped = parameter->text == ValueText::Function;
            rows[index].value = parameter->initialValue;
        }
    rows[index].id = editFlag;
    rows[index].stepped = true;
}

size_t InstrumentParameters::find(uint32 id) const
{
    const auto found =
        std::lower_bound(rows.begin(), rows.end(), id,
                         [](const Row& row, uint32 wanted) { return row.id < wanted; });
    if (found == rows.end() || found->id != id)
        return none;
    return static_cast<size_t>(found - rows.begin());
}

size_t InstrumentParameters::findInPart(int32 part, size_t column) const
{
    if (part < 0 || part >= parts || column >= partParameters)
        return none;
    return find(partId(partTable[column], part));
}

int32 InstrumentParameters::controllerOf(size_t column)
{
    return column < partTable.size() ? partTable[column].controller : noController;
}

int32 InstrumentParameters::stepCount(size_t index) const
{
    return rows[index].stepped ? maximum(index) - minimum(index) : 0;
}

int32 InstrumentParameters::clamped(size_t index, int32 value) const
{
    return std::clamp(value, minimum(index), maximum(index));
}

void InstrumentParameters::setValue(size_t index, int32 value)
{
    rows[index].value.store(clamped(index, value));
}

void InstrumentParameters::replaceValue(size_t index, int32 expected, int32 value)
{
    rows[index].value.compare_exchange_strong(expected, clamped(index, value));
}

bool InstrumentParameters::valueText(size_t index, int32 value, std::string& text) const
{
    text.clear();
    if (value < minimum(index) || value > maximum(index))
        return false;
    switch (rows[index].text) {
    case ValueText::Plain:
        text = std::to_string(value);
        break;
    case ValueText::Signed64:
        text = signedText(value - 64);
        break;
    case ValueText::Pan:
        text = panText(value - 64);
        break;
    case ValueText::Function:
        text = functionText(value);
        break;
    }
    return true;
}

int32 InstrumentParameters::fromNormalized(size_t index, double normalized) const
{
    const double limited = normalized > 0. ? std::min(normalized, 1.) : 0.; // 0 for NaN as well
    return static_cast<int32>(minimum(index) + ((maximum(index) - minimum(index)) * limited + 0.5));
}

} // namespace simulator
} // namespace Vst
} // namespace Steinberg
