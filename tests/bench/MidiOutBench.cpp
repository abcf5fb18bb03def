// The processor's block: what the library sends.
#include "tests/bench/BareProcessor.h"
#include "tests/bench/Blocks.h"
#include "tests/bench/LinkedInstance.h"
#include "tests/bench/Table.h"

#include <memory>

namespace bench {

namespace {

using namespace Steinberg;
using namespace Steinberg::Vst;

constexpr int kQueued = 99;
constexpr uint8 kNote[] = {0x90, 60, 100};

/** Several queues, since draining a single one is too short to time. */
constexpr int kQueues = 32;

struct Pair {
    Pair(BenchHost& host, LeanLibrary& library)
    : ours(host)
    , bare(owned(new BareProcessor(opaque(library))))
    {
    }

    LinkedInstance ours;
    IPtr<BareProcessor> bare;
    IAudioProcessor* floor = unknown<IAudioProcessor>(bare);
    Block block;
};

void drain(benchmark::State& state)
{
    LeanLibrary library;
    BenchHost host(library, true);
    std::vector<std::unique_ptr<Pair>> pairs;
    for (int number = 0; number < kQueues; ++number)
        pairs.push_back(std::make_unique<Pair>(host, library));
    const auto forEach = [&pairs](void (*procedure)(Pair&)) {
        return [&pairs, procedure] {
            for (auto& pair : pairs)
                procedure(*pair);
        };
    };
    const Side ours{forEach([](Pair& pair) { pair.ours.process(pair.block.data); }),
                    forEach([](Pair& pair) {
                        pair.block.out.clear();
                        for (int number = 0; number < kQueued; ++number)
                            pair.ours.writeMidi(kNote, sizeof(kNote));
                    })};
    const Side floor{forEach([](Pair& pair) { pair.floor->process(pair.block.data); }),
                     forEach([](Pair& pair) {
                         pair.block.out.clear();
                         for (int number = 0; number < kQueued; ++number)
                             pair.bare->writeNote(kNote[1]);
                     })};
    for (const Side* side : {&ours, &floor}) {
        side->prepare();
        side->work();
        for (const auto& pair : pairs)
            if (pair->block.out.getEventCount() != kQueued)
                return fail(state, "a queue did not hold 99 events");
    }
    compare(state, kQueues, ours, floor);
}

} // namespace

void addMidiOutLines()
{
    addLine({"process, draining 99 outgoing events", "one lock, copy and call each", Unit::seconds,
             1.3},
            drain);
}

} // namespace bench
