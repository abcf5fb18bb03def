// The step that watches what the library calls, on which thread and for how long.
#include "basics/CallGuard.h"
#include "tools/check-library/Life.h"
#include "tools/check-library/Steps.h"

#include <chrono>
#include <thread>

namespace Steinberg {
namespace Vst {
namespace checklibrary {

namespace {

constexpr int kTicks = 10;
/** Long enough to notice a thread of the library's that goes on calling. */
constexpr std::chrono::milliseconds kSilence{200};

/** Does what makes a library call back: another voice, automation, notes and the state again. */
void provoke(Life& life)
{
    constexpr size_t kMoved = 3;
    auto& library = life.library();
    const auto state = guarded(std::vector<char>(), [&] { return library.getStateChunk(); });
    life.playNote(60);
    const auto parameters = mirroredParameters();
    for (size_t index = 0; index < kMoved; ++index) {
        const auto id = parameters[index].id;
        life.automate(id, life.plugIn().normalized(id) < 0.5 ? 1 : 0);
    }
    guarded([&] { library.applyPreset(VoiceBank::kFirst, 0); });
    life.tick(kTicks);
    if (!state.empty())
        guarded([&] { library.setStateChunk(state.data(), static_cast<int32>(state.size())); });
    life.tick(kTicks);
}

void waitForLateCalls(Journal& journal)
{
    const Entered waiting(journal, "no call of ours, in a wait for calls that come too late");
    std::this_thread::sleep_for(kSilence);
}

} // namespace

void tryCallbacks(const Options& options, Journal& journal)
{
    Life life(options.library, journal);
    life.observeAll();
    life.giveEffect();
    provoke(life);
    life.takeBack();
    waitForLateCalls(journal);
    life.destroy();
    waitForLateCalls(journal);

    const auto& plugIn = life.plugIn();
    const auto faults = plugIn.faults();
    for (const auto& fault : faults)
        journal.say(bad("callbacks", "The library " + fault + "."));
    if (!faults.empty())
        return;
    const auto others = plugIn.otherThreads();
    journal.say(
        good("callbacks",
             "Its callbacks (" + std::to_string(plugIn.valuesChanged()) +
                 " values) come as they should, from " +
                 (others == 0 ? "the host's thread alone"
                              : std::to_string(others) + (others == 1 ? " thread" : " threads") +
                                    " of its own as well") +
                 ", and none came after its end.",
             {{"values", plugIn.valuesChanged()}, {"ownThreads", others}}));
}

} // namespace checklibrary
} // namespace Vst
} // namespace Steinberg
