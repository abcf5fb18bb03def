// The step that starts and ends the library many times in one process, and looks at what it leaves.
#include "tools/check-library/Life.h"
#include "tools/check-library/Steps.h"
#include "tools/common/platform/ProcessLoad.h"

#include <chrono>
#include <cstdio>
#include <fcntl.h>
#include <thread>

namespace Steinberg {
namespace Vst {
namespace checklibrary {

namespace {

constexpr int kLives = 100;
constexpr int kWarmUp = 20; ///< of them, not counted: a library may fill its caches
constexpr size_t kCounted = kLives - kWarmUp;
constexpr size_t kBytesOfALife = 256; ///< allowed: some memory looks lost and is not

struct Load {
    size_t files;
    size_t threads;
    size_t memory;
};

size_t openFiles()
{
    constexpr int kMostLookedAt = 4096;
    size_t count = 0;
    for (int descriptor = 0; descriptor < kMostLookedAt; ++descriptor)
        if (fcntl(descriptor, F_GETFD) != -1)
            ++count;
    return count;
}

/** Waits first for threads that are about to end. */
Load loadNow(size_t usualThreads, Journal& journal)
{
    const Entered waiting(journal, "no call of ours, in a wait for its threads to end");
    for (int wait = 0; wait < 30 && tools::threadCount() > usualThreads; ++wait)
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    return {openFiles(), tools::threadCount(), tools::heapInUse()};
}

void liveOnce(const Options& options, Journal& journal)
{
    Life life(options.library, journal);
    life.observeAll();
    life.giveEffect();
    life.playNote(60);
    life.tick();
}

/** @return whether there is more than there was */
bool tellMore(Journal& journal, size_t before, size_t after, size_t allowed, const char* what)
{
    if (after <= before + allowed)
        return false;
    const auto each = static_cast<double>(after - before) / kCounted;
    char number[32];
    std::snprintf(number, sizeof(number), "%.3g", each);
    journal.say(bad("lives",
                    std::string("Each use leaves something behind, on average ") + number + " " +
                        what + ".",
                    kTellMaker, {{"what", what}, {"average", each}}));
    return true;
}

} // namespace

void tryLives(const Options& options, Journal& journal)
{
    const auto usualThreads = tools::threadCount();
    Load early{};
    for (int life = 1; life <= kLives; ++life) {
        liveOnce(options, journal);
        if (life == kWarmUp)
            early = loadNow(usualThreads, journal);
    }
    const auto late = loadNow(usualThreads, journal);
    const bool files = tellMore(journal, early.files, late.files, 0, "open files");
    const bool threads = tellMore(journal, early.threads, late.threads, 0, "threads");
    const bool memory =
        tellMore(journal, early.memory, late.memory, kCounted * kBytesOfALife, "bytes of memory");
    if (!files && !threads && !memory)
        journal.say(good("lives",
                         std::to_string(kLives) + " uses leave no file, thread or memory behind.",
                         {{"lives", kLives}}));
}

} // namespace checklibrary
} // namespace Vst
} // namespace Steinberg
