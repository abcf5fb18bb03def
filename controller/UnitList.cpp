#include "controller/UnitList.h"

#include "basics/Utf.h"

#include <cstdio>

namespace Steinberg {
namespace Vst {

namespace {

/** "Common" and one unit for each of the sixteen parts. */
constexpr int32 kUnitCount = 17;

} // namespace

int32 PLUGIN_API UnitList::getUnitCount()
{
    return kUnitCount;
}

tresult PLUGIN_API UnitList::getUnitInfo(int32 unitIndex, UnitInfo& info)
{
    char name[32];
    if (unitIndex == 0)
        std::snprintf(name, sizeof(name), "Common");
    else if (unitIndex == 1)
        std::snprintf(name, sizeof(name), "Part%d / Voice", unitIndex);
    else
        std::snprintf(name, sizeof(name), "Part%d", unitIndex);
    utf8ToString128(name, info.name);
    // Unsigned, because adding 1 to the largest index would be undefined behaviour.
    const auto id = static_cast<int32>(static_cast<uint32>(unitIndex) + 1);
    info.id = id;
    info.parentUnitId = kRootUnitId;
    info.programListId = id; // although there are no program lists
    return kResultOk;
}

int32 PLUGIN_API UnitList::getProgramListCount()
{
    return 0;
}

tresult PLUGIN_API UnitList::getProgramListInfo(int32, ProgramListInfo&)
{
    return kResultOk;
}

tresult PLUGIN_API UnitList::getProgramName(ProgramListID, int32, String128)
{
    return kResultOk;
}

tresult PLUGIN_API UnitList::getProgramInfo(ProgramListID, int32, CString, String128)
{
    return kResultOk;
}

tresult PLUGIN_API UnitList::hasProgramPitchNames(ProgramListID, int32)
{
    return kResultOk;
}

tresult PLUGIN_API UnitList::getProgramPitchName(ProgramListID, int32, int16, String128)
{
    return kResultOk;
}

UnitID PLUGIN_API UnitList::getSelectedUnit()
{
    return kRootUnitId;
}

tresult PLUGIN_API UnitList::selectUnit(UnitID)
{
    return kResultOk;
}

tresult PLUGIN_API UnitList::getUnitByBus(MediaType, BusDirection, int32, int32, UnitID&)
{
    return kResultOk;
}

tresult PLUGIN_API UnitList::setUnitProgramData(int32, int32, IBStream*)
{
    return kResultOk;
}

} // namespace Vst
} // namespace Steinberg
