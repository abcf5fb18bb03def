#include "tests/bench/BareProcessor.h"

#include "pluginterfaces/vst/ivstevents.h"
#include "pluginterfaces/vst/ivstparameterchanges.h"

namespace bench {

using namespace Steinberg;
using namespace Steinberg::Vst;

namespace {

void forwardChanges(VstIEditorConnect& library, IParameterChanges& changes)
{
    const int32 changed = changes.getParameterCount();
    for (int32 index = 0; index < changed; ++index) {
        IParamValueQueue* queue = changes.getParameterData(index);
        int32 offset = 0;
        ParamValue value = 0;
        if (queue->getPoint(queue->getPointCount() - 1, offset, value) == kResultOk)
            library.hostParameterChanged(queue->getParameterId(), value);
    }
}

void forwardNote(VstIEditorConnect& library, const Event& event)
{
    uint8 midi[3] = {0, 0, 0};
    if (event.type == Event::kNoteOnEvent) {
        midi[0] = static_cast<uint8>(0x90 | event.noteOn.channel);
        midi[1] = static_cast<uint8>(event.noteOn.pitch);
        midi[2] = event.noteOn.velocity > 0 ? 127 : 0;
    } else if (event.type == Event::kNoteOffEvent) {
        midi[0] = static_cast<uint8>(0x80 | event.noteOff.channel);
        midi[1] = static_cast<uint8>(event.noteOff.pitch);
    }
    library.receiveHostMidi(midi, sizeof(midi));
}

void forwardNotes(VstIEditorConnect& library, IEventList& events)
{
    const int32 count = events.getEventCount();
    for (int32 index = 0; index < count; ++index) {
        Event event;
        if (events.getEvent(index, event) == kResultOk)
            forwardNote(library, event);
    }
}

} // namespace

tresult PLUGIN_API BareProcessor::process(ProcessData& data)
{
    if (VstIEditorConnect* library = editor) {
        if (data.inputParameterChanges)
            forwardChanges(*library, *data.inputParameterChanges);
        if (data.inputEvents)
            forwardNotes(*library, *data.inputEvents);
    }
    if (data.outputEvents)
        sendQueuedEvents(*data.outputEvents);
    return kResultOk;
}

void BareProcessor::sendQueuedEvents(IEventList& list)
{
    for (size_t waiting = count.load(std::memory_order_relaxed); waiting > 0; --waiting) {
        if (!lock.trylock())
            return;
        Event event = events[first];
        first = (first + 1) % kCapacity;
        count.store(waiting - 1, std::memory_order_relaxed);
        lock.unlock();
        list.addEvent(event);
    }
}

void BareProcessor::writeNote(int16 pitch)
{
    Event event = {};
    event.type = Event::kNoteOnEvent;
    event.noteOn.pitch = pitch;
    const Base::Thread::FGuard guard(lock);
    const size_t waiting = count < kCapacity ? count.load() : 0;
    events[(first + waiting) % kCapacity] = event;
    count = waiting + 1;
}

} // namespace bench
