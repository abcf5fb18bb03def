// CallRecord and systemCallsOf find the calls whose absence other tests expect.
#include "tests/realtime/CallRecord.h"
#include "tests/realtime/SystemCalls.h"

#include <chrono>
#include <condition_variable>
#include <cstdlib>
#include <gmock/gmock.h>
#include <mutex>
#include <sys/syscall.h>
#include <thread>
#include <unistd.h>
#include <vector>

using namespace doubles;
using testing::ElementsAre;

namespace {

TEST(CallRecordTest, RecordingKeepsMemoryLocksAndWaitsInOrder)
{
    CallRecord record;
    std::mutex lock;
    std::condition_variable condition;
    {
        const Recording recording(record);
        auto* number = new int(7);
        delete number;
        std::free(std::calloc(1, 100));
        std::unique_lock<std::mutex> guard(lock);
        condition.wait_for(guard, std::chrono::milliseconds(1));
        guard.unlock();
        if (guard.try_lock())
            guard.unlock();
    }
    std::vector<CallRecord::Kind> kinds;
    for (const auto& entry : record)
        kinds.push_back(entry.kind);
    EXPECT_THAT(kinds, ElementsAre(CallRecord::kAllocate, CallRecord::kFree, CallRecord::kAllocate,
                                   CallRecord::kFree, CallRecord::kLock, CallRecord::kWait,
                                   CallRecord::kUnlock, CallRecord::kTryLock, CallRecord::kUnlock));
    EXPECT_EQ(record.getHeld(), 0u);
}

TEST(CallRecordTest, RecordingTellsAFailedTryFromAWait)
{
    CallRecord record;
    std::timed_mutex lock;
    lock.lock();
    std::thread([&] {
        const Recording recording(record);
        EXPECT_FALSE(lock.try_lock());
        EXPECT_FALSE(lock.try_lock_for(std::chrono::milliseconds(1)));
    }).join();
    lock.unlock();
    ASSERT_EQ(record.size(), 2u);
    EXPECT_EQ(record[0].kind, CallRecord::kFailedTry);
    EXPECT_EQ(record[1].kind, CallRecord::kBlocked);
    EXPECT_EQ(record.getHeld(), 0u);
}

TEST(CallRecordTest, RecordingLeavesOutOtherThreadsAndNotRecorded)
{
    CallRecord record;
    std::thread other;
    {
        const Recording recording(record);
        const NotRecorded meanwhile;
        other = std::thread([] { delete new int(7); });
        delete new int(7);
    }
    other.join();
    EXPECT_EQ(record.size(), 0u);
}

TEST(SystemCallsTest, SystemCallsOfGivesEachCallInOrder)
{
    const auto calls = systemCallsOf([] {
        syscall(SYS_gettid);
        syscall(SYS_getppid);
    });
    ASSERT_TRUE(calls);
    EXPECT_THAT(*calls, ElementsAre(SYS_gettid, SYS_getppid));
    EXPECT_EQ(systemCallsOf([] { _exit(0); }), std::nullopt);
    EXPECT_EQ(systemCallsOf([] { std::abort(); }), std::nullopt);
}

} // namespace
