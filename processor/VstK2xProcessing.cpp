// VstK2x on the audio thread: host events in, library MIDI out.
#include "processor/VstK2x.h"

#include "basics/CallGuard.h"
#include "editorlib/VstIEditorConnect.h"
#include "processor/AudioThreadGuard.h"
#include "processor/TriedLock.h"

#include "pluginterfaces/vst/ivstevents.h"
#include "pluginterfaces/vst/ivstparameterchanges.h"

#include <cstring>

namespace Steinberg {
namespace Vst {

namespace {

constexpr uint8 kNoteOff = 0x80;
constexpr uint8 kNoteOn = 0x90;

/** For each event that leaves. All of them in vain take 3 us; a writer has the lock for 25 ns, and
    for 0.2 us when another core uses the same memory. The shortest block that hosts offer, 32
    samples at 48 kHz, has 667 us. */
constexpr int kTriesOfTheBlock = 100;

/** A flag that is true for as long as this lives. */
class RaisedFlag {
public:
    explicit RaisedFlag(std::atomic<bool>& raised)
    : flag(raised)
    {
        flag = true;
    }
    ~RaisedFlag() { flag = false; }
    RaisedFlag(const RaisedFlag&) = delete;
    RaisedFlag& operator=(const RaisedFlag&) = delete;

private:
    std::atomic<bool>& flag;
};

/** The instrument's parts know played and not played: any velocity above 0 becomes 127. What counts
    is the velocity rounded up, which is 0 above -1 already. */
uint8 switchVelocity(float velocity)
{
    const bool roundsUpToZero = velocity > -1 && velocity <= 0;
    return roundsUpToZero ? 0 : 127;
}

/** Events that are no notes give three zero bytes, which the library expects all the same. */
MidiBytes toMidi(const Event& event)
{
    MidiBytes midi = {};
    if (event.type == Event::kNoteOffEvent) {
        midi[0] = static_cast<uint8>(kNoteOff | static_cast<uint8>(event.noteOff.channel));
        midi[1] = static_cast<uint8>(event.noteOff.pitch);
    } else if (event.type == Event::kNoteOnEvent) {
        midi[0] = static_cast<uint8>(kNoteOn | static_cast<uint8>(event.noteOn.channel));
        midi[1] = static_cast<uint8>(event.noteOn.pitch);
        midi[2] = switchVelocity(event.noteOn.velocity);
    }
    return midi;
}

/** Everything leaves as a note-on: what is no note-on in MIDI gets velocity 0, a note-off that way.
 */
Event toNoteOn(const MidiBytes& midi)
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
            const MidiBytes midi = toMidi(event);
            const AudioThreadGuard libraryCall(AudioThreadGuard::kElsewhere);
            editor.receiveHostMidi(midi.data(), static_cast<int32>(midi.size()));
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
    // What the library adds meanwhile leaves with the next block: a library that never stops must
    // not hold the audio thread. Most blocks find the queue empty and take no lock.
    size_t remaining = midiOutQueue.size();
    if (remaining == 0)
        return;
    const RaisedFlag sending(isSending);
    MidiBytes midi;
    for (; remaining > 0 && takeQueued(midi); --remaining) {
        Event event = toNoteOn(midi);
        events.addEvent(event);
    }
}

bool VstK2x::takeQueued(MidiBytes& midi)
{
    const AudioThreadGuard queue(AudioThreadGuard::kAtQueue);
    const TriedLock lock(*midiOutLock, kTriesOfTheBlock);
    return lock && midiOutQueue.pop(midi);
}

void VstK2x::writeMidi(const void* data, int length)
{
    if (!active || !data || length != 3)
        return;
    MidiBytes midi;
    std::memcpy(midi.data(), data, midi.size());
    const AudioThreadGuard queue(AudioThreadGuard::kAtQueue);
    // Adding needs no lock: this may be the audio thread, which must not wait here either for a
    // thread that was stopped with the lock in its hands. And writers that try it again and again
    // would keep it from a block that needs it for each event.
    const TriedLock lock(*midiOutLock, isSending ? 0 : 1);
    midiOutQueue.push(midi);
}

} // namespace Vst
} // namespace Steinberg
