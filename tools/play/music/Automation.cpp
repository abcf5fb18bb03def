#include "tools/play/music/Automation.h"

#include <algorithm>

namespace Steinberg {
namespace Vst {
namespace play {

ParamValue Automation::valueAt(double part)
{
    const auto clamped = std::clamp(part, 0.0, 1.0);
    return clamped <= 0.5 ? 2 * clamped : 2 * (1 - clamped);
}

void Automation::play(int64 position, int64 length, IParameterChanges& changes)
{
    const auto value =
        valueAt(length > 0 ? static_cast<double>(position) / static_cast<double>(length) : 0.0);
    int32 index = 0;
    auto* queue = changes.addParameterData(id, index);
    if (!queue || queue->addPoint(0, value, index) != kResultOk)
        return;
    controller.setParamNormalized(id, value);
    ++count;
    if (position < nextOfCurve)
        return;
    thinned.push_back({position, value});
    nextOfCurve = position + length / kCurvePoints;
}

} // namespace play
} // namespace Vst
} // namespace Steinberg
