// The processor's block: what the library sends.
#include "tests/bench/Blocks.h"
#include "tests/bench/Instance.h"
#include "tests/bench/Lines.h"
#include "tests/bench/Table.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <memory>
#include <thread>

namespace bench {

namespace {

using namespace Steinberg;
using namespace Steinberg::Vst;
using Base::Thread::FGuard;
using Base::Thread::FLock;

constexpr int kQueued = 99;
constexpr uint8 kNote[] = {0x90, 60, 100};

/** Several queues, since draining a single one is too short to time. */
constexpr int kQueues = 32;

struct BareQueue {
    std::vector<Event> events{kQueued};
    FLock lock;
};

void drainBare(BareQueue& queue, IEventList& list)
{
    for (const Event& queued : queue.events) {
        Event event;
        {
            const FGuard guard(queue.lock);
            event = queued;
        }
        list.addEvent(event);
    }
}

void drain(benchmark::State& state)
{
    LeanLibrary library;
    LeanHost host(library, true);
    std::vector<std::unique_ptr<Instance>> instances;
    for (int number = 0; number < kQueues; ++number)
        instances.push_back(std::make_unique<Instance>(host));
    std::vector<BareQueue> bare(kQueues);
    std::vector<Block> blocks(kQueues);
    const auto clear = [&] {
        for (Block& block : blocks)
            block.out.clear();
    };
    const auto fill = [&] {
        clear();
        for (auto& instance : instances)
            for (int number = 0; number < kQueued; ++number)
                instance->writeMidi(kNote, sizeof(kNote));
    };
    const auto drainOurs = [&] {
        for (size_t number = 0; number < kQueues; ++number)
            instances[number]->process(blocks[number].data);
    };
    fill();
    drainOurs();
    for (Block& block : blocks)
        if (block.out.getEventCount() != kQueued)
            return fail(state, "a queue did not hold 99 events");
    compare(state, kQueues, {drainOurs, fill},
            {[&] {
                 for (size_t number = 0; number < kQueues; ++number)
                     drainBare(bare[number], *blocks[number].data.outputEvents);
             },
             clear});
}

/** Threads of a library that call writeMidi without a pause. */
class Writers {
public:
    explicit Writers(Instance& instance)
    {
        for (auto& thread : threads)
            thread = std::thread([this, &instance] {
                while (!stop)
                    instance.writeMidi(kNote, sizeof(kNote));
            });
    }
    ~Writers()
    {
        stop = true;
        for (auto& thread : threads)
            thread.join();
    }
    Writers(const Writers&) = delete;
    Writers& operator=(const Writers&) = delete;

private:
    std::atomic<bool> stop{false};
    std::array<std::thread, 4> threads;
};

void tailUnderLoad(benchmark::State& state)
{
    constexpr size_t kCalls = 50'000;
    LeanLibrary library;
    LeanHost host(library, true);
    Instance instance(host);
    Block block;
    std::vector<double> times;
    times.reserve(kCalls);
    for (auto iteration : state) {
        static_cast<void>(iteration);
        const Writers writers(instance);
        const auto begin = std::chrono::steady_clock::now();
        const auto limit = begin + std::chrono::seconds(3);
        while (times.size() < kCalls) {
            block.out.clear();
            const auto start = std::chrono::steady_clock::now();
            instance.process(block.data);
            const auto end = std::chrono::steady_clock::now();
            times.push_back(std::chrono::duration<double>(end - start).count());
            if (end > limit)
                break;
        }
        state.SetIterationTime(1);
    }
    const auto tail = times.begin() + static_cast<std::ptrdiff_t>(times.size() * 9999 / 10000);
    std::nth_element(times.begin(), tail, times.end());
    const double worst = *tail;
    report(state, worst, medianOf(std::move(times)));
}

} // namespace

void addMidiOutLines()
{
    addLine(
        {"process, draining 99 outgoing events", "copying them, one lock each", Unit::seconds, 1.2},
        drain);
    addLine(
        {"process, 99.99th percentile, 4 threads writing", "the median", Unit::seconds, 0, true},
        tailUnderLoad);
}

} // namespace bench
