// How the host's keys and wheel movements reach the editor library. [any thread]
#pragma once

#include "pluginterfaces/base/ftypes.h"

namespace Steinberg {
namespace Vst {

/** The key's UTF-8 byte when its UTF-8 form is a single one, else 0: the editor knows ASCII
    keys. */
char convertChar16ToChar(char16 key);

/** Halves a scroll movement of 2 lines and more in either direction: hosts of the Cubase family
    report twice of what the editor expects of a scroll event. Smaller ones stay. */
float halveScrollDistance(float distance);

/** Rounds movements of less than one line outward to a whole one; 0 stays 0. */
float roundWheelDistanceOutward(float distance);

} // namespace Vst
} // namespace Steinberg
