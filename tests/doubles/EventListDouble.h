// EventListDouble: a list of events in process(), input or output.
//
//   EventListDouble in;    in.add(noteOn(0, 60, 0.5f));    in.unreadable = {1};
//   EventListDouble out;   out.limit = 3;                  // the fourth event is refused
//   data.inputEvents = &in; data.outputEvents = &out; processor->process(data); out.events...
#pragma once

#include "pluginterfaces/vst/ivstevents.h"

#include <atomic>
#include <limits>
#include <set>
#include <vector>

namespace doubles {

Steinberg::Vst::Event noteOn(Steinberg::int16 channel, Steinberg::int16 pitch, float velocity);
Steinberg::Vst::Event noteOff(Steinberg::int16 channel, Steinberg::int16 pitch);

/** On the test's stack: one reference of its own, release deletes nothing. Not recorded in the
    trace, and takes memory for an event only beyond what was reserved, so that tests can count what
    the plug-in itself allocates. */
class EventListDouble : public Steinberg::Vst::IEventList {
public:
    EventListDouble() { events.reserve(1024); }
    EventListDouble(const EventListDouble&) = delete;
    EventListDouble& operator=(const EventListDouble&) = delete;
    virtual ~EventListDouble() = default;

    std::vector<Steinberg::Vst::Event> events;
    std::set<Steinberg::int32> unreadable; ///< getEvent fails at these indexes
    std::set<Steinberg::int32> throwing;   ///< getEvent throws at these indexes
    size_t limit = std::numeric_limits<size_t>::max();
    bool throws = false; ///< at every addEvent and getEvent

    void add(const Steinberg::Vst::Event& event) { events.push_back(event); }
    int getReferences() const { return references; }

    Steinberg::int32 PLUGIN_API getEventCount() override;
    Steinberg::tresult PLUGIN_API getEvent(Steinberg::int32 index,
                                           Steinberg::Vst::Event& event) override;
    Steinberg::tresult PLUGIN_API addEvent(Steinberg::Vst::Event& event) override;

    Steinberg::tresult PLUGIN_API queryInterface(const Steinberg::TUID queried,
                                                 void** obj) override;
    Steinberg::uint32 PLUGIN_API addRef() override { return static_cast<unsigned>(++references); }
    Steinberg::uint32 PLUGIN_API release() override { return static_cast<unsigned>(--references); }

private:
    std::atomic<int> references{1};
};

} // namespace doubles
