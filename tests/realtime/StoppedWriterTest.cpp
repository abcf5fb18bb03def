// process() while a thread of the library is stopped in the middle of writeMidi: the block ends
// without the lock, no event is lost, and none is sent out of order.
#include "tests/realtime/ProcessCalls.h"

#include <atomic>
#include <optional>
#include <thread>

using namespace doubles;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

/** A thread of the library that stops at the first call of one kind, until letGo. */
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

/** The writer holds the queue's lock and goes on only after the block. */
class ProcessCallsBesideAStoppedWriter : public ProcessCalls {
protected:
    void stopWriter(uint8 pitch)
    {
        writer.emplace(*library.effect, pitch, CallRecord::kUnlock);
        // If a thread waits for the lock, the test is to fail and not to hang.
        record.context = preparing.context = &*writer;
        record.onEntry = preparing.onEntry = [](void* context, const CallRecord::Entry& entry) {
            if (entry.kind == CallRecord::kBlocked)
                static_cast<StoppedWriter*>(context)->letGo();
        };
    }

    /** Enough tries for a writer that holds the lock as usual, and not many more. */
    void expectABoundedNumberOfTries() const
    {
        EXPECT_EQ(record.count(CallRecord::kFailedTry), record.size());
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

INSTANTIATE_TEST_SUITE_P(Places, ProcessCallsBesideAStoppedWriter, testing::Bool(), placeOf);

TEST_P(ProcessCallsBesideAStoppedWriter, ProcessLeavesTheEventsInOrderToTheNextBlock)
{
    for (int number = 0; number < 3; ++number)
        writeMidi(number);
    stopWriter(3);
    process();
    EXPECT_THAT(out.events, IsEmpty());
    expectABoundedNumberOfTries();
    letWriterGoOn();
    process();
    EXPECT_THAT(pitches(), ElementsAre(0, 1, 2, 3));
    EXPECT_EQ(turnsOfTheLock(), 4u);
}

TEST_P(ProcessCallsBesideAStoppedWriter, ProcessMakesNoSystemCall)
{
    writeMidi(0);
    fillInput();
    library.answers = true;
    stopWriter(1);
    EXPECT_THAT(systemCalls(), IsEmpty());
}

/** What the library writes inside process is sent after what was in the queue before, and before
    what its threads write after the block. */
TEST_P(ProcessCallsBesideAStoppedWriter, WriteMidiInsideProcessStillAddsItsEvent)
{
    writeMidi(0);
    stopWriter(1);
    in.add(noteOn(0, 2, 1));
    library.answers = true;
    process();
    EXPECT_THAT(out.events, IsEmpty());
    expectABoundedNumberOfTries();
    preparing.clear();
    std::thread([this] { writeMidi(3); }).join();
    EXPECT_EQ(preparing.count(CallRecord::kFailedTry), 1u);
    EXPECT_EQ(preparing.size(), 1u);
    letWriterGoOn();
    in.events.clear();
    process();
    EXPECT_THAT(pitches(), ElementsAre(0, 1, 2, 3));
}

/** The queue holds a hundred events also while nobody can take its lock. */
TEST_P(ProcessCallsBesideAStoppedWriter, WriteMidiKeepsTheNewestOfAHundredAndOne)
{
    stopWriter(0);
    fillQueue();
    writeMidi(101);
    process();
    EXPECT_THAT(out.events, IsEmpty());
    letWriterGoOn();
    process();
    EXPECT_THAT(pitches(), ElementsAre(99, 101));
}

TEST_P(ProcessCallsBesideAStoppedWriter, ProcessDoesNotWaitForAnEventThatIsNotInTheQueueYet)
{
    StoppedWriter early(*library.effect, 60, CallRecord::kTryLock);
    process();
    EXPECT_EQ(record.size(), 0u);
    EXPECT_THAT(out.events, IsEmpty());
    early.finish();
    process();
    EXPECT_EQ(out.events.size(), 1u);
    EXPECT_EQ(early.record.count(CallRecord::kTryLock), 1u);
    EXPECT_EQ(early.record.count(CallRecord::kUnlock), 1u);
    EXPECT_EQ(early.record.size(), 2u);
}

} // namespace
