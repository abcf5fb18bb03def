#include "tests/endurance/LongInstance.h"

#include "public.sdk/source/common/memorystream.h"

#include <stdexcept>

namespace endurance {

using namespace Steinberg;
using namespace Steinberg::Vst;

namespace {

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

Counts& Counts::operator+=(const Counts& more)
{
    for (const auto count : {&Counts::blocks, &Counts::notesIn, &Counts::notesOut,
                             &Counts::wrongNotes, &Counts::automation, &Counts::gestures,
                             &Counts::presets, &Counts::views, &Counts::states, &Counts::failures})
        this->*count += more.*count;
    return *this;
}

LongInstance::LongInstance(LongHost& longHost, unsigned seed)
: host(longHost)
, random(seed)
, instance(host.plugIn, host.context, edits)
, user(tools::findSimulator())
{
    if (!user)
        throw std::runtime_error("the simulator is not loaded; run this under with-simulator");
    instance.start(static_cast<int32>(kSampleRate), kBlockSize);
    auto& data = instance.processData();
    data.numSamples = kBlockSize;
    data.inputEvents = &in;
    data.outputEvents = &out;
    data.inputParameterChanges = &changes;
    data.processContext = &time;
}

ParamID LongInstance::drawKnob()
{
    constexpr ParamID kNumbers[] = {12, 13, 53, 54, 44, 45, 46, 47, 16, 15};
    return 37000000 + kNumbers[draw(10)] * 1000 + static_cast<ParamID>(draw(16));
}

void LongInstance::fillBlock()
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

void LongInstance::playBlock()
{
    fillBlock();
    expect(instance.processor().process(instance.processData()) == kResultOk);
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
            expect(instance.controller().setParamNormalized(queue->getParameterId(), value) ==
                   kResultOk);
    }
}

void LongInstance::checkOutput()
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

void LongInstance::turnKnob()
{
    counts.gestures += user->turnKnobThrough(drawKnob(), {draw(128), draw(128)}) ? 1 : 0;
}

void LongInstance::changePreset()
{
    // Marker, bank 0, and one of its first voices.
    int32 words[] = {1, 0, draw(8)};
    MemoryStream preset(words, sizeof(words));
    expect(instance.controller().setState(&preset) == kResultOk);
    ++counts.presets;
}

void LongInstance::openAndCloseView()
{
    const auto view = owned(instance.controller().createView(ViewType::kEditor));
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

void LongInstance::saveAndRestore()
{
    instance.restore(instance.state());
    ++counts.states;
}

void LongInstance::settle()
{
    host.tick();
    const auto before = edits.counts;
    host.tick();
    const auto& after = edits.counts;
    expect(after.begun == before.begun && after.performed == before.performed);
    expect(after.begun == after.ended && after.disordered == 0 && edits.openGestures() == 0);
    expect(after.begun >= counts.gestures);
    uint64_t received = 0;
    for (int32 channel = 0; channel < 16; ++channel)
        received += user->noteOnsReceived(channel) + user->noteOffsReceived(channel);
    expect(received == counts.notesIn);
    expect(counts.notesOut == counts.notesIn && counts.wrongNotes == 0);
    expect(user->otherMidiReceived() == 0);
    expect(user->automationReceived() == counts.automation);
}

} // namespace endurance
