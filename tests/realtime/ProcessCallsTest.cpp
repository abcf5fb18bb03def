// process() and writeMidi() take no memory and make no system call. The only lock that they take is
// the outgoing queue's, and they try it without waiting.
#include "tests/realtime/ProcessCalls.h"

#include <thread>

using namespace doubles;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

INSTANTIATE_TEST_SUITE_P(Places, ProcessCalls, testing::Bool(), placeOf);

TEST_P(ProcessCalls, ProcessTakesNoLockAndNoMemoryForNotesAndAutomation)
{
    fillInput();
    process();
    EXPECT_EQ(library.received, 256);
    EXPECT_EQ(library.changed, 128);
    EXPECT_EQ(record.size(), 0u);
}

TEST_P(ProcessCalls, ProcessTakesNoLockAndNoMemoryWithoutAnOutputList)
{
    fillInput();
    fillQueue();
    data.outputEvents = nullptr;
    process();
    EXPECT_EQ(library.received, 256);
    EXPECT_EQ(record.size(), 0u);
}

TEST_P(ProcessCalls, ProcessTakesTheQueuesLockOnceForEachEvent)
{
    fillQueue();
    process();
    EXPECT_EQ(out.events.size(), 100u);
    EXPECT_EQ(turnsOfTheLock(), 100u);
}

/** In twenty rounds the queue uses all of its ring buffer more than once. */
TEST_P(ProcessCalls, WriteMidiAndProcessTakeNoMemory)
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
        EXPECT_EQ(out.events.size(), 7u);
        EXPECT_EQ(turnsOfTheLock(), 7u);
        record.clear();
        out.events.clear();
    }
}

TEST_P(ProcessCalls, ProcessCallsHostAndLibraryWithNoLockHeld)
{
    fillInput();
    fillQueue();
    process();
    EXPECT_EQ(out.events.size(), 100u);
    EXPECT_EQ(library.callsUnderLock, 0);
    EXPECT_EQ(in.callsUnderLock, 0);
    EXPECT_EQ(out.callsUnderLock, 0);
}

TEST_P(ProcessCalls, WriteMidiInsideProcessTakesNoMemory)
{
    fillInput();
    library.answers = true;
    process();
    // The queue drops all it holds at each 101st of the 256 answers: 56 are left.
    EXPECT_EQ(out.events.size(), 56u);
    EXPECT_EQ(turnsOfTheLock(), 256u + 56u);
}

/** Otherwise busy writers could keep the lock from the block. */
TEST_P(ProcessCalls, WriteMidiDoesNotTryTheLockWhileProcessSends)
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

TEST_P(ProcessCalls, ProcessOnlySendsTheQueueWithoutALibrary)
{
    writeMidi(60);
    connect(nullptr);
    fillInput();
    process();
    EXPECT_EQ(library.received, 0);
    EXPECT_EQ(out.events.size(), 1u);
    EXPECT_EQ(turnsOfTheLock(), 1u);
    record.clear();
    process();
    EXPECT_EQ(record.size(), 0u);
}

TEST_P(ProcessCalls, ProcessMakesNoSystemCall)
{
    EXPECT_THAT(systemCalls(), IsEmpty());
    fillInput();
    fillQueue();
    EXPECT_THAT(systemCalls(), IsEmpty());
    data.outputEvents = nullptr;
    EXPECT_THAT(systemCalls(), IsEmpty());
}

} // namespace
