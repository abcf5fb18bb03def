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

/** The C library's own operation behind one of ours. */
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
        // Looking it up twice does no harm, and a static's guard would be a lock itself.
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

// The allocator, which operator new asks as well ------------------------------

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
    // Nothing is freed by freeing nothing.
    if (memory)
        note(CallRecord::kFree, memory);
    __libc_free(memory);
}

// Locks -----------------------------------------------------------------------

int pthread_mutex_trylock(pthread_mutex_t* lock) noexcept
{
    static Original<int(pthread_mutex_t*)> original("pthread_mutex_trylock");
    const int result = original(lock);
    note(result == 0 ? CallRecord::kTryLock : CallRecord::kTryInVain, lock);
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

int pthread_mutex_unlock(pthread_mutex_t* lock) noexcept
{
    static Original<int(pthread_mutex_t*)> original("pthread_mutex_unlock");
    note(CallRecord::kUnlock, lock);
    return original(lock);
}

int pthread_rwlock_rdlock(pthread_rwlock_t* lock) noexcept
{
    static Original<int(pthread_rwlock_t*)> original("pthread_rwlock_rdlock");
    note(CallRecord::kLock, lock);
    return original(lock);
}

int pthread_rwlock_wrlock(pthread_rwlock_t* lock) noexcept
{
    static Original<int(pthread_rwlock_t*)> original("pthread_rwlock_wrlock");
    note(CallRecord::kLock, lock);
    return original(lock);
}

int pthread_rwlock_unlock(pthread_rwlock_t* lock) noexcept
{
    static Original<int(pthread_rwlock_t*)> original("pthread_rwlock_unlock");
    note(CallRecord::kUnlock, lock);
    return original(lock);
}

int pthread_spin_lock(pthread_spinlock_t* lock) noexcept
{
    static Original<int(pthread_spinlock_t*)> original("pthread_spin_lock");
    note(CallRecord::kLock, const_cast<const int*>(lock));
    return original(lock);
}

int pthread_spin_unlock(pthread_spinlock_t* lock) noexcept
{
    static Original<int(pthread_spinlock_t*)> original("pthread_spin_unlock");
    note(CallRecord::kUnlock, const_cast<const int*>(lock));
    return original(lock);
}

// What waits ------------------------------------------------------------------

int pthread_cond_wait(pthread_cond_t* condition, pthread_mutex_t* lock)
{
    static Original<int(pthread_cond_t*, pthread_mutex_t*)> original("pthread_cond_wait");
    note(CallRecord::kWait, condition);
    return original(condition, lock);
}

int pthread_cond_timedwait(pthread_cond_t* condition, pthread_mutex_t* lock, const timespec* end)
{
    static Original<int(pthread_cond_t*, pthread_mutex_t*, const timespec*)> original(
        "pthread_cond_timedwait");
    note(CallRecord::kWait, condition);
    return original(condition, lock, end);
}

int pthread_cond_clockwait(pthread_cond_t* condition, pthread_mutex_t* lock, clockid_t clock,
                           const timespec* end)
{
    static Original<int(pthread_cond_t*, pthread_mutex_t*, clockid_t, const timespec*)> original(
        "pthread_cond_clockwait");
    note(CallRecord::kWait, condition);
    return original(condition, lock, clock, end);
}

int pthread_join(pthread_t thread, void** result)
{
    static Original<int(pthread_t, void**)> original("pthread_join");
    note(CallRecord::kWait, nullptr);
    return original(thread, result);
}

int sem_wait(sem_t* semaphore)
{
    static Original<int(sem_t*)> original("sem_wait");
    note(CallRecord::kWait, semaphore);
    return original(semaphore);
}

} // extern "C"
