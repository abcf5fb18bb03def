// HostBlock: what a host hands to process(). HostStream: a stream of the host's. Each call of them
// can fail like any other call of the host.
//
//   HostBlock block(host);  block.in.add(noteOn(0, 60, 1));  processor->process(block.data);
//   HostStream stream(host, "bytes");  component->setState(&stream);
#pragma once

#include "pluginterfaces/vst/ivstaudioprocessor.h"
#include "tests/doubles/CallScript.h"
#include "tests/doubles/EventListDouble.h"
#include "tests/doubles/ParameterChangesDouble.h"
#include "tests/doubles/StreamDouble.h"

namespace faults {

class EventsOfHost final : public doubles::EventListDouble {
public:
    explicit EventsOfHost(doubles::CallScript& script)
    : host(script)
    {
    }

    Steinberg::int32 PLUGIN_API getEventCount() override;
    Steinberg::tresult PLUGIN_API getEvent(Steinberg::int32 index,
                                           Steinberg::Vst::Event& event) override;
    Steinberg::tresult PLUGIN_API addEvent(Steinberg::Vst::Event& event) override;

private:
    doubles::CallScript& host;
};

class ChangesOfHost final : public doubles::ParameterChangesDouble {
public:
    explicit ChangesOfHost(doubles::CallScript& script)
    : host(script)
    {
    }

    /** A parameter with one point. */
    void add(Steinberg::Vst::ParamID id, double value);

    Steinberg::int32 PLUGIN_API getParameterCount() override;
    Steinberg::Vst::IParamValueQueue* PLUGIN_API getParameterData(Steinberg::int32 index) override;

private:
    class Queue final : public doubles::ParameterQueueDouble {
    public:
        Queue(doubles::CallScript& script, Steinberg::Vst::ParamID parameter, double value)
        : ParameterQueueDouble(parameter, {{0, value}})
        , host(script)
        {
        }
        Steinberg::Vst::ParamID PLUGIN_API getParameterId() override;
        Steinberg::int32 PLUGIN_API getPointCount() override;
        Steinberg::tresult PLUGIN_API getPoint(Steinberg::int32 index,
                                               Steinberg::int32& sampleOffset,
                                               Steinberg::Vst::ParamValue& point) override;

    private:
        doubles::CallScript& host;
    };

    doubles::CallScript& host;
    std::deque<Queue> queues;
};

struct HostBlock {
    explicit HostBlock(doubles::CallScript& host)
    : in(host)
    , out(host)
    , changes(host)
    {
        data.numSamples = 64;
        data.inputEvents = &in;
        data.outputEvents = &out;
        data.inputParameterChanges = &changes;
    }
    EventsOfHost in;
    EventsOfHost out;
    ChangesOfHost changes;
    Steinberg::Vst::ProcessData data;
};

/** Transfers of all streams. The faulty one moves a byte less or none and answers kResultOk. */
struct Transfers {
    size_t count = 0;
    size_t faulty = 0; ///< which one; 0: none
    bool movesNothing = false;

    bool hasFailed() const { return faulty > 0 && count >= faulty; }
};

class HostStream final : public doubles::StreamDouble {
public:
    explicit HostStream(doubles::CallScript& script, const std::string& content = {})
    : StreamDouble(content)
    , host(script)
    {
    }

    static inline Transfers transfers;

    Steinberg::tresult PLUGIN_API read(void* buffer, Steinberg::int32 size,
                                       Steinberg::int32* sizeRead) override;
    Steinberg::tresult PLUGIN_API write(void* buffer, Steinberg::int32 size,
                                        Steinberg::int32* sizeWritten) override;
    Steinberg::tresult PLUGIN_API seek(Steinberg::int64 offset, Steinberg::int32 mode,
                                       Steinberg::int64* result) override;
    Steinberg::tresult PLUGIN_API tell(Steinberg::int64* result) override;

private:
    doubles::CallScript& host;
};

} // namespace faults
