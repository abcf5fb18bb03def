// What the processor's block asks of the allocator, of the locks and of the kernel, in this program
// and in the bundle that ships: no memory, no system call, no lock but the outgoing queue's, and
// that without waiting for it.
#include "processor/VstK2x.h"
#include "tests/doubles/ParameterChangesDouble.h"
#include "tests/doubles/ScriptedLibrary.h"
#include "tests/realtime/CallRecord.h"
#include "tests/realtime/SystemCalls.h"

#include "public.sdk/source/vst/hosting/hostclasses.h"
#include "public.sdk/source/vst/hosting/module.h"

#include <atomic>
#include <functional>
#include <gmock/gmock.h>
#include <optional>
#include <thread>

using namespace Steinberg;
using namespace Steinberg::Vst;
using namespace doubles;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

/** The host's list of events, which takes no memory and looks whether the caller holds a lock. */
class FixedEventList final : public IEventList {
public:
    virtual ~FixedEventList() = default;

    int32 PLUGIN_API getEventCount() override { return count; }
    tresult PLUGIN_API getEvent(int32 index, Event& event) override
    {
        look();
        event = events[static_cast<size_t>(index)];
        return kResultOk;
    }
    tresult PLUGIN_API addEvent(Event& event) override
    {
        look();
        events[static_cast<size_t>(count++)] = event;
        if (onAdd)
            onAdd();
        return kResultOk;
    }
    tresult PLUGIN_API queryInterface(const TUID, void** obj) override
    {
        *obj = nullptr;
        return kNoInterface;
    }
    uint32 PLUGIN_API addRef() override { return 1; }
    uint32 PLUGIN_API release() override { return 1; }

    void look() { callsUnderLock += watched && watched->getHeld() > 0 ? 1 : 0; }

    std::array<Event, 512> events = {};
    int32 count = 0;
    std::function<void()> onAdd;
    const CallRecord* watched = nullptr;
    int callsUnderLock = 0;
};

/** The editor library on the audio thread: counts, and may answer. */
class LiveLibrary final : public ScriptedLibrary {
public:
    using ScriptedLibrary::ScriptedLibrary;

    void receiveHostMidi(const uint8* data, int32 length) override
    {
        callsUnderLock += watched && watched->getHeld() > 0 ? 1 : 0;
        ++received;
        if (answers)
            effect->writeMidi(data, length);
    }
    void hostParameterChanged(uint32 /*id*/, double /*value*/) override
    {
        callsUnderLock += watched && watched->getHeld() > 0 ? 1 : 0;
        ++changed;
    }

    const CallRecord* watched = nullptr;
    bool answers = false;
    int callsUnderLock = 0;
    int received = 0;
    int changed = 0;
};

Event note(uint16 type, int16 pitch)
{
    Event event = {};
    event.type = type;
    if (type == Event::kNoteOnEvent)
        event.noteOn = {0, pitch, 0, 1, 0, -1};
    else
        event.noteOff = {0, pitch, 0, -1, 0};
    return event;
}

/** The processor as linked into this program, or as the bundle's factory makes it. */
class ProcessCalls : public testing::TestWithParam<bool> {
protected:
    void SetUp() override
    {
        {
            const Recording recording(preparing);
            make();
        }
        ASSERT_TRUE(processor);
        const auto component = FUnknownPtr<IComponent>(processor);
        component->initialize(nullptr);
        connect(&library);
        component->setActive(true);
        data.numSamples = 64;
        data.inputEvents = &in;
        data.outputEvents = &out;
        data.inputParameterChanges = &changes;
        library.watched = in.watched = out.watched = &record;
        midiLock = lockOfWriteMidi();
    }

    void make()
    {
        if (!GetParam()) {
            processor = owned(static_cast<IAudioProcessor*>(new VstK2x));
            return;
        }
        std::string error;
        module = VST3::Hosting::Module::create(BUNDLE_FOLDER, error);
        ASSERT_TRUE(module) << error;
        const auto id = VST3::UID::fromString(std::string("13EEE3484D664261B90352CE35DD18B4"));
        ASSERT_TRUE(id);
        processor = module->getFactory().createInstance<IAudioProcessor>(*id);
    }

    void connect(VstIEditorConnect* editor)
    {
        const auto message = owned(new HostMessage);
        message->setMessageID("VST_CONNECT_MESSAGE_ID");
        message->getAttributes()->setBinary("VST_CONNECT_BINARY_ID", &editor, sizeof(editor));
        FUnknownPtr<IConnectionPoint>(processor)->notify(message);
    }

    void writeMidi(int number)
    {
        const uint8 bytes[] = {0x90, static_cast<uint8>(number % 128), 127};
        const Recording recording(preparing);
        library.effect->writeMidi(bytes, sizeof(bytes));
    }

    /** writeMidi tries the queue's lock and no other, which tells which one that is. */
    const void* lockOfWriteMidi()
    {
        const size_t before = preparing.size();
        writeMidi(0);
        const void* lock = nullptr;
        for (size_t index = before; index < preparing.size(); ++index) {
            if (preparing[index].kind != CallRecord::kTryLock)
                continue;
            EXPECT_EQ(lock, nullptr);
            lock = preparing[index].object;
        }
        EXPECT_NE(lock, nullptr);
        ProcessData drain;
        FixedEventList list;
        drain.outputEvents = &list;
        processor->process(drain);
        EXPECT_EQ(list.count, 1);
        return lock;
    }

    void fillInput()
    {
        for (int16 pitch = 0; pitch < 128; ++pitch) {
            in.events[static_cast<size_t>(in.count++)] = note(Event::kNoteOnEvent, pitch);
            in.events[static_cast<size_t>(in.count++)] = note(Event::kNoteOffEvent, pitch);
            changes.add(37012000u + static_cast<ParamID>(pitch), {{0, 0.25}, {63, 0.5}});
        }
    }

    void fillQueue()
    {
        for (int number = 0; number < 100; ++number)
            writeMidi(number);
    }

    void process()
    {
        const Recording recording(record);
        EXPECT_EQ(processor->process(data), kResultOk);
    }

    /** The block asked for nothing but the queue's lock, which it took at the first try and gave
        back, again and again; gives how often. */
    size_t turnsOfTheLock() const
    {
        size_t turns = 0;
        bool isHeld = false;
        for (const auto& entry : record) {
            EXPECT_EQ(entry.object, midiLock);
            EXPECT_EQ(entry.kind, isHeld ? CallRecord::kUnlock : CallRecord::kTryLock);
            isHeld = !isHeld;
            turns += isHeld ? 1 : 0;
        }
        EXPECT_FALSE(isHeld);
        return turns;
    }

    std::vector<int> pitches() const
    {
        std::vector<int> result;
        for (int32 index = 0; index < out.count; ++index)
            result.push_back(out.events[static_cast<size_t>(index)].noteOn.pitch);
        return result;
    }

    std::vector<long> systemCalls()
    {
        const auto calls = systemCallsOf([this] { processor->process(data); });
        EXPECT_TRUE(calls);
        return calls.value_or(std::vector<long>{-1});
    }

    CallRecord record;    ///< of process
    CallRecord preparing; ///< of construction and writeMidi
    Trace trace;
    LiveLibrary library{trace};
    VST3::Hosting::Module::Ptr module;
    IPtr<IAudioProcessor> processor;
    FixedEventList in;
    FixedEventList out;
    ParameterChangesDouble changes;
    ProcessData data;
    const void* midiLock = nullptr;
};

INSTANTIATE_TEST_SUITE_P(Places, ProcessCalls, testing::Bool(), [](const auto& tested) {
    return tested.param ? "InTheBundle" : "InThisProgram";
});

TEST_P(ProcessCalls, AreNoneForNotesAndAutomation)
{
    fillInput();
    process();
    EXPECT_EQ(library.received, 256);
    EXPECT_EQ(library.changed, 128);
    EXPECT_EQ(record.size(), 0u);
}

TEST_P(ProcessCalls, AreNoneAtAllWithoutAnOutputList)
{
    fillInput();
    fillQueue();
    data.outputEvents = nullptr;
    process();
    EXPECT_EQ(library.received, 256);
    EXPECT_EQ(record.size(), 0u);
}

TEST_P(ProcessCalls, TakeTheQueuesLockOnceForEachEvent)
{
    fillQueue();
    process();
    EXPECT_EQ(out.count, 100);
    EXPECT_EQ(turnsOfTheLock(), 100u);
}

/** Round by round, so that the queue goes round in its memory. */
TEST_P(ProcessCalls, LeaveTheAllocatorAloneOnBothSidesOfTheQueue)
{
    for (int round = 0; round < 20; ++round) {
        preparing.clear();
        fillQueue();
        for (int number = 0; number < 7; ++number) // the first of them finds it full
            writeMidi(number);
        EXPECT_EQ(preparing.count(CallRecord::kTryLock), 107u);
        EXPECT_EQ(preparing.count(CallRecord::kUnlock), 107u);
        EXPECT_EQ(preparing.size(), 214u);
        process();
        EXPECT_EQ(out.count, 7);
        EXPECT_EQ(turnsOfTheLock(), 7u);
        record.clear();
        out.count = 0;
    }
}

TEST_P(ProcessCalls, ReachHostAndLibraryWithNoLockHeld)
{
    fillInput();
    fillQueue();
    process();
    EXPECT_EQ(out.count, 100);
    EXPECT_EQ(library.callsUnderLock, 0);
    EXPECT_EQ(in.callsUnderLock, 0);
    EXPECT_EQ(out.callsUnderLock, 0);
}

TEST_P(ProcessCalls, StayTheSameWhenTheLibraryAnswersFromInside)
{
    fillInput();
    library.answers = true;
    process();
    // 256 answers into a queue that is emptied at each 101st: 56 are left.
    EXPECT_EQ(out.count, 56);
    EXPECT_EQ(turnsOfTheLock(), 256u + 56u);
}

/** Writers that never stop would else have the lock again and again. */
TEST_P(ProcessCalls, AreNotDisturbedByAWriterWhileTheQueueIsSent)
{
    writeMidi(1);
    writeMidi(2);
    preparing.clear();
    out.onAdd = [this] {
        const NotRecorded meanwhile;
        std::thread([this] { writeMidi(3); }).join();
    };
    process();
    EXPECT_THAT(pitches(), ElementsAre(1, 2));
    EXPECT_EQ(turnsOfTheLock(), 2u);
    EXPECT_EQ(preparing.size(), 0u);
    out.onAdd = nullptr;
    process();
    EXPECT_THAT(pitches(), ElementsAre(1, 2, 3, 3));
    writeMidi(4);
    EXPECT_EQ(preparing.count(CallRecord::kTryLock), 1u);
}

TEST_P(ProcessCalls, EmptyTheQueueAloneWithoutALibrary)
{
    writeMidi(60);
    connect(nullptr);
    fillInput();
    process();
    EXPECT_EQ(library.received, 0);
    EXPECT_EQ(out.count, 1);
    EXPECT_EQ(turnsOfTheLock(), 1u);
    record.clear();
    process();
    EXPECT_EQ(record.size(), 0u);
}

TEST_P(ProcessCalls, MakeNoSystemCall)
{
    EXPECT_THAT(systemCalls(), IsEmpty());
    fillInput();
    fillQueue();
    EXPECT_THAT(systemCalls(), IsEmpty());
    data.outputEvents = nullptr;
    EXPECT_THAT(systemCalls(), IsEmpty());
}

/** A thread of the library that stops at a given operation of the lock until it is let go on. */
class StoppedWriter {
public:
    StoppedWriter(VstIEffectInterface& effect, uint8 pitch, CallRecord::Kind where)
    : stopAt(where)
    {
        record.context = this;
        record.onEntry = [](void* context, const CallRecord::Entry& entry) {
            auto& self = *static_cast<StoppedWriter*>(context);
            if (entry.kind != self.stopAt)
                return;
            self.stopped = true;
            while (!self.released)
                std::this_thread::yield();
        };
        thread = std::thread([this, &effect, pitch] {
            const uint8 bytes[] = {0x90, pitch, 127};
            const Recording recording(record);
            effect.writeMidi(bytes, sizeof(bytes));
        });
        while (!stopped)
            std::this_thread::yield();
    }
    ~StoppedWriter() { finish(); }

    void letGo() { released = true; }
    void finish()
    {
        letGo();
        if (thread.joinable())
            thread.join();
    }

    CallRecord record; ///< of writeMidi

private:
    const CallRecord::Kind stopAt;
    std::atomic<bool> stopped{false};
    std::atomic<bool> released{false};
    std::thread thread;
};

/** writeMidi was stopped with the lock in its hands, and goes on only after the block. */
class ProcessCallsBesideAStoppedWriter : public ProcessCalls {
protected:
    void stopWriter(uint8 pitch)
    {
        writer.emplace(*library.effect, pitch, CallRecord::kUnlock);
        // A thread that waits for the writer is to fail here and not to stay for ever.
        record.context = preparing.context = &*writer;
        record.onEntry = preparing.onEntry = [](void* context, const CallRecord::Entry& entry) {
            if (entry.kind == CallRecord::kBlocked)
                static_cast<StoppedWriter*>(context)->letGo();
        };
    }

    /** The block tried the lock more often than a moment's use of it takes, but not for long. */
    void expectABoundedNumberOfTries() const
    {
        EXPECT_EQ(record.count(CallRecord::kTryInVain), record.size());
        EXPECT_GE(record.size(), 20u);
        EXPECT_LE(record.size(), 1000u);
    }

    void letWriterGoOn()
    {
        writer->finish();
        record.clear();
    }

    std::optional<StoppedWriter> writer;
};

INSTANTIATE_TEST_SUITE_P(Places, ProcessCallsBesideAStoppedWriter, testing::Bool(),
                         [](const auto& tested) {
                             return tested.param ? "InTheBundle" : "InThisProgram";
                         });

TEST_P(ProcessCallsBesideAStoppedWriter, LeaveTheEventsInOrderToTheNextBlock)
{
    for (int number = 0; number < 3; ++number)
        writeMidi(number);
    stopWriter(3);
    process();
    EXPECT_EQ(out.count, 0);
    expectABoundedNumberOfTries();
    letWriterGoOn();
    process();
    EXPECT_THAT(pitches(), ElementsAre(0, 1, 2, 3));
    EXPECT_EQ(turnsOfTheLock(), 4u);
}

TEST_P(ProcessCallsBesideAStoppedWriter, MakeNoSystemCall)
{
    writeMidi(0);
    fillInput();
    library.answers = true;
    stopWriter(1);
    EXPECT_THAT(systemCalls(), IsEmpty());
}

/** What the library answers from inside the block comes behind what is in the queue, and before
    what any of its threads writes after the block. */
TEST_P(ProcessCallsBesideAStoppedWriter, TakeAnswersFromInsideAllTheSame)
{
    writeMidi(0);
    stopWriter(1);
    in.events[0] = note(Event::kNoteOnEvent, 2);
    in.count = 1;
    library.answers = true;
    process();
    EXPECT_EQ(out.count, 0);
    expectABoundedNumberOfTries();
    preparing.clear();
    std::thread([this] { writeMidi(3); }).join();
    EXPECT_EQ(preparing.count(CallRecord::kTryInVain), 1u);
    EXPECT_EQ(preparing.size(), 1u);
    letWriterGoOn();
    in.count = 0;
    process();
    EXPECT_THAT(pitches(), ElementsAre(0, 1, 2, 3));
}

/** The bound holds whether the lock could be had or not. */
TEST_P(ProcessCallsBesideAStoppedWriter, KeepTheNewestOfAHundredAndOne)
{
    stopWriter(0);
    fillQueue();
    writeMidi(101);
    process();
    EXPECT_EQ(out.count, 0);
    letWriterGoOn();
    process();
    EXPECT_THAT(pitches(), ElementsAre(99, 101));
}

TEST_P(ProcessCalls, DoNotWaitForAnEventThatIsNotInTheQueueYet)
{
    StoppedWriter writer(*library.effect, 60, CallRecord::kTryLock);
    process();
    EXPECT_EQ(record.size(), 0u);
    EXPECT_EQ(out.count, 0);
    writer.finish();
    process();
    EXPECT_EQ(out.count, 1);
    EXPECT_EQ(writer.record.count(CallRecord::kTryLock), 1u);
    EXPECT_EQ(writer.record.count(CallRecord::kUnlock), 1u);
    EXPECT_EQ(writer.record.size(), 2u);
}

} // namespace
