#include "controller/UnitList.h"

#include "basics/Utf.h"

#include <cstdio>

namespace Steinberg {
namespace Vst {

void describeUnit(int32 index, UnitInfo& info)
{
    char name[32];
    if (index == 0)
        std::snprintf(name, sizeof(name), "Common");
    else if (index == 1)
        std::snprintf(name, sizeof(name), "Part%d / Voice", index);
    else
        std::snprintf(name, sizeof(name), "Part%d", index);
    utf8ToString128(name, info.name);
    // Unsigned, so that the largest index of a careless host wraps instead of overflowing.
    const auto id = static_cast<int32>(static_cast<uint32>(index) + 1);
    info.id = id;
    info.parentUnitId = kRootUnitId;
    info.programListId = id; // though no program list exists
}

} // namespace Vst
} // namespace Steinberg
