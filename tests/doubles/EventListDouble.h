// EventListDouble: a list of events in process(), input or output.
//
//   EventListDouble in;    in.add(noteOn(0, 60, 0.5f));    in.unreadable = {1};
//   EventListDouble out;   out.limit = 3;                  // the fourth event is refused
//   data.inputEvents = &in; data.outputEvents = &out; processor->process(data); out.events...
#pragma once

#include "pluginterfaces/vst/ivstevents.h"
#include "tests/doubles/StackObject.h"

#include <limits>
#include <set>
#include <vector>

namespace doubles {

Steinberg::Vst::Event noteOn(Steinberg::int16 channel, Steinberg::int16 pitch, float velocity);
Steinberg::Vst::Event noteOff(Steinberg::int16 channel, Steinberg::int16 pitch);

/** Not in the trace. Takes memory only for more events than it has reserved, so that tests can
    count what the plug-in itself allocates. */
class EventListDouble : public StackObject<Steinberg::Vst::IEventList> {
public:
    EventListDouble() { events.reserve(1024); }

    std::vector<Steinberg::Vst::Event> events;
    std::set<Steinberg::int32> unreadable; ///< getEvent fails at these indexes
    std::set<Steinberg::int32> throwing;   ///< getEvent throws at these indexes
    size_t limit = std::numeric_limits<size_t>::max();
    bool throws = false; ///< at every addEvent and getEvent

    void add(const Steinberg::Vst::Event& event) { events.push_back(event); }

    Steinberg::int32 PLUGIN_API getEventCount() override;
    Steinberg::tresult PLUGIN_API getEvent(Steinberg::int32 index,
                                           Steinberg::Vst::Event& event) override;
    Steinberg::tresult PLUGIN_API addEvent(Steinberg::Vst::Event& event) override;
};

} // namespace doubles
