// The processor's block: what the host brings.
#include "tests/bench/Blocks.h"
#include "tests/bench/Instance.h"
#include "tests/bench/Lines.h"
#include "tests/bench/Table.h"

#include "public.sdk/source/vst/vstaudioeffect.h"

namespace bench {

namespace {

using namespace Steinberg;
using namespace Steinberg::Vst;

constexpr int kEmptyBlocks = 20'000;
constexpr int kFullBlocks = 200;
constexpr int kNotes = 64;
constexpr int kPoints = 8;
constexpr ParamID kFirstId = 37012000;

class IdleEffect final : public AudioEffect {
public:
    tresult PLUGIN_API process(ProcessData&) override { return kResultOk; }
};

void runBlocks(IAudioProcessor* processor, ProcessData& data, int count)
{
    for (int block = 0; block < count; ++block)
        processor->process(data);
}

void emptyBlock(benchmark::State& state, bool withLists)
{
    LeanLibrary library;
    LeanHost host(library, true);
    Instance instance(host);
    const IPtr<IdleEffect> idle = owned(new IdleEffect);
    Block block;
    ProcessData bare;
    ProcessData& data = withLists ? block.data : bare;
    IAudioProcessor* ours = unknown<IAudioProcessor>(&instance.processor());
    IAudioProcessor* floor = unknown<IAudioProcessor>(idle);
    compare(state, kEmptyBlocks, {[&] { runBlocks(ours, data, kEmptyBlocks); }},
            {[&] { runBlocks(floor, data, kEmptyBlocks); }});
}

void emptyBlockWithoutLists(benchmark::State& state)
{
    emptyBlock(state, false);
}

void emptyBlockWithLists(benchmark::State& state)
{
    emptyBlock(state, true);
}

void forwardChanges(VstIEditorConnect& library, IParameterChanges& changes)
{
    for (int32 index = 0; index < kNotes; ++index) {
        IParamValueQueue* queue = changes.getParameterData(index);
        int32 offset = 0;
        ParamValue value = 0;
        queue->getPoint(queue->getPointCount() - 1, offset, value);
        library.hostParameterChanged(queue->getParameterId(), value);
    }
}

void forwardNotes(VstIEditorConnect& library, IEventList& events)
{
    for (int32 index = 0; index < kNotes; ++index) {
        Event event;
        events.getEvent(index, event);
        const uint8 midi[] = {static_cast<uint8>(0x90 | event.noteOn.channel),
                              static_cast<uint8>(event.noteOn.pitch), 127};
        library.receiveHostMidi(midi, sizeof(midi));
    }
}

void fullBlock(benchmark::State& state)
{
    LeanLibrary lean;
    LeanHost host(lean, true);
    Instance instance(host);
    Block block;
    for (int number = 0; number < kNotes; ++number) {
        block.addNote(static_cast<int16>(number));
        block.addChange(kFirstId + static_cast<ParamID>(number), kPoints);
    }
    VstIEditorConnect& library = opaque(lean);
    IParameterChanges* changes = unknown(block.data.inputParameterChanges);
    IEventList* events = unknown(block.data.inputEvents);
    IAudioProcessor* processor = unknown<IAudioProcessor>(&instance.processor());
    compare(state, kFullBlocks, {[&] { runBlocks(processor, block.data, kFullBlocks); }}, {[&] {
                for (int number = 0; number < kFullBlocks; ++number) {
                    forwardChanges(library, *changes);
                    forwardNotes(library, *events);
                }
            }});
}

} // namespace

void addProcessLines()
{
    addLine(
        {"process, empty block, no lists", "AudioEffect that returns at once", Unit::seconds, 1.5},
        emptyBlockWithoutLists);
    addLine({"process, empty block, three empty lists", "AudioEffect that returns at once",
             Unit::seconds, 1.5},
            emptyBlockWithLists);
    addLine({"process, 64 notes, 64 parameters of 8 points", "the host's and the library's calls",
             Unit::seconds, 1.1},
            fullBlock);
}

} // namespace bench
