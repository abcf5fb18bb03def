// UnitList: the units by which the host groups the parameters, one for each part of the instrument.
#pragma once

#include "pluginterfaces/vst/ivstunits.h"

namespace Steinberg {
namespace Vst {

/** The unit that holds the parameters of a part, 0 to 15. */
constexpr UnitID unitOfPart(int32 part)
{
    return part + 2;
}

/** IUnitInfo for the controller: seventeen units and no program lists. The operations for program
    lists return kResultOk and leave their outputs unchanged. [any thread] */
class UnitList : public IUnitInfo {
public:
    int32 PLUGIN_API getUnitCount() override;
    /** Sets every field of info. Always kResultOk, also for an index outside 0 to 16. */
    tresult PLUGIN_API getUnitInfo(int32 unitIndex, UnitInfo& info) override;
    int32 PLUGIN_API getProgramListCount() override;
    tresult PLUGIN_API getProgramListInfo(int32 listIndex, ProgramListInfo& info) override;
    tresult PLUGIN_API getProgramName(ProgramListID listId, int32 programIndex,
                                      String128 name) override;
    tresult PLUGIN_API getProgramInfo(ProgramListID listId, int32 programIndex, CString attributeId,
                                      String128 attributeValue) override;
    tresult PLUGIN_API hasProgramPitchNames(ProgramListID listId, int32 programIndex) override;
    tresult PLUGIN_API getProgramPitchName(ProgramListID listId, int32 programIndex,
                                           int16 midiPitch, String128 name) override;
    UnitID PLUGIN_API getSelectedUnit() override;
    tresult PLUGIN_API selectUnit(UnitID unitId) override;
    tresult PLUGIN_API getUnitByBus(MediaType type, BusDirection dir, int32 busIndex, int32 channel,
                                    UnitID& unitId) override;
    tresult PLUGIN_API setUnitProgramData(int32 listOrUnitId, int32 programIndex,
                                          IBStream* data) override;

protected:
    ~UnitList() = default;
};

} // namespace Vst
} // namespace Steinberg
