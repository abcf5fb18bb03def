// Many instances in one process.
#include "tests/bench/Blocks.h"
#include "tests/bench/growth/Growth.h"
#include "tests/bench/LinkedInstance.h"

namespace bench::growth {

namespace {

constexpr auto kSubject = "instances";

void addInstances(const char* name, Cost cost, std::function<double(BenchHost&, int)> measure)
{
    addSeries({kSubject, name, "instances", cost, steps(1, 2, 512),
               [measure = std::move(measure)](int count) {
                   return inFreshProcess([&] {
                       LeanLibrary library;
                       BenchHost host(library, false);
                       warmUp(host);
                       return measure(host, count);
                   });
               }});
}

double memory(BenchHost& host, int count)
{
    const double before = residentBytes();
    const auto instances = linkedInstances(host, count);
    return residentBytes() - before;
}

double life(BenchHost& host, int count)
{
    return timeOnce([&] { linkedInstances(host, count); });
}

/** A note and a parameter in, a note out. */
double block(BenchHost& host, int count)
{
    constexpr uint8 note[] = {0x90, 60, 100};
    const auto instances = linkedInstances(host, count);
    Block given;
    given.addNote(60);
    given.addChange(37012000, 1);
    return timeOf([&] {
        for (const auto& instance : instances) {
            given.out.clear();
            instance->writeMidi(note, sizeof(note));
            instance->process(given.data);
        }
    });
}

double tick(BenchHost& host, int count)
{
    const auto instances = linkedInstances(host, count);
    return timeOf([&] {
        for (const auto& instance : instances)
            instance->controller().notificationEvent();
    });
}

} // namespace

void addInstanceSeries()
{
    addInstances("memory", Cost::bytes, memory);
    addInstances("a life of all", Cost::seconds, life);
    addInstances("a block of all", Cost::seconds, block);
    addInstances("an idle tick of all", Cost::seconds, tick);
}

} // namespace bench::growth
