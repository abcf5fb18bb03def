// What the SDK's validator does not test, in the same hosting classes.
#include "tests/hosts/sdk/SdkHost.h"
#include "tests/doubles/EventListDouble.h"
#include "tests/doubles/Parameters.h"
#include "tests/hosts/HostsTable.h"

#include "pluginterfaces/base/keycodes.h"
#include "pluginterfaces/gui/iplugview.h"

#include <atomic>
#include <climits>
#include <cstring>
#include <gmock/gmock.h>
#include <memory>
#include <thread>

namespace {

using namespace hosts;
using namespace Steinberg;
using namespace Steinberg::Vst;
using testing::SizeIs;

constexpr uint32 kVolume1 = 37012000;
constexpr int kBlocks = 2000; ///< at least
constexpr int kRounds = 200;  ///< of the main thread's work, at least
constexpr int kNotesABlock = 4;
constexpr int kEventsABlock = 2 * kNotesABlock; ///< a note and its end

class SdkHosting : public testing::Test {
protected:
    SdkHost host;
    SdkInstance plugIn{host};

    void SetUp() override { ASSERT_TRUE(plugIn); }
};

/** Sends four notes a block to one channel, each with its note-off, and compares what comes back.
    Runs until stop, for kBlocks at least. */
class AudioThread {
public:
    AudioThread(const SdkInstance& instance, int channel)
    : thread([this, &instance, channel] { run(instance, channel); })
    {
    }
    ~AudioThread() { stop(); }
    AudioThread(const AudioThread&) = delete;
    AudioThread& operator=(const AudioThread&) = delete;

    int blocksDone() const { return blocks; }
    void stop()
    {
        stopping = true;
        if (thread.joinable())
            thread.join();
    }

    /** Notes sent until stop. */
    uint32 notes() const { return static_cast<uint32>(blocks * kNotesABlock); }

    int wrongBlocks = 0; ///< blocks whose output was not their input; valid after stop

private:
    std::atomic<int> blocks{0};
    std::atomic<bool> stopping{false};
    std::thread thread; // the last member: it uses the others

    void run(const SdkInstance& instance, int channel)
    {
        for (; blocks < kBlocks || !stopping; ++blocks)
            processBlock(instance, channel, blocks);
    }

    void processBlock(const SdkInstance& instance, int channel, int block)
    {
        EventList input(kEventsABlock);
        for (int note = 0; note < kNotesABlock; ++note) {
            const auto pitch = static_cast<int16>((block + note) % 128);
            auto on = doubles::noteOn(static_cast<int16>(channel), pitch, 0.5f);
            auto off = doubles::noteOff(static_cast<int16>(channel), pitch);
            input.addEvent(on);
            input.addEvent(off);
        }
        if (!isEcho(instance.process(&input), channel, block))
            ++wrongBlocks;
    }

    // Each event comes back as a note-on: at full velocity, or at 0 for a note-off.
    static bool isEcho(const std::vector<Event>& output, int channel, int block)
    {
        if (output.size() != kEventsABlock)
            return false;
        for (size_t index = 0; index < output.size(); ++index) {
            const auto& event = output[index];
            const float velocity = index % 2 == 0 ? 1.f : 0.f;
            const int pitch = (block + static_cast<int>(index / 2)) % 128;
            if (event.type != Event::kNoteOnEvent || event.noteOn.channel != channel ||
                event.noteOn.pitch != pitch || event.noteOn.velocity != velocity)
                return false;
        }
        return true;
    }
};

void expectAllNotes(const AudioThread& audio, const SdkInstance& instance, int channel)
{
    EXPECT_EQ(audio.wrongBlocks, 0);
    EXPECT_EQ(instance.simulator->noteOnsReceived(channel), audio.notes());
    EXPECT_EQ(instance.simulator->noteOffsReceived(channel), audio.notes());
}

/** What a host's main thread does with parameters and state while the audio runs. */
void useMainThread(const SdkInstance& instance, int round)
{
    String128 text{};
    for (int32 index = 0; index < instance.controller->getParameterCount(); index += 20) {
        ParameterInfo info{};
        instance.controller->getParameterInfo(index, info);
        instance.controller->setParamNormalized(info.id, (round % 128) / 127.);
        instance.controller->getParamStringByValue(info.id, 0.5, text);
    }
    instance.simulator->turnKnob(kVolume1, round % 128);
    instance.restore(instance.save());
    instance.processor->getLatencySamples();
}

TEST_F(SdkHosting, ProcessesWhileTheMainThreadUsesParametersAndState)
{
    tried(kSdkHost, "audio on a thread of its own while parameters and state are in use");
    plugIn.start();
    AudioThread audio(plugIn, 3);
    for (int round = 0; round < kRounds || audio.blocksDone() < kBlocks; ++round)
        useMainThread(plugIn, round);
    audio.stop();
    plugIn.stop();
    expectAllNotes(audio, plugIn, 3);
}

TEST_F(SdkHosting, ProcessesFourInstancesAtATime)
{
    tried(kSdkHost, "four instances processing at the same time, a thread each");
    std::vector<std::unique_ptr<SdkInstance>> instances;
    for (int index = 0; index < 4; ++index) {
        instances.push_back(std::make_unique<SdkInstance>(host));
        ASSERT_TRUE(*instances.back());
        instances.back()->start();
    }
    std::vector<std::unique_ptr<AudioThread>> threads;
    threads.reserve(instances.size());
    for (const auto& instance : instances)
        threads.push_back(
            std::make_unique<AudioThread>(*instance, static_cast<int>(threads.size())));
    for (size_t index = 0; index < instances.size(); ++index) {
        const auto& instance = *instances[index];
        const int channel = static_cast<int>(index);
        threads[index]->stop();
        expectAllNotes(*threads[index], instance, channel);
        EXPECT_EQ(instance.simulator->noteOnsReceived(channel + 1), 0u);
        instance.stop();
    }
}

TEST_F(SdkHosting, TakesSetActiveAnyNumberOfTimes)
{
    tried(kSdkHost, "setActive repeated without a change, and 100 times on and off");
    plugIn.start();
    for (const TBool state : {true, true, false, false, true, true})
        EXPECT_EQ(plugIn.component->setActive(state), kResultOk);
    for (int round = 0; round < 100; ++round) {
        EXPECT_EQ(plugIn.component->setActive(false), kResultOk);
        EXPECT_EQ(plugIn.component->setActive(true), kResultOk);
    }
    EventList input;
    auto note = doubles::noteOn(0, 60, 1.f);
    input.addEvent(note);
    EXPECT_THAT(plugIn.process(&input), SizeIs(1));
    // What the library sends to an inactive component is not kept for the next start.
    plugIn.component->setActive(false);
    EXPECT_THAT(plugIn.process(&input), SizeIs(0));
    plugIn.component->setActive(true);
    EXPECT_THAT(plugIn.process(nullptr), SizeIs(0));
    plugIn.stop();
    EXPECT_EQ(plugIn.simulator->noteOnsReceived(0), 2u);
}

struct Buses {
    MediaType media;
    BusDirection direction;
    int32 count;
};

constexpr Buses kBuses[] = {
    {kAudio, kInput, 0}, {kAudio, kOutput, 2}, {kEvent, kInput, 1}, {kEvent, kOutput, 1}};

void expectNoBus(const SdkInstance& instance, const Buses& buses, int32 index)
{
    BusInfo info{};
    EXPECT_EQ(instance.component->getBusInfo(buses.media, buses.direction, index, info),
              kInvalidArgument);
    EXPECT_EQ(instance.component->activateBus(buses.media, buses.direction, index, true),
              kInvalidArgument);
    if (buses.media != kAudio)
        return;
    SpeakerArrangement untouched = SpeakerArr::k51;
    EXPECT_EQ(instance.processor->getBusArrangement(buses.direction, index, untouched),
              kInvalidArgument);
    EXPECT_EQ(untouched, SpeakerArr::k51);
}

TEST_F(SdkHosting, RefusesBusesThatItDoesNotHave)
{
    tried(kSdkHost, "bus indices below, just above and far above the buses");
    for (const auto& buses : kBuses) {
        ASSERT_EQ(plugIn.component->getBusCount(buses.media, buses.direction), buses.count);
        for (const int32 index : {-1, buses.count, INT_MAX, INT_MIN})
            expectNoBus(plugIn, buses, index);
    }
    SpeakerArrangement three[] = {SpeakerArr::kStereo, SpeakerArr::kStereo, SpeakerArr::kStereo};
    EXPECT_EQ(plugIn.processor->setBusArrangements(three, 1, three, 2), kResultFalse);
    EXPECT_EQ(plugIn.processor->setBusArrangements(three, 0, three, 3), kResultFalse);
    EXPECT_EQ(plugIn.processor->setBusArrangements(three, -1, three, 2), kInvalidArgument);
    SpeakerArrangement kept = 0;
    EXPECT_EQ(plugIn.processor->getBusArrangement(kOutput, 1, kept), kResultOk);
    EXPECT_EQ(kept, SpeakerArr::kStereo);
}

TEST_F(SdkHosting, ProcessesWhileTheEditorIsOpen)
{
    tried(kSdkHost, "audio on a thread of its own while the editor view is open and used");
    auto view = owned(plugIn.controller->createView(ViewType::kEditor));
    ASSERT_TRUE(view);
    // Only the simulator gets the window's handle, and it does not draw.
    int window = 0;
    ASSERT_EQ(view->attached(&window, kPlatformTypeNSView), kResultOk);
    EXPECT_TRUE(plugIn.simulator->editorOpen());
    plugIn.start();
    AudioThread audio(plugIn, 15);
    for (int round = 0; round < kRounds || audio.blocksDone() < kBlocks; ++round) {
        view->onFocus(true);
        view->onKeyDown(0, KEY_DOWN, 0);
        view->onKeyUp(0, KEY_DOWN, 0);
        view->onWheel(1.f);
        ViewRect size;
        view->getSize(&size);
        useMainThread(plugIn, round);
    }
    audio.stop();
    EXPECT_TRUE(plugIn.simulator->editorOpen());
    EXPECT_EQ(view->removed(), kResultOk);
    EXPECT_FALSE(plugIn.simulator->editorOpen());
    plugIn.stop();
    expectAllNotes(audio, plugIn, 15);
}

TEST_F(SdkHosting, SavesAfterRestoreWhatWasRestored)
{
    tried(kSdkHost, "state saved, restored in another instance and saved again: the same bytes");
    const auto untouched = plugIn.save();
    for (const uint32 id : plugIn.simulator->parameterIds())
        plugIn.simulator->turnKnob(id, static_cast<int32>(id % 101));
    const auto saved = plugIn.save();
    ASSERT_GT(saved.size(), 8u);
    int32 head[2] = {-1, -1}; // version and length
    std::memcpy(head, saved.data(), sizeof(head));
    EXPECT_EQ(head[0], 0);
    EXPECT_EQ(head[1], static_cast<int32>(saved.size()) - 8);
    EXPECT_NE(saved, untouched);

    SdkInstance other(host);
    ASSERT_TRUE(other);
    EXPECT_EQ(other.save(), untouched);
    EXPECT_EQ(other.restore(saved), kResultOk);
    EXPECT_EQ(other.simulator->parameterValue(kVolume1), 37012000 % 101);
    EXPECT_EQ(other.save(), saved);
    EXPECT_EQ(other.save(), saved);
    EXPECT_EQ(plugIn.save(), saved);
    found("the same " + std::to_string(saved.size()) + " bytes");
}

TEST_F(SdkHosting, EndsEachInstance)
{
    tried(kSdkHost, "50 more instances made and let go beside one that stays");
    for (int round = 0; round < 50; ++round) {
        SdkInstance other(host);
        ASSERT_TRUE(other);
        EXPECT_EQ(liveInstruments(), 2);
    }
    EXPECT_EQ(liveInstruments(), 1);
}

// At this parameter the validator's own test ends.
TEST_F(SdkHosting, GetParameterInfoShowsTheEditFlagAsNoControl)
{
    tried(kSdkHost, "the parameter at which the validator stops: the edit flag");
    ASSERT_EQ(plugIn.controller->getParameterCount(), doubles::kParameters);
    ParameterInfo info{};
    ASSERT_EQ(plugIn.controller->getParameterInfo(doubles::kAutomatable, info), kResultOk);
    EXPECT_EQ(info.id, doubles::kEditFlag);
    EXPECT_EQ(info.title[0], 0);
    EXPECT_EQ(info.flags, 0);
    EXPECT_EQ(info.unitId, -1);
    EXPECT_EQ(info.defaultNormalizedValue, 0.);
}

} // namespace
