// Many instances in one project.
#include "tests/bench/Blocks.h"
#include "tests/bench/LinkedInstance.h"
#include "tests/bench/Table.h"

namespace bench {

namespace {

using namespace Steinberg::Vst;

constexpr int kInstances = 64;
constexpr int kBlocks = 50;

/** A note and a parameter in, a note out: more than a song brings in 32 samples. */
void play(LinkedInstance& instance, Block& block)
{
    constexpr uint8 note[] = {0x90, 60, 100};
    block.out.clear();
    instance.writeMidi(note, sizeof(note));
    instance.process(block.data);
}

/** The host's objects are the same on both sides, so that the instances' own memory counts. */
void manyInstances(benchmark::State& state)
{
    LeanLibrary library;
    BenchHost host(library, true);
    const auto instances = linkedInstances(host, kInstances);
    Block block;
    block.addNote(60);
    block.addChange(37012000, 1);
    compare(state, kBlocks, {[&] {
                for (int number = 0; number < kBlocks; ++number)
                    for (const auto& instance : instances)
                        play(*instance, block);
            }},
            {[&] {
                for (int number = 0; number < kBlocks; ++number)
                    for (int again = 0; again < kInstances; ++again)
                        play(*instances[0], block);
            }});
}

} // namespace

void addInstancesLines()
{
    addLine({"64 instances playing, a block of 32 samples", "one instance, 64 times", Unit::seconds,
             1.1},
            manyInstances);
}

} // namespace bench
