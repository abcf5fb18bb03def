#include "tests/simulator/SimulatorFixture.h"

#include <atomic>
#include <thread>

namespace {

using namespace doubles;

/** Calls of the callbacks, on any thread. */
struct Counters {
    std::atomic<int> begins{0};
    std::atomic<int> values{0};
    std::atomic<int> ends{0};
};

class CountingEffect : public Steinberg::Vst::VstIEffectInterface {
public:
    void writeMidi(const void*, int) override { ++count; }
    std::atomic<uint32> count{0};
};

class SimulatorThreads : public SimulatorTest {
protected:
    static constexpr int rounds = 2000;

    void observeCounting(uint32 id)
    {
        VstIObserver* observer = nullptr;
        library.observe(
            &observer, &counters, static_cast<int>(id), 0, 0, 0,
            [](void* owner, unsigned, int) { ++static_cast<Counters*>(owner)->values; },
            VstIObserver::ParamModePart,
            [](void* owner, unsigned) { ++static_cast<Counters*>(owner)->begins; },
            [](void* owner, unsigned) { ++static_cast<Counters*>(owner)->ends; });
        observers.push_back(observer);
        ASSERT_EQ(0, editor->addObserver(observer));
    }

    void playNotes()
    {
        for (int round = 0; round < rounds; ++round) {
            const uint8 note[] = {0x90, static_cast<uint8>(round % 128), 127};
            editor->receiveHostMidi(note, 3);
            editor->hostParameterChanged(pan1, (round % 128) / 127.);
        }
    }

    /** @return how many turns were accepted */
    int turnKnobs(uint32 id)
    {
        int turned = 0;
        for (int round = 0; round < rounds; ++round)
            turned += user->turnKnob(id, round % 128) ? 1 : 0;
        return turned;
    }

    Counters counters;
    CountingEffect effect;
    ListeningController controller;
};

TEST_F(SimulatorThreads, ReceiveHostMidiTurnKnobAndCheckChangeRunAtOnce)
{
    observeCounting(volume1);
    observeCounting(pan1);
    editor->setControllerInterface(&controller);
    editor->setEffectInterface(&effect);

    std::atomic<int> turned{0};
    std::atomic<bool> running{true};
    std::vector<std::thread> threads;
    threads.emplace_back([&] { playNotes(); });
    threads.emplace_back([&] { turned += turnKnobs(volume1); });
    threads.emplace_back([&] { turned += turnKnobs(volume1); });
    threads.emplace_back([&] {
        while (running) {
            user->stateText();
            user->log();
            user->choosePart(3);
            user->noteOnsReceived(0);
        }
    });
    std::thread host([&] {
        while (running) {
            tick();
            const auto state = editor->getStateChunk();
            editor->setStateChunk(state.data(), static_cast<int32>(state.size()));
            std::string text;
            editor->getParameterValueString(pan1, editor->getParameterValue(pan1), text);
        }
    });
    for (size_t index = 0; index < 3; ++index)
        threads[index].join();
    running = false;
    threads[3].join();
    host.join();
    tick();

    EXPECT_EQ(static_cast<uint32>(rounds), effect.count);
    EXPECT_EQ(static_cast<uint32>(rounds), user->noteOnsReceived(0));
    EXPECT_EQ(static_cast<uint32>(rounds), user->automationReceived());
    EXPECT_GT(turned, 0);
    EXPECT_EQ(turned, counters.begins);
    EXPECT_EQ(turned, counters.values);
    EXPECT_EQ(turned, counters.ends);
    stopWatching();
}

TEST_F(SimulatorThreads, SetEffectInterfaceRunsDuringReceiveHostMidi)
{
    std::thread audio([&] { playNotes(); });
    for (int round = 0; round < rounds; ++round)
        editor->setEffectInterface(round % 2 == 0 ? &effect : nullptr);
    audio.join();
    EXPECT_EQ(static_cast<uint32>(rounds), user->noteOnsReceived(0));
    EXPECT_LE(effect.count, static_cast<uint32>(rounds));
}

TEST_F(SimulatorThreads, DestroyRunsOnTwoThreadsAtOnce)
{
    const auto liveAndDie = [this] {
        for (int round = 0; round < 100; ++round) {
            VstIEditorConnect* own = nullptr;
            library.connect(&own);
            VstIObserver* observer = nullptr;
            library.observe(&observer, nullptr, static_cast<int>(volume1), 0, 0, 0, nullptr,
                            VstIObserver::ParamModePart, nullptr, nullptr);
            ASSERT_EQ(0, own->addObserver(observer));
            observer->checkChange();
            ASSERT_EQ(0, own->removeObserver(observer));
            observer->destroy();
            own->destroy();
        }
    };
    std::thread first(liveAndDie);
    std::thread second(liveAndDie);
    first.join();
    second.join();
    EXPECT_EQ(user, library.control(-1));
    EXPECT_EQ(nullptr, library.control(1));
}

} // namespace
