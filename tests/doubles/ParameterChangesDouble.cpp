#include "tests/doubles/ParameterChangesDouble.h"

#include "tests/doubles/CallScript.h"

namespace doubles {

using namespace Steinberg;

int32 ParameterQueueDouble::getPointCount()
{
    return static_cast<int32>(points.size());
}

tresult ParameterQueueDouble::getPoint(int32 index, int32& sampleOffset, Vst::ParamValue& value)
{
    if (throws)
        throw ScriptedFailure("getPoint");
    if (index < 0 || static_cast<size_t>(index) >= points.size() || unreadable.count(index) > 0)
        return kResultFalse;
    sampleOffset = points[static_cast<size_t>(index)].sampleOffset;
    value = points[static_cast<size_t>(index)].value;
    return kResultOk;
}

tresult ParameterQueueDouble::addPoint(int32 sampleOffset, Vst::ParamValue value, int32& index)
{
    index = getPointCount();
    points.push_back({sampleOffset, value});
    return kResultOk;
}

ParameterQueueDouble&
ParameterChangesDouble::add(Vst::ParamID id, const std::vector<ParameterQueueDouble::Point>& points)
{
    auto& queue = queues.emplace_back(id, points);
    list.push_back(&queue);
    return queue;
}

int ParameterChangesDouble::foreignReferences() const
{
    int result = getReferences() - 1;
    for (const auto& queue : queues)
        result += queue.getReferences() - 1;
    return result;
}

int32 ParameterChangesDouble::getParameterCount()
{
    return static_cast<int32>(list.size());
}

Vst::IParamValueQueue* ParameterChangesDouble::getParameterData(int32 index)
{
    const bool valid = index >= 0 && static_cast<size_t>(index) < list.size();
    return valid ? list[static_cast<size_t>(index)] : nullptr;
}

Vst::IParamValueQueue* ParameterChangesDouble::addParameterData(const Vst::ParamID& id,
                                                                int32& index)
{
    index = getParameterCount();
    return &add(id, {});
}

} // namespace doubles
