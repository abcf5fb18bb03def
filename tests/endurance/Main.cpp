// Long sessions, as fast as they go. Prints what was done and what the process held before and
// after; the exit status is 1 when anything was lost, failed or grew.
#include "tests/endurance/Footprint.h"
#include "tests/endurance/LongInstance.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <memory>
#include <unistd.h>

namespace {

using namespace endurance;

// Nothing may stay behind of a life. In a session the instrument's last calls change, and their
// texts with them.
constexpr size_t kHeapSlackOfLives = 1024;
constexpr size_t kHeapSlackOfSession = 16 * 1024;
constexpr size_t kResidentSlack = 1024 * 1024;

/** Without it the allocator keeps freed memory aside for each size and counts it as in use. */
constexpr const char* kTunables = "glibc.malloc.tcache_count=0";

/** Minutes of presets, saves and views after which the simulated instrument's record of its newest
    calls is full, with as much of each as later: memory is flat from then on. */
constexpr int kMinutesRemembered = 1000;

void print(const Counts& counts, const EditCounts& edits)
{
    const auto number = [](uint64_t count) { return static_cast<unsigned long long>(count); };
    std::printf("  blocks %llu, notes in %llu, notes out %llu, wrong notes %llu, automation %llu\n",
                number(counts.blocks), number(counts.notesIn), number(counts.notesOut),
                number(counts.wrongNotes), number(counts.automation));
    std::printf("  user gestures %llu, begun %llu, performed %llu, ended %llu, out of order %llu\n",
                number(counts.gestures), number(edits.begun), number(edits.performed),
                number(edits.ended), number(edits.disordered));
    std::printf("  presets %llu, views %llu, states %llu, failures %llu\n", number(counts.presets),
                number(counts.views), number(counts.states), number(counts.failures));
}

bool verdict(const Footprint& before, const Footprint& after, size_t heapSlack, bool nothingFailed)
{
    std::printf("  after warm-up: %s\n  at the end:    %s\n", before.text().c_str(),
                after.text().c_str());
    const bool flat = isFlat(before, after, heapSlack, kResidentSlack);
    std::printf("  %s\n", flat && nothingFailed ? "ok" : "FAILED");
    return flat && nothingFailed;
}

/** A stretch of host time: a tick each 50 ms, a gesture each 100 ms, a preset each 10 s, a save
    each 30 s, the view each minute. */
void play(LongHost& host, LongInstance& instance, double hours)
{
    constexpr double kBlocksASecond = LongInstance::kSampleRate / LongInstance::kBlockSize;
    const auto seconds = hours * 3600;
    const auto ticks = static_cast<uint64_t>(seconds * 20);
    double blocksDue = 0;
    for (uint64_t tick = 1; tick <= ticks; ++tick) {
        for (blocksDue += kBlocksASecond / 20; blocksDue >= 1; blocksDue -= 1)
            instance.playBlock();
        if (tick % 2 == 0)
            instance.turnKnob();
        if (tick % 200 == 0)
            instance.changePreset();
        if (tick % 600 == 0)
            instance.saveAndRestore();
        if (tick % 1200 == 0)
            instance.openAndCloseView();
        host.tick();
    }
}

double hoursOf(const Counts& counts)
{
    return static_cast<double>(counts.blocks) * LongInstance::kBlockSize /
           LongInstance::kSampleRate / 3600;
}

/** What play brings in a minute beside the music. */
void actForAMinute(LongHost& host, LongInstance& instance)
{
    for (int preset = 0; preset < 6; ++preset) {
        instance.changePreset();
        host.tick();
    }
    instance.saveAndRestore();
    instance.saveAndRestore();
    instance.openAndCloseView();
}

bool runSession(LongHost& host, double hours)
{
    std::printf("session of %g hours of host time\n", hours);
    LongInstance instance(host, 1);
    for (int minute = 0; minute < kMinutesRemembered; ++minute)
        actForAMinute(host, instance);
    play(host, instance, 0.05);
    const Footprint before = Footprint::take();
    play(host, instance, hours);
    const Footprint after = Footprint::take();
    instance.settle();
    std::printf("  host time %.2f hours\n", hoursOf(instance.counts));
    print(instance.counts, instance.edits.counts);
    return verdict(before, after, kHeapSlackOfSession, instance.counts.failures == 0);
}

/** Of several instances together. */
struct Totals {
    uint64_t instances = 0;
    size_t most = 1; ///< at once
    uint64_t notesIn = 0;
    uint64_t notesOut = 0;
    uint64_t wrongNotes = 0;
    uint64_t failures = 0;

    void add(const Counts& counts)
    {
        ++instances;
        notesIn += counts.notesIn;
        notesOut += counts.notesOut;
        wrongNotes += counts.wrongNotes;
        failures += counts.failures;
    }
    void print() const
    {
        const auto number = [](uint64_t count) { return static_cast<unsigned long long>(count); };
        std::printf(
            "  instances ended %llu, at once %zu, notes in %llu, notes out %llu, wrong notes %llu, "
            "failures %llu\n",
            number(instances), most, number(notesIn), number(notesOut), number(wrongNotes),
            number(failures));
    }
};

/** One life with everything in it. */
Counts live(LongHost& host, unsigned seed)
{
    LongInstance instance(host, seed);
    for (int block = 0; block < 4; ++block)
        instance.playBlock();
    instance.turnKnob();
    instance.openAndCloseView();
    instance.saveAndRestore();
    instance.changePreset();
    instance.settle();
    return instance.counts;
}

bool runLives(LongHost& host, int cycles)
{
    std::printf("%d lives from creation to release\n", cycles);
    constexpr int kWarmUp = 20;
    Totals totals;
    for (int cycle = 0; cycle < kWarmUp; ++cycle)
        totals.failures += live(host, 1).failures;
    const Footprint before = Footprint::take();
    for (int cycle = 0; cycle < cycles; ++cycle)
        totals.add(live(host, static_cast<unsigned>(cycle + 1)));
    const Footprint after = Footprint::take();
    totals.print();
    std::printf("  timers left %zu\n", host.getTimerCount());
    return verdict(before, after, kHeapSlackOfLives,
                   totals.failures == 0 && host.getTimerCount() == 0);
}

/** All at once, each with music of its own, ended in another order than they began. */
void playTogether(LongHost& host, int instances, int blocks, Totals& totals)
{
    std::vector<std::unique_ptr<LongInstance>> all;
    for (int index = 0; index < instances; ++index)
        all.push_back(std::make_unique<LongInstance>(host, static_cast<unsigned>(index + 1)));
    for (int block = 0; block < blocks; ++block) {
        for (auto& instance : all) {
            instance->playBlock();
            instance->turnKnob();
        }
        host.tick();
    }
    totals.most = std::max(totals.most, all.size());
    for (auto& instance : all) {
        instance->settle();
        totals.add(instance->counts);
    }
    for (size_t index = 0; index < all.size(); index += 2)
        all[index].reset();
}

bool runInstances(LongHost& host, int instances, int blocks)
{
    std::printf("%d instances in one process, %d blocks each\n", instances, blocks);
    Totals totals;
    for (int round = 0; round < 2; ++round)
        playTogether(host, instances, blocks, totals);
    const Footprint before = Footprint::take();
    for (int round = 0; round < 2; ++round)
        playTogether(host, instances, blocks, totals);
    const Footprint after = Footprint::take();
    totals.print();
    return verdict(before, after, kHeapSlackOfLives,
                   totals.failures == 0 && host.getTimerCount() == 0);
}

int usage()
{
    std::fputs("usage: endurance [--hours H] [--cycles N] [--instances N [--blocks N]]\n"
               "Each option that is given is run, in this order. Run it under with-simulator.\n",
               stderr);
    return 2;
}

int run(int count, char** arguments)
{
    double hours = 0;
    int cycles = 0;
    int instances = 0;
    int blocks = 50;
    for (int index = 1; index + 1 < count; index += 2) {
        const char* name = arguments[index];
        const char* value = arguments[index + 1];
        if (std::strcmp(name, "--hours") == 0)
            hours = std::atof(value);
        else if (std::strcmp(name, "--cycles") == 0)
            cycles = std::atoi(value);
        else if (std::strcmp(name, "--instances") == 0)
            instances = std::atoi(value);
        else if (std::strcmp(name, "--blocks") == 0)
            blocks = std::atoi(value);
        else
            return usage();
    }
    if (count % 2 == 0 || !(hours > 0 || cycles > 0 || instances > 0))
        return usage();
    LongHost host;
    bool good = true;
    if (hours > 0)
        good = runSession(host, hours) && good;
    if (cycles > 0)
        good = runLives(host, cycles) && good;
    if (instances > 0)
        good = runInstances(host, instances, blocks) && good;
    return good ? 0 : 1;
}

} // namespace

int main(int count, char** arguments)
{
    if (!std::getenv("GLIBC_TUNABLES")) {
        setenv("GLIBC_TUNABLES", kTunables, 1);
        execv("/proc/self/exe", arguments);
    }
    std::setvbuf(stdout, nullptr, _IOLBF, 0);
    try {
        return run(count, arguments);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "endurance: %s\n", error.what());
        return 1;
    }
}
