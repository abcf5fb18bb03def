// HostBlock: what a host hands to process(), where each question to it can fail like any other call
// of the host. HostStream: a stream of the host's, likewise.
//
//   HostBlock block(host);  block.in.add(noteOn(0, 60, 1));  processor->process(block.data);
//   HostStream stream(host, "bytes");  component->setState(&stream);
#pragma once

#include "pluginterfaces/base/ibstream.h"
#include "pluginterfaces/vst/ivstaudioprocessor.h"
#include "pluginterfaces/vst/ivstevents.h"
#include "pluginterfaces/vst/ivstparameterchanges.h"
#include "tests/doubles/CallScript.h"

#include <deque>

namespace faults {

/** On the stack: counts references and deletes nothing. */
template <class Interface>
class OnStack : public Interface {
public:
    OnStack() = default;
    OnStack(const OnStack&) = delete;
    OnStack& operator=(const OnStack&) = delete;
    virtual ~OnStack() = default;

    Steinberg::tresult PLUGIN_API queryInterface(const Steinberg::TUID, void** obj) override
    {
        *obj = nullptr;
        return Steinberg::kNoInterface;
    }
    Steinberg::uint32 PLUGIN_API addRef() override { return static_cast<unsigned>(++references); }
    Steinberg::uint32 PLUGIN_API release() override { return static_cast<unsigned>(--references); }

    int references = 1;
};

class EventsOfHost final : public OnStack<Steinberg::Vst::IEventList> {
public:
    explicit EventsOfHost(doubles::CallScript& script)
    : host(script)
    {
    }
    std::vector<Steinberg::Vst::Event> events;

    Steinberg::int32 PLUGIN_API getEventCount() override;
    Steinberg::tresult PLUGIN_API getEvent(Steinberg::int32 index,
                                           Steinberg::Vst::Event& event) override;
    Steinberg::tresult PLUGIN_API addEvent(Steinberg::Vst::Event& event) override;

private:
    doubles::CallScript& host;
};

class ChangesOfHost final : public OnStack<Steinberg::Vst::IParameterChanges> {
public:
    explicit ChangesOfHost(doubles::CallScript& script)
    : host(script)
    {
    }
    void add(Steinberg::Vst::ParamID id, double value) { queues.emplace_back(host, id, value); }

    Steinberg::int32 PLUGIN_API getParameterCount() override;
    Steinberg::Vst::IParamValueQueue* PLUGIN_API getParameterData(Steinberg::int32 index) override;
    Steinberg::Vst::IParamValueQueue* PLUGIN_API addParameterData(const Steinberg::Vst::ParamID&,
                                                                  Steinberg::int32&) override
    {
        return nullptr;
    }

private:
    /** One point. */
    class Queue final : public OnStack<Steinberg::Vst::IParamValueQueue> {
    public:
        Queue(doubles::CallScript& script, Steinberg::Vst::ParamID parameter, double only)
        : host(script)
        , id(parameter)
        , value(only)
        {
        }
        Steinberg::Vst::ParamID PLUGIN_API getParameterId() override;
        Steinberg::int32 PLUGIN_API getPointCount() override;
        Steinberg::tresult PLUGIN_API getPoint(Steinberg::int32 index,
                                               Steinberg::int32& sampleOffset,
                                               Steinberg::Vst::ParamValue& point) override;
        Steinberg::tresult PLUGIN_API addPoint(Steinberg::int32, Steinberg::Vst::ParamValue,
                                               Steinberg::int32&) override
        {
            return Steinberg::kResultFalse;
        }

    private:
        doubles::CallScript& host;
        const Steinberg::Vst::ParamID id;
        const double value;
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

/** Reads and writes of all streams, one of which moves one byte less than asked, or none, and calls
    that a success. */
struct Transfers {
    size_t count = 0;
    size_t faulty = 0; ///< which one; 0: none
    bool movesNothing = false;

    bool hasFailed() const { return faulty > 0 && count >= faulty; }
};

class HostStream final : public OnStack<Steinberg::IBStream> {
public:
    explicit HostStream(doubles::CallScript& script, std::string content = {})
    : bytes(std::move(content))
    , host(script)
    {
    }
    std::string bytes;
    size_t position = 0;

    static inline Transfers transfers;

    Steinberg::tresult PLUGIN_API read(void* buffer, Steinberg::int32 size,
                                       Steinberg::int32* sizeRead) override;
    Steinberg::tresult PLUGIN_API write(void* buffer, Steinberg::int32 size,
                                        Steinberg::int32* sizeWritten) override;
    Steinberg::tresult PLUGIN_API seek(Steinberg::int64 offset, Steinberg::int32 mode,
                                       Steinberg::int64* result) override;
    Steinberg::tresult PLUGIN_API tell(Steinberg::int64* result) override;

private:
    static size_t cut(size_t length);

    doubles::CallScript& host;
};

} // namespace faults
