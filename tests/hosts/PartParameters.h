// PartParameters: the parameters of a part in the order in which hosts list them, with the values
// that the simulator starts with.
#pragma once

#include "tests/doubles/Parameters.h"

#include <array>
#include <string>

namespace hosts {

struct PartParameter {
    unsigned firstId;  ///< of part 1; part N has this plus N - 1
    const char* title; ///< N is replaced by the part's number
    int value;         ///< editor value, 0 to 127
    const char* text;  ///< of this value
};

using doubles::kAutomatable; ///< all parameters but the last, the edit flag
using doubles::kParameters;

constexpr std::array<PartParameter, doubles::kParametersOfAPart> kPartParameters{
    {{37012000, "Volume N", 100, "100"},
     {37013000, "Pan N", 64, "C"},
     {37053000, "Cutoff N", 64, "+0"},
     {37054000, "Resonance N", 64, "+0"},
     {37044000, "AEG Attack Time N", 64, "+0"},
     {37045000, "AEG Decay Time N", 64, "+0"},
     {37046000, "AEG Sustain Level N", 64, "+0"},
     {37047000, "AEG Release Time N", 64, "+0"},
     {37016000, "Chorus Send N", 0, "0"},
     {37015000, "Reverb Send N", 40, "40"},
     {19001000, "Assignable Function N-1", 0, "Off"},
     {19002000, "Assignable Function N-2", 0, "Off"},
     {37056000, "Assignable Knob 1", 64, "+0"},
     {37057000, "Assignable Knob 2", 64, "+0"}}};

/** What a host shows for its parameter index 0 to kAutomatable - 1. */
struct ExpectedParameter {
    unsigned id;
    std::string title;
    int value;
    std::string text;
    int unit;
};

inline ExpectedParameter expectedParameter(int index)
{
    const int part = index / static_cast<int>(kPartParameters.size());
    const auto& row = kPartParameters[static_cast<size_t>(index) % kPartParameters.size()];
    std::string title = row.title;
    const auto place = title.find('N');
    if (place != std::string::npos)
        title.replace(place, 1, std::to_string(part + 1));
    return {row.firstId + static_cast<unsigned>(part), title, row.value, row.text, part + 2};
}

} // namespace hosts
