// Conversion of the host's keys and wheel movements for the editor library. [any thread]
#pragma once

#include "pluginterfaces/base/ftypes.h"

namespace Steinberg {
namespace Vst {

/** The key's character when it is ASCII, else 0: the editor knows ASCII keys only. */
char convertChar16ToChar(char16 key);

/** Halves a distance of 2 lines or more, in either direction; smaller ones stay. Hosts of the
    Cubase family report twice the distance that the editor expects for a scroll event. */
float halveScrollDistance(float distance);

/** Makes a distance of less than one line a whole line in its direction; 0 stays 0. */
float roundWheelDistanceOutward(float distance);

} // namespace Vst
} // namespace Steinberg
