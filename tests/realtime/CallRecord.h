// CallRecord: what one thread asks of the allocator and of the locks while it is recorded.
//
//   CallRecord record;
//   {
//       const Recording recording(record);
//       processor->process(data);
//   }
//   EXPECT_EQ(record.count(CallRecord::kAllocate), 0u);
//
// The program that this is linked into has the allocator's and the lock operations in the C
// library's place, for itself and for every library that it loads. No sanitizer can be in it.
#pragma once

#include <array>
#include <cstddef>

namespace doubles {

/** Takes no memory, so that it can be filled from inside the allocator. One thread fills it; it is
    read when that thread has ended its Recording, or by that thread. */
class CallRecord {
public:
    enum Kind {
        kAllocate,
        kFree,
        kLock,      ///< taken, and waited for if it was somebody else's
        kTryLock,   ///< taken at a try, which does not wait
        kTryInVain, ///< tried, and somebody else's
        kUnlock,    ///< given back
        kBlocked,   ///< somebody else's: the thread waits for it
        kWait       ///< for a condition, a semaphore or another thread
    };
    struct Entry {
        Kind kind;
        const void* object; ///< the memory, the lock or the condition
    };
    static constexpr std::size_t kMaxEntries = 8192;

    /** Called at every entry, before the operation that it is about; may block, and is not
        recorded itself. */
    void (*onEntry)(void* context, const Entry& entry) = nullptr;
    void* context = nullptr;

    void add(Kind kind, const void* object);
    void clear() { used = held = 0; }

    std::size_t size() const { return used; }
    const Entry& operator[](std::size_t index) const { return entries[index]; }
    const Entry* begin() const { return entries.data(); }
    const Entry* end() const { return entries.data() + used; }
    std::size_t count(Kind kind) const;

    /** Locks that the thread holds now, of those that it took while it was recorded. */
    std::size_t getHeld() const { return held; }

private:
    std::array<Entry, kMaxEntries> entries;
    std::size_t used = 0;
    std::size_t held = 0;
};

/** Records the calling thread's calls for as long as it lives; an inner one in the outer's
    place. */
class Recording {
public:
    explicit Recording(CallRecord& record);
    ~Recording();
    Recording(const Recording&) = delete;
    Recording& operator=(const Recording&) = delete;

private:
    CallRecord* outer;
};

/** What the calling thread does meanwhile is not recorded: a test's own work. */
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
