// The step that plays notes on several instances at once, each on an audio thread.
#include "basics/CallGuard.h"
#include "tools/check-library/Life.h"
#include "tools/check-library/Steps.h"
#include "tools/common/Failure.h"

#include <array>
#include <thread>

namespace Steinberg {
namespace Vst {
namespace checklibrary {

namespace {

constexpr size_t kInstances = 4;
constexpr int kNotes = 1000;

using Lives = std::vector<std::unique_ptr<Life>>;

Lives makeInstances(const Options& options, Journal& journal)
{
    Lives lives;
    try {
        while (lives.size() < kInstances)
            lives.push_back(std::make_unique<Life>(options.library, journal));
    } catch (const tools::Failure& failure) {
        journal.say(bad("instances",
                        "There cannot be " + std::to_string(lives.size() + 1) +
                            " instances at once: " + failure.what(),
                        kTellMaker, {{"instances", lives.size()}}));
    }
    return lives;
}

/** Whether each instance has its own connection. One that shares the first one leaves its end to
    that. */
bool areApart(Lives& lives)
{
    bool apart = true;
    for (size_t index = 1; index < lives.size(); ++index)
        if (&lives[index]->library().unwatched() == &lives[0]->library().unwatched()) {
            lives[index]->leaveToOther();
            apart = false;
        }
    return apart;
}

/** Plays notes on an audio thread as fast as it can: the journal is not told of each. */
void playMany(Life& life, Journal& journal)
{
    const AudioThreadMark mark;
    auto& library = life.library().unwatched();
    const Entered entered(journal, "receiveHostMidi on one of four audio threads");
    for (int note = 0; note < kNotes; ++note) {
        const auto pitch = static_cast<uint8>(note % 128);
        const std::array<uint8, 3> on = {0x90, pitch, 127};
        const std::array<uint8, 3> off = {0x80, pitch, 0};
        guarded([&] { library.receiveHostMidi(on.data(), static_cast<int32>(on.size())); });
        guarded([&] { library.receiveHostMidi(off.data(), static_cast<int32>(off.size())); });
    }
}

} // namespace

void tryThreads(const Options& options, Journal& journal)
{
    auto lives = makeInstances(options, journal);
    if (!areApart(lives))
        return journal.say(
            bad("instances", "It gives two instances of the plug-in the same connection: the first "
                             "that ends takes it from the other."));
    for (const auto& life : lives) {
        life->observeAll();
        life->giveEffect();
    }
    std::vector<std::thread> threads;
    for (const auto& life : lives)
        threads.emplace_back([&journal, &instance = *life] { playMany(instance, journal); });
    for (const auto& life : lives)
        life->tick(3);
    for (auto& thread : threads)
        thread.join();
    journal.say(good("threads",
                     std::to_string(lives.size()) + " instances took " +
                         std::to_string(2 * kNotes) + " messages each at the same time.",
                     {{"instances", lives.size()}}));
}

} // namespace checklibrary
} // namespace Vst
} // namespace Steinberg
