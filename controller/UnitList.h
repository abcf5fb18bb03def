// The units under which the host groups the parameters, one a part of the instrument.
#pragma once

#include "pluginterfaces/vst/ivstunits.h"

namespace Steinberg {
namespace Vst {

/** "Common" and one unit for each of the sixteen parts. */
constexpr int32 kUnitCount = 17;

/** The unit that holds the parameters of a part, 0 to 15. */
constexpr UnitID unitOfPart(int32 part)
{
    return part + 2;
}

/** Describes the unit at an index; an index outside 0 to 16 gives a unit all the same. Fills
    every field. [any thread] */
void describeUnit(int32 index, UnitInfo& info);

} // namespace Vst
} // namespace Steinberg
