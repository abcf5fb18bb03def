#include "tests/doubles/EventListDouble.h"

#include "tests/doubles/CallScript.h"

namespace doubles {

using namespace Steinberg;

Vst::Event noteOn(int16 channel, int16 pitch, float velocity)
{
    Vst::Event event{};
    event.type = Vst::Event::kNoteOnEvent;
    event.noteOn.channel = channel;
    event.noteOn.pitch = pitch;
    event.noteOn.velocity = velocity;
    event.noteOn.noteId = -1;
    return event;
}

Vst::Event noteOff(int16 channel, int16 pitch)
{
    Vst::Event event{};
    event.type = Vst::Event::kNoteOffEvent;
    event.noteOff.channel = channel;
    event.noteOff.pitch = pitch;
    event.noteOff.noteId = -1;
    return event;
}

int32 EventListDouble::getEventCount()
{
    return static_cast<int32>(events.size());
}

tresult EventListDouble::getEvent(int32 index, Vst::Event& event)
{
    if (throws || throwing.count(index) > 0)
        throw ScriptedFailure("getEvent");
    if (index < 0 || static_cast<size_t>(index) >= events.size() || unreadable.count(index) > 0)
        return kResultFalse;
    event = events[static_cast<size_t>(index)];
    return kResultOk;
}

tresult EventListDouble::addEvent(Vst::Event& event)
{
    if (throws)
        throw ScriptedFailure("addEvent");
    if (events.size() >= limit)
        return kResultFalse;
    events.push_back(event);
    return kResultOk;
}

} // namespace doubles
