// What the processor's block asks of the allocator, of the locks and of the kernel: no memory, no
// system call, and no lock but the outgoing queue's, which it does not wait for.
#include "tests/realtime/ProcessCalls.h"

#include <thread>

using namespace doubles;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

INSTANTIATE_TEST_SUITE_P(Places, ProcessCalls, testing::Bool(), placeOf);

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
    EXPECT_EQ(out.events.size(), 100u);
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
        EXPECT_EQ(out.events.size(), 7u);
        EXPECT_EQ(turnsOfTheLock(), 7u);
        record.clear();
        out.events.clear();
    }
}

TEST_P(ProcessCalls, ReachHostAndLibraryWithNoLockHeld)
{
    fillInput();
    fillQueue();
    process();
    EXPECT_EQ(out.events.size(), 100u);
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
    EXPECT_EQ(out.events.size(), 56u);
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
    EXPECT_EQ(out.events.size(), 1u);
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

} // namespace
