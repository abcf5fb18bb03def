// The audio thread beside the library's threads, by the wall clock: a block each millisecond, with
// real-time priority where the system gives it. STRESS_SECONDS changes the twelve seconds that each
// row of blocks takes; it needs ten for its 99.99th percentile.
#include "tests/bench/Blocks.h"
#include "tests/bench/LinkedInstance.h"
#include "tests/bench/Table.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cstdlib>
#include <ctime>
#include <optional>
#include <pthread.h>
#include <sched.h>
#include <thread>

namespace bench {

namespace {

constexpr long kSecond = 1'000'000'000;
constexpr long kMillisecond = 1'000'000;
constexpr int kPriority = 80; ///< as audio systems on Linux use it
constexpr uint8 kNote[] = {0x90, 60, 100};

long now()
{
    timespec time = {};
    clock_gettime(CLOCK_MONOTONIC, &time);
    return time.tv_sec * kSecond + time.tv_nsec;
}

void sleepUntil(long nanoseconds)
{
    const timespec time = {nanoseconds / kSecond, nanoseconds % kSecond};
    clock_nanosleep(CLOCK_MONOTONIC, TIMER_ABSTIME, &time, nullptr);
}

/** @return false when the system does not let the calling thread have it */
bool takeRealTimePriority()
{
    const sched_param wanted = {kPriority};
    return pthread_setschedparam(pthread_self(), SCHED_FIFO, &wanted) == 0;
}

bool isRealTimeAllowed()
{
    bool allowed = false;
    std::thread([&] { allowed = takeRealTimePriority(); }).join();
    return allowed;
}

/** Keeps the calling thread, and those that it makes from now on, on one core. */
void stayOnOneCore()
{
    cpu_set_t cores;
    CPU_ZERO(&cores);
    CPU_SET(sched_getcpu(), &cores);
    pthread_setaffinity_np(pthread_self(), sizeof(cores), &cores);
}

/** What goes on beside the audio thread. */
struct Load {
    int writers;
    long rate;    ///< a writer's events a second; 0 for as fast as it can
    bool oneCore; ///< all on the audio thread's core, and a thread that computes without end
};

enum Loads {
    kNobody,
    kThousand,
    kTenThousand,
    kWithoutPause,
    kNobodyOnOneCore,
    kOnOneCore,
    kLoads
};
constexpr std::array<Load, kLoads> kAllLoads = {{{0, 0, false},
                                                 {1, 1'000, false},
                                                 {1, 10'000, false},
                                                 {4, 0, false},
                                                 {0, 0, true},
                                                 {1, 10'000, true}}};

/** The threads of a load, with ordinary priority. */
class Beside {
public:
    Beside(const Load& load, LinkedInstance& instance)
    {
        for (int writer = 0; writer < load.writers; ++writer)
            threads.emplace_back([this, &load, &instance] { write(instance, load.rate); });
        if (load.oneCore)
            threads.emplace_back([this] { compute(); });
    }
    ~Beside()
    {
        stop = true;
        for (auto& thread : threads)
            thread.join();
    }
    Beside(const Beside&) = delete;
    Beside& operator=(const Beside&) = delete;

private:
    void write(LinkedInstance& instance, long rate) const
    {
        // A little shorter than a fraction of the block's millisecond, so that in time an event
        // comes at every moment of a block.
        const long period = rate > 0 ? kSecond / rate - 9 : 0;
        for (long next = now(); !stop; next += period) {
            if (rate > 0)
                sleepUntil(next);
            instance.writeMidi(kNote, sizeof(kNote));
        }
    }

    void compute() const
    {
        for (long number = 0; !stop; ++number)
            keep(number);
    }

    std::atomic<bool> stop{false};
    std::vector<std::thread> threads;
};

/** One row of blocks for each load. They take turns of a second, so that what else the machine does
    slows all of them alike. */
class Stress {
public:
    Stress()
    {
        const char* asked = std::getenv("STRESS_SECONDS");
        const double seconds = asked ? std::atof(asked) : 12;
        const int turns = std::max(1, static_cast<int>(seconds));
        const auto length = static_cast<long>(seconds / turns * kSecond);
        block.addNote(60);
        block.addChange(37012000, 1);
        for (int turn = 0; turn < turns; ++turn)
            for (size_t load = 0; load < kLoads; ++load)
                std::thread([&] { play(kAllLoads[load], length, times[load]); }).join();
        for (auto& row : times)
            std::sort(row.begin(), row.end());
    }

    /** Seconds of wall clock that the longest block took. */
    double worst(Loads load) const { return times[load].back(); }
    /** The same of the one that 9,999 of 10,000 do not exceed. */
    double percentile(Loads load) const
    {
        return times[load][(times[load].size() - 1) * 9'999 / 10'000];
    }

private:
    /** On a thread of its own, which becomes the audio thread. */
    void play(const Load& load, long length, std::vector<double>& row)
    {
        if (load.oneCore)
            stayOnOneCore();
        const Beside others(load, scene.instance);
        row.reserve(row.size() + static_cast<size_t>(length / kMillisecond) + 1);
        takeRealTimePriority();
        const long end = now() + length;
        for (long next = now(); next < end; next += kMillisecond) {
            sleepUntil(next);
            block.out.clear();
            const long start = now();
            scene.instance.process(block.data);
            row.push_back(static_cast<double>(now() - start) / kSecond);
        }
    }

    LinkedScene scene;
    Block block;
    std::array<std::vector<double>, kLoads> times;
};

/** Measured once, whichever of the lines is asked for. */
const Stress& stress()
{
    static const Stress all;
    return all;
}

using Figure = double (Stress::*)(Loads) const;

void addStressLine(const std::string& what, const std::string& against, Loads load, Loads beside,
                   Figure figure, double aim)
{
    Line line{what, against, Unit::seconds, aim, true};
    line.runs = 1;
    addLine(line, [=](benchmark::State& state) {
        reportOnce(state, (stress().*figure)(load), (stress().*figure)(beside));
    });
}

} // namespace

void addStressLines()
{
    const std::string thread = isRealTimeAllowed() ? "" : ", no real-time priority here";
    const auto add = [&thread](const std::string& what, Loads load, Loads beside) {
        const std::string block = "1 ms block, " + what;
        const std::string nobody = "nobody writing" + thread;
        addStressLine(block + ", worst", nobody, load, beside, &Stress::worst, 2);
        addStressLine(block + ", 99.99 %", nobody, load, beside, &Stress::percentile, 0);
    };
    add("1,000 events a second", kThousand, kNobody);
    add("10,000 events a second", kTenThousand, kNobody);
    add("4 writers without pause", kWithoutPause, kNobody);
    add("10,000, one busy core", kOnOneCore, kNobodyOnOneCore);
}

} // namespace bench
