// VstK2x on the audio thread: host events in, library MIDI out.
#include "processor/VstK2x.h"

#include "editorlib/CallGuard.h"
#include "editorlib/VstIEditorConnect.h"
#include "processor/AudioThreadGuard.h"

#include "pluginterfaces/vst/ivstevents.h"
#include "pluginterfaces/vst/ivstparameterchanges.h"

namespace Steinberg {
namespace Vst {

using Base::Thread::FGuard;

namespace {

constexpr uint8 kNoteOff = 0x80;
constexpr uint8 kNoteOn = 0x90;

struct MidiMessage {
    uint8 bytes[3] = {0, 0, 0};
};

/** The instrument's parts know played and not played: any velocity above 0 becomes 127. What counts
    is the velocity rounded up, which is 0 above -1 already. */
uint8 switchVelocity(float velocity)
{
    const bool roundsUpToZero = velocity > -1 && velocity <= 0;
    return roundsUpToZero ? 0 : 127;
}

/** Events that are no notes give three zero bytes, which the library expects all the same. */
MidiMessage toMidi(const Event& event)
{
    MidiMessage midi;
    if (event.type == Event::kNoteOffEvent) {
        midi.bytes[0] = static_cast<uint8>(kNoteOff | static_cast<uint8>(event.noteOff.channel));
        midi.bytes[1] = static_cast<uint8>(event.noteOff.pitch);
    } else if (event.type == Event::kNoteOnEvent) {
        midi.bytes[0] = static_cast<uint8>(kNoteOn | static_cast<uint8>(event.noteOn.channel));
        midi.bytes[1] = static_cast<uint8>(event.noteOn.pitch);
        midi.bytes[2] = switchVelocity(event.noteOn.velocity);
    }
    return midi;
}

/** Everything leaves as a note-on: what is no note-on in MIDI gets velocity 0, a note-off that way.
 */
Event toNoteOn(const uint8* midi)
{
    Event event = {};
    event.type = Event::kNoteOnEvent;
    event.noteOn.channel = static_cast<int16>(midi[0] & 0x0F);
    event.noteOn.pitch = midi[1];
    event.noteOn.velocity = (midi[0] & 0xF0) == kNoteOn ? static_cast<float>(midi[2] / 127.0) : 0;
    event.noteOn.noteId = -1;
    return event;
}

void forwardLastPoint(VstIEditorConnect& editor, IParamValueQueue* queue)
{
    const int32 points = queue ? queue->getPointCount() : 0;
    int32 sampleOffset = 0;
    ParamValue value = 0;
    if (points <= 0 || queue->getPoint(points - 1, sampleOffset, value) != kResultOk)
        return;
    const ParamID id = queue->getParameterId();
    const AudioThreadGuard libraryCall(AudioThreadGuard::kElsewhere);
    editor.hostParameterChanged(id, value);
}

void forwardParameterChanges(VstIEditorConnect& editor, IParameterChanges& changes)
{
    const int32 count = changes.getParameterCount();
    // Each on its own: one that throws is unreadable, and the others are not.
    for (int32 index = 0; index < count; ++index)
        guarded([&] { forwardLastPoint(editor, changes.getParameterData(index)); });
}

void forwardEvents(VstIEditorConnect& editor, IEventList& events)
{
    const int32 count = events.getEventCount();
    for (int32 index = 0; index < count; ++index)
        guarded([&] {
            Event event = {};
            if (events.getEvent(index, event) != kResultOk)
                return;
            const MidiMessage midi = toMidi(event);
            const AudioThreadGuard libraryCall(AudioThreadGuard::kElsewhere);
            editor.receiveHostMidi(midi.bytes, sizeof(midi.bytes));
        });
}

} // namespace

tresult PLUGIN_API VstK2x::process(ProcessData& data)
{
    const AudioThreadGuard block(AudioThreadGuard::kInBlock);
    // Each list on its own: one that fails must not hold back notes on the others.
    if (VstIEditorConnect* editor = editorConnection) {
        if (IParameterChanges* changes = data.inputParameterChanges)
            guarded([&] { forwardParameterChanges(*editor, *changes); });
        if (IEventList* events = data.inputEvents)
            guarded([&] { forwardEvents(*editor, *events); });
    }
    if (IEventList* events = data.outputEvents)
        guarded([&] { sendQueuedEvents(*events); });
    return kResultOk;
}

void VstK2x::sendQueuedEvents(IEventList& events)
{
    // Events that the library adds meanwhile leave with the next block: a library that never stops
    // must not hold the audio thread. Most blocks find the queue empty and take no lock.
    Event event;
    for (size_t remaining = midiOutQueue.size(); remaining > 0 && takeQueuedEvent(event);
         --remaining)
        events.addEvent(event);
}

bool VstK2x::takeQueuedEvent(Event& event)
{
    const AudioThreadGuard queue(AudioThreadGuard::kAtQueue);
    const FGuard guard(*midiOutLock);
    return midiOutQueue.pop(event);
}

void VstK2x::writeMidi(const void* data, int length)
{
    if (!active || !data || length != 3)
        return;
    const Event event = toNoteOn(static_cast<const uint8*>(data));
    guarded([this, &event] {
        const FGuard guard(*midiOutLock);
        midiOutQueue.push(event);
    });
}

} // namespace Vst
} // namespace Steinberg
