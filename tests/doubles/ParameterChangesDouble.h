// ParameterChangesDouble: the parameter changes of one process() call.
//
//   ParameterChangesDouble changes;
//   changes.add(37012000, {{0, 0.25}, {64, 0.5}});      // sample offset, value
//   changes.add(37013000, {{0, 1.0}}).unreadable = {0}; // getPoint fails there
//   changes.addNull();                                  // getParameterData gives null
//   data.inputParameterChanges = &changes;
#pragma once

#include "pluginterfaces/vst/ivstparameterchanges.h"
#include "tests/doubles/StackObject.h"

#include <deque>
#include <set>
#include <vector>

namespace doubles {

/** One parameter's points. */
class ParameterQueueDouble : public StackObject<Steinberg::Vst::IParamValueQueue> {
public:
    struct Point {
        Steinberg::int32 sampleOffset;
        double value;
    };

    ParameterQueueDouble(Steinberg::Vst::ParamID parameter, std::vector<Point> changes)
    : points(std::move(changes))
    , id(parameter)
    {
    }

    std::vector<Point> points;
    std::set<Steinberg::int32> unreadable;
    bool throws = false; ///< at every getPoint

    Steinberg::Vst::ParamID PLUGIN_API getParameterId() override { return id; }
    Steinberg::int32 PLUGIN_API getPointCount() override;
    Steinberg::tresult PLUGIN_API getPoint(Steinberg::int32 index, Steinberg::int32& sampleOffset,
                                           Steinberg::Vst::ParamValue& value) override;
    Steinberg::tresult PLUGIN_API addPoint(Steinberg::int32 sampleOffset,
                                           Steinberg::Vst::ParamValue value,
                                           Steinberg::int32& index) override;

private:
    const Steinberg::Vst::ParamID id;
};

/** Not in the trace. */
class ParameterChangesDouble : public StackObject<Steinberg::Vst::IParameterChanges> {
public:
    ParameterQueueDouble& add(Steinberg::Vst::ParamID id,
                              const std::vector<ParameterQueueDouble::Point>& points);
    /** Borrows a queue of the test's own. */
    void add(ParameterQueueDouble& queue) { list.push_back(&queue); }
    void addNull() { list.push_back(nullptr); }

    /** References of this object and its queues beyond the test's own. */
    int foreignReferences() const;

    Steinberg::int32 PLUGIN_API getParameterCount() override;
    Steinberg::Vst::IParamValueQueue* PLUGIN_API getParameterData(Steinberg::int32 index) override;
    Steinberg::Vst::IParamValueQueue* PLUGIN_API addParameterData(const Steinberg::Vst::ParamID& id,
                                                                  Steinberg::int32& index) override;

private:
    std::deque<ParameterQueueDouble> queues;
    std::vector<ParameterQueueDouble*> list;
};

} // namespace doubles
