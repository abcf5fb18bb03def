#include "tools/check-library/MirroredParameters.h"

#include "controller/ParameterTable.h"

#include <cstdio>

namespace Steinberg {
namespace Vst {
namespace checklibrary {

namespace {

/** Adds the part where the title lacks it: the knobs of all parts have the same titles. */
std::string titleOf(const PartParameter& row, int part)
{
    const auto number = std::to_string(part + 1);
    const std::string title = row.title;
    const auto place = title.find("%d");
    if (place == std::string::npos)
        return title + " of part " + number;
    return title.substr(0, place) + number + title.substr(place + 2);
}

} // namespace

std::vector<MirroredParameter> mirroredParameters()
{
    std::vector<MirroredParameter> all;
    for (int part = 0; part < kPartCount; ++part) {
        const auto mode =
            part == 0 ? VstIObserver::ParamModePartVoice : VstIObserver::ParamModePart;
        for (const auto& row : kPartParameters)
            all.push_back({vstParameterID(row.block, row.number, part, mode), titleOf(row, part),
                           row.block, row.number, part, mode, row.asksForStepCount, true});
    }
    const auto mode = VstIObserver::ParamModePartVoice;
    all.push_back({vstParameterID(kEditFlagBlock, kEditFlagNumber, 0, mode), "Edit flag",
                   kEditFlagBlock, kEditFlagNumber, 0, mode, true, false});
    return all;
}

} // namespace checklibrary
} // namespace Vst
} // namespace Steinberg
