// A session with all its threads at once: the host's audio thread, four threads of the library that
// write MIDI, two on which a user turns knobs, and the host's main thread, which uses the timer,
// the view and the project. It lasts THREADS_SECONDS, by default a second under a sanitizer and a
// quarter of a second without.
#include "tests/doubles/Sanitized.h"
#include "tests/unit/BoundController.h"
#include "tests/unit/ProcessorFixture.h"

#include "public.sdk/source/common/memorystream.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <cstdlib>
#include <numeric>
#include <thread>

using namespace Steinberg;
using namespace Steinberg::Vst;
using namespace doubles;
using testing::IsEmpty;

namespace {

constexpr size_t kWriters = 4;
constexpr int kNotesWaiting = 24; ///< of each writer at most; the queue holds a hundred
constexpr size_t kHands = 2;
constexpr unsigned kKnobs[kHands] = {37012000, 37013005};

#ifdef VSTK2X_SANITIZED
constexpr int kUsualMilliseconds = 1000;
#else
constexpr int kUsualMilliseconds = 250;
#endif

std::chrono::milliseconds sessionLength()
{
    const char* seconds = std::getenv("THREADS_SECONDS");
    return std::chrono::milliseconds(seconds ? std::atol(seconds) * 1000 : kUsualMilliseconds);
}

class SessionThreads : public testing::TestWithParam<bool> {
protected:
    SessionThreads()
    {
        for (const unsigned id : kKnobs)
            bound.library.setParameter(id, {0, 0, 127, 0, {}});
        bound.library.state = {'s', 't', 'a', 't', 'e'};
        bound.initialize();
        processor = owned(new VstK2x);
        EXPECT_EQ(processor->initialize(&bound.host.context), kResultOk);
        EXPECT_EQ(processor->connect(bound.controller), kResultOk);
        EXPECT_EQ(bound.controller->connect(processor), kResultOk);
        EXPECT_EQ(processor->setActive(true), kResultOk);
        effect = bound.library.effect;
        EXPECT_NE(effect, nullptr);
        bound.library.quiet = true; // Its record of the audio path would only grow.
    }

    ~SessionThreads() override
    {
        processor->setActive(false);
        EXPECT_EQ(bound.controller->disconnect(processor), kResultOk);
        EXPECT_EQ(processor->disconnect(bound.controller), kResultOk);
        EXPECT_EQ(processor->terminate(), kResultOk);
        bound.end();
    }

    /** Each writer has a channel of its own and sends rising pitches. The queue never overflows, so
        every note must arrive. */
    void writeNotes(size_t writer)
    {
        for (size_t note = 0; !stop;) {
            if (waiting[writer] >= kNotesWaiting) {
                std::this_thread::yield();
                continue;
            }
            const uint8 bytes[] = {static_cast<uint8>(0x90 | writer),
                                   static_cast<uint8>(note++ % 128), 127};
            ++waiting[writer];
            effect->writeMidi(bytes, sizeof(bytes));
            ++written[writer];
        }
    }

    void playBlocks()
    {
        EventListDouble in;
        ParameterChangesDouble changes;
        in.add(noteOn(0, 60, 1));
        in.add(noteOff(0, 60));
        changes.add(kKnobs[0], {{0, 0.25}});
        while (!stop)
            playBlock(in, changes);
    }

    void playBlock(EventListDouble& in, ParameterChangesDouble& changes)
    {
        EventListDouble out;
        ProcessData data;
        data.numSamples = 64;
        data.inputEvents = &in;
        data.inputParameterChanges = &changes;
        data.outputEvents = &out;
        EXPECT_EQ(processor->process(data), kResultOk);
        ++blocks;
        for (const Event& event : out.events) {
            const auto writer = static_cast<size_t>(event.noteOn.channel);
            ASSERT_LT(writer, kWriters);
            EXPECT_EQ(static_cast<size_t>(event.noteOn.pitch), read[writer]++ % 128);
            --waiting[writer];
        }
    }

    /** Each value differs from the one before, because only a change is told to the host. */
    void turnKnob(size_t hand)
    {
        const auto* observer = bound.library.observer(kKnobs[hand]);
        while (!stop) {
            observer->beginEdit();
            observer->changeValue(static_cast<int>(turned[hand] % 127 + 1));
            observer->endEdit();
            ++turned[hand];
        }
    }

    void useHost()
    {
        bound.tick();
        repeatMessages();
        openAndCloseView();
        saveAndRestore();
        for (const unsigned id : kKnobs) {
            bound.controller->setParamNormalized(id, 0.5);
            bound.controller->getParamNormalized(id);
            String128 text = {};
            bound.controller->getParamStringByValue(id, 0.5, text);
        }
        processor->getLatencySamples();
        ProcessSetup setup{kRealtime, kSample32, 64, 48000};
        EXPECT_EQ(processor->setupProcessing(setup), kResultOk);
        collectEdits();
        ++rounds;
    }

    /** Repeats the messages of connect, which write what the audio thread reads. */
    void repeatMessages()
    {
        VstIEditorConnect* editor = &bound.library;
        const auto connection = unit::makeMessage("VST_CONNECT_MESSAGE_ID");
        connection->getAttributes()->setBinary("VST_CONNECT_BINARY_ID", &editor, sizeof(editor));
        EXPECT_EQ(processor->notify(connection), kResultOk);
        const auto unicode = unit::makeMessage("VST_ISUNICODE_HOST_MESSAGE_ID");
        unicode->getAttributes()->setInt("VST_ISUNICODE_HOST_BINARY_ID", GetParam() ? 1 : 0);
        EXPECT_EQ(processor->notify(unicode), kResultOk);
        EXPECT_EQ(processor->setActive(true), kResultOk);
    }

    void openAndCloseView()
    {
        const auto view = owned(bound.controller->createView(ViewType::kEditor));
        ASSERT_TRUE(view);
        EXPECT_EQ(view->attached(&rounds, kPlatformTypeNSView), kResultOk);
        EXPECT_EQ(view->removed(), kResultOk);
    }

    void saveAndRestore()
    {
        MemoryStream state;
        EXPECT_EQ(processor->getState(&state), kResultOk);
        state.seek(0, IBStream::kIBSeekSet, nullptr);
        EXPECT_EQ(processor->setState(&state), kResultOk);
        bound.library.statesSet.clear();
        int32 preset[] = {1, 0, 3};
        MemoryStream presetState(preset, sizeof(preset));
        EXPECT_EQ(bound.controller->setState(&presetState), kResultOk);
    }

    /** Counts the host's calls so far and empties the trace, without losing a call. */
    void collectEdits()
    {
        for (const auto& call : bound.trace.take()) {
            begun += call.text.rfind("host.beginEdit(", 0) == 0 ? 1 : 0;
            performed += call.text.rfind("host.performEdit(", 0) == 0 ? 1 : 0;
            ended += call.text.rfind("host.endEdit(", 0) == 0 ? 1 : 0;
        }
    }

    bool hasEachDoneSomething() const
    {
        const auto some = [](const std::atomic<size_t>& count) { return count > 0; };
        return std::all_of(written.begin(), written.end(), some) &&
               std::all_of(turned.begin(), turned.end(), some);
    }

    /** For scripts/figures, which adds them up. */
    void recordFigures(size_t gestures) const
    {
        const auto notes = std::accumulate(read.begin(), read.end(), size_t{0});
        RecordProperty("session: threads x seconds",
                       std::to_string((2 + kWriters + kHands) *
                                      static_cast<size_t>(sessionLength().count()) / 1000));
        RecordProperty("session: blocks", std::to_string(blocks));
        RecordProperty("session: notes in and out", std::to_string(notes));
        RecordProperty("session: gestures begun and ended", std::to_string(gestures));
        RecordProperty("session: rounds of the main thread", std::to_string(rounds));
    }

    void run()
    {
        std::vector<std::thread> threads;
        threads.emplace_back([this] { playBlocks(); });
        for (size_t writer = 0; writer < kWriters; ++writer)
            threads.emplace_back([this, writer] { writeNotes(writer); });
        for (size_t hand = 0; hand < kHands; ++hand)
            threads.emplace_back([this, hand] { turnKnob(hand); });
        const auto end = std::chrono::steady_clock::now() + sessionLength();
        while (std::chrono::steady_clock::now() < end || !hasEachDoneSomething())
            useHost();
        stop = true;
        for (auto& thread : threads)
            thread.join();
    }

    BoundController bound{GetParam() ? HostFamily::cubase("7.5.1")
                                     : BoundController::withoutUnicode()};
    IPtr<VstK2x> processor;
    VstIEffectInterface* effect = nullptr; ///< as the library got it at first
    std::atomic<bool> stop{false};
    std::array<std::atomic<int>, kWriters> waiting = {}; ///< notes written and not read
    std::array<std::atomic<size_t>, kWriters> written = {};
    std::array<std::atomic<size_t>, kHands> turned = {};
    // Each is used by one thread until all threads have ended.
    std::array<size_t, kWriters> read = {};
    size_t blocks = 0;
    size_t rounds = 0;
    size_t begun = 0;
    size_t performed = 0;
    size_t ended = 0;
};

INSTANTIATE_TEST_SUITE_P(DirectAndQueued, SessionThreads, testing::Bool(), [](const auto& tested) {
    return tested.param ? "InAUnicodeHost" : "InAnyOtherHost";
});

TEST_P(SessionThreads, ProcessAndEditsLoseNoNoteAndNoGesture)
{
    run();
    EventListDouble none;
    ParameterChangesDouble unchanged;
    playBlock(none, unchanged); // sends what was written last
    bound.tick();
    collectEdits();
    for (size_t writer = 0; writer < kWriters; ++writer) {
        EXPECT_EQ(read[writer], written[writer]);
        EXPECT_EQ(waiting[writer], 0);
    }
    const size_t gestures = turned[0] + turned[1];
    EXPECT_EQ(begun, gestures);
    EXPECT_EQ(ended, gestures);
    EXPECT_EQ(performed, gestures);
    EXPECT_THAT(bound.host.handler.unpairedEdits(), IsEmpty());
    for (size_t hand = 0; hand < kHands; ++hand)
        EXPECT_EQ(bound.parameter(kKnobs[hand])->getEditorParameter(),
                  static_cast<int>((turned[hand] - 1) % 127 + 1));
    recordFigures(gestures);
}

} // namespace
