#include "tests/endurance/Instance.h"

#include "public.sdk/source/common/memorystream.h"

#include <dlfcn.h>
#include <stdexcept>

namespace endurance {

using namespace Steinberg;
using namespace Steinberg::Vst;

namespace {

constexpr const char* kLibrary = "/Library/Application Support/Tavrin/VST/RDL3_RDL5/"
                                 "libvst_rdl3_rdl5_vstserver.1.dylib";
constexpr const char* kProcessorID = "13EEE3484D664261B90352CE35DD18B4";
constexpr const char* kControllerID = "31DFD31BDBB84D128E0ABBC94E1BB134";

template <typename Interface>
IPtr<Interface> create(LongHost& host, const char* digits)
{
    const auto id = VST3::UID::fromString(std::string(digits));
    auto made = id ? host.module->getFactory().createInstance<Interface>(*id) : nullptr;
    if (!made)
        throw std::runtime_error("the factory made nothing");
    return made;
}

/** The newest simulated instrument's user. */
SimulatorControl* newestUser()
{
    void* library = dlopen(kLibrary, RTLD_LAZY | RTLD_NOLOAD);
    if (!library)
        throw std::runtime_error("the simulator is not loaded; run this under with-simulator");
    const auto get = reinterpret_cast<GetSimulatorControl>(dlsym(library, getSimulatorControlName));
    SimulatorControl* user = get ? get(-1) : nullptr;
    dlclose(library);
    if (!user)
        throw std::runtime_error("there is no instrument");
    return user;
}

Event makeNote(bool on, int channel, int pitch, float velocity)
{
    Event event = {};
    event.type = on ? Event::kNoteOnEvent : Event::kNoteOffEvent;
    if (on)
        event.noteOn = {static_cast<int16>(channel), static_cast<int16>(pitch), 0, velocity, 0, -1};
    else
        event.noteOff = {static_cast<int16>(channel), static_cast<int16>(pitch), 0, -1, 0};
    return event;
}

/** The plug-in sends every note as a note-on, a note-off as one with velocity 0. */
bool isAnswer(const Event& played, const Event& heard)
{
    const bool on = played.type == Event::kNoteOnEvent;
    const auto channel = on ? played.noteOn.channel : played.noteOff.channel;
    const auto pitch = on ? played.noteOn.pitch : played.noteOff.pitch;
    return heard.type == Event::kNoteOnEvent && heard.noteOn.channel == channel &&
           heard.noteOn.pitch == pitch && heard.noteOn.velocity == (on ? 1.F : 0.F);
}

} // namespace

Instance::Instance(LongHost& longHost, unsigned seed)
: host(longHost)
, random(seed)
, component(create<IComponent>(host, kProcessorID))
, processor(FUnknownPtr<IAudioProcessor>(component))
, controller(create<IEditController>(host, kControllerID))
, processorPoint(FUnknownPtr<IConnectionPoint>(component))
, controllerPoint(FUnknownPtr<IConnectionPoint>(controller))
{
    expect(component->initialize(&host.context) == kResultOk);
    expect(controller->initialize(&host.context) == kResultOk);
    controller->setComponentHandler(&edits);
    connectBoth();
    user = newestUser();
    ProcessSetup setup{kRealtime, kSample32, kBlockSize, kSampleRate};
    expect(processor->setupProcessing(setup) == kResultOk);
    expect(component->setActive(true) == kResultOk);
    data.numSamples = kBlockSize;
    data.inputEvents = &in;
    data.outputEvents = &out;
    data.inputParameterChanges = &changes;
    data.processContext = &time;
}

void Instance::connectBoth()
{
    expect(processorPoint->connect(controllerPoint) == kResultOk);
    expect(controllerPoint->connect(processorPoint) == kResultOk);
}

Instance::~Instance()
{
    component->setActive(false);
    controllerPoint->disconnect(processorPoint);
    processorPoint->disconnect(controllerPoint);
    controller->setComponentHandler(nullptr);
    controller->terminate();
    component->terminate();
}

ParamID Instance::drawKnob()
{
    constexpr ParamID kNumbers[] = {12, 13, 53, 54, 44, 45, 46, 47, 16, 15};
    return 37000000 + kNumbers[draw(10)] * 1000 + static_cast<ParamID>(draw(16));
}

void Instance::fillBlock()
{
    in.clear();
    out.clear();
    changes.clearQueue();
    for (int notes = draw(4); notes > 0; --notes) {
        const int channel = draw(16);
        const int pitch = draw(128);
        Event on = makeNote(true, channel, pitch, static_cast<float>(1 + draw(127)) / 127.F);
        Event off = makeNote(false, channel, pitch, 0);
        in.addEvent(on);
        in.addEvent(off);
    }
    for (int points = draw(3); points > 0; --points) {
        int32 index = 0;
        if (auto* queue = changes.addParameterData(drawKnob(), index)) {
            queue->addPoint(0, draw(1000) / 999.0, index);
            queue->addPoint(kBlockSize - 1, draw(1000) / 999.0, index);
        }
    }
}

void Instance::playBlock()
{
    fillBlock();
    expect(processor->process(data) == kResultOk);
    ++counts.blocks;
    counts.notesIn += static_cast<uint64_t>(in.getEventCount());
    counts.notesOut += static_cast<uint64_t>(out.getEventCount());
    counts.automation += static_cast<uint64_t>(changes.getParameterCount());
    checkOutput();
    // As hosts do with what they play back: the controller hears of it too.
    for (int32 index = 0; index < changes.getParameterCount(); ++index) {
        auto* queue = changes.getParameterData(index);
        int32 offset = 0;
        ParamValue value = 0;
        if (queue->getPoint(queue->getPointCount() - 1, offset, value) == kResultOk)
            expect(controller->setParamNormalized(queue->getParameterId(), value) == kResultOk);
    }
}

void Instance::checkOutput()
{
    const int32 count = in.getEventCount();
    if (out.getEventCount() != count) {
        counts.wrongNotes += 1;
        return;
    }
    for (int32 index = 0; index < count; ++index) {
        Event played;
        Event heard;
        in.getEvent(index, played);
        out.getEvent(index, heard);
        counts.wrongNotes += isAnswer(played, heard) ? 0 : 1;
    }
}

void Instance::turnKnob()
{
    counts.gestures += user->turnKnobThrough(drawKnob(), {draw(128), draw(128)}) ? 1 : 0;
}

void Instance::changePreset()
{
    // Marker, bank 0, and one of its first voices.
    int32 words[] = {1, 0, draw(8)};
    MemoryStream preset(words, sizeof(words));
    expect(controller->setState(&preset) == kResultOk);
    ++counts.presets;
}

void Instance::openAndCloseView()
{
    const auto view = owned(controller->createView(ViewType::kEditor));
    expect(view != nullptr);
    if (!view)
        return;
    int window = 0;
    ViewRect size;
    view->getSize(&size);
    expect(view->attached(&window, kPlatformTypeNSView) == kResultOk);
    expect(user->editorOpen());
    expect(view->removed() == kResultOk);
    expect(!user->editorOpen());
    ++counts.views;
}

void Instance::saveAndRestore()
{
    MemoryStream state;
    expect(component->getState(&state) == kResultOk);
    state.seek(0, IBStream::kIBSeekSet, nullptr);
    expect(component->setState(&state) == kResultOk);
    state.seek(0, IBStream::kIBSeekSet, nullptr);
    expect(controller->setComponentState(&state) == kResultOk);
    ++counts.states;
}

void Instance::settle()
{
    host.loop.tick();
    const EditCounter before = edits;
    host.loop.tick();
    expect(edits.begun == before.begun && edits.performed == before.performed);
    expect(edits.begun == edits.ended && edits.disordered == 0 && edits.openGestures() == 0);
    expect(edits.begun >= counts.gestures);
    uint64_t received = 0;
    for (int32 channel = 0; channel < 16; ++channel)
        received += user->noteOnsReceived(channel) + user->noteOffsReceived(channel);
    expect(received == counts.notesIn);
    expect(counts.notesOut == counts.notesIn && counts.wrongNotes == 0);
    expect(user->otherMidiReceived() == 0);
    expect(user->automationReceived() == counts.automation);
}

} // namespace endurance
