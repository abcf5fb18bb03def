// Two hands on one knob while the timer drains the queue, in a host that asks for that very
// parameter from inside each edit: whoever took the locks in another order would stand still here
// sooner or later, and the thread sanitizer names the two orders at once.
#include "tests/unit/BoundController.h"

#include <array>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <future>
#include <thread>

using namespace Steinberg;
using namespace Steinberg::Vst;
using namespace doubles;

namespace {

constexpr int kTurns = 2000; ///< of each hand
constexpr std::chrono::minutes kStandingStill{1};

class LockOrderThreads : public testing::Test {
protected:
    LockOrderThreads()
    {
        bound.initialize();
        bound.host.onCall = [this](const std::string& text) { answer(text); };
    }
    ~LockOrderThreads() override { bound.end(); }

    /** What a host does in the middle of being told of an edit, with the queue's lock held. */
    void answer(const std::string& text)
    {
        if (text.rfind("host.beginEdit(", 0) == 0)
            ++begun;
        if (text.rfind("host.endEdit(", 0) == 0)
            ++ended;
        if (text.rfind("host.performEdit(", 0) != 0)
            return;
        int value = 0;
        bound.library.controller->isSetVSTValue(kVolume1, 0.25, value);
        bound.controller->setParamNormalized(kVolume1, 0.5);
        String128 shown = {};
        bound.controller->getParamStringByValue(kVolume1, 0.5, shown);
        ++asked;
    }

    void turnKnob(int firstValue)
    {
        for (int turn = 0; turn < kTurns; ++turn) {
            editorBeginEditCallBack(bound.controller, kVolume1);
            editorValueChange(bound.controller, kVolume1, firstValue + turn % 2);
            editorEndEditCallBack(bound.controller, kVolume1);
        }
        ++handsDone;
    }

    void run()
    {
        std::thread hands[] = {std::thread([this] { turnKnob(0); }),
                               std::thread([this] { turnKnob(2); })};
        while (handsDone < std::size(hands)) {
            bound.tick();
            bound.trace.clear(); // it would grow without end
        }
        for (auto& hand : hands)
            hand.join();
        bound.tick();
    }

    BoundController bound{BoundController::withoutUnicode()};
    std::atomic<size_t> handsDone{0};
    // The hook runs on every thread, and counts on the timer's alone.
    size_t asked = 0;
    size_t begun = 0;
    size_t ended = 0;
};

TEST_F(LockOrderThreads, NeverMeetEachOtherOnTheWay)
{
    auto done = std::async(std::launch::async, [this] { run(); });
    if (done.wait_for(kStandingStill) != std::future_status::ready) {
        std::fputs("the threads wait for each other\n", stderr);
        std::abort(); // nobody can end them
    }
    EXPECT_GT(asked, 0u);
    EXPECT_EQ(begun, size_t(2 * kTurns));
    EXPECT_EQ(ended, size_t(2 * kTurns));
}

} // namespace
