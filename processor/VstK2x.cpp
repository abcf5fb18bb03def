#include "processor/VstK2x.h"

#include "basics/CallGuard.h"
#include "basics/PlugInInfo.h"
#include "editorlib/ConnectionMessages.h"
#include "editorlib/VstIEditorConnect.h"

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

/** The short name that the audio buses carry, by plug-in name. */
struct BusNamePrefix {
    const char* plugInName;
    const char* prefix;
};
constexpr BusNamePrefix kBusNamePrefixes[] = {{kPlugInName, "RDL3/RDL5"}};

const char* busNamePrefix(const char* plugInName)
{
    for (const auto& entry : kBusNamePrefixes)
        if (std::strcmp(entry.plugInName, plugInName) == 0)
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
    return static_cast<IAudioProcessor*>(new VstK2x);
}

tresult PLUGIN_API VstK2x::initialize(FUnknown* context)
{
    const tresult result = AudioEffect::initialize(context);
    // The base lets a host without context initialise twice.
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
    busesExist = false;
    // The base also disconnects a peer that the host left connected.
    return guarded<tresult>(kResultFalse, [this] { return AudioEffect::terminate(); });
}

tresult PLUGIN_API VstK2x::notify(IMessage* message)
{
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
    guarded([&] { editor->setEffectInterface(this); });
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
    if (!sampleRateLock)
        return 0;
    const FGuard guard(*sampleRateLock);
    const double samples = milliseconds * sampleRate / 1000;
    // Written so that a sample rate that is no number fails the test too.
    if (!(samples >= 0 && samples <= static_cast<double>(kMaxInt32u)))
        return 0;
    return static_cast<uint32>(samples);
}

} // namespace Vst
} // namespace Steinberg
