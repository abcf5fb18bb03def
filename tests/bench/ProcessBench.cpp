// The processor's block: what the host brings.
#include "tests/bench/BareProcessor.h"
#include "tests/bench/Blocks.h"
#include "tests/bench/LinkedInstance.h"
#include "tests/bench/Table.h"

namespace bench {

namespace {

using namespace Steinberg;
using namespace Steinberg::Vst;

constexpr int kEmptyBlocks = 20'000;
constexpr int kFullBlocks = 200;
constexpr int kNotes = 64;
constexpr int kPoints = 8;
constexpr ParamID kFirstId = 37012000;

void runBlocks(IAudioProcessor* processor, ProcessData& data, int count)
{
    for (int block = 0; block < count; ++block)
        processor->process(data);
}

void compareBlocks(benchmark::State& state, ProcessData& data, int count)
{
    LinkedScene scene;
    const IPtr<BareProcessor> bare = owned(new BareProcessor(opaque(scene.library)));
    IAudioProcessor* ours = unknown<IAudioProcessor>(&scene.instance.processor());
    IAudioProcessor* floor = unknown<IAudioProcessor>(bare);
    compare(state, count, {[&] { runBlocks(ours, data, count); }},
            {[&] { runBlocks(floor, data, count); }});
}

void emptyBlockWithoutLists(benchmark::State& state)
{
    ProcessData bare;
    compareBlocks(state, bare, kEmptyBlocks);
}

void emptyBlockWithLists(benchmark::State& state)
{
    Block block;
    compareBlocks(state, block.data, kEmptyBlocks);
}

void fullBlock(benchmark::State& state)
{
    Block block;
    for (int number = 0; number < kNotes; ++number) {
        block.addNote(static_cast<int16>(number));
        block.addChange(kFirstId + static_cast<ParamID>(number), kPoints);
    }
    compareBlocks(state, block.data, kFullBlocks);
}

} // namespace

void addProcessLines()
{
    addLine({"process, empty block, no lists", "the pointers' tests", Unit::seconds, 1.1},
            emptyBlockWithoutLists);
    addLine({"process, empty block, three empty lists", "the tests and two questions",
             Unit::seconds, 1.2},
            emptyBlockWithLists);
    addLine({"process, 64 notes, 64 parameters of 8 points", "the calls and the tests for them",
             Unit::seconds, 1.1},
            fullBlock);
}

} // namespace bench
