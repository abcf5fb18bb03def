// Two threads of the library call the controller's callbacks without a pause while the host
// initializes, connects and terminates it. Whatever is sent while a host listens must reach it. The
// thread and address sanitizers find a callback that uses an object too early or too late. Each
// test lasts a tenth of THREADS_SECONDS at least.
#include "tests/doubles/Sanitized.h"
#include "tests/unit/BoundController.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <cstdlib>
#include <functional>
#include <limits>
#include <mutex>
#include <thread>

using namespace Steinberg;
using namespace Steinberg::Vst;
using namespace doubles;

namespace {

constexpr size_t kHands = 2;
constexpr unsigned kKnobs[kHands] = {37012000, 37013005};
constexpr unsigned kShared = kVolume16;
#ifdef VSTK2X_SANITIZED
constexpr size_t kRounds = 20;
#else
constexpr size_t kRounds = 5; // More rounds find more with a sanitizer only.
#endif
constexpr size_t kCountedTurns = 10;
constexpr size_t kEndless = std::numeric_limits<size_t>::max();

std::chrono::milliseconds shortestTime()
{
    const char* seconds = std::getenv("THREADS_SECONDS");
    return std::chrono::milliseconds(seconds ? std::atol(seconds) * 100 : 0);
}

// Relaxed, so that counting does not synchronize the threads: that would hide data races.
class Count {
public:
    void add() { value.fetch_add(1, std::memory_order_relaxed); }
    void clear() { value.store(0, std::memory_order_relaxed); }
    operator size_t() const // NOLINT(google-explicit-constructor): reads as the number it is
    {
        return value.load(std::memory_order_relaxed);
    }

private:
    std::atomic<size_t> value{0};
};

/** How often the host was called, and how many of its handlers exist. */
struct Told {
    Count begun;
    Count performed;
    Count ended;
    Count restarted;
    std::atomic<int> handlers{0};

    size_t all() const { return begun + performed + ended + restarted; }
    void clear()
    {
        for (Count* count : {&begun, &performed, &ended, &restarted})
            count->clear();
    }
};

/** A handler that its last release deletes, as a host's own may be. While it is told of an edit it
    reads and writes parameters on the same thread. */
class PassingHandler final : public IComponentHandler {
public:
    PassingHandler(IEditController& asked, Told& counts)
    : controller(asked)
    , told(counts)
    {
        ++told.handlers;
    }

    tresult PLUGIN_API beginEdit(ParamID) override { return count(told.begun); }
    tresult PLUGIN_API performEdit(ParamID id, ParamValue value) override
    {
        controller.setParamNormalized(id, value);
        controller.getParamNormalized(id);
        controller.plainParamToNormalized(id, controller.normalizedParamToPlain(id, value));
        String128 text = {};
        controller.getParamStringByValue(id, value, text);
        controller.getParamValueByString(id, text, value);
        ParameterInfo info = {};
        controller.getParameterInfo(controller.getParameterCount() - 1, info);
        return count(told.performed);
    }
    tresult PLUGIN_API endEdit(ParamID) override { return count(told.ended); }
    tresult PLUGIN_API restartComponent(int32) override { return count(told.restarted); }

    tresult PLUGIN_API queryInterface(const TUID, void** obj) override
    {
        *obj = nullptr;
        return kNoInterface;
    }
    uint32 PLUGIN_API addRef() override { return ++references; }
    uint32 PLUGIN_API release() override
    {
        const uint32 left = --references;
        if (left == 0)
            delete this;
        return left;
    }

private:
    ~PassingHandler() { --told.handlers; }

    static tresult count(Count& counted)
    {
        counted.add();
        return kResultOk;
    }

    IEditController& controller;
    Told& told;
    std::atomic<uint32> references{1};
};

class LifeThreads : public testing::TestWithParam<bool> {
protected:
    LifeThreads()
    {
        for (const unsigned id : {kKnobs[0], kKnobs[1], kShared, kEditFlag})
            bound.library.setParameter(id, {0, 0, 127, 0, {}});
        bound.initialize();
        const auto stand = [this](const std::string& call) { standAt(call); };
        bound.library.onCall = stand;
        bound.host.onCall = stand;
    }

    ~LifeThreads() override
    {
        stop = true;
        for (auto& hand : hands)
            hand.join();
        bound.end();
        EXPECT_EQ(told.handlers, 0) << "handlers that somebody still holds";
        RecordProperty("library threads: rounds", std::to_string(rounds)); // for scripts/figures
        RecordProperty("library threads: edits told to the host", std::to_string(came));
    }

    /** Makes each callback that a library thread may make, once. The value always differs from the
        one before and from the library's, so that each call is a change. */
    void turn(size_t hand)
    {
        auto* controller = bound.controller.get();
        const auto value = static_cast<int>(turns[hand] % 126 + 1);
        editorBeginEditCallBack(controller, kKnobs[hand]);
        editorValueChange(controller, kKnobs[hand], value);
        editorEndEditCallBack(controller, kKnobs[hand]);
        if (hand == 0)
            editorEditFlagChange(controller, kEditFlag, value);
        VstIControllerInterface& face = *controller;
        int taken = 0;
        face.isSetVSTValue(kShared, value / 127., taken);
        face.setVSTManageParameter(kShared, value / 2);
        face.changeLatencyTrigger();
        face.isConnectAudioPortHost();
        face.setInitialStartFileLoad(!face.isHostReadyForSetPort());
        turns[hand].add();
    }

    void turnUntilStopped(size_t hand)
    {
        for (; !stop.load(std::memory_order_relaxed); std::this_thread::yield()) {
            const std::lock_guard<std::mutex> guard(turning[hand]);
            if (turns[hand] < goals[hand].load(std::memory_order_relaxed))
                turn(hand);
        }
    }

    void startHands()
    {
        for (size_t hand = 0; hand < kHands; ++hand)
            hands.emplace_back([this, hand] { turnUntilStopped(hand); });
        awaitTurns(1);
    }

    using Turns = std::array<size_t, kHands>;
    Turns turnsAfter(size_t more) const { return {turns[0] + more, turns[1] + more}; }

    void await(const Turns& wanted) const
    {
        for (size_t hand = 0; hand < kHands; ++hand)
            while (turns[hand] < wanted[hand])
                std::this_thread::sleep_for(std::chrono::microseconds(20));
    }

    /** Waits until each hand has ended so many more turns, of which one may be under way. */
    void awaitTurns(size_t more) const { await(turnsAfter(more)); }

    /** In the calls named by stops, holds the main thread until each hand has turned twice. */
    void standAt(const std::string& call)
    {
        const auto isHere = [&](const char* place) { return call.rfind(place, 0) == 0; };
        if (std::this_thread::get_id() != mainThread || hands.empty() ||
            std::none_of(stops.begin(), stops.end(), isHere))
            return;
        awaitTurns(2);
        ++stopped;
    }

    void setHandler()
    {
        const auto handler = owned(new PassingHandler(*bound.controller, told));
        EXPECT_EQ(bound.controller->setComponentHandler(handler), kResultOk);
    }

    /** Runs act while no hand makes a callback. */
    void rested(const std::function<void()>& act)
    {
        setGoals({});
        const std::scoped_lock guard(turning[0], turning[1]);
        act();
    }

    void setGoals(const Turns& wanted)
    {
        for (size_t hand = 0; hand < kHands; ++hand)
            goals[hand].store(wanted[hand], std::memory_order_relaxed);
    }

    /** Lets each hand make a number of turns, and expects each of their edits at the host. */
    void expectThatAllComes()
    {
        Turns wanted = {};
        rested([&] {
            bound.tick(); // sends what was queued before
            told.clear();
            wanted = turnsAfter(kCountedTurns);
            setGoals(wanted);
        });
        await(wanted);
        rested([this] {
            bound.tick();
            EXPECT_EQ(told.begun, kHands * kCountedTurns);
            EXPECT_EQ(told.performed, (kHands + 1) * kCountedTurns); // the edit flag's as well
            EXPECT_EQ(told.ended, kHands * kCountedTurns);
            EXPECT_EQ(told.restarted, kHands * kCountedTurns);
            came += told.all();
            setGoals({kEndless, kEndless});
        });
    }

    void expectThatNothingComes()
    {
        awaitTurns(1); // ends callbacks that began before terminate
        const size_t before = told.all();
        awaitTurns(3);
        bound.tick();
        EXPECT_EQ(told.all(), before);
        EXPECT_EQ(bound.controller->getParameter(kKnobs[0]), nullptr);
    }

    void initialize() { ASSERT_EQ(bound.controller->initialize(&bound.host.context), kResultOk); }
    void terminate() { ASSERT_EQ(bound.controller->terminate(), kResultOk); }

    void repeat(const std::function<void()>& round)
    {
        const auto end = std::chrono::steady_clock::now() + shortestTime();
        for (; rounds < kRounds || std::chrono::steady_clock::now() < end; ++rounds) {
            round();
            bound.trace.clear(); // it would grow without end
        }
        EXPECT_EQ(stopped, rounds * stopsOfARound);
    }

    BoundController bound{GetParam() ? HostFamily::cubase("7.5.1")
                                     : BoundController::withoutUnicode()};
    const std::thread::id mainThread = std::this_thread::get_id();
    /** Where the main thread waits for the hands, and how often in a round. */
    std::vector<const char*> stops;
    size_t stopsOfARound = 0;
    Told told;

private:
    std::array<std::mutex, kHands> turning; ///< held during a turn
    std::array<Count, kHands> turns;
    std::array<std::atomic<size_t>, kHands> goals = {kEndless, kEndless};
    std::atomic<bool> stop{false};
    std::vector<std::thread> hands;
    size_t stopped = 0;
    size_t rounds = 0;
    size_t came = 0; ///< calls that reached the host, of those that were counted
};

INSTANTIATE_TEST_SUITE_P(DirectAndQueued, LifeThreads, testing::Bool(), [](const auto& tested) {
    return tested.param ? "InAUnicodeHost" : "InAnyOtherHost";
});

TEST_P(LifeThreads, InitializeTakesCallbacksOfLibraryThreads)
{
    stops = {"library.start()", "library.addObserver(370120"}; // the latter once a part
    stopsOfARound = 17;
    terminate();
    startHands();
    repeat([this] {
        initialize();
        setHandler();
        expectThatAllComes();
        terminate();
    });
}

TEST_P(LifeThreads, ConnectTakesCallbacksOfLibraryThreads)
{
    stops = {"peer.notify(VST_CONNECT", "library.getParameterValue(370530",
             "library.parametersReady()"};
    stopsOfARound = 18;
    setHandler();
    startHands();
    repeat([this] {
        EXPECT_EQ(bound.controller->connect(&bound.host.peer), kResultOk);
        awaitTurns(1);
        for (const unsigned id : kKnobs) // as hosts do with every parameter
            bound.controller->setParamNormalized(id, bound.controller->getParamNormalized(id));
        expectThatAllComes();
        EXPECT_EQ(bound.controller->disconnect(&bound.host.peer), kResultOk);
    });
}

TEST_P(LifeThreads, SetComponentHandlerTakesCallbacksOfLibraryThreads)
{
    startHands();
    repeat([this] {
        for (int handler = 0; handler < 10; ++handler) {
            setHandler();
            awaitTurns(1);
            EXPECT_EQ(bound.controller->setComponentHandler(nullptr), kResultOk);
        }
        setHandler();
        expectThatAllComes();
    });
}

TEST_P(LifeThreads, TerminateTakesCallbacksOfLibraryThreads)
{
    // The base class makes the last of these calls, when the parameters have ended.
    stops = {"library.setControllerInterface(null)", "library.detachService()",
             "library.removeObserver(370120", "service.unregisterPlugin(", "peer.disconnect("};
    stopsOfARound = 20;
    terminate();
    startHands();
    repeat([this] {
        initialize();
        setHandler();
        EXPECT_EQ(bound.controller->connect(&bound.host.peer), kResultOk);
        expectThatAllComes();
        terminate();
        expectThatNothingComes();
    });
}

} // namespace
