// Darwin's mutexes and condition variables, in the memory that the image has for them. Sizes and
// marks are those of Darwin's sys/_pthread/_pthread_types.h and pthread_impl.h. Using one that was
// never initialised or is destroyed ends the program, which neither Darwin nor Linux does.
#include "tests/macos/loader/DarwinCall.h"

#include <cerrno>
#include <cstdint>
#include <iterator>
#include <memory>
#include <pthread.h>

namespace {

using macho::endProgram;

constexpr uint64_t kMade = 0x4D414445;
constexpr uint64_t kGone = 0x474F4E45;

struct Mutex {
    static constexpr uint64_t kInitialiser = 0x32AAABA7; // _PTHREAD_MUTEX_SIG_init
    static constexpr const char* kUsed = "a mutex was used that nobody made or that is gone";

    uint64_t mark;
    pthread_mutex_t real;

    void make() { pthread_mutex_init(&real, nullptr); }
    int end() { return pthread_mutex_destroy(&real); }
};
static_assert(sizeof(Mutex) <= 64, "Darwin's has 64 bytes");

struct Condition {
    static constexpr uint64_t kInitialiser = 0x3CB0B1BB; // _PTHREAD_COND_SIG_init
    static constexpr const char* kUsed =
        "a condition variable was used that nobody made or that is gone";

    uint64_t mark;
    pthread_cond_t* real; ///< too large to be in here

    void make()
    {
        real = new pthread_cond_t;
        pthread_cond_init(real, nullptr);
    }
    int end()
    {
        const std::unique_ptr<pthread_cond_t> owned(real);
        return pthread_cond_destroy(real);
    }
};
static_assert(sizeof(Condition) <= 48, "Darwin's has 48 bytes");

struct Attributes {
    uint64_t mark;
    int kind;
};
static_assert(sizeof(Attributes) <= 16, "Darwin's have 16 bytes");

/** Held while a lock is made at its first use, which two threads may try at once. A lock of the C
    library has no destructor that would end it with the module. */
class Making {
public:
    Making() { pthread_mutex_lock(&lock); }
    ~Making() { pthread_mutex_unlock(&lock); }
    Making(const Making&) = delete;
    Making& operator=(const Making&) = delete;

private:
    static inline pthread_mutex_t lock = PTHREAD_MUTEX_INITIALIZER;
};

/** The lock, which is made now if it still holds the static initialiser. */
template <typename Lock>
Lock* made(Lock* lock)
{
    if (__atomic_load_n(&lock->mark, __ATOMIC_ACQUIRE) == Lock::kInitialiser) {
        const Making making;
        if (lock->mark == Lock::kInitialiser) {
            lock->make();
            __atomic_store_n(&lock->mark, kMade, __ATOMIC_RELEASE);
        }
    }
    if (__atomic_load_n(&lock->mark, __ATOMIC_ACQUIRE) != kMade)
        endProgram(Lock::kUsed, lock);
    return lock;
}

pthread_mutex_t* real(Mutex* mutex)
{
    return &made(mutex)->real;
}

pthread_cond_t* real(Condition* condition)
{
    return made(condition)->real;
}

template <typename Lock>
int destroy(Lock* lock)
{
    const int result = made(lock)->end();
    if (result == 0)
        __atomic_store_n(&lock->mark, kGone, __ATOMIC_RELEASE);
    return result;
}

void checkMade(const Attributes* attributes)
{
    if (attributes->mark != kMade)
        endProgram("mutex attributes were used that nobody made or that are gone", attributes);
}

/** Darwin's PTHREAD_MUTEX_NORMAL 0, _ERRORCHECK 1 and _RECURSIVE 2. */
constexpr int kKinds[] = {PTHREAD_MUTEX_NORMAL, PTHREAD_MUTEX_ERRORCHECK, PTHREAD_MUTEX_RECURSIVE};

} // namespace

DARWIN_CALL(int, pthread_mutexattr_init)(Attributes* attributes)
{
    *attributes = {kMade, 0};
    return 0;
}

DARWIN_CALL(int, pthread_mutexattr_settype)(Attributes* attributes, int kind)
{
    checkMade(attributes);
    if (kind < 0 || kind >= static_cast<int>(std::size(kKinds)))
        return EINVAL;
    attributes->kind = kind;
    return 0;
}

DARWIN_CALL(int, pthread_mutexattr_destroy)(Attributes* attributes)
{
    checkMade(attributes);
    attributes->mark = kGone;
    return 0;
}

DARWIN_CALL(int, pthread_mutex_init)(Mutex* mutex, const Attributes* attributes)
{
    pthread_mutexattr_t kind;
    pthread_mutexattr_init(&kind);
    if (attributes) {
        checkMade(attributes);
        pthread_mutexattr_settype(&kind, kKinds[attributes->kind]);
    }
    const int result = pthread_mutex_init(&mutex->real, &kind);
    pthread_mutexattr_destroy(&kind);
    __atomic_store_n(&mutex->mark, kMade, __ATOMIC_RELEASE);
    return result;
}

DARWIN_CALL(int, pthread_mutex_destroy)(Mutex* mutex)
{
    return destroy(mutex);
}

DARWIN_CALL(int, pthread_mutex_lock)(Mutex* mutex)
{
    return pthread_mutex_lock(real(mutex));
}

DARWIN_CALL(int, pthread_mutex_trylock)(Mutex* mutex)
{
    return pthread_mutex_trylock(real(mutex));
}

DARWIN_CALL(int, pthread_mutex_unlock)(Mutex* mutex)
{
    return pthread_mutex_unlock(real(mutex));
}

// std::mutex and std::condition_variable hold nothing but these (LLVM's <__threading_support>).
// Apple's destructors on arm64 return the object.

DARWIN_CALL(void, _ZNSt3__15mutex4lockEv)(Mutex* mutex)
{
    pthread_mutex_lock(real(mutex));
}

DARWIN_CALL(void, _ZNSt3__15mutex6unlockEv)(Mutex* mutex)
{
    pthread_mutex_unlock(real(mutex));
}

DARWIN_CALL(Mutex*, _ZNSt3__15mutexD1Ev)(Mutex* mutex)
{
    destroy(mutex);
    return mutex;
}

DARWIN_CALL(void, _ZNSt3__118condition_variable10notify_allEv)(Condition* condition)
{
    pthread_cond_broadcast(real(condition));
}

/** The first member of std::unique_lock is the pointer to its mutex (LLVM's <__mutex_base>). */
DARWIN_CALL(void, _ZNSt3__118condition_variable4waitERNS_11unique_lockINS_5mutexEEE)
(Condition* condition, Mutex** lock)
{
    pthread_cond_wait(real(condition), real(*lock));
}

DARWIN_CALL(Condition*, _ZNSt3__118condition_variableD1Ev)(Condition* condition)
{
    destroy(condition);
    return condition;
}
