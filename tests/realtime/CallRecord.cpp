#include "tests/realtime/CallRecord.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <dlfcn.h>
#include <pthread.h>
#include <semaphore.h>
#include <utility>

namespace {

thread_local doubles::CallRecord* current = nullptr;

void note(doubles::CallRecord::Kind kind, const void* object)
{
    if (current)
        current->add(kind, object);
}

/** The C library's own operation, which ours calls. */
template <typename Function>
class Original {
public:
    explicit constexpr Original(const char* operation)
    : name(operation)
    {
    }
    template <typename... Arguments>
    auto operator()(Arguments... arguments)
    {
        // Two threads may both look it up. A static variable would take a lock to prevent that.
        if (!function)
            function = reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
        return function(arguments...);
    }

private:
    const char* name;
    Function* function = nullptr;
};

int recordedWait(int result, const void* lock)
{
    note(result == 0 ? doubles::CallRecord::kLock : doubles::CallRecord::kBlocked, lock);
    return result;
}

} // namespace

namespace doubles {

void CallRecord::add(Kind kind, const void* object)
{
    if (used == kMaxEntries) {
        std::fputs("CallRecord is full\n", stderr);
        std::abort();
    }
    entries[used++] = {kind, object};
    if (kind == kLock || kind == kTryLock)
        ++held;
    else if (kind == kUnlock && held > 0)
        --held;
    if (!onEntry)
        return;
    const NotRecorded meanwhile;
    onEntry(context, entries[used - 1]);
}

std::size_t CallRecord::count(Kind kind) const
{
    std::size_t result = 0;
    for (const Entry& entry : *this)
        result += entry.kind == kind ? 1 : 0;
    return result;
}

Recording::Recording(CallRecord& record)
: outer(std::exchange(current, &record))
{
}

Recording::~Recording()
{
    current = outer;
}

NotRecorded::NotRecorded()
: outer(std::exchange(current, nullptr))
{
}

NotRecorded::~NotRecorded()
{
    current = outer;
}

} // namespace doubles

using doubles::CallRecord;

// The allocator, which operator new calls too

extern "C" {

void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* memory, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);
void __libc_free(void* memory);

void* malloc(std::size_t size)
{
    void* memory = __libc_malloc(size);
    note(CallRecord::kAllocate, memory);
    return memory;
}

void* calloc(std::size_t count, std::size_t size)
{
    void* memory = __libc_calloc(count, size);
    note(CallRecord::kAllocate, memory);
    return memory;
}

void* realloc(void* old, std::size_t size)
{
    if (old)
        note(CallRecord::kFree, old);
    void* memory = __libc_realloc(old, size);
    note(CallRecord::kAllocate, memory);
    return memory;
}

void* memalign(std::size_t alignment, std::size_t size)
{
    void* memory = __libc_memalign(alignment, size);
    note(CallRecord::kAllocate, memory);
    return memory;
}

void* aligned_alloc(std::size_t alignment, std::size_t size)
{
    return memalign(alignment, size);
}

int posix_memalign(void** out, std::size_t alignment, std::size_t size)
{
    *out = memalign(alignment, size);
    return *out ? 0 : ENOMEM;
}

void free(void* memory)
{
    if (memory)
        note(CallRecord::kFree, memory);
    __libc_free(memory);
}

// Locks, and what waits

int pthread_mutex_trylock(pthread_mutex_t* lock) noexcept
{
    static Original<int(pthread_mutex_t*)> original("pthread_mutex_trylock");
    const int result = original(lock);
    note(result == 0 ? CallRecord::kTryLock : CallRecord::kFailedTry, lock);
    return result;
}

int pthread_mutex_lock(pthread_mutex_t* lock) noexcept
{
    static Original<int(pthread_mutex_t*)> original("pthread_mutex_lock");
    static Original<int(pthread_mutex_t*)> tried("pthread_mutex_trylock");
    if (!current)
        return original(lock);
    int result = tried(lock);
    if (result == EBUSY) {
        note(CallRecord::kBlocked, lock);
        result = original(lock);
    }
    note(CallRecord::kLock, lock);
    return result;
}

int pthread_mutex_timedlock(pthread_mutex_t* lock, const timespec* end) noexcept
{
    static Original<int(pthread_mutex_t*, const timespec*)> original("pthread_mutex_timedlock");
    return recordedWait(original(lock, end), lock);
}

int pthread_mutex_clocklock(pthread_mutex_t* lock, clockid_t clock, const timespec* end) noexcept
{
    static Original<int(pthread_mutex_t*, clockid_t, const timespec*)> original(
        "pthread_mutex_clocklock");
    return recordedWait(original(lock, clock, end), lock);
}

/** Defines an operation that is recorded before the C library does it. */
#define RECORDED(operation, kind, object, parameters, arguments)                                   \
    int operation parameters                                                                       \
    {                                                                                              \
        static Original<int parameters> original(#operation);                                      \
        note(CallRecord::kind, object);                                                            \
        return original arguments;                                                                 \
    }                                                                                              \
    static_assert(true)

// clang-format off
RECORDED(pthread_mutex_unlock, kUnlock, lock, (pthread_mutex_t* lock) noexcept, (lock));
RECORDED(pthread_rwlock_rdlock, kLock, lock, (pthread_rwlock_t* lock) noexcept, (lock));
RECORDED(pthread_rwlock_wrlock, kLock, lock, (pthread_rwlock_t* lock) noexcept, (lock));
RECORDED(pthread_rwlock_unlock, kUnlock, lock, (pthread_rwlock_t* lock) noexcept, (lock));
RECORDED(pthread_spin_lock, kLock, const_cast<const int*>(lock),
         (pthread_spinlock_t* lock) noexcept, (lock));
RECORDED(pthread_spin_unlock, kUnlock, const_cast<const int*>(lock),
         (pthread_spinlock_t* lock) noexcept, (lock));
RECORDED(pthread_cond_wait, kWait, condition, (pthread_cond_t* condition, pthread_mutex_t* lock),
         (condition, lock));
RECORDED(pthread_cond_timedwait, kWait, condition,
         (pthread_cond_t* condition, pthread_mutex_t* lock, const timespec* end),
         (condition, lock, end));
RECORDED(pthread_cond_clockwait, kWait, condition,
         (pthread_cond_t* condition, pthread_mutex_t* lock, clockid_t clock, const timespec* end),
         (condition, lock, clock, end));
RECORDED(pthread_join, kWait, nullptr, (pthread_t thread, void** result), (thread, result));
RECORDED(sem_wait, kWait, semaphore, (sem_t* semaphore), (semaphore));
// clang-format on

} // extern "C"
