// The instrument's MIDI ports by their system names.
#pragma once

#include <array>

namespace Steinberg {
namespace Vst {

/** The system names of the instrument's MIDI ports: the device's name, with a number when several
    are attached, once or twice. The editor library matches them, matchRegularExpression. */
constexpr std::array<const char*, 2> kBasicPortNameRE = {
    "^Tavrin RDL3/RDL5( [0-9]+)? Port[1-5]$",
    "^Tavrin RDL3/RDL5( [0-9]+)? Tavrin RDL3/RDL5( [0-9]+)? Port[1-5]$",
};

} // namespace Vst
} // namespace Steinberg
