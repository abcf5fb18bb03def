// CallRecord: the calls of the allocator, of locks and of waiting functions that one thread makes.
//
//   CallRecord record;
//   {
//       const Recording recording(record);
//       processor->process(data);
//   }
//   EXPECT_EQ(record.count(CallRecord::kAllocate), 0u);
//
// CallRecord.cpp replaces these functions of the C library in the program that it is linked into
// and in every library that this program loads. A sanitizer replaces some of them too, so use one
// or the other.
#pragma once

#include <array>
#include <cstddef>

namespace doubles {

/** Takes no memory, because the allocator's functions fill it. One thread fills it. Other threads
    may read it after that thread has ended its Recording. */
class CallRecord {
public:
    enum Kind {
        kAllocate,
        kFree,
        kLock,      ///< a lock taken by a call that may wait
        kTryLock,   ///< a lock taken by a call that does not wait
        kFailedTry, ///< such a call, while another thread holds the lock
        kUnlock,
        kBlocked, ///< waits for a lock that another thread holds
        kWait     ///< waits for a condition, a semaphore or another thread
    };
    struct Entry {
        Kind kind;
        const void* object; ///< the memory, the lock or the condition
    };
    static constexpr std::size_t kMaxEntries = 8192;

    /** Called after each entry is made. It may block; what it calls is not recorded. */
    void (*onEntry)(void* context, const Entry& entry) = nullptr;
    void* context = nullptr;

    void add(Kind kind, const void* object);
    void clear() { used = held = 0; }

    std::size_t size() const { return used; }
    const Entry& operator[](std::size_t index) const { return entries[index]; }
    const Entry* begin() const { return entries.data(); }
    const Entry* end() const { return entries.data() + used; }
    std::size_t count(Kind kind) const;

    /** How many of the locks that were taken during the recording the thread still holds. */
    std::size_t getHeld() const { return held; }

private:
    std::array<Entry, kMaxEntries> entries;
    std::size_t used = 0;
    std::size_t held = 0;
};

/** Records the calling thread's calls during its life. An inner Recording pauses an outer one. */
class Recording {
public:
    explicit Recording(CallRecord& record);
    ~Recording();
    Recording(const Recording&) = delete;
    Recording& operator=(const Recording&) = delete;

private:
    CallRecord* outer;
};

/** Leaves out what the calling thread does during its life: the test's own work. */
class NotRecorded {
public:
    NotRecorded();
    ~NotRecorded();
    NotRecorded(const NotRecorded&) = delete;
    NotRecorded& operator=(const NotRecorded&) = delete;

private:
    CallRecord* outer;
};

} // namespace doubles
