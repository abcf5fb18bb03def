// The system names of the instrument's MIDI ports.
#pragma once

#include <array>

namespace Steinberg {
namespace Vst {

/** Patterns of the names: the device's name once or twice, with a number when several instruments
    are attached, and the port. VstIEditorConnect::matchRegularExpression matches them. */
constexpr std::array<const char*, 2> kBasicPortNameRE = {
    "^Tavrin RDL3/RDL5( [0-9]+)? Port[1-5]$",
    "^Tavrin RDL3/RDL5( [0-9]+)? Tavrin RDL3/RDL5( [0-9]+)? Port[1-5]$",
};

} // namespace Vst
} // namespace Steinberg
