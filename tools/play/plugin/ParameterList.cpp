#include "tools/play/plugin/ParameterList.h"

#include "pluginterfaces/vst/ivstunits.h"
#include "tools/common/Failure.h"
#include "tools/play/basics/Wording.h"

#include <algorithm>
#include <iomanip>
#include <ostream>

namespace Steinberg {
namespace Vst {
namespace play {

namespace {

std::string flagsText(int32 flags)
{
    std::string text = (flags & ParameterInfo::kCanAutomate) != 0 ? "automate" : "-";
    const auto others = flags & ~ParameterInfo::kCanAutomate;
    return others == 0 ? text : text + "+" + std::to_string(others);
}

} // namespace

ParameterList::ParameterList(IEditController& controller)
{
    readParameters(controller);
    readUnits(controller);
}

void ParameterList::readParameters(IEditController& controller)
{
    for (int32 i = 0; i < controller.getParameterCount(); ++i) {
        ParameterInfo info{};
        if (controller.getParameterInfo(i, info) != kResultOk)
            continue;
        String128 text{};
        if (controller.getParamStringByValue(info.id, controller.getParamNormalized(info.id),
                                             text) != kResultOk)
            text[0] = 0;
        allParameters.push_back({info.id, hostText(info.title), info.unitId, info.flags,
                                 info.stepCount, info.defaultNormalizedValue, hostText(text)});
    }
}

void ParameterList::readUnits(IEditController& controller)
{
    const FUnknownPtr<IUnitInfo> unitInfo(&controller);
    if (!unitInfo)
        return;
    for (int32 i = 0; i < unitInfo->getUnitCount(); ++i) {
        UnitInfo info{};
        if (unitInfo->getUnitInfo(i, info) == kResultOk)
            allUnits.push_back(
                {info.id, hostText(info.name), info.parentUnitId, info.programListId});
    }
}

const ParameterList::Parameter& ParameterList::find(const std::string& title) const
{
    const auto found =
        std::find_if(allParameters.begin(), allParameters.end(),
                     [&](const Parameter& parameter) { return parameter.title == title; });
    if (found == allParameters.end() || title.empty())
        throw tools::Failure("The plug-in has no parameter \"" + title +
                             "\"; --list-parameters shows all of them.");
    return *found;
}

std::string ParameterList::titleOf(ParamID id) const
{
    const auto found = std::find_if(allParameters.begin(), allParameters.end(),
                                    [&](const Parameter& parameter) { return parameter.id == id; });
    if (found == allParameters.end() || found->title.empty())
        return std::to_string(id);
    return found->title;
}

void ParameterList::print(std::ostream& stream) const
{
    stream << padded("ID", 11) << padded("Title", 28) << padded("Unit", 6) << padded("Flags", 10)
           << padded("Steps", 7) << padded("Default", 9) << "Text\n";
    stream << std::fixed << std::setprecision(4);
    for (const auto& parameter : allParameters)
        stream << padded(std::to_string(parameter.id), 11) << padded(parameter.title, 28)
               << padded(std::to_string(parameter.unit), 6)
               << padded(flagsText(parameter.flags), 10)
               << padded(std::to_string(parameter.steps), 7) << parameter.normalizedDefault << "   "
               << parameter.text << '\n';
    const auto automatable =
        std::count_if(allParameters.begin(), allParameters.end(),
                      [](const Parameter& parameter) { return parameter.canAutomate(); });
    stream << allParameters.size() << " parameters, " << automatable << " automatable\n\n";
    stream << padded("Unit", 6) << padded("Name", 18) << padded("Parent", 8) << "Program list\n";
    for (const auto& unit : allUnits)
        stream << padded(std::to_string(unit.id), 6) << padded(unit.name, 18)
               << padded(std::to_string(unit.parent), 8) << unit.programList << '\n';
    stream << allUnits.size() << " units\n";
}

} // namespace play
} // namespace Vst
} // namespace Steinberg
