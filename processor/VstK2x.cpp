#include "processor/VstK2x.h"

#include "basics/CallGuard.h"
#include "basics/PlugInInfo.h"
#include "editorlib/ConnectionMessages.h"
#include "editorlib/VstIEditorConnect.h"
#include "processor/AudioThreadGuard.h"
#include "processor/ProcessorState.h"
#include "processor/TriedLock.h"

#include "pluginterfaces/base/ustring.h"
#include "pluginterfaces/vst/ivstevents.h"
#include "pluginterfaces/vst/ivstmessage.h"
#include "pluginterfaces/vst/ivstparameterchanges.h"
#include "pluginterfaces/vst/vstspeaker.h"

#include <cstdio>
#include <cstring>

namespace Steinberg {
namespace Vst {

using Base::Thread::FGuard;
using Base::Thread::FLock;

namespace {

/** The beginning of the audio buses' names, by plug-in name. */
struct BusNamePrefix {
    const char* plugInName;
    const char* prefix;
};
constexpr BusNamePrefix kBusNamePrefixes[] = {{kPlugInName, "RDL3/RDL5"}};

const char* busNamePrefix(const char* plugInName)
{
    for (const auto& entry : kBusNamePrefixes)              // untaken: one-plug-in
        if (std::strcmp(entry.plugInName, plugInName) == 0) // untaken: one-plug-in
            return entry.prefix;
    return "";
}

bool hasID(IMessage& message, const char* id)
{
    return FIDStringsEqual(message.getMessageID(), id);
}

/** The pointer that a binary attribute holds; null when it is missing or too short. */
VstIEditorConnect* readPointer(IMessage& message, const char* attribute)
{
    IAttributeList* attributes = message.getAttributes();
    if (!attributes)
        return nullptr;
    const void* bytes = nullptr;
    uint32 size = 0;
    VstIEditorConnect* pointer = nullptr;
    if (attributes->getBinary(attribute, bytes, size) == kResultOk && bytes &&
        size >= sizeof(void*))
        std::memcpy(&pointer, bytes, sizeof(void*));
    return pointer;
}

constexpr uint8 kNoteOff = 0x80;
constexpr uint8 kNoteOn = 0x90;

/** How often the block tries the lock for each event. A hundred tries take 3 us; a writer holds the
    lock for 25 ns, or 0.2 us when another core uses the same memory. The shortest block that hosts
    offer, 32 samples at 48 kHz, lasts 667 us. */
constexpr int kTriesOfTheBlock = 100;

/** Sets a flag until it is destroyed. */
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

/** The instrument's parts do not know velocities: every note is played with 127. It is 0 when the
    velocity rounded up to an integer is 0, which is so above -1 and up to 0. */
uint8 switchVelocity(float velocity)
{
    const bool roundsUpToZero = velocity > -1 && velocity <= 0;
    return roundsUpToZero ? 0 : 127;
}

/** Events other than notes give three zero bytes, which the library expects as well. */
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

/** Every message becomes a note-on event. One that is not a note-on in MIDI gets velocity 0, which
    makes it a note-off. */
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
    // A queue that throws is skipped; the rest are still forwarded.
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

VstK2x::VstK2x()
: midiOutLock(std::make_unique<FLock>("MidiOutNoteFlag"))
, sampleRateLock(std::make_unique<FLock>("SampleRateFlag"))
{
    setControllerClass(kControllerUID);
}

VstK2x::~VstK2x() = default;

FUnknown* VstK2x::createInstance(void* /*context*/)
{
    return static_cast<IAudioProcessor*>(new VstK2x); // untaken: compiler
}

tresult PLUGIN_API VstK2x::initialize(FUnknown* context)
{
    hostThread.begin();
    const tresult result = AudioEffect::initialize(context);
    // The base class accepts a second initialize without a context.
    if (result != kResultOk || busesExist)
        return result;
    return guarded<tresult>(kResultFalse, [this] {
        addBuses();
        return kResultOk;
    });
}

void VstK2x::addBuses()
{
    busesExist = true;
    for (int number = 1; number <= 2; ++number) {
        char name[32];
        std::snprintf(name, sizeof(name), "%s %d", busNamePrefix(kPlugInName), number);
        String128 wideName;
        UString(wideName, 128).fromAscii(name);
        addAudioOutput(wideName, SpeakerArr::kStereo, kMain, BusInfo::kDefaultActive);
    }
    addEventInput(STR16("Midi In"), 16, kMain, BusInfo::kDefaultActive);
    addEventOutput(STR16("Midi Out"), 16, kMain, BusInfo::kDefaultActive);
}

tresult PLUGIN_API VstK2x::terminate()
{
    hostThread.check("terminate");
    busesExist = false;
    // The base class also disconnects a controller that the host has left connected.
    return guarded<tresult>(kResultFalse, [this] { return AudioEffect::terminate(); });
}

tresult PLUGIN_API VstK2x::notify(IMessage* message)
{
    hostThread.check("notify");
    if (!message)
        return kResultOk;
    guarded([this, message] {
        if (hasID(*message, kConnectMessageID))
            connectEditor(*message);
        else if (hasID(*message, kDisconnectMessageID))
            disconnectEditor();
        else if (hasID(*message, kUnicodeHostMessageID))
            readUnicodeFlag(*message);
    });
    return kResultOk;
}

void VstK2x::connectEditor(IMessage& message)
{
    VstIEditorConnect* editor = readPointer(message, kConnectAttributeID);
    editorConnection = editor;
    if (!editor)
        return;
    guarded([&] { editor->setEffectInterface(this); }); // untaken: compiler
    guarded([&] { editor->setEffectOption(effectOption); });
}

void VstK2x::disconnectEditor()
{
    VstIEditorConnect* editor = editorConnection;
    if (!editor)
        return;
    guarded([&] { editor->setEffectInterface(nullptr); });
    editorConnection = nullptr;
}

void VstK2x::readUnicodeFlag(IMessage& message)
{
    int64 flag = 0;
    IAttributeList* attributes = message.getAttributes();
    if (!attributes || attributes->getInt(kUnicodeHostAttributeID, flag) != kResultOk)
        flag = 0;
    unicodeHost = flag != 0;
}

tresult PLUGIN_API VstK2x::setActive(TBool state)
{
    active = state != 0;
    return kResultOk;
}

tresult PLUGIN_API VstK2x::setupProcessing(ProcessSetup& setup)
{
    hostThread.check("setupProcessing");
    {
        const FGuard guard(*sampleRateLock);
        sampleRate = setup.sampleRate;
    }
    if (canProcessSampleSize(setup.symbolicSampleSize) != kResultOk)
        return kResultFalse;
    processSetup = setup;
    return kResultOk;
}

uint32 PLUGIN_API VstK2x::getLatencySamples()
{
    VstIEditorConnect* editor = editorConnection;
    if (!editor || !unicodeHost)
        return 0;
    const int32 mode = guarded<int32>(-1, [&] { return editor->getLatencyMode(); });
    double milliseconds = 0;
    if (mode == 0 || mode == 1)
        milliseconds = 1;
    else if (mode == 2)
        milliseconds = 5;
    if (!sampleRateLock) // untaken: made-with-object
        return 0;
    const FGuard guard(*sampleRateLock);
    const double samples = milliseconds * sampleRate / 1000;
    // In this form the test fails for NaN as well.
    if (!(samples >= 0 && samples <= static_cast<double>(kMaxInt32u)))
        return 0;
    return static_cast<uint32>(samples);
}

// State -----------------------------------------------------------------------

tresult PLUGIN_API VstK2x::getState(IBStream* state)
{
    hostThread.check("getState");
    VstIEditorConnect* editor = editorConnection;
    if (!editor || !state)
        return kResultFalse;
    return guarded<tresult>(kResultFalse, [&] { return saveLibraryState(*editor, *state); });
}

tresult PLUGIN_API VstK2x::setState(IBStream* state)
{
    hostThread.check("setState");
    VstIEditorConnect* editor = editorConnection;
    if (!editor)
        return kResultOk;
    return guarded<tresult>(kResultFalse, [&] { return restoreLibraryState(*editor, state); });
}

// The audio thread ------------------------------------------------------------

tresult PLUGIN_API VstK2x::process(ProcessData& data)
{
    const AudioThreadGuard block(AudioThreadGuard::kInBlock);
    // A list that throws must not keep the other lists from being forwarded.
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
    // Only what waits now is sent: a library that never stops sending must not keep the audio
    // thread here. In most blocks the queue is empty, and no lock is taken.
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
    // push needs no lock, and this may be the audio thread, which must not wait for a thread that
    // the system stopped while it held the lock. While a block sends, writers do not even try the
    // lock: the block needs it for each event.
    const TriedLock lock(*midiOutLock, isSending ? 0 : 1);
    midiOutQueue.push(midi);
}

} // namespace Vst
} // namespace Steinberg
