// Long sessions, as fast as they go. Prints what was done and what the process held before and
// after; the exit status is 1 when anything was lost, failed or grew.
#include "tests/endurance/Footprint.h"
#include "tests/endurance/LongInstance.h"

#include <cstdlib>
#include <exception>
#include <iostream>
#include <map>
#include <memory>
#include <unistd.h>

namespace {

using namespace endurance;

// A life may leave nothing behind. In a session the simulated instrument keeps the texts of its
// last calls, and those vary in length.
constexpr size_t kHeapSlackOfLives = 1024;
constexpr size_t kHeapSlackOfSession = 16 * 1024;
constexpr size_t kResidentSlack = 1024 * 1024;

/** Without it the allocator keeps freed memory aside for each size and counts it as in use. */
constexpr const char* kTunables = "glibc.malloc.tcache_count=0";

/** The simulated instrument's record of its last calls grows until it is full. After so many
    minutes of presets, saves and views it is, and memory must not grow any more. */
constexpr int kMinutesRemembered = 1000;

void print(const Counts& counts)
{
    std::cout << "  blocks " << counts.blocks << ", notes in " << counts.notesIn << ", notes out "
              << counts.notesOut << ", wrong notes " << counts.wrongNotes << ", automation "
              << counts.automation << "\n  gestures " << counts.gestures << ", presets "
              << counts.presets << ", views " << counts.views << ", states " << counts.states
              << ", failures " << counts.failures << '\n';
}

void print(const EditCounts& edits)
{
    std::cout << "  edits begun " << edits.begun << ", performed " << edits.performed << ", ended "
              << edits.ended << ", out of order " << edits.disordered << '\n';
}

bool verdict(const Footprint& before, const Footprint& after, size_t heapSlack, bool nothingFailed)
{
    std::cout << "  after warm-up: " << before.text() << "\n  at the end:    " << after.text()
              << '\n';
    const bool good = isFlat(before, after, heapSlack, kResidentSlack) && nothingFailed;
    std::cout << (good ? "  ok" : "  FAILED") << std::endl;
    return good;
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

/** What play does in a minute besides the music. */
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
    std::cout << "session of " << hours << " hours of host time" << std::endl;
    LongInstance instance(host, 1);
    for (int minute = 0; minute < kMinutesRemembered; ++minute)
        actForAMinute(host, instance);
    play(host, instance, 0.05);
    const Footprint before = Footprint::take();
    play(host, instance, hours);
    const Footprint after = Footprint::take();
    instance.settle();
    std::cout << "  host time " << hoursOf(instance.counts) << " hours\n";
    print(instance.counts);
    print(instance.edits.counts);
    return verdict(before, after, kHeapSlackOfSession, instance.counts.failures == 0);
}

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
    std::cout << cycles << " lives from creation to release" << std::endl;
    constexpr int kWarmUp = 20;
    Counts counts;
    for (int cycle = 0; cycle < kWarmUp; ++cycle)
        counts.failures += live(host, 1).failures;
    const Footprint before = Footprint::take();
    for (int cycle = 0; cycle < cycles; ++cycle)
        counts += live(host, static_cast<unsigned>(cycle + 1));
    const Footprint after = Footprint::take();
    print(counts);
    std::cout << "  timers left " << host.getTimerCount() << '\n';
    return verdict(before, after, kHeapSlackOfLives,
                   counts.failures == 0 && host.getTimerCount() == 0);
}

/** All at once, each with music of its own, ended in another order than they began. */
void playTogether(LongHost& host, int instances, int blocks, Counts& counts)
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
    for (auto& instance : all) {
        instance->settle();
        counts += instance->counts;
    }
    for (size_t index = 0; index < all.size(); index += 2)
        all[index].reset();
}

bool runInstances(LongHost& host, int instances, int blocks)
{
    std::cout << instances << " instances in one process, " << blocks << " blocks each, four times"
              << std::endl;
    Counts counts;
    for (int round = 0; round < 2; ++round)
        playTogether(host, instances, blocks, counts);
    const Footprint before = Footprint::take();
    for (int round = 0; round < 2; ++round)
        playTogether(host, instances, blocks, counts);
    const Footprint after = Footprint::take();
    print(counts);
    return verdict(before, after, kHeapSlackOfLives,
                   counts.failures == 0 && host.getTimerCount() == 0);
}

int usage()
{
    std::cerr << "usage: endurance [--hours H] [--cycles N] [--instances N [--blocks N]]\n"
                 "Each option that is given is run, in this order. Run it under with-simulator.\n";
    return 2;
}

int run(int count, char** arguments)
{
    std::map<std::string, double> options{
        {"--hours", 0}, {"--cycles", 0}, {"--instances", 0}, {"--blocks", 50}};
    for (int index = 1; index + 1 < count; index += 2) {
        const auto option = options.find(arguments[index]);
        if (option == options.end())
            return usage();
        option->second = std::atof(arguments[index + 1]);
    }
    const double hours = options["--hours"];
    const int cycles = static_cast<int>(options["--cycles"]);
    const int instances = static_cast<int>(options["--instances"]);
    if (count % 2 == 0 || !(hours > 0 || cycles > 0 || instances > 0))
        return usage();
    LongHost host;
    bool good = true;
    if (hours > 0)
        good = runSession(host, hours) && good;
    if (cycles > 0)
        good = runLives(host, cycles) && good;
    if (instances > 0)
        good = runInstances(host, instances, static_cast<int>(options["--blocks"])) && good;
    return good ? 0 : 1;
}

} // namespace

int main(int count, char** arguments)
{
    if (!std::getenv("GLIBC_TUNABLES")) {
        setenv("GLIBC_TUNABLES", kTunables, 1);
        execv("/proc/self/exe", arguments);
    }
    try {
        return run(count, arguments);
    } catch (const std::exception& error) {
        std::cerr << "endurance: " << error.what() << '\n';
        return 1;
    }
}
